#include "PatternSelectWidget.h"

#include <QKeyEvent>
#include <QLabel>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QVBoxLayout>

#include "NVApplication.h"
#include "PatternTileView_p.h"
#include "PatternTiles_p.h"
#include "ScreenPlacement.h"

PatternSelectWidget::PatternSelectWidget(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint),
      m_current(qMin(NVApplication::GetTexturePatternIndex(), PatternTileCount() - 1))
{
    setWindowTitle(tr("Textures"));
}

PatternSelectWidget::~PatternSelectWidget() = default;

int PatternSelectWidget::Count() const
{
    return PatternTileCount();
}

int PatternSelectWidget::CurrentIndex() const
{
    return m_current;
}

bool PatternSelectWidget::GetItemImage(int index, QImage& image) const
{
    if (index < 0 || index >= Count())
        return false;
    image = PatternTile(index);
    return true;
}

void PatternSelectWidget::setVisible(bool visible)
{
    if (visible && !m_pView)
        build();
    QWidget::setVisible(visible);
}

void PatternSelectWidget::SetCurrentIndex(int index)
{
    if (index < 0 || index >= Count() || index == m_current)
        return;
    m_current = index;
    if (m_pView)
        m_pView->SetCurrentRow(index);
}

void PatternSelectWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void PatternSelectWidget::showEvent(QShowEvent* event)
{
    MoveOntoScreen(this);
    QWidget::showEvent(event);
}

void PatternSelectWidget::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    painter.drawPrimitive(QStyle::PE_FrameMenu, frame);
}

void PatternSelectWidget::OnSelected(int index)
{
    m_current = index;
    Q_EMIT ItemSelected(index);
}

void PatternSelectWidget::OnPointed(int index)
{
    m_pName->setText(index < 0 ? QString() : PatternTileName(index));
}

// The tiles come to life with the first look at them: a bar makes its popup long before, and often in vain.
void PatternSelectWidget::build()
{
    m_pView = new PatternTileView(this);
    m_pName = new QLabel(this);
    m_pName->setAlignment(Qt::AlignCenter);
    m_pName->setTextFormat(Qt::PlainText);

    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(4);
    layout->addWidget(m_pView);
    layout->addWidget(m_pName);
    setFocusProxy(m_pView);

    connect(m_pView, &PatternTileView::Selected, this, &PatternSelectWidget::OnSelected);
    connect(m_pView, &PatternTileView::Chosen, this, &PatternSelectWidget::ItemDoubleClicked);
    connect(m_pView, &PatternTileView::Pointed, this, &PatternSelectWidget::OnPointed);
    m_pView->SetCurrentRow(m_current);
}
