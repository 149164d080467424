#pragma once

#include <QMdiArea>

#include "gui_export.h"

// The area of the main window that holds the documents' views.
class GUI_EXPORT KXMdiArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit KXMdiArea(QWidget* parent = nullptr);
    ~KXMdiArea() override;

    // The top-level window of the application's area, the parent for dialogs. Null while there is no area.
    static QWidget* MainWindow();

protected:
    void changeEvent(QEvent* event) override;

private:
    void UpdateGround();
};
