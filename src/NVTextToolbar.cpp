#include "NVTextToolbar.h"

#include <QEvent>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QRegExpValidator>

#include "BarPicture_p.h"
#include "KXColorDlg.h"
#include "KXMdiArea.h"
#include "NVWarpTextDialog.h"
#include "OutliveParent_p.h"
#include "ui_TextToolbar.h"

namespace
{

const int Sizes[] = {10, 20, 30, 50, 100, 150, 200, 250, 300};
const int LastSize = 300;

const int BoldBit = 1;
const int ItalicBit = 2;
const int UnderlineBit = 4;

// Whole numbers from 1 to 300 without a leading zero.
QRegExp SizeExpression()
{
    return QRegExp(QStringLiteral("([3][0]{2})|([1-2]\\d{2})|([1-9]\\d{1})|([1-9])"));
}

// The list takes no focus, and its edit leaves the focus to the list: without this nobody could type.
class FocusByClick : public QObject
{
public:
    explicit FocusByClick(QLineEdit* edit) : QObject(edit), m_pEdit(edit) { }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            m_pEdit->setFocus(Qt::MouseFocusReason);
        return false;
    }

private:
    QLineEdit* m_pEdit;
};

QString SizeText(int size)
{
    return QStringLiteral("%1").arg(size);
}

} // namespace

NVTextToolbar::NVTextToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_TextToolbar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:tool-bar-text.png"));
    InitSizeEdit();
    LoadFamilies();
    LoadSizes();
    SetTextColor(m_color);
    ConnectSignals();
    ConnectReturnFocus();
    connect(m_pUi->m_pFontSize->lineEdit(), &QLineEdit::textChanged, this, &NVTextToolbar::OnSizeTextChanged);
    connect(m_pUi->m_pFontSize->lineEdit(), &QLineEdit::editingFinished, this,
            &NVTextToolbar::OnSizeEditFinished);
}

NVTextToolbar::~NVTextToolbar()
{
    delete m_pUi;
}

QString NVTextToolbar::GetFontFamily() const
{
    return m_pUi->m_pFontFamily->currentText();
}

int NVTextToolbar::GetFontSize() const
{
    return m_pUi->m_pFontSize->currentText().toInt();
}

int NVTextToolbar::GetFontStyle() const
{
    return (m_pUi->m_pBold->isChecked() ? BoldBit : 0) | (m_pUi->m_pItalic->isChecked() ? ItalicBit : 0) |
        (m_pUi->m_pUnderline->isChecked() ? UnderlineBit : 0);
}

QColor NVTextToolbar::GetColor() const
{
    return m_color;
}

bool NVTextToolbar::IsAntialiasing() const
{
    return m_pUi->m_pAliasing->isChecked();
}

NVTextDeformation NVTextToolbar::GetDeformation() const
{
    return m_deformation;
}

void NVTextToolbar::SetDeformation(const NVTextDeformation& deformation)
{
    if (deformation == m_deformation)
        return;
    m_deformation = deformation;
    Q_EMIT DeformationChanged();
}

void NVTextToolbar::SetFontFamily(const QString& family)
{
    const int row = m_pUi->m_pFontFamily->findText(family, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row >= 0)
        m_pUi->m_pFontFamily->setCurrentIndex(row);
}

void NVTextToolbar::SetFontSize(int size)
{
    const QString text = SizeText(size);
    const int row = m_pUi->m_pFontSize->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row >= 0)
        m_pUi->m_pFontSize->setCurrentIndex(row);
    else
        m_pUi->m_pFontSize->lineEdit()->setText(text);
}

void NVTextToolbar::SetFontStyle(int mask)
{
    if (mask == GetFontStyle())
        return;
    // The buttons stay connected meanwhile, on purpose: hosts hear up to three passing masks before the last.
    m_pUi->m_pBold->setChecked(mask & BoldBit);
    m_pUi->m_pItalic->setChecked(mask & ItalicBit);
    m_pUi->m_pUnderline->setChecked(mask & UnderlineBit);
    Q_EMIT FontStyleChanged(mask);
}

void NVTextToolbar::SetColor(const QColor& color)
{
    TakeColor(color);
}

void NVTextToolbar::SetAntialiasing(bool on)
{
    m_pUi->m_pAliasing->setChecked(on);
}

void NVTextToolbar::SetCommitVisible(bool visible)
{
    m_pUi->m_pCommit->setVisible(visible);
}

void NVTextToolbar::SetCancelVisible(bool visible)
{
    m_pUi->m_pCancel->setVisible(visible);
}

void NVTextToolbar::SetWarpEnabled(bool enabled)
{
    m_pUi->m_pWarp->setEnabled(enabled);
}

// The list has put a confirmed size at its end. Only the newest of those stays.
void NVTextToolbar::OnSizeEditFinished()
{
    const int last = m_pUi->m_pFontSize->findData(LastSize);
    const int surplus = m_pUi->m_pFontSize->count() - 2 - last;
    for (int i = 0; i < surplus; ++i)
        m_pUi->m_pFontSize->removeItem(last + 1);
}

