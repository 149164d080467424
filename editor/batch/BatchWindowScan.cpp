// What the batch window does with folders: the survey, the question about links, the scan and the refresh.

#include "BatchWindow.h"

#include <QDir>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QtConcurrent>

#include <algorithm>
#include <iterator>

#include "BatchFilterModel.h"
#include "BatchRefresh.h"
#include "BatchReport.h"
#include "BatchTreeView.h"
#include "CountText.h"
#include "KXAddToBatchDialog.h"
#include "KXMessageBox.h"
#include "Thumbnails.h"

using Model = KXBatchInputModel;

namespace
{

const int LoopsShown = 5;
// Folders that are opened when they have been added.
const int PathsOpened = 3;

} // namespace

void BatchWindow::Add(const QStringList& paths)
{
    QStringList clean;
    for (const QString& path : paths)
        clean += QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (!clean.isEmpty())
        Survey({clean, false, false});
}

void BatchWindow::Refresh()
{
    LookAgain(false);
}

void BatchWindow::Rescan()
{
    LookAgain(true);
}

void BatchWindow::OnSurveyed()
{
    const FolderSurvey survey = m_survey.result();
    const bool isCancelled = m_pProgress->cancelled;
    SetState(Idle);
    if (isCancelled)
    {
        SetStatus(tr("Cancelled. Nothing was changed."));
        return;
    }
    SetState(Scanning);
    SetStatus(tr("Scanning..."));
    const int before = m_model.GetFileCount();
    const Answer answer = survey.loops.isEmpty() ? ScanAnyway : AskAboutLoops(survey);
    const bool isDone =
        answer != DoNothing && (m_errand.isRefresh ? RunRefresh(survey, answer) : Scan(survey, answer));
    if (isDone || m_hasChanged)
        NotePassedOver(survey, answer, isDone);
    const QStringList opened = m_errand.paths.mid(0, PathsOpened);
    for (const QString& path : opened)
        m_pTree->expand(m_pFilter->mapFromSource(m_model.FindPath(path)));
    m_pTree->GetThumbnails()->Clear();
    SetState(Idle);
    TellChange(isDone, before);
}

void BatchWindow::OnTick()
{
    SetStatus(CountText(m_pProgress->folders, tr("Looking through 1 folder..."),
                        tr("Looking through %1 folders...")));
}

void BatchWindow::LookAgain(bool force)
{
    if (m_state != Idle)
        return;
    QModelIndexList rows;
    const QModelIndexList selected = m_pTree->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(m_pFilter->mapToSource(index));
    for (int row = 0; selected.isEmpty() && row < m_model.rowCount(); ++row)
        rows.append(m_model.index(row, 0));
    Errand errand{{}, true, force};
    rows = TopMost(rows);
    for (const QModelIndex& index : qAsConst(rows))
        errand.paths += index.data(Model::NodePathRole).toString();
    if (!errand.paths.isEmpty())
        Survey(errand);
}

void BatchWindow::Survey(const Errand& errand)
{
    if (m_state != Idle)
        return;
    m_errand = errand;
    m_scanned.clear();
    m_hasChanged = false;
    m_pProgress = std::make_shared<SurveyProgress>();
    SetState(Surveying);
    m_survey.setFuture(
        QtConcurrent::run([paths = errand.paths, suffixes = InputSuffixes(), progress = m_pProgress]
                          { return SurveyFolders(paths, suffixes, progress.get()); }));
}

BatchWindow::Answer BatchWindow::AskAboutLoops(const FolderSurvey& survey)
{
    QStringList loops;
    const QVector<LinkLoop> shown = survey.loops.mid(0, LoopsShown);
    for (const LinkLoop& loop : shown)
        loops += tr("%1 leads back to %2").arg(OneLine(loop.path), OneLine(loop.target));
    if (!survey.hasAllLoops)
        loops += tr("and more");
    else if (survey.loops.size() > LoopsShown)
        loops += tr("and %1 more").arg(survey.loops.size() - LoopsShown);
    KXMessageBox box(this);
    box.setWindowTitle(tr("Links That Lead Back"));
    box.SetIcon(KXMessageBox::Warning);
    box.SetText(tr("Links in these folders lead back into them. A scan that follows the links finds the same "
                   "images again and again, and may not end by itself.\n\n%1")
                    .arg(loops.join(QLatin1Char('\n'))));
    if (survey.hasAllLoops)
        box.AddButton(KXMessageBox::Yes);
    box.SetButtonText(KXMessageBox::Yes, tr("&Leave Links Out"));
    box.AddButton(KXMessageBox::Ignore);
    box.SetButtonText(KXMessageBox::Ignore, tr("&Follow Links"));
    box.AddButton(KXMessageBox::Cancel);
    box.SetDefaultButton(survey.hasAllLoops ? KXMessageBox::Yes : KXMessageBox::Cancel);
    const int answer = box.Exec();
    if (answer == KXMessageBox::Yes)
        return LeaveOut;
    return answer == KXMessageBox::Ignore ? ScanAnyway : DoNothing;
}

