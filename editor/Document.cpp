#include "Document.h"

#include <QDir>
#include <QFileInfo>
#include <QUndoStack>

#include "History.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "UndoStep.h"

const qint64 Document::UndoMemory = 512 * 1024 * 1024;
const int Document::UndoSteps = 200;
const int Document::UndoMegabytes = 2048;

namespace
{

const qint64 Megabyte = 1024 * 1024;

// The stack hands out its steps as constant, but they are the document's own.
UndoStep* StepAt(const QUndoStack* stack, int index)
{
    return static_cast<UndoStep*>(const_cast<QUndoCommand*>(stack->command(index)));
}

QString Absolute(const QString& path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

Document::Document(const QImage& image, const QString& path, const QString& name, QObject* parent)
    : QObject(parent),
      m_pPixels(std::make_unique<KXDocumentInterface>(image)),
      m_pModel(std::make_unique<KXDocumentModel>(m_pPixels.get())),
      m_pUndoStack(new QUndoStack(this)),
      m_path(Absolute(path)),
      m_name(name)
{
    connect(m_pUndoStack, &QUndoStack::cleanChanged, this, &Document::StateChanged);
    connect(m_pUndoStack, &QUndoStack::indexChanged, this, &Document::OnUndoIndexChanged);
    // Behind the document, so that it never sees steps that are about to be dropped.
    m_pHistory = std::make_unique<History>(this);
}

Document::~Document()
{
    m_pHistory.reset();
    // The steps point into the pixels.
    delete m_pUndoStack;
}

KXDocumentInterface* Document::GetPixels() const
{
    return m_pPixels.get();
}

KXDocumentModel* Document::GetModel() const
{
    return m_pModel.get();
}

QUndoStack* Document::GetUndoStack() const
{
    return m_pUndoStack;
}

QString Document::GetPath() const
{
    return m_path;
}

QString Document::GetTitle() const
{
    return m_path.isEmpty() ? m_name : QFileInfo(m_path).fileName();
}

History* Document::GetHistory() const
{
    return m_pHistory.get();
}

bool Document::IsModified() const
{
    return !m_pUndoStack->isClean();
}

void Document::MarkSaved(const QString& path)
{
    const bool moved = Absolute(path) != m_path;
    m_path = Absolute(path);
    if (IsModified())
        m_pUndoStack->setClean();
    else if (moved)
        Q_EMIT StateChanged();
}

void Document::ForgetSteps()
{
    m_pUndoStack->clear();
    m_pUndoStack->resetClean();
}

qint64 Document::GetUndoBytes() const
{
    qint64 bytes = 0;
    for (int i = 0; i < m_pUndoStack->count(); ++i)
        bytes += StepAt(m_pUndoStack, i)->GetMemoryBytes();
    return bytes;
}

qint64 Document::GetHistoryBytes() const
{
    qint64 bytes = 0;
    for (int i = 0; i < m_pUndoStack->count(); ++i)
        bytes += StepAt(m_pUndoStack, i)->GetBytes();
    return bytes;
}

int Document::GetUndoMegabytes() const
{
    return m_undoMegabytes;
}

void Document::SetUndoMegabytes(int megabytes)
{
    if (megabytes == m_undoMegabytes)
        return;
    m_undoMegabytes = megabytes;
    OnUndoIndexChanged();
}

void Document::OnUndoIndexChanged()
{
    const int tooOld = CountTooOld();
    if (tooOld > 0)
        DropSteps(tooOld);
    else
        MoveOldToDisk();
}

int Document::CountTooOld() const
{
    qint64 surplus = GetHistoryBytes() - qint64(m_undoMegabytes) * Megabyte;
    int count = 0;
    while (count < m_pUndoStack->index() - 1 && (surplus > 0 || m_pUndoStack->count() - count > UndoSteps))
        surplus -= StepAt(m_pUndoStack, count++)->GetBytes();
    return count;
}

// The stack itself drops only steps that it walks over and that are obsolete.
void Document::DropSteps(int count)
{
    const int index = m_pUndoStack->index();
    const int clean = m_pUndoStack->cleanIndex();
    {
        const QSignalBlocker blocker(m_pUndoStack);
        for (int i = 0; i < m_pUndoStack->count(); ++i)
            StepAt(m_pUndoStack, i)->SetPassedOver(true);
        for (int i = 0; i < count; ++i)
            StepAt(m_pUndoStack, i)->setObsolete(true);
        m_pUndoStack->setIndex(0);
        m_pUndoStack->setIndex(qMax(0, clean - count));
        m_pUndoStack->setClean();
        if (clean < count)
            m_pUndoStack->resetClean();
        m_pUndoStack->setIndex(index - count);
        for (int i = 0; i < m_pUndoStack->count(); ++i)
            StepAt(m_pUndoStack, i)->SetPassedOver(false);
    }
    Q_EMIT StepsDropped(count);
    Q_EMIT m_pUndoStack->indexChanged(m_pUndoStack->index());
}

void Document::MoveOldToDisk()
{
    qint64 bytes = GetUndoBytes();
    for (int i = 0; i < m_pUndoStack->count() && bytes > UndoMemory; ++i)
    {
        UndoStep* step = StepAt(m_pUndoStack, i);
        bytes -= step->GetMemoryBytes();
        step->MoveToDisk();
        bytes += step->GetMemoryBytes();
    }
}
