#include "OptionArea.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

namespace
{

// A bar's picture and a little air.
const int AreaHeight = 46;
const int ButtonWidth = 18;

} // namespace

OptionArea::OptionArea(QWidget* parent)
    : QScrollArea(parent),
      m_pBars(new QHBoxLayout),
      m_pBack(AddButton(Qt::LeftArrow, tr("Show the options further left"))),
      m_pForward(AddButton(Qt::RightArrow, tr("Show the options further right")))
{
    auto* content = new QWidget;
    content->setLayout(m_pBars);
    m_pBars->setContentsMargins(4, 2, 4, 2);
    setWidget(content);
    // The bar behind it shows through.
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(AreaHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_pBack, &QToolButton::clicked, this, &OptionArea::OnBack);
    connect(m_pForward, &QToolButton::clicked, this, &OptionArea::OnForward);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &OptionArea::OnScrolled);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &OptionArea::OnScrolled);
}

void OptionArea::ShowBar(QWidget* bar)
{
    if (m_pShown == bar)
        return;
    if (m_pShown)
        m_pShown->hide();
    m_pShown = bar;
    // A hidden bar takes no room, so each is scrolled for its own width alone.
    if (m_pBars->indexOf(bar) < 0)
        m_pBars->addWidget(bar);
    bar->show();
    horizontalScrollBar()->setValue(0);
}

QSize OptionArea::sizeHint() const
{
    return QSize(400, AreaHeight);
}

QSize OptionArea::minimumSizeHint() const
{
    return QSize(40, AreaHeight);
}

void OptionArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    m_pBack->setGeometry(0, 0, ButtonWidth, height());
    m_pForward->setGeometry(width() - ButtonWidth, 0, ButtonWidth, height());
}

void OptionArea::wheelEvent(QWheelEvent* event)
{
    ScrollBy(-(event->angleDelta().y() + event->angleDelta().x()) / 2);
    event->accept();
}

void OptionArea::OnBack()
{
    ScrollBy(-(width() - 4 * ButtonWidth));
}

void OptionArea::OnForward()
{
    ScrollBy(width() - 4 * ButtonWidth);
}

void OptionArea::OnScrolled()
{
    const QScrollBar* bar = horizontalScrollBar();
    m_pBack->setVisible(bar->value() > bar->minimum());
    m_pForward->setVisible(bar->value() < bar->maximum());
}

QToolButton* OptionArea::AddButton(Qt::ArrowType arrow, const QString& name)
{
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setFocusPolicy(Qt::NoFocus);
    button->hide();
    return button;
}

void OptionArea::ScrollBy(int pixels)
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + pixels);
}
