#include "KXMessageBox.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QWindow>

namespace
{

// Wide enough for most messages in two or three lines.
const int TextWidthInCharacters = 60;

QStyle::StandardPixmap PictureOf(KXMessageBox::Icon icon)
{
    switch (icon)
    {
    case KXMessageBox::Error:
        return QStyle::SP_MessageBoxCritical;
    case KXMessageBox::Warning:
        return QStyle::SP_MessageBoxWarning;
    case KXMessageBox::Question:
        return QStyle::SP_MessageBoxQuestion;
    case KXMessageBox::Information:
    case KXMessageBox::NoIcon:
        break;
    }
    return QStyle::SP_MessageBoxInformation;
}

} // namespace

KXMessageBox::KXMessageBox(QWidget* parent, Qt::WindowFlags flags)
    : KXDialog(parent, flags),
      m_pIconLabel(new QLabel(Content())),
      m_pTextLabel(new QLabel(Content())),
      m_pButtonBox(new QDialogButtonBox(Content()))
{
    m_pTextLabel->setTextFormat(Qt::PlainText);
    m_pTextLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_pTextLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_pTextLabel->setWordWrap(true);
    m_pIconLabel->hide();

    QGridLayout* layout = new QGridLayout(Content());
    layout->setHorizontalSpacing(2 * layout->horizontalSpacing());
    layout->setVerticalSpacing(2 * layout->verticalSpacing());
    layout->addWidget(m_pIconLabel, 0, 0, Qt::AlignTop);
    layout->addWidget(m_pTextLabel, 0, 1);
    layout->addWidget(m_pButtonBox, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(0, 1);

    connect(m_pButtonBox, &QDialogButtonBox::clicked, this, &KXMessageBox::OnClicked);
}

KXMessageBox::~KXMessageBox() = default;

QString KXMessageBox::GetText() const
{
    return m_pTextLabel->text();
}

KXMessageBox::Icon KXMessageBox::GetIcon() const
{
    return m_icon;
}

KXMessageBox::StandardButton KXMessageBox::GetDefaultButton() const
{
    const QList<QAbstractButton*> buttons = m_pButtonBox->buttons();
    for (QAbstractButton* button : buttons)
    {
        const QPushButton* pushButton = qobject_cast<QPushButton*>(button);
        if (pushButton && pushButton->isDefault())
        {
            return static_cast<StandardButton>(m_pButtonBox->standardButton(button));
        }
    }
    return NoButton;
}

void KXMessageBox::AddButton(StandardButton button)
{
    const auto standard = static_cast<QDialogButtonBox::StandardButton>(button);
    if (button == NoButton || m_pButtonBox->button(standard))
    {
        return;
    }
    if (const QPushButton* added = m_pButtonBox->addButton(standard))
    {
        SetButtonText(button, added->text());
    }
}

void KXMessageBox::SetButtonText(StandardButton button, const QString& text)
{
    if (QPushButton* added = m_pButtonBox->button(static_cast<QDialogButtonBox::StandardButton>(button)))
    {
        QString name = text;
        added->setText(text);
        added->setAccessibleName(name.remove(QLatin1Char('&')));
    }
}

void KXMessageBox::SetDefaultButton(StandardButton button)
{
    if (QPushButton* chosen = m_pButtonBox->button(static_cast<QDialogButtonBox::StandardButton>(button)))
    {
        const QList<QPushButton*> buttons = m_pButtonBox->findChildren<QPushButton*>();
        for (QPushButton* other : buttons)
        {
            other->setDefault(other == chosen);
        }
        chosen->setFocus();
    }
}

void KXMessageBox::SetIcon(Icon icon)
{
    if (icon == m_icon)
    {
        return;
    }
    m_icon = icon;
    UpdateIcon();
}

void KXMessageBox::SetText(const QString& text)
{
    m_pTextLabel->setText(text);
    const QFontMetrics metrics = m_pTextLabel->fontMetrics();
    const int widest = TextWidthInCharacters * metrics.averageCharWidth();
    const int natural = metrics.size(Qt::TextExpandTabs, text).width() + 1;
    m_pTextLabel->setMinimumWidth(qMin(widest, natural));
    setAccessibleDescription(text);
}

void KXMessageBox::changeEvent(QEvent* event)
{
    KXDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
    {
        UpdateIcon();
    }
}

void KXMessageBox::showEvent(QShowEvent* event)
{
    UpdateIcon();
    KXDialog::showEvent(event);
}

void KXMessageBox::OnClicked(QAbstractButton* button)
{
    Done(m_pButtonBox->standardButton(button));
}

void KXMessageBox::UpdateIcon()
{
    m_pIconLabel->setVisible(m_icon != NoIcon);
    const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    const QIcon picture = style()->standardIcon(PictureOf(m_icon), nullptr, this);
    m_pIconLabel->setPixmap(m_icon == NoIcon ? QPixmap() : picture.pixmap(windowHandle(), QSize(side, side)));
}
