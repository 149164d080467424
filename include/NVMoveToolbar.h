#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_MoveToolBar;

// The option bar of the move tool: whether a frame is shown around what is moved.
class GENERALTOOLSGUI_EXPORT NVMoveToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVMoveToolbar(QWidget* parent);
    ~NVMoveToolbar() override;

    // Off at first.
    bool IsShowFrame() const;
    // Whether a person can switch it: not until the host says so.
    bool IsShowFrameEnabled() const;

public Q_SLOTS:
    // Works on the disabled switch too.
    void ShowFrame(bool show);
    void EnableShowFrame(bool enable);

Q_SIGNALS:
    void ShowFrameChanged(bool show);

private:
    Q_DISABLE_COPY(NVMoveToolbar)

    Ui_MoveToolBar* m_pUi = nullptr;
};
