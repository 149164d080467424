#include "NewDocumentDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include "KXCommonComboBox.h"
#include "KXDocumentInterface.h"
#include "NVApplication.h"
#include "NVSpinBox.h"

NewDocumentDialog::NewDocumentDialog(QWidget* parent) : KXDialog(parent)
{
    setWindowTitle(tr("New Picture"));
    m_pWidth = AddSizeBox(QStringLiteral("m_pWidth"));
    m_pHeight = AddSizeBox(QStringLiteral("m_pHeight"));
    m_pWidth->setValue(1600);
    m_pHeight->setValue(1200);
    m_pFill = new KXCommonComboBox(Content());
    m_pFill->addItems({tr("White"), tr("Background colour"), tr("Transparent")});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Content());
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    auto* form = new QFormLayout(Content());
    form->addRow(tr("&Width:"), m_pWidth);
    form->addRow(tr("&Height:"), m_pHeight);
    form->addRow(tr("&Ground:"), m_pFill);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &KXDialog::Accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
    m_pWidth->setFocus();
}

QSize NewDocumentDialog::GetSize() const
{
    return QSize(m_pWidth->value(), m_pHeight->value());
}

QColor NewDocumentDialog::GetFill() const
{
    const QColor fills[] = {Qt::white, NVApplication::GetBackground(), Qt::transparent};
    return fills[qBound(0, m_pFill->currentIndex(), 2)];
}

NVSpinBox* NewDocumentDialog::AddSizeBox(const QString& name)
{
    auto* box = new NVSpinBox(Content());
    box->setObjectName(name);
    box->setRange(1, KXDocumentInterface::MAX_DOC_DIMENSION);
    box->setSuffix(tr(" px"));
    return box;
}
