#include "ToolHintBar.h"

#include <QHBoxLayout>
#include <QLabel>

#include "Theme.h"

ToolHintBar::ToolHintBar(const QString& picture, const QString& hint, QWidget* parent)
    : QWidget(parent), m_picture(picture), m_pPicture(new QLabel(this))
{
    m_pPicture->setFixedSize(40, 40);
    m_pPicture->setAlignment(Qt::AlignCenter);
    auto* text = new QLabel(hint, this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_pPicture);
    row->addWidget(text, 1);
    UpdateTheme();
}

void ToolHintBar::UpdateTheme()
{
    m_pPicture->setPixmap(Theme::Icon(m_picture).pixmap(24, 24));
}
