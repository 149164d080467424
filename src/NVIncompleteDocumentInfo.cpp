#include "NVIncompleteDocumentInfo.h"

#include <QPushButton>
#include <QSignalMapper>

#include "NVStringHelper.h"
#include "ui_IncompleteDocumentInfo.h"

NVIncompleteDocumentInfo::NVIncompleteDocumentInfo(QWidget* parent)
    : KXDialog(parent), m_pUi(new Ui_IncompleteDocumentInfo)
{
    m_pUi->setupUi(Content());
    m_pUi->m_pIcon->setPixmap(
        QPixmap(NVStringHelper::DPIAdjustImageName(QStringLiteral("theme:criticalicon.png"))));
    m_pMapper = new QSignalMapper(this);
    connect(m_pMapper, &QSignalMapper::mappedInt, this, &NVIncompleteDocumentInfo::Done);
    // What a button means is its number, whatever its role: "Cancel" goes on without saving.
    MapButton(m_pUi->m_pButtonBox->button(QDialogButtonBox::Save), 1);
    MapButton(m_pUi->m_pButtonBox->button(QDialogButtonBox::SaveAll), 2);
    MapButton(m_pUi->m_pButtonBox->button(QDialogButtonBox::Cancel), 0);
    m_pUi->m_pButtonBox->button(QDialogButtonBox::SaveAll)->setText(tr("Save as"));
    m_pUi->m_pButtonBox->button(QDialogButtonBox::Cancel)->setText(tr("Don't save"));
}

NVIncompleteDocumentInfo::~NVIncompleteDocumentInfo()
{
    delete m_pUi;
}

bool NVIncompleteDocumentInfo::IsDontAsk() const
{
    return m_pUi->m_pDontAsk->isChecked();
}

void NVIncompleteDocumentInfo::MapButton(QPushButton* button, int result)
{
    connect(button, &QPushButton::clicked, m_pMapper, qOverload<>(&QSignalMapper::map));
    m_pMapper->setMapping(button, result);
}
