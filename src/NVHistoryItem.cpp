#include "NVHistoryItem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include "KXResource.h"
#include "ui_HistoryItem.h"

namespace
{

const auto HoverOn = static_cast<QEvent::Type>(1000);
const auto HoverOff = static_cast<QEvent::Type>(1001);

// Selected wins over disabled.
KXResource::ConstRole RoleOf(bool selected, bool enabled, bool hover)
{
    if (selected)
        return hover ? KXResource::HistoryItemSelectedHover : KXResource::HistoryItemSelected;
    if (enabled)
        return hover ? KXResource::HistoryItemHover : KXResource::HistoryItem;
    return hover ? KXResource::HistoryItemUndoneHover : KXResource::HistoryItemUndone;
}

} // namespace

NVHistoryItem::NVHistoryItem(QWidget* parent) : QWidget(parent), m_pUi(new Ui_HistoryItem)
{
    m_pUi->setupUi(this);
    m_pUi->m_pText->clear();
    UpdateStyle(false);
}

NVHistoryItem::~NVHistoryItem()
{
    delete m_pUi;
}

bool NVHistoryItem::IsEnabled() const
{
    return m_enabled;
}

bool NVHistoryItem::IsSelected() const
{
    return m_selected;
}

void NVHistoryItem::SetText(const QString& text)
{
    m_pUi->m_pText->setText(text);
}

void NVHistoryItem::SetIcon(const QImage& image)
{
    m_pUi->m_pIcon->setPixmap(QPixmap::fromImage(image, Qt::NoOpaqueDetection));
}

void NVHistoryItem::EnableHoverInteraction(bool on)
{
    QCoreApplication::postEvent(this, new QEvent(on ? HoverOn : HoverOff));
}

void NVHistoryItem::UpdateStyle(bool hover)
{
    // To set a sheet costs ten times what the row costs else, the same one again included.
    const QString sheet = KXResource::GetData(RoleOf(m_selected, m_enabled, hover)).toString();
    if (sheet != styleSheet())
        setStyleSheet(sheet);
    m_pUi->m_pIcon->setEnabled(m_selected || m_enabled);
}

void NVHistoryItem::SetEnabled(bool enabled)
{
    SetState(m_selected, enabled);
}

void NVHistoryItem::SetSelected(bool selected)
{
    SetState(selected, m_enabled);
}

bool NVHistoryItem::event(QEvent* event)
{
    switch (event->type())
    {
    case QEvent::HoverEnter:
        UpdateStyle(true);
        break;
    case QEvent::HoverLeave:
    case QEvent::Hide:
    case QEvent::HideToParent:
        UpdateStyle(false);
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void NVHistoryItem::customEvent(QEvent* event)
{
    if (event->type() != HoverOn && event->type() != HoverOff)
        return;
    setAttribute(Qt::WA_Hover, event->type() == HoverOn);
    UpdateStyle(false);
}

void NVHistoryItem::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
}

void NVHistoryItem::SetState(bool selected, bool enabled)
{
    if (selected == m_selected && enabled == m_enabled)
        return;
    m_selected = selected;
    m_enabled = enabled;
    UpdateStyle(false);
}
