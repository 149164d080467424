#include "NVMoveToolbar.h"

#include "BarPicture_p.h"
#include "ui_MoveToolBar.h"

NVMoveToolbar::NVMoveToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_MoveToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:move_tool.png"));
    connect(m_pUi->m_pShowFrame, &QCheckBox::toggled, this, &NVMoveToolbar::ShowFrameChanged);
}

NVMoveToolbar::~NVMoveToolbar()
{
    delete m_pUi;
}

bool NVMoveToolbar::IsShowFrame() const
{
    return m_pUi->m_pShowFrame->isChecked();
}

bool NVMoveToolbar::IsShowFrameEnabled() const
{
    return m_pUi->m_pShowFrame->isEnabled();
}

void NVMoveToolbar::ShowFrame(bool show)
{
    m_pUi->m_pShowFrame->setChecked(show);
}

void NVMoveToolbar::EnableShowFrame(bool enable)
{
    m_pUi->m_pShowFrame->setEnabled(enable);
}
