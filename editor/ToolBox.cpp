#include "ToolBox.h"

#include <QActionGroup>

#include "ColorSwatches.h"
#include "Theme.h"
#include "Tool.h"

ToolBox::ToolBox(const QList<Tool*>& tools, QWidget* parent)
    : QToolBar(parent), m_Tools(tools), m_pGroup(new QActionGroup(this)), m_pSwatches(new ColorSwatches(this))
{
    setObjectName(QStringLiteral("ToolBox"));
    setWindowTitle(tr("Tools"));
    setMovable(false);
    setOrientation(Qt::Vertical);
    setIconSize(QSize(24, 24));
    for (const Tool* tool : qAsConst(m_Tools))
    {
        QAction* action = addAction(tool->GetName());
        action->setCheckable(true);
        action->setShortcut(tool->GetKey());
        action->setToolTip(
            tr("%1 (%2)").arg(tool->GetName(), tool->GetKey().toString(QKeySequence::NativeText)));
        m_pGroup->addAction(action);
    }
    m_pGroup->actions().constFirst()->setChecked(true);
    addSeparator();
    addWidget(m_pSwatches);
    connect(m_pGroup, &QActionGroup::triggered, this, &ToolBox::OnTriggered);
    UpdateTheme();
}

QList<QAction*> ToolBox::GetToolActions() const
{
    return m_pGroup->actions();
}

void ToolBox::Choose(Tool* tool)
{
    const int index = m_Tools.indexOf(tool);
    if (index >= 0)
        m_pGroup->actions().at(index)->trigger();
}

void ToolBox::UpdateTheme()
{
    for (int i = 0; i < m_Tools.size(); ++i)
        m_pGroup->actions().at(i)->setIcon(Theme::Icon(m_Tools.at(i)->GetPictureName()));
    m_pSwatches->UpdateTheme();
}

void ToolBox::OnTriggered(QAction* action)
{
    Q_EMIT ToolChosen(m_Tools.at(m_pGroup->actions().indexOf(action)));
}
