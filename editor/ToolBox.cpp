#include "ToolBox.h"

#include <QActionGroup>
#include <QGridLayout>
#include <QToolButton>

#include "ColorSwatches.h"
#include "Theme.h"
#include "Tool.h"

namespace
{

const int Columns = 2;

} // namespace

ToolBox::ToolBox(const QList<Tool*>& tools, QWidget* parent)
    : QToolBar(parent), m_Tools(tools), m_pGroup(new QActionGroup(this)), m_pSwatches(new ColorSwatches(this))
{
    setObjectName(QStringLiteral("ToolBox"));
    setWindowTitle(tr("Tools"));
    setMovable(false);
    setOrientation(Qt::Vertical);
    for (const Tool* tool : qAsConst(m_Tools))
        AddAction(tool);
    m_pGroup->actions().constFirst()->setChecked(true);
    addWidget(CreateContent());
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

void ToolBox::AddAction(const Tool* tool)
{
    QAction* action = m_pGroup->addAction(tool->GetName());
    action->setCheckable(true);
    action->setShortcut(tool->GetKey());
    action->setToolTip(tr("%1 (%2)").arg(tool->GetName(), tool->GetKey().toString(QKeySequence::NativeText)));
}

// The buttons in two columns, which is as wide as the colours are, and leaves room on a low screen.
QWidget* ToolBox::CreateContent()
{
    auto* content = new QWidget(this);
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(2, 2, 2, 2);
    grid->setSpacing(1);
    const QList<QAction*> actions = m_pGroup->actions();
    for (int i = 0; i < actions.size(); ++i)
    {
        auto* button = new QToolButton(content);
        button->setDefaultAction(actions.at(i));
        button->setIconSize(QSize(24, 24));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        grid->addWidget(button, i / Columns, i % Columns);
    }
    const int rows = grid->rowCount();
    grid->setRowMinimumHeight(rows, 8);
    grid->addWidget(m_pSwatches, rows + 1, 0, 1, Columns, Qt::AlignHCenter);
    return content;
}
