#include "KXWidget.h"

#include <QBoxLayout>
#include <QMouseEvent>

#include "FormSize_p.h"

KXWidget::KXWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags),
      m_pContent(new QWidget(this)),
      m_pLayout(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
    m_pLayout->addWidget(m_pContent, 1);
    connect(m_pContent, &QWidget::windowTitleChanged, this, &KXWidget::setWindowTitle);
}

KXWidget::~KXWidget() = default;

QWidget* KXWidget::Content() const
{
    return m_pContent;
}

bool KXWidget::eventFilter(QObject* object, QEvent* event)
{
    return QWidget::eventFilter(object, event);
}

void KXWidget::setVisible(bool visible)
{
    if (visible)
    {
        TakeFormSize(this, m_pContent);
    }
    QWidget::setVisible(visible);
}

QBoxLayout* KXWidget::FrameLayout() const
{
    return m_pLayout;
}

void KXWidget::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    event->accept();
}

void KXWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
    event->accept();
}
