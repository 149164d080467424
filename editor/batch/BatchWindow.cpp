#include "BatchWindow.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>

#include "BatchFilterModel.h"
#include "BatchJob.h"
#include "BatchJobPanel.h"
#include "BatchListPage.h"
#include "BatchTreeView.h"
#include "CountText.h"
#include "DocumentFile.h"
#include "DroppedFiles.h"
#include "KXMessageBox.h"
#include "NVImageFileManager.h"

using Model = KXBatchInputModel;

namespace
{

const QLatin1String GeometryKey("batch/geometry");
const QLatin1String InputFolderKey("batch/inputFolder");

const int TickMs = 100;
const int FilterDelayMs = 150;

QStringList RowOf(const PassedOver& entry)
{
    return {PlaceText(entry.path), ReasonText(entry)};
}

QStringList RowOf(const BatchOutcome& outcome)
{
    const bool isDone = outcome.status == BatchOutcome::Done;
    return {StatusText(outcome.status), PlaceText(outcome.source),
            isDone ? PlaceText(outcome.target) : outcome.reason};
}

} // namespace

BatchWindow::BatchWindow(QSettings* settings, QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_pSettings(settings),
      m_pFilter(new BatchFilterModel(&m_model, this)),
      m_pJob(new BatchJob(this)),
      m_pTree(nullptr),
      m_pTick(new QTimer(this)),
      m_pFilterDelay(new QTimer(this))
{
    if (!NVImageFileManager::GetInstance())
        new NVImageFileManager(this);
    setWindowTitle(tr("Batch"));
    setAcceptDrops(true);
    auto* splitter = new QSplitter(this);
    splitter->addWidget(CreateInput());
    splitter->addWidget(CreatePages(settings));
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setSizes({650, 520});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    CreateFooter(layout);
    Connect();
    ShowPassedOver();
    ShowReport();
    OnTreeChanged();
    SetState(Idle);
    SetStatus(tr("Add files and folders, or drop them here."));
    m_pAddFiles->setFocus();
    RestoreWindow();
}

BatchWindow::~BatchWindow()
{
    if (m_pProgress)
        m_pProgress->cancelled = true;
    m_survey.waitForFinished();
    // The view goes before the models that it shows.
    delete m_pTree;
    delete m_pFilter;
}

BatchWindow::State BatchWindow::GetState() const
{
    return m_state;
}

Model* BatchWindow::GetModel()
{
    return &m_model;
}

BatchJob* BatchWindow::GetJob() const
{
    return m_pJob;
}

QVector<PassedOver> BatchWindow::GetPassedOver() const
{
    return m_passedOver;
}

void BatchWindow::AddFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(
        this, tr("Add Files"), m_pSettings->value(InputFolderKey, QDir::homePath()).toString(),
        OpenNameFilters());
    if (files.isEmpty())
        return;
    m_pSettings->setValue(InputFolderKey, QFileInfo(files.constFirst()).absolutePath());
    Add(files);
}

void BatchWindow::AddFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(
        this, tr("Add Folder"), m_pSettings->value(InputFolderKey, QDir::homePath()).toString());
    if (folder.isEmpty())
        return;
    m_pSettings->setValue(InputFolderKey, folder);
    Add({folder});
}

void BatchWindow::RemoveRows()
{
    if (m_state != Idle)
        return;
    const QModelIndexList rows = m_pFilter->SourceRows(m_pTree->selectionModel()->selectedRows());
    if (rows.isEmpty())
        return;
    QSet<QString> paths;
    for (const QModelIndex& row : rows)
        paths.insert(row.data(Model::NodePathRole).toString());
    const int before = m_model.GetFileCount();
    RemoveIndexes(&m_model, rows);
    ForgetPassedOver(paths);
    ShowPassedOver();
    SetStatus(CountText(before - m_model.GetFileCount(), tr("Took 1 image off the list."),
                        tr("Took %1 images off the list.")));
}

void BatchWindow::Start()
{
    const OutputRule rule = m_pPanel->GetRule();
    if (m_state != Idle || m_model.GetFileCount() == 0 || rule.folder.isEmpty())
        return;
    m_pPanel->StoreValues();
    SetState(Working);
    OnAdvanced(0, m_model.GetFileCount());
    m_pJob->Start(ListInputs(m_model), m_pPanel->GetChange(), rule);
}

