#pragma once

#include <QFutureWatcher>
#include <QPointer>
#include <QWidget>

#include <memory>

#include "BatchTree.h"
#include "FolderSurvey.h"
#include "KXBatchInputModel.h"

class BatchFilterModel;
class BatchJob;
class BatchJobPanel;
class BatchListPage;
class BatchTreeView;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSettings;
class QTabWidget;
class QTimer;

// The window in which a person collects images and runs a job on all of them.
//
// Before folders are scanned a survey looks through them in the background. Where links lead back, the person
// is asked whether to leave them out.
class BatchWindow : public QWidget
{
    Q_OBJECT

public:
    enum State
    {
        Idle,
        Surveying,
        Scanning, // in a dialog of its own
        Working
    };

    // The settings are not owned and must outlive the window. Sees to it that there is an
    // NVImageFileManager.
    explicit BatchWindow(QSettings* settings, QWidget* parent = nullptr);
    // Cancels what is running and waits.
    ~BatchWindow() override;

    State GetState() const;
    KXBatchInputModel* GetModel();
    BatchJob* GetJob() const;
    // What was passed over, by path.
    QVector<PassedOver> GetPassedOver() const;

    // Files and folders, each as the disk has it. Nothing happens while the window is busy.
    void Add(const QStringList& paths);

public Q_SLOTS:
    void AddFiles();
    void AddFolder();
    // Of the selected rows.
    void RemoveRows();
    // Looks at the selected rows again, or at all, and scans folders that have changed.
    void Refresh();
    // The same, and scans folders whether they have changed or not.
    void Rescan();
    // The job, on all images of the tree.
    void Start();
    void Cancel();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private Q_SLOTS:
    void OnSurveyed();
    void OnTick();
    void OnFilterEdited();
    void OnTreeChanged();
    void OnAdvanced(int done, int total);
    void OnJobFinished();
    void OnSaveList();

private:
    // What the survey is for.
    struct Errand
    {
        QStringList paths;
        bool isRefresh = false;
        bool force = false;
    };
    enum Answer
    {
        LeaveOut,
        ScanAnyway,
        DoNothing
    };

    QWidget* CreateInput();
    QWidget* CreatePages(QSettings* settings);
    void CreateFooter(QBoxLayout* layout);
    void Connect();
    QPushButton* AddButton(QBoxLayout* layout, const QString& text, const QString& tip);
    void RestoreWindow();
    void StoreWindow() const;

    void LookAgain(bool force);
    void Survey(const Errand& errand);
    Answer AskAboutLoops(const FolderSurvey& survey);
    // These return false when they were cancelled.
    bool Scan(const FolderSurvey& survey, Answer answer);
    bool RunRefresh(const FolderSurvey& survey, Answer answer);
    bool ScanWithoutLoops(const FolderSurvey& survey);
    void NotePassedOver(const FolderSurvey& survey, Answer answer, bool isDone);
    void ForgetPassedOver(const QSet<QString>& folders);
    void TellChange(bool isDone, int filesBefore);
    void ShowPassedOver();
    void ShowReport();
    bool AskToEndJob();
    void SetState(State state);
    void UpdateControls();
    void SetStatus(const QString& text);

    QSettings* m_pSettings;
    KXBatchInputModel m_model;
    BatchFilterModel* m_pFilter;
    BatchJob* m_pJob;
    State m_state = Idle;
    QPointer<QWidget> m_pFocusBefore;

    Errand m_errand;
    // What has come of it: the folders that were scanned with all below them, and whether any row of the tree
    // is another.
    QStringList m_scanned;
    bool m_hasChanged = false;
    std::shared_ptr<SurveyProgress> m_pProgress;
    QFutureWatcher<FolderSurvey> m_survey;
    QVector<PassedOver> m_passedOver;

    BatchTreeView* m_pTree;
    QLineEdit* m_pFilterEdit;
    BatchJobPanel* m_pPanel;
    BatchListPage* m_pPassedOverPage;
    BatchListPage* m_pReportPage;
    QTabWidget* m_pTabs;
    QLabel* m_pTotals;
    QLabel* m_pStatus;
    QProgressBar* m_pBar;
    QPushButton* m_pAddFiles = nullptr;
    QPushButton* m_pAddFolder = nullptr;
    QPushButton* m_pRemove = nullptr;
    QPushButton* m_pRefresh = nullptr;
    QPushButton* m_pRescan = nullptr;
    QPushButton* m_pStart = nullptr;
    QPushButton* m_pCancel = nullptr;
    QTimer* m_pTick;
    QTimer* m_pFilterDelay;
};
