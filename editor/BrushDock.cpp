#include "BrushDock.h"

#include "IBrush.h"
#include "KXBrushSettings.h"
#include "NVBrushPanel.h"
#include "NVBrushToolbarWidget.h"
#include "StrokeTool.h"

BrushDock::BrushDock(QWidget* parent)
    : QDockWidget(tr("Brush"), parent), m_pPanel(new NVBrushPanel(this, Qt::WindowFlags()))
{
    setObjectName(QStringLiteral("BrushDock"));
    setWidget(m_pPanel);
    hide();
}

void BrushDock::ShowTool(StrokeTool* tool)
{
    if (m_pBrushes)
        disconnect(m_pBrushes, nullptr, m_pPanel, nullptr);
    m_pBrushes = tool ? tool->GetStrokeBar()->GetBrushes() : nullptr;
    m_pPanel->SetBrush(m_pBrushes ? m_pBrushes->GetCurrentBrush() : nullptr);
    if (!m_pBrushes)
        return;
    connect(m_pBrushes, &KXBrushSettings::CurrentBrushChanged, m_pPanel, &NVBrushPanel::SetBrush);
    connect(m_pBrushes, &KXBrushSettings::BrushParameterChanged, m_pPanel, &NVBrushPanel::SetBrush);
}
