#include "GalleryLog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "SignalWatch.h"

namespace
{

enum LineColumn
{
    NumberColumn,
    TextColumn
};

enum CountColumn
{
    SignatureColumn,
    CountColumn
};

QTreeWidget* CreateList(const QString& objectName, const QString& accessibleName, const QStringList& columns)
{
    auto* list = new QTreeWidget;
    list->setObjectName(objectName);
    list->setAccessibleName(accessibleName);
    list->setHeaderLabels(columns);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    return list;
}

} // namespace

GalleryLog::GalleryLog(QWidget* parent)
    : QWidget(parent),
      m_pLines(CreateList(QStringLiteral("Lines"), tr("Log of the signals"), {tr("No."), tr("Signal")})),
      m_pCounts(
          CreateList(QStringLiteral("Counts"), tr("Signals and their counts"), {tr("Signals"), tr("Count")})),
      m_pPause(new QCheckBox(tr("&Pause")))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CreateLists(), 1);
    layout->addWidget(CreateButtons());
}

GalleryLog::~GalleryLog() = default;

QStringList GalleryLog::GetLines() const
{
    QStringList lines;
    for (int row = 0; row < m_pLines->topLevelItemCount(); ++row)
    {
        const QTreeWidgetItem* line = m_pLines->topLevelItem(row);
        lines.append(line->text(NumberColumn) + QLatin1Char('\t') + line->text(TextColumn));
    }
    return lines;
}

int GalleryLog::GetCount(const QString& signature) const
{
    const QTreeWidgetItem* counter = m_counters.value(signature);
    return counter ? counter->data(CountColumn, Qt::DisplayRole).toInt() : 0;
}

bool GalleryLog::IsPaused() const
{
    return m_pPause->isChecked();
}

void GalleryLog::Start(const QStringList& signatures)
{
    m_pLines->clear();
    m_pCounts->clear();
    m_counters.clear();
    for (const QString& signature : signatures)
    {
        auto* counter = new QTreeWidgetItem(m_pCounts, {signature});
        counter->setTextAlignment(CountColumn, int(Qt::AlignRight | Qt::AlignVCenter));
        m_counters.insert(signature, counter);
        SetCount(counter, 0);
    }
    if (signatures.isEmpty())
        (new QTreeWidgetItem(m_pCounts, {tr("It has none of its own")}))->setDisabled(true);
}

void GalleryLog::Add(const HeardSignal& signal)
{
    if (IsPaused())
        return;
    if (QTreeWidgetItem* counter = m_counters.value(signal.signature))
        SetCount(counter, GetCount(signal.signature) + 1);
    Note(signal.text);
}

void GalleryLog::Note(const QString& text)
{
    if (IsPaused())
        return;
    const QScrollBar* bar = m_pLines->verticalScrollBar();
    const bool follows = bar->value() == bar->maximum();
    auto* line = new QTreeWidgetItem(m_pLines, {QString::number(m_pLines->topLevelItemCount() + 1), text});
    line->setTextAlignment(NumberColumn, int(Qt::AlignRight | Qt::AlignVCenter));
    // Who has scrolled up to read stays there.
    if (follows)
        m_pLines->scrollToItem(line);
}

void GalleryLog::Clear()
{
    m_pLines->clear();
    for (QTreeWidgetItem* counter : qAsConst(m_counters))
        SetCount(counter, 0);
}

void GalleryLog::Copy() const
{
    QGuiApplication::clipboard()->setText(GetLines().join(QLatin1Char('\n')));
}

void GalleryLog::SetPaused(bool paused)
{
    m_pPause->setChecked(paused);
}

QWidget* GalleryLog::CreateLists()
{
    const int numberWidth = fontMetrics().horizontalAdvance(QStringLiteral("00000000"));
    m_pLines->header()->setStretchLastSection(true);
    m_pLines->setColumnWidth(NumberColumn, numberWidth);
    m_pCounts->header()->setStretchLastSection(false);
    m_pCounts->header()->setSectionResizeMode(SignatureColumn, QHeaderView::Stretch);
    m_pCounts->setColumnWidth(CountColumn, numberWidth);
    auto* lists = new QSplitter;
    lists->setChildrenCollapsible(false);
    lists->addWidget(m_pLines);
    lists->addWidget(m_pCounts);
    lists->setStretchFactor(0, 1);
    lists->setStretchFactor(1, 1);
    return lists;
}

QWidget* GalleryLog::CreateButtons()
{
    m_pPause->setObjectName(QStringLiteral("Pause"));
    auto* clear = new QPushButton(tr("&Clear"));
    clear->setObjectName(QStringLiteral("Clear"));
    auto* copy = new QPushButton(tr("Cop&y"));
    copy->setObjectName(QStringLiteral("Copy"));
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pPause);
    layout->addStretch();
    layout->addWidget(clear);
    layout->addWidget(copy);
    connect(clear, &QPushButton::clicked, this, &GalleryLog::Clear);
    connect(copy, &QPushButton::clicked, this, &GalleryLog::Copy);
    return buttons;
}

void GalleryLog::SetCount(QTreeWidgetItem* counter, int count)
{
    counter->setData(CountColumn, Qt::DisplayRole, count);
}
