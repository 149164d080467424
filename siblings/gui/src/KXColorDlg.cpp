#include "KXColorDlg.h"

#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace
{

// The toolkit's dialog as a part of another one: the keys that end a dialog go on to that one.
class ColorChooser : public QColorDialog
{
public:
    explicit ColorChooser(QWidget* parent) : QColorDialog(parent)
    {
        setOptions(ShowAlphaChannel | NoButtons | DontUseNativeDialog);
        setWindowFlags(Qt::Widget);
        // A dialog without a place of its own would centre itself.
        setAttribute(Qt::WA_Moved);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

// The field that takes "#rrggbb" and colour names.
QLineEdit* nameField(const QColorDialog* chooser)
{
    const QList<QLineEdit*> fields = chooser->findChildren<QLineEdit*>();
    for (QLineEdit* field : fields)
    {
        if (field->focusProxy() == nullptr && !qobject_cast<QAbstractSpinBox*>(field->parentWidget()))
        {
            return field;
        }
    }
    return nullptr;
}

// Elsewhere a program gets no picture of the screen, and the toolkit picks black.
bool canReadScreen()
{
    const QStringList platforms = {QStringLiteral("xcb"), QStringLiteral("windows"), QStringLiteral("cocoa")};
    return platforms.contains(QGuiApplication::platformName());
}

void hideScreenPicker(const QColorDialog* chooser)
{
    // The toolkit's own text, with its own translation.
    const char* const text = "&Pick Screen Color";
    const QString caption = QCoreApplication::translate("QColorDialog", text);
    const QList<QPushButton*> buttons = chooser->findChildren<QPushButton*>();
    for (QPushButton* button : buttons)
    {
        if (button->text() == caption && !canReadScreen())
        {
            button->hide();
        }
    }
}

} // namespace

KXColorDlg::KXColorDlg(QWidget* parent, Qt::WindowFlags flags) : KXColorDlg(Qt::white, parent, flags) { }

KXColorDlg::KXColorDlg(const QColor& color, QWidget* parent, Qt::WindowFlags flags)
    : KXDialog(parent, flags), m_pColorDlg(new ColorChooser(Content()))
{
    setWindowTitle(tr("Color"));
    InitChooser();
    InitButtons();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(this, &KXDialog::Finished, this, &KXColorDlg::OnFinished);
    SetCurrentColor(color);
}

KXColorDlg::~KXColorDlg() = default;

QColorDialog* KXColorDlg::GetColorDlg() const
{
    return m_pColorDlg;
}

QColor KXColorDlg::CurrentColor() const
{
    return m_pColorDlg->currentColor();
}

QColor KXColorDlg::SelectedColor() const
{
    return m_selectedColor;
}

void KXColorDlg::SetCurrentColor(const QColor& color)
{
    if (!color.isValid() || color.toRgb() == CurrentColor())
    {
        return;
    }
    {
        // The toolkit tells of colour and alpha one after the other.
        const QSignalBlocker quiet(m_pColorDlg);
        m_pColorDlg->setCurrentColor(color.toRgb());
    }
    Q_EMIT m_pColorDlg->currentColorChanged(CurrentColor());
}

void KXColorDlg::showEvent(QShowEvent* event)
{
    KXDialog::showEvent(event);
    if (QLineEdit* field = nameField(m_pColorDlg))
    {
        field->setFocus();
        field->selectAll();
    }
}

void KXColorDlg::OnFinished(int result)
{
    if (result == ResultAccepted)
    {
        m_selectedColor = CurrentColor();
    }
}

void KXColorDlg::InitChooser()
{
    hideScreenPicker(m_pColorDlg);
    // Enter is for the buttons below, not for those of the chooser that nobody went to.
    const QList<QPushButton*> buttons = m_pColorDlg->findChildren<QPushButton*>();
    for (QPushButton* button : buttons)
    {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    const QHash<QByteArray, QString> names = {
        {"QColorPicker", tr("Hue and saturation")},
        {"QColorLuminancePicker", tr("Brightness")},
        {"QColorShowLabel", tr("Chosen color")},
    };
    const QList<QWidget*> children = m_pColorDlg->findChildren<QWidget*>();
    for (QWidget* child : children)
    {
        const QString name = names.value(child->metaObject()->className());
        if (!name.isEmpty())
        {
            child->setAccessibleName(name);
        }
    }
}

void KXColorDlg::InitButtons()
{
    QDialogButtonBox* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Content());
    box->button(QDialogButtonBox::Ok)->setDefault(true);
    QVBoxLayout* column = new QVBoxLayout(Content());
    column->addWidget(m_pColorDlg);
    column->addWidget(box);
    connect(box, &QDialogButtonBox::accepted, this, &KXDialog::Accept);
    connect(box, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
}