void NVTextToolbar::OnSizeTextChanged(const QString& text)
{
    if (SizeExpression().exactMatch(text))
        Q_EMIT FontSizeChanged(text.toInt());
}

void NVTextToolbar::OnColor()
{
    const QPointer<NVTextToolbar> self(this);
    KXColorDlg dialog(KXMdiArea::MainWindow(), Qt::WindowFlags());
    OutliveParent(&dialog);
    // Spelled so, on purpose.
    dialog.setWindowTitle(tr("Selecte a text color"));
    dialog.SetCurrentColor(m_color);
    if (dialog.Exec() == KXDialog::ResultAccepted && self)
        TakeColor(dialog.CurrentColor());
}

void NVTextToolbar::OnWarp()
{
    const QPointer<NVTextToolbar> self(this);
    const NVTextDeformation before = m_deformation;
    NVWarpTextDialog dialog(KXMdiArea::MainWindow());
    OutliveParent(&dialog);
    dialog.SetDeformation(m_deformation);
    // Not before, so that the dialog's start tells nothing.
    connect(&dialog, &NVWarpTextDialog::DeformationChanged, this, &NVTextToolbar::OnDeformationChanged);
    const bool accepted = dialog.Exec() == KXDialog::ResultAccepted;
    if (!self || (accepted ? dialog.GetDeformation() : m_deformation) == before)
        return;
    // Whatever was shown meanwhile, the host sees one change from the old value to the new one.
    m_deformation = before;
    Q_EMIT DeformationCorrected();
    if (!self || !accepted)
        return;
    m_deformation = dialog.GetDeformation();
    Q_EMIT DeformationChanged();
}

void NVTextToolbar::OnDeformationChanged()
{
    if (const auto* dialog = qobject_cast<NVWarpTextDialog*>(sender()))
        m_deformation = dialog->GetDeformation();
    Q_EMIT DeformationCorrected();
}

void NVTextToolbar::OnBold()
{
    Q_EMIT FontStyleChanged(GetFontStyle());
}

void NVTextToolbar::OnItalic()
{
    Q_EMIT FontStyleChanged(GetFontStyle());
}

void NVTextToolbar::OnUnderline()
{
    Q_EMIT FontStyleChanged(GetFontStyle());
}

void NVTextToolbar::InitSizeEdit()
{
    QLineEdit* edit = m_pUi->m_pFontSize->lineEdit();
    edit->setValidator(new QRegExpValidator(SizeExpression(), edit));
    // The toolkit would put in the rest of a row while a size is typed, and tell sizes that nobody typed.
    m_pUi->m_pFontSize->setCompleter(nullptr);
    edit->installEventFilter(new FocusByClick(edit));
}

void NVTextToolbar::LoadFamilies()
{
    m_pUi->m_pFontFamily->clear();
    const QStringList families = QFontDatabase().families();
    for (const QString& family : families)
        m_pUi->m_pFontFamily->addItem(family, family);
}

void NVTextToolbar::LoadSizes()
{
    m_pUi->m_pFontSize->clear();
    for (const int size : Sizes)
        m_pUi->m_pFontSize->addItem(SizeText(size), size);
}

void NVTextToolbar::ConnectSignals()
{
    connect(m_pUi->m_pBold, &QToolButton::toggled, this, &NVTextToolbar::OnBold);
    connect(m_pUi->m_pItalic, &QToolButton::toggled, this, &NVTextToolbar::OnItalic);
    connect(m_pUi->m_pUnderline, &QToolButton::toggled, this, &NVTextToolbar::OnUnderline);
    connect(m_pUi->m_pColor, &QPushButton::clicked, this, &NVTextToolbar::OnColor);
    connect(m_pUi->m_pWarp, &QPushButton::clicked, this, &NVTextToolbar::OnWarp);
    connect(m_pUi->m_pCommit, &QPushButton::clicked, this, &NVTextToolbar::Commit);
    connect(m_pUi->m_pCancel, &QPushButton::clicked, this, &NVTextToolbar::Cancel);
    connect(m_pUi->m_pFontFamily, &QComboBox::currentTextChanged, this, &NVTextToolbar::FontFamilyChanged);
}

void NVTextToolbar::ConnectReturnFocus()
{
    connect(m_pUi->m_pAliasing, &QCheckBox::clicked, this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pBold, &QToolButton::clicked, this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pItalic, &QToolButton::clicked, this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pUnderline, &QToolButton::clicked, this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pFontFamily, qOverload<int>(&QComboBox::activated), this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pFontSize, qOverload<int>(&QComboBox::activated), this, &NVTextToolbar::ReturnFocus);
    connect(m_pUi->m_pFontSize->lineEdit(), &QLineEdit::editingFinished, this, &NVTextToolbar::ReturnFocus);
}

// A picture of the colour on the button.
void NVTextToolbar::SetTextColor(const QColor& color)
{
    QPixmap picture(m_pUi->m_pColor->iconSize());
    picture.fill(color);
    m_pUi->m_pColor->setIcon(picture);
}

void NVTextToolbar::TakeColor(const QColor& color)
{
    SetTextColor(color);
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT ColorChanged(m_color);
}
