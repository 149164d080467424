#pragma once

#include <QList>
#include <QToolBar>

class ColorSwatches;
class QAction;
class QActionGroup;
class Tool;

// The bar at the left: one button a tool, in two columns, and the two colours. It makes the tools' actions,
// with their keys.
class ToolBox : public QToolBar
{
    Q_OBJECT

public:
    // The tools are not owned and must outlive the box; the first one is checked.
    explicit ToolBox(const QList<Tool*>& tools, QWidget* parent = nullptr);

    // For the menu, in the order of the tools.
    QList<QAction*> GetToolActions() const;
    // Checks the tool's button and tells.
    void Choose(Tool* tool);

public Q_SLOTS:
    // Loads the pictures again.
    void UpdateTheme();

Q_SIGNALS:
    void ToolChosen(Tool* tool);

private Q_SLOTS:
    void OnTriggered(QAction* action);

private:
    void AddAction(const Tool* tool);
    QWidget* CreateContent();

    QList<Tool*> m_Tools;
    QActionGroup* m_pGroup;
    ColorSwatches* m_pSwatches;
};
