#pragma once

#include <QObject>

#include <functional>

struct FileProgress;
class QLabel;
class QProgressBar;
class QStatusBar;
class QTimer;
class QWidget;

// Runs long work, such as the reading or writing of a file, off the GUI thread and waits for it in an event
// loop of its own.
// After 200 ms it shows progress and a Cancel button in the status bar; until then input of the person waits
// in the queue. One at a time.
class FileTask : public QObject
{
    Q_OBJECT

public:
    using Work = std::function<void(FileProgress*)>;

    // The status bar is not owned and must outlive the task.
    explicit FileTask(QStatusBar* statusBar, QObject* parent = nullptr);
    ~FileTask() override;

    bool IsRunning() const;
    // False, and nothing was done, while another one runs. Otherwise returns when the work has, cancelled or
    // not.
    bool Run(const QString& text, const Work& work);

public Q_SLOTS:
    // Asks the running work to end. Without one nothing happens.
    void Cancel();

Q_SIGNALS:
    // True when the progress is shown, false when it goes: the time in which the window should take no
    // commands.
    void BusyChanged(bool busy);

private Q_SLOTS:
    void OnTick();

private:
    void ShowProgress(const QString& text);
    void HideProgress();

    QStatusBar* m_pStatusBar;
    QWidget* m_pPanel;
    QLabel* m_pLabel;
    QProgressBar* m_pBar;
    QTimer* m_pTick;
    FileProgress* m_pProgress = nullptr;
};
