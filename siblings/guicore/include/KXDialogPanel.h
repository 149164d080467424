#pragma once

#include "KXPanel.h"

// A panel that behaves as a modeless dialog: it is accepted or rejected, and hides itself then.
//
// Enter presses the push button that has the focus, or else the default button; Escape rejects, and so does
// closing the window or the dock widget that holds the panel. A mere hide(), or another tab in front, ends
// nothing.
class GUICORE_EXPORT KXDialogPanel : public KXPanel
{
    Q_OBJECT

public:
    explicit KXDialogPanel(QWidget* parent = nullptr, TitlePosition position = TitleTop,
                           Qt::WindowFlags flags = Qt::WindowFlags());
    ~KXDialogPanel() override;

public Q_SLOTS:
    // Hide the panel, together with its dock widget if there is one, and then emit.
    void Accept();
    void Reject();

Q_SIGNALS:
    void Accepted();
    void Rejected();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Leave();

    QObject* m_pDockWatcher;
};
