#include "PresetNameDialog_p.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "BrushPresetView_p.h"

PresetNameDialog::PresetNameDialog(const QString& title, const QString& name, bool ownName,
                                   const BrushPresetModel* presets, QWidget* parent)
    : KXDialog(parent),
      m_pPresets(presets),
      m_ownName(ownName ? name : QString()),
      m_pName(new QLineEdit(name, Content())),
      m_pHint(new QLabel(Content())),
      m_pOk(nullptr)
{
    setWindowTitle(title);
    QLabel* const label = new QLabel(tr("&Name:"), Content());
    label->setBuddy(m_pName);
    m_pName->setMaxLength(60);
    m_pName->setMinimumWidth(260);
    m_pName->selectAll();
    QDialogButtonBox* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Content());
    m_pOk = buttons->button(QDialogButtonBox::Ok);
    m_pOk->setDefault(true);

    QVBoxLayout* const layout = new QVBoxLayout(Content());
    layout->addWidget(label);
    layout->addWidget(m_pName);
    layout->addWidget(m_pHint);
    layout->addWidget(buttons);
    m_pName->setFocus();

    connect(m_pName, &QLineEdit::textChanged, this, &PresetNameDialog::OnTextChanged);
    connect(buttons, &QDialogButtonBox::accepted, this, &KXDialog::Accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
    OnTextChanged();
}

QString PresetNameDialog::GetName() const
{
    return m_pName->text().trimmed();
}

void PresetNameDialog::OnTextChanged()
{
    const QString name = GetName();
    const bool taken = name != m_ownName && m_pPresets->HasName(name);
    m_pHint->setText(taken ? tr("There is a preset of this name already.") : QString());
    m_pOk->setEnabled(!name.isEmpty() && !taken);
}
