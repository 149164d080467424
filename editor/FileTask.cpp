#include "FileTask.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QtConcurrent>

#include "WatchedDevice.h"

namespace
{

const int PatienceMs = 200;
const int TickMs = 100;

} // namespace

FileTask::FileTask(QStatusBar* statusBar, QObject* parent)
    : QObject(parent),
      m_pStatusBar(statusBar),
      m_pPanel(new QWidget(statusBar)),
      m_pLabel(new QLabel(m_pPanel)),
      m_pBar(new QProgressBar(m_pPanel)),
      m_pTick(new QTimer(this))
{
    auto* cancel = new QPushButton(tr("Cancel"), m_pPanel);
    cancel->setFocusPolicy(Qt::TabFocus);
    m_pLabel->setTextFormat(Qt::PlainText);
    m_pBar->setFixedWidth(160);
    m_pBar->setAccessibleName(tr("Progress"));
    auto* layout = new QHBoxLayout(m_pPanel);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->addWidget(m_pLabel);
    layout->addWidget(m_pBar);
    layout->addWidget(cancel);
    m_pPanel->hide();
    m_pTick->setInterval(TickMs);
    connect(m_pTick, &QTimer::timeout, this, &FileTask::OnTick);
    connect(cancel, &QPushButton::clicked, this, &FileTask::Cancel);
}

FileTask::~FileTask() = default;

bool FileTask::IsRunning() const
{
    return m_pProgress;
}

bool FileTask::Run(const QString& text, const Work& work)
{
    if (m_pProgress)
        return false;
    FileProgress progress;
    m_pProgress = &progress;
    QEventLoop loop;
    QFutureWatcher<void> watcher;
    connect(&watcher, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run([&work, &progress] { work(&progress); }));
    QTimer::singleShot(PatienceMs, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!watcher.isFinished())
    {
        ShowProgress(text);
        while (!watcher.isFinished())
            loop.exec();
        HideProgress();
    }
    m_pProgress = nullptr;
    return true;
}

void FileTask::Cancel()
{
    if (m_pProgress)
        m_pProgress->cancelled = true;
}

void FileTask::OnTick()
{
    const int percent = m_pProgress ? m_pProgress->percent.load() : -1;
    m_pBar->setRange(0, percent < 0 ? 0 : 100);
    m_pBar->setValue(percent);
}

void FileTask::ShowProgress(const QString& text)
{
    m_pLabel->setText(text);
    OnTick();
    m_pTick->start();
    m_pStatusBar->clearMessage();
    m_pStatusBar->insertWidget(0, m_pPanel);
    m_pPanel->show();
    Q_EMIT BusyChanged(true);
}

void FileTask::HideProgress()
{
    m_pTick->stop();
    m_pStatusBar->removeWidget(m_pPanel);
    Q_EMIT BusyChanged(false);
}
