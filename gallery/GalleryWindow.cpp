#include "GalleryWindow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "GalleryExhibits.h"
#include "GalleryLog.h"
#include "GalleryStage.h"
#include "KXMdiArea.h"
#include "NVApplication.h"
#include "SignalWatch.h"

namespace
{

const QSize WindowSize(1280, 800);
// Between the widget and the log.
const QList<int> HalfHeights = {460, 260};

} // namespace

GalleryWindow::GalleryWindow(QWidget* parent)
    : QMainWindow(parent),
      m_pFilter(new QLineEdit),
      m_pList(new QTreeWidget),
      m_pTitle(new QLabel),
      m_pThemes(new QComboBox),
      m_pStage(new GalleryStage),
      m_pLog(new GalleryLog)
{
    // The window of the area is the parent of what a widget opens by itself.
    (new KXMdiArea(this))->hide();
    auto* parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->addWidget(CreateList());
    parts->addWidget(CreateRight());
    parts->setStretchFactor(0, 0);
    parts->setStretchFactor(1, 1);
    parts->setSizes({0, WindowSize.width()});
    setCentralWidget(parts);
    setWindowTitle(tr("Gallery"));
    resize(WindowSize);
    FillList();
    connect(&m_theme, &Theme::Changed, this, &GalleryWindow::OnThemeChanged);
    connect(m_pThemes, qOverload<int>(&QComboBox::currentIndexChanged), NVApplication::GetInstance(),
            &NVApplication::SetTheme);
    connect(m_pFilter, &QLineEdit::textChanged, this, &GalleryWindow::OnFilterChanged);
    connect(m_pList, &QTreeWidget::currentItemChanged, this, &GalleryWindow::OnCurrentItemChanged);
    connect(m_pStage, &GalleryStage::OpenRequested, this, &GalleryWindow::OnOpen);
    Choose(QLatin1String(GalleryRows().front().name));
}

GalleryWindow::~GalleryWindow()
{
    Drop();
}

QString GalleryWindow::GetChosen() const
{
    return QLatin1String(m_pRow->name);
}

QWidget* GalleryWindow::GetWidget() const
{
    return m_pExhibit->widget;
}

void GalleryWindow::Choose(const QString& name)
{
    const QList<QTreeWidgetItem*> found = m_pList->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    for (QTreeWidgetItem* item : found)
    {
        if (item->parent())
            m_pList->setCurrentItem(item);
    }
}

void GalleryWindow::Renew()
{
    Drop();
    m_pExhibit = m_pRow->make(m_pStage->GetFloor());
    m_pWatch = std::make_unique<SignalWatch>([this](const HeardSignal& signal) { m_pLog->Add(signal); });
    m_pWatch->Watch(m_pExhibit->widget);
    for (const Exhibit::Part& part : qAsConst(m_pExhibit->parts))
        m_pWatch->Watch(part.object, part.name);
    m_pStage->Show(*m_pExhibit, m_pRow->group);
}

void GalleryWindow::OnCurrentItemChanged(QTreeWidgetItem* item)
{
    const GalleryRow* row = item ? FindGalleryRow(item->text(0)) : nullptr;
    if (!row || row == m_pRow)
        return;
    m_pRow = row;
    m_pTitle->setText(item->text(0));
    Renew();
    m_pLog->Start(m_pWatch->Signatures());
}

void GalleryWindow::OnFilterChanged(const QString& text)
{
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
    {
        QTreeWidgetItem* group = m_pList->topLevelItem(i);
        int shown = 0;
        for (int row = 0; row < group->childCount(); ++row)
        {
            const bool matches = group->child(row)->text(0).contains(text, Qt::CaseInsensitive);
            group->child(row)->setHidden(!matches);
            shown += matches ? 1 : 0;
        }
        group->setHidden(shown == 0);
    }
}

void GalleryWindow::OnOpen()
{
    const GalleryRow* row = m_pRow;
    // A copy, since another widget may be chosen while a dialog runs.
    const auto open = m_pExhibit->open;
    const QString result = open(m_pStage->GetOpeningPlace());
    if (m_pRow != row || result.isEmpty())
        return;
    m_pLog->Note(result);
    Renew();
}

// The pictures of a widget are those of the theme in which it was made.
void GalleryWindow::OnThemeChanged(int theme)
{
    m_pThemes->setCurrentIndex(theme);
    Renew();
}

QWidget* GalleryWindow::CreateList()
{
    auto* caption = new QLabel(tr("&Filter:"));
    caption->setBuddy(m_pFilter);
    m_pFilter->setObjectName(QStringLiteral("Filter"));
    m_pFilter->setClearButtonEnabled(true);
    m_pList->setObjectName(QStringLiteral("Widgets"));
    m_pList->setAccessibleName(tr("Widgets"));
    m_pList->setHeaderHidden(true);
    auto* filter = new QHBoxLayout;
    filter->addWidget(caption);
    filter->addWidget(m_pFilter);
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->addLayout(filter);
    layout->addWidget(m_pList);
    return part;
}

QWidget* GalleryWindow::CreateRight()
{
    auto* halves = new QSplitter(Qt::Vertical);
    halves->setChildrenCollapsible(false);
    halves->addWidget(m_pStage);
    halves->addWidget(m_pLog);
    halves->setStretchFactor(0, 1);
    halves->setStretchFactor(1, 0);
    halves->setSizes(HalfHeights);
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    layout->addWidget(CreateHeading());
    layout->addWidget(halves, 1);
    return part;
}

QWidget* GalleryWindow::CreateHeading()
{
    QFont bold = m_pTitle->font();
    bold.setBold(true);
    m_pTitle->setFont(bold);
    m_pThemes->setObjectName(QStringLiteral("Themes"));
    m_pThemes->addItems({tr("Light"), tr("Dark"), tr("High Contrast")});
    m_pThemes->setCurrentIndex(NVApplication::GetInstance()->GetTheme());
    auto* caption = new QLabel(tr("&Theme:"));
    caption->setBuddy(m_pThemes);
    auto* anew = new QPushButton(tr("Start &Anew"));
    anew->setObjectName(QStringLiteral("Anew"));
    anew->setToolTip(tr("Puts a new widget in the place of this one"));
    connect(anew, &QPushButton::clicked, this, &GalleryWindow::Renew);
    auto* heading = new QWidget;
    auto* layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pTitle);
    layout->addStretch();
    layout->addWidget(caption);
    layout->addWidget(m_pThemes);
    layout->addWidget(anew);
    return heading;
}

void GalleryWindow::FillList()
{
    QTreeWidgetItem* group = nullptr;
    for (const GalleryRow& row : GalleryRows())
    {
        const QString title = GalleryGroupTitle(row.group);
        if (!group || group->text(0) != title)
        {
            group = new QTreeWidgetItem(m_pList, {title});
            group->setFlags(Qt::ItemIsEnabled);
        }
        new QTreeWidgetItem(group, {QLatin1String(row.name)});
    }
    m_pList->expandAll();
    // All names are seen; the column itself is as wide as the list.
    m_pList->header()->setStretchLastSection(false);
    m_pList->resizeColumnToContents(0);
    m_pList->setMinimumWidth(m_pList->columnWidth(0) + 2 * m_pList->frameWidth() +
                             m_pList->verticalScrollBar()->sizeHint().width());
    m_pList->header()->setStretchLastSection(true);
}

// The watch goes first: nobody reads what a widget tells when it dies.
void GalleryWindow::Drop()
{
    m_pWatch.reset();
    m_pExhibit.reset();
}