bool BatchWindow::Scan(const FolderSurvey& survey, Answer answer)
{
    if (answer == LeaveOut)
        return ScanWithoutLoops(survey);
    KXAddToBatchDialog dialog(&m_model, this);
    if (dialog.AddFolders(m_errand.paths) != KXDialog::ResultAccepted)
        return false;
    m_scanned = m_errand.paths;
    return true;
}

bool BatchWindow::RunRefresh(const FolderSurvey& survey, Answer answer)
{
    if (answer == LeaveOut && !ScanWithoutLoops(survey))
        return false;
    BatchRefresh refresh(&m_model, this, m_errand.force);
    bool isDone = true;
    for (const QString& path : qAsConst(m_errand.paths))
    {
        const QModelIndex index = m_model.FindPath(path);
        // By now what is left to be looked at are images, and folders that are gone.
        const bool isScanned = answer == LeaveOut && survey.imageCounts.contains(path);
        if (index.isValid() && !isScanned)
            isDone = isDone && refresh.Look(index);
    }
    m_scanned += refresh.GetScanned();
    m_hasChanged |= refresh.HasChanged();
    return isDone;
}

// The rows of what is on the way to a link are made here, since a scan of them would follow it.
bool BatchWindow::ScanWithoutLoops(const FolderSurvey& survey)
{
    Model parts;
    KXAddToBatchDialog dialog(&parts, this);
    if (dialog.AddFolders(survey.parts) != KXDialog::ResultAccepted)
        return false;
    for (const QString& path : qAsConst(m_errand.paths))
    {
        const QModelIndex index = m_model.FindPath(path);
        if (m_errand.isRefresh && index.isValid())
            m_model.removeRows(0, m_model.rowCount(index), index);
    }
    InsertParts(survey, parts, &m_model);
    m_scanned = m_errand.paths;
    m_hasChanged = true;
    return true;
}

void BatchWindow::NotePassedOver(const FolderSurvey& survey, Answer answer, bool isDone)
{
    const QStringList& paths = isDone ? m_errand.paths : m_scanned;
    const QSet<QString> lookedAt(paths.cbegin(), paths.cend());
    const QSet<QString> folders = FolderPaths(m_model);
    // What is not asked for lies in a folder of the tree, or is one.
    const auto isWanted = [&](const QString& path)
    {
        return IsWithin(path, lookedAt) &&
            (lookedAt.contains(path) || folders.contains(path) || folders.contains(QFileInfo(path).path()));
    };
    ForgetPassedOver(lookedAt);
    std::copy_if(survey.passedOver.cbegin(), survey.passedOver.cend(), std::back_inserter(m_passedOver),
                 [&isWanted](const PassedOver& entry) { return isWanted(entry.path); });
    for (const LinkLoop& loop : survey.loops)
    {
        if (answer == LeaveOut && isWanted(loop.path))
            m_passedOver.append({loop.path, PassedOver::LeadsBack, 1, loop.target});
    }
    m_passedOver += FindVanished(survey, m_scanned, m_model);
    std::stable_sort(m_passedOver.begin(), m_passedOver.end(),
                     [](const PassedOver& a, const PassedOver& b) { return a.path < b.path; });
    ShowPassedOver();
}

// With all that lies in them.
void BatchWindow::ForgetPassedOver(const QSet<QString>& folders)
{
    m_passedOver.erase(std::remove_if(m_passedOver.begin(), m_passedOver.end(),
                                      [&folders](const PassedOver& entry)
                                      { return IsWithin(entry.path, folders); }),
                       m_passedOver.end());
}

void BatchWindow::TellChange(bool isDone, int filesBefore)
{
    const int more = m_model.GetFileCount() - filesBefore;
    if (!isDone && m_hasChanged)
        SetStatus(tr("Cancelled. What was refreshed before that stays."));
    else if (!isDone)
        SetStatus(tr("Cancelled. Nothing was changed."));
    else if (more < 0)
        SetStatus(CountText(-more, tr("1 image less than before."), tr("%1 images less than before.")));
    // Some may have come in the place of others.
    else if (more == 0 && m_errand.isRefresh && m_hasChanged)
        SetStatus(tr("As many images as before."));
    else
        SetStatus(CountText(more, tr("1 new image."), tr("%1 new images.")));
}
