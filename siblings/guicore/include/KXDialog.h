#pragma once

#include <QPointer>

#include "KXWidget.h"

// A dialog: runs modally with Exec(), or is shown modeless.
//
// Enter presses the push button that has the focus, or else the default button. Escape, the window's close
// button and hide() end the dialog with ResultClosed. The dialog opens centred over its parent, or over the
// screen, and within the screen, unless it was moved before. When it ends, the window that had the focus
// before becomes active again.
class GUICORE_EXPORT KXDialog : public KXWidget
{
    Q_OBJECT

public:
    enum Result
    {
        ResultClosed = -1, // Escape, the window's close button, hide(), or deletion
        ResultRejected = 0, // Reject(), as from a Cancel button
        ResultAccepted = 1 // Accept()
    };
    Q_ENUM(Result)

    // The flags are added to Qt::Dialog.
    explicit KXDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    // Ends a running Exec(), which returns ResultClosed.
    ~KXDialog() override;

    // What the last run ended with: the argument of Done(). ResultClosed before the first.
    int GetResult() const;

    // Shows the dialog and returns what it ended with. Blocks all windows of the application, or only those
    // above it if windowModality() was set to Qt::WindowModal. Returns ResultClosed at once, and changes
    // nothing, while the dialog is running already. With Qt::WA_DeleteOnClose the dialog is deleted when
    // control is back in the event loop.
    int Exec();

    // Ends the dialog if it is visible.
    void setVisible(bool visible) override;

public Q_SLOTS:
    // Done() with ResultAccepted and ResultRejected.
    void Accept();
    void Reject();
    // Hides the dialog and ends Exec() with that result. Of a dialog that isn't open only the signals go out;
    // an Exec() that comes later runs all the same.
    void Done(int result);

Q_SIGNALS:
    // In this order, after the dialog has been hidden. Accepted() goes out for ResultAccepted, Rejected() for
    // ResultRejected and everything below, so that a closed window is a rejected dialog; other results have
    // neither.
    void Finished(int result);
    void Accepted();
    void Rejected();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct Run;

    void CentreOverParent();
    void GiveFocusBack();

    Run* m_pRun = nullptr;
    int m_result = ResultClosed;
    QPointer<QWidget> m_pFocusBefore;
};