void BatchWindow::Cancel()
{
    if (m_state == Surveying)
        m_pProgress->cancelled = true;
    else if (m_state == Working)
        m_pJob->Cancel();
}

void BatchWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_state == Scanning || (m_state == Working && !AskToEndJob()))
        return;
    Cancel();
    StoreWindow();
    event->accept();
}

void BatchWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (m_state == Idle && !DroppedPaths(*event).isEmpty())
        AcceptAsCopy(event);
}

void BatchWindow::dragMoveEvent(QDragMoveEvent* event)
{
    AcceptAsCopy(event);
}

void BatchWindow::dropEvent(QDropEvent* event)
{
    AcceptAsCopy(event);
    // The program that the files come from does not wait for a question, too.
    const QStringList paths = DroppedPaths(*event);
    QMetaObject::invokeMethod(
        this, [this, paths] { Add(paths); }, Qt::QueuedConnection);
}

void BatchWindow::OnFilterEdited()
{
    m_pFilter->SetText(m_pFilterEdit->text().trimmed());
}

void BatchWindow::OnTreeChanged()
{
    const int images = m_model.GetFileCount();
    QString text = CountText(images, tr("1 image"), tr("%1 images")) + QLatin1String(", ") +
        CountText(CountFolders(m_model), tr("1 folder"), tr("%1 folders"));
    if (!m_pFilter->GetText().isEmpty())
        text += QLatin1String(", ") + tr("%1 shown").arg(QLocale().toString(m_pFilter->GetFileCount()));
    m_pTotals->setText(text);
    UpdateControls();
}

void BatchWindow::OnAdvanced(int done, int total)
{
    m_pBar->setRange(0, total);
    m_pBar->setValue(done);
    SetStatus(tr("%1 of %2 images are done.").arg(QLocale().toString(done), QLocale().toString(total)));
}

void BatchWindow::OnJobFinished()
{
    SetState(Idle);
    ShowReport();
    SetStatus(SummaryText(m_pJob->GetReport()));
    m_pTabs->setCurrentWidget(m_pReportPage);
}

