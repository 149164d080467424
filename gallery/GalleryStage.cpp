#include "GalleryStage.h"

#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "GalleryExhibits.h"

namespace
{

const int PanelWidth = 320;

} // namespace

GalleryStage::GalleryStage(QWidget* parent)
    : QScrollArea(parent),
      m_pLayout(new QVBoxLayout),
      m_pPanels(new QSplitter),
      m_pRest(new QWidget),
      m_pOpen(new QPushButton(tr("&Open")))
{
    auto* floor = new QWidget;
    floor->setLayout(m_pLayout);
    m_pOpen->setObjectName(QStringLiteral("Open"));
    m_pPanels->setChildrenCollapsible(false);
    m_pPanels->addWidget(m_pRest);
    m_pLayout->addWidget(m_pPanels, 1);
    m_pLayout->addWidget(m_pOpen, 0, Qt::AlignLeft);
    m_pLayout->addStretch();
    setWidget(floor);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    connect(m_pOpen, &QPushButton::clicked, this, &GalleryStage::OpenRequested);
}

GalleryStage::~GalleryStage() = default;

QWidget* GalleryStage::GetFloor() const
{
    return widget();
}

QPoint GalleryStage::GetOpeningPlace() const
{
    return m_pOpen->mapToGlobal(QPoint(0, m_pOpen->height()));
}

void GalleryStage::Show(const Exhibit& exhibit, GalleryGroup group)
{
    const bool opens = bool(exhibit.open);
    m_pOpen->setVisible(opens);
    m_pPanels->hide();
    if (opens)
        return;
    if (group == GalleryGroup::Bars || exhibit.isRow)
        ShowBar(exhibit.widget);
    else
        ShowPanel(exhibit.widget, exhibit.companion);
}

void GalleryStage::ShowBar(QWidget* bar)
{
    m_pLayout->insertWidget(0, bar);
    bar->show();
}

void GalleryStage::ShowPanel(QWidget* panel, QWidget* companion)
{
    m_pPanels->insertWidget(0, panel);
    if (companion)
        m_pPanels->insertWidget(1, companion);
    m_pRest->setVisible(!companion);
    m_pPanels->setStretchFactor(0, 0);
    m_pPanels->setStretchFactor(1, 1);
    const QMargins margins = m_pLayout->contentsMargins();
    const int room = viewport()->width() - margins.left() - margins.right() - m_pPanels->handleWidth();
    const int panelWidth = qMax(PanelWidth, panel->sizeHint().width());
    m_pPanels->setSizes({panelWidth, qMax(1, room - panelWidth)});
    panel->show();
    m_pPanels->show();
}
