#include "HistoryDock.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSettings>
#include <QUndoStack>
#include <QVBoxLayout>

#include "Document.h"
#include "History.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVSpinBox.h"

namespace
{

const QLatin1String LimitKey("history/megabytes");
const int MinMegabytes = 16;
const int MaxMegabytes = 65536;
// Of a row's picture, in logical pixels.
const int IconSide = 24;

// In as many pixels as the screen has for it, with a thin frame, since a picture may be as pale as the row.
QImage ForScreen(const QImage& picture, double ratio, const QColor& frame)
{
    // There was no memory for one.
    if (picture.isNull())
        return QImage();
    const int side = qRound(IconSide * ratio);
    QImage icon = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&icon);
    painter.setPen(frame);
    painter.drawRect(icon.rect().adjusted(0, 0, -1, -1));
    painter.end();
    icon.setDevicePixelRatio(ratio);
    return icon;
}

} // namespace

HistoryDock::HistoryDock(QSettings* settings, QWidget* parent)
    : QDockWidget(tr("History"), parent),
      m_pSettings(settings),
      m_pPanel(new NVHistoryPanel(this)),
      m_pUsage(new QLabel(this)),
      m_pLimit(new NVSpinBox(this))
{
    setObjectName(QStringLiteral("HistoryDock"));
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pPanel, 1);
    layout->addWidget(CreateFooter());
    setWidget(content);
    // The panel's own heading would say the same once more.
    m_pPanel->setWindowTitle(QString());
    m_pPanel->setAccessibleName(windowTitle());
    connect(this, &QDockWidget::visibilityChanged, this, &HistoryDock::OnVisibilityChanged);
    connect(m_pPanel, &NVHistoryPanel::IndexActivated, this, &HistoryDock::OnIndexActivated);
    connect(m_pLimit, qOverload<int>(&NVSpinBox::valueChanged), this, &HistoryDock::OnLimitChanged);
    SetDocument(nullptr);
    hide();
}

void HistoryDock::SetDocument(Document* document)
{
    if (m_pDocument)
        disconnect(m_pDocument->GetHistory(), nullptr, this, nullptr);
    m_pDocument = document;
    m_pPanel->EnableActions(document);
    OnRowsChanged(0);
    if (document)
    {
        connect(Rows(), &History::RowsDropped, this, &HistoryDock::OnRowsDropped);
        connect(Rows(), &History::RowsChanged, this, &HistoryDock::OnRowsChanged);
        connect(Rows(), &History::CurrentRowChanged, this, &HistoryDock::OnCurrentRowChanged);
        document->SetUndoMegabytes(m_pLimit->value());
        OnCurrentRowChanged(Rows()->GetCurrentRow());
    }
    ShowUsage();
}

void HistoryDock::UpdateTheme()
{
    for (int row = 0; row < m_items.size(); ++row)
    {
        m_items.at(row)->UpdateStyle(false);
        ShowRow(row);
    }
}

void HistoryDock::OnVisibilityChanged(bool visible)
{
    if (visible && m_pDocument)
        m_pPanel->EnsureVisible(Rows()->GetCurrentRow());
}

void HistoryDock::OnIndexActivated(int index)
{
    const quint64 number = Rows()->GetRow(index).number;
    Q_EMIT AboutToChange();
    // What came to its end may have become a step, which undone ones give way to.
    const int row = m_pDocument ? Rows()->FindRow(number) : -1;
    if (row == -1)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_pDocument->GetUndoStack()->setIndex(row);
    QGuiApplication::restoreOverrideCursor();
}

void HistoryDock::OnLimitChanged(int megabytes)
{
    m_pSettings->setValue(LimitKey, megabytes);
    if (m_pDocument)
        m_pDocument->SetUndoMegabytes(megabytes);
    ShowUsage();
}

void HistoryDock::OnRowsDropped(int count)
{
    m_items.resize(m_items.size() - count);
    m_pPanel->Remove(m_items.size());
    for (int row = 0; row < m_items.size(); ++row)
        ShowRow(row);
    m_pPanel->SetSelected(Rows()->GetCurrentRow());
    ShowUsage();
    Q_EMIT Message(tr("The history is full: %1 (at most %2 steps and %3 MB).")
                       .arg(Rows()->GetRow(0).text)
                       .arg(Document::UndoSteps)
                       .arg(m_pLimit->value()));
}

void HistoryDock::OnRowsChanged(int from)
{
    m_pPanel->Remove(from);
    m_items.resize(qMin(m_items.size(), from));
    const int count = m_pDocument ? Rows()->GetCount() : 0;
    for (int row = from; row < count; ++row)
        AddRow(row);
}

void HistoryDock::OnCurrentRowChanged(int row)
{
    m_pPanel->SetSelected(row);
    ShowUsage();
}

QWidget* HistoryDock::CreateFooter()
{
    auto* footer = new QWidget(this);
    auto* layout = new QHBoxLayout(footer);
    layout->setContentsMargins(6, 3, 6, 3);
    auto* caption = new QLabel(tr("&At most:"), footer);
    caption->setBuddy(m_pLimit);
    m_pUsage->setAccessibleName(tr("Steps and what they hold"));
    m_pLimit->setAccessibleName(tr("Memory for steps"));
    m_pLimit->setToolTip(tr("What the steps of a document may hold, in memory and in files: the oldest "
                            "ones are dropped beyond that. The newest step and those that were undone stay, "
                            "even if they hold more"));
    m_pLimit->setRange(MinMegabytes, MaxMegabytes);
    m_pLimit->setSingleStep(256);
    m_pLimit->setSuffix(tr(" MB"));
    m_pLimit->setKeyboardTracking(false);
    m_pLimit->setValue(m_pSettings->value(LimitKey, Document::UndoMegabytes).toInt());
    layout->addWidget(m_pUsage, 1);
    layout->addWidget(caption);
    layout->addWidget(m_pLimit);
    return footer;
}

const History* HistoryDock::Rows() const
{
    return m_pDocument->GetHistory();
}

void HistoryDock::AddRow(int row)
{
    m_pPanel->AddItem(QString(), QImage());
    m_items += m_pPanel->findChildren<NVHistoryItem*>().constLast();
    ShowRow(row);
}

void HistoryDock::ShowRow(int row)
{
    const History::Row& content = Rows()->GetRow(row);
    m_items.at(row)->SetText(content.text);
    m_items.at(row)->SetIcon(ForScreen(content.picture, devicePixelRatioF(), palette().color(QPalette::Mid)));
    // The row's label cuts what it has no room for.
    m_items.at(row)->setToolTip(content.text);
}

void HistoryDock::ShowUsage()
{
    if (!m_pDocument)
    {
        m_pUsage->setText(QString());
        return;
    }
    const int steps = m_pDocument->GetUndoStack()->count();
    const QString size =
        locale().formattedDataSize(m_pDocument->GetHistoryBytes(), 1, QLocale::DataSizeTraditionalFormat);
    m_pUsage->setText(steps == 1 ? tr("1 step, %1").arg(size) : tr("%1 steps, %2").arg(steps).arg(size));
}