void BatchWindow::OnSaveList()
{
    const auto* page = qobject_cast<BatchListPage*>(sender());
    QFileDialog dialog(this, tr("Save As"), m_pSettings->value(InputFolderKey, QDir::homePath()).toString());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(tr("Text (*.txt)"));
    dialog.setDefaultSuffix(QStringLiteral("txt"));
    dialog.selectFile(page == m_pReportPage ? tr("report.txt") : tr("left-out.txt"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().constFirst();
    QString error;
    if (page->SaveText(path, &error))
        SetStatus(tr("Saved %1.").arg(QDir::toNativeSeparators(path)));
    else
        SetStatus(tr("\"%1\" could not be saved: %2").arg(QDir::toNativeSeparators(path), error));
}

QWidget* BatchWindow::CreateInput()
{
    auto* input = new QWidget(this);
    auto* buttons = new QHBoxLayout;
    m_pAddFiles = AddButton(buttons, tr("Add &Files..."), tr("Add images"));
    m_pAddFolder = AddButton(buttons, tr("A&dd Folder..."), tr("Add a folder with all that is below it"));
    m_pRemove =
        AddButton(buttons, tr("&Remove"), tr("Take the selected rows off the list; no file is touched"));
    m_pRefresh =
        AddButton(buttons, tr("Refres&h"),
                  tr("Look at the selected rows again, or at all, and scan folders that have changed"));
    m_pRescan = AddButton(buttons, tr("Resca&n"),
                          tr("Look at the selected rows again, or at all, and scan all their folders"));
    buttons->addStretch();
    m_pFilterEdit = new QLineEdit(input);
    m_pFilterEdit->setObjectName(QStringLiteral("m_pFilter"));
    m_pFilterEdit->setClearButtonEnabled(true);
    // A file that is dropped on it is for the window, and would be a text here.
    m_pFilterEdit->setAcceptDrops(false);
    m_pFilterEdit->setPlaceholderText(tr("Part of a name"));
    auto* label = new QLabel(tr("F&ilter:"), input);
    label->setBuddy(m_pFilterEdit);
    auto* filter = new QHBoxLayout;
    filter->addWidget(label);
    filter->addWidget(m_pFilterEdit);
    m_pTree = new BatchTreeView(m_pFilter, input);
    m_pTotals = new QLabel(input);
    m_pTotals->setObjectName(QStringLiteral("m_pTotals"));
    auto* layout = new QVBoxLayout(input);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(buttons);
    layout->addLayout(filter);
    layout->addWidget(m_pTree);
    layout->addWidget(m_pTotals);
    return input;
}

QWidget* BatchWindow::CreatePages(QSettings* settings)
{
    m_pTabs = new QTabWidget(this);
    m_pTabs->setAccessibleName(tr("Job and lists"));
    m_pPanel = new BatchJobPanel(settings, m_pTabs);
    m_pPassedOverPage = new BatchListPage({tr("What"), tr("Why")}, m_pTabs);
    m_pReportPage = new BatchListPage({tr("Result"), tr("Image"), tr("Written to, or why not")}, m_pTabs);
    m_pTabs->addTab(m_pPanel, tr("&Job"));
    m_pTabs->addTab(m_pPassedOverPage, QString());
    m_pTabs->addTab(m_pReportPage, tr("Repor&t"));
    return m_pTabs;
}

void BatchWindow::CreateFooter(QBoxLayout* layout)
{
    m_pStatus = new QLabel(this);
    m_pStatus->setObjectName(QStringLiteral("m_pStatus"));
    m_pStatus->setTextFormat(Qt::PlainText);
    m_pStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_pBar = new QProgressBar(this);
    m_pBar->setAccessibleName(tr("Progress"));
    m_pBar->setFixedWidth(200);
    auto* footer = new QHBoxLayout;
    footer->addWidget(m_pStatus, 1);
    footer->addWidget(m_pBar);
    m_pCancel = AddButton(footer, tr("C&ancel"), tr("End what is running"));
    m_pStart = AddButton(footer, tr("&Start"), tr("Run the job on all images of the list"));
    layout->addLayout(footer);
}

void BatchWindow::Connect()
{
    connect(m_pAddFiles, &QPushButton::clicked, this, &BatchWindow::AddFiles);
    connect(m_pAddFolder, &QPushButton::clicked, this, &BatchWindow::AddFolder);
    connect(m_pRemove, &QPushButton::clicked, this, &BatchWindow::RemoveRows);
    connect(m_pRefresh, &QPushButton::clicked, this, &BatchWindow::Refresh);
    connect(m_pRescan, &QPushButton::clicked, this, &BatchWindow::Rescan);
    connect(m_pStart, &QPushButton::clicked, this, &BatchWindow::Start);
    connect(m_pCancel, &QPushButton::clicked, this, &BatchWindow::Cancel);
    connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this, &BatchWindow::Refresh);
    connect(m_pTree, &BatchTreeView::RemoveAsked, this, &BatchWindow::RemoveRows);
    m_pFilterDelay->setSingleShot(true);
    m_pFilterDelay->setInterval(FilterDelayMs);
    connect(m_pFilterEdit, &QLineEdit::textChanged, m_pFilterDelay, qOverload<>(&QTimer::start));
    connect(m_pFilterDelay, &QTimer::timeout, this, &BatchWindow::OnFilterEdited);
    connect(m_pFilter, &BatchFilterModel::Filtered, this, &BatchWindow::OnTreeChanged);
    m_pTick->setInterval(TickMs);
    connect(m_pTick, &QTimer::timeout, this, &BatchWindow::OnTick);
    connect(&m_survey, &QFutureWatcherBase::finished, this, &BatchWindow::OnSurveyed);
    connect(m_pPanel, &BatchJobPanel::FolderChanged, this, &BatchWindow::UpdateControls);
    connect(m_pJob, &BatchJob::Advanced, this, &BatchWindow::OnAdvanced);
    connect(m_pJob, &BatchJob::Finished, this, &BatchWindow::OnJobFinished);
    connect(m_pPassedOverPage, &BatchListPage::SaveAsked, this, &BatchWindow::OnSaveList);
    connect(m_pReportPage, &BatchListPage::SaveAsked, this, &BatchWindow::OnSaveList);
}

QPushButton* BatchWindow::AddButton(QBoxLayout* layout, const QString& text, const QString& tip)
{
    auto* button = new QPushButton(text, this);
    button->setToolTip(tip);
    layout->addWidget(button);
    return button;
}

void BatchWindow::RestoreWindow()
{
    if (!restoreGeometry(m_pSettings->value(GeometryKey).toByteArray()))
        resize(1200, 720);
}

void BatchWindow::StoreWindow() const
{
    m_pSettings->setValue(GeometryKey, saveGeometry());
    m_pPanel->StoreValues();
}

void BatchWindow::ShowPassedOver()
{
    const int count = m_passedOver.size();
    BatchListPage::Content content{tr("The scan has left out nothing."), count, nullptr, nullptr};
    if (count > 0)
    {
        content.summary = CountText(count, tr("The scan has left out something in 1 place."),
                                    tr("The scan has left out something in %1 places."));
        content.row = [entries = m_passedOver](int row) { return RowOf(entries.at(row)); };
        content.text = [entries = m_passedOver] { return PassedOverText(entries); };
    }
    m_pPassedOverPage->SetContent(content);
    m_pTabs->setTabText(1, count == 0 ? tr("&Left Out") : tr("&Left Out (%L1)").arg(count));
}

void BatchWindow::ShowReport()
{
    const BatchReport& report = m_pJob->GetReport();
    BatchListPage::Content content{tr("No job has run yet."), report.outcomes.size(), nullptr, nullptr};
    if (content.count > 0 || !report.error.isEmpty())
    {
        content.summary = SummaryText(report);
        content.row = [outcomes = WorstFirst(report.outcomes)](int row) { return RowOf(outcomes.at(row)); };
        content.text = [report] { return ReportText(report); };
    }
    m_pReportPage->SetContent(content);
}

bool BatchWindow::AskToEndJob()
{
    KXMessageBox box(this);
    box.setWindowTitle(tr("Batch"));
    box.SetIcon(KXMessageBox::Question);
    box.SetText(tr("The job is still running.\n\nEnd it? What is done stays."));
    box.AddButton(KXMessageBox::Yes);
    box.AddButton(KXMessageBox::No);
    box.SetDefaultButton(KXMessageBox::No);
    return box.Exec() == KXMessageBox::Yes;
}

void BatchWindow::SetState(State state)
{
    // The keyboard stays where it was while the controls are off, and goes to Cancel if there is something to
    // be cancelled.
    const bool returns = state == Idle && (m_state == Scanning || focusWidget() == m_pCancel);
    if (m_state == Idle && state != Idle)
        m_pFocusBefore = focusWidget();
    m_state = state;
    UpdateControls();
    if (m_pCancel->isEnabled())
        m_pCancel->setFocus();
    else if (returns && m_pFocusBefore)
        m_pFocusBefore->setFocus();
    if (state == Surveying)
    {
        m_pBar->setRange(0, 0);
        m_pTick->start();
        OnTick();
    }
    else
        m_pTick->stop();
}

void BatchWindow::UpdateControls()
{
    const bool isIdle = m_state == Idle;
    const bool hasRows = m_model.rowCount() > 0;
    for (QWidget* widget : {static_cast<QWidget*>(m_pAddFiles), static_cast<QWidget*>(m_pAddFolder),
                            static_cast<QWidget*>(m_pPanel)})
        widget->setEnabled(isIdle);
    for (QWidget* widget : {m_pRemove, m_pRefresh, m_pRescan})
        widget->setEnabled(isIdle && hasRows);
    const bool hasFolder = !m_pPanel->GetRule().folder.isEmpty();
    m_pStart->setEnabled(isIdle && m_model.GetFileCount() > 0 && hasFolder);
    const bool isBusy = m_state == Surveying || m_state == Working;
    m_pCancel->setEnabled(isBusy);
    m_pBar->setVisible(isBusy);
}

void BatchWindow::SetStatus(const QString& text)
{
    m_pStatus->setText(OneLine(text));
    m_pStatus->setAccessibleName(text);
}
