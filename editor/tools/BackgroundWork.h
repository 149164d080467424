#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

// Work of a tool on another thread, for the GUI thread to wait for or to give up. One piece at a time. When
// this goes, the work is given up: it must hold all that it uses, not refer to it.
class BackgroundWork : public QObject
{
    Q_OBJECT

public:
    // Ends early once the flag is set; its outcome is not asked for then.
    using Work = std::function<void(const std::atomic<bool>& cancelled)>;

    explicit BackgroundWork(QObject* parent = nullptr);
    ~BackgroundWork() override;

    // From Start until Done, or until it was given up.
    bool IsRunning() const;

    // Gives up what is still running.
    void Start(const Work& work);
    // Done does not come any more.
    void Cancel();
    // Waits at most that long, without end below 0. True when the work is done, and Done was emitted; false
    // also when nothing runs.
    bool Wait(int milliseconds = -1);

Q_SIGNALS:
    // The work is done; not emitted from within Start.
    void Done();
    // It has been going on for a while: time to say so.
    void Lasts();

private Q_SLOTS:
    void OnFinished();

private:
    struct State;

    void Complete();

    std::shared_ptr<State> m_pState;
    QFutureWatcher<void> m_watcher;
    QTimer m_patience;
};
