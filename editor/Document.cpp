#include "Document.h"

#include <QDir>
#include <QFileInfo>
#include <QUndoStack>

#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "UndoStep.h"

const qint64 Document::UndoMemory = 512 * 1024 * 1024;
const int Document::UndoSteps = 200;

namespace
{

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
    m_pUndoStack->setUndoLimit(UndoSteps);
    connect(m_pUndoStack, &QUndoStack::cleanChanged, this, &Document::StateChanged);
    connect(m_pUndoStack, &QUndoStack::indexChanged, this, &Document::OnUndoIndexChanged);
}

Document::~Document()
{
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
    {
        if (const auto* step = dynamic_cast<const UndoStep*>(m_pUndoStack->command(i)))
            bytes += step->GetMemoryBytes();
    }
    return bytes;
}

void Document::OnUndoIndexChanged()
{
    qint64 bytes = GetUndoBytes();
    for (int i = 0; i < m_pUndoStack->count() && bytes > UndoMemory; ++i)
    {
        // The stack hands out its steps as constant, but they are this document's own.
        auto* step = dynamic_cast<UndoStep*>(const_cast<QUndoCommand*>(m_pUndoStack->command(i)));
        if (!step)
            continue;
        bytes -= step->GetMemoryBytes();
        step->MoveToDisk();
        bytes += step->GetMemoryBytes();
    }
}
