#include "OptionArea.h"

#include <QScrollBar>
#include <QStackedLayout>
#include <QWheelEvent>

namespace
{

// A bar's picture and a little air.
const int AreaHeight = 46;

} // namespace

OptionArea::OptionArea(QWidget* parent) : QScrollArea(parent), m_pStack(new QStackedLayout)
{
    auto* content = new QWidget;
    content->setLayout(m_pStack);
    m_pStack->setContentsMargins(4, 2, 4, 2);
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
}

void OptionArea::ShowBar(QWidget* bar)
{
    if (m_pStack->indexOf(bar) < 0)
        m_pStack->addWidget(bar);
    m_pStack->setCurrentWidget(bar);
}

QSize OptionArea::sizeHint() const
{
    return QSize(400, AreaHeight);
}

QSize OptionArea::minimumSizeHint() const
{
    return QSize(40, AreaHeight);
}

void OptionArea::wheelEvent(QWheelEvent* event)
{
    const int way = event->angleDelta().y() + event->angleDelta().x();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way / 2);
    event->accept();
}
