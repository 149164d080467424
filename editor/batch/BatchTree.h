#pragma once

#include <QModelIndexList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include "FolderSurvey.h"

// What the batch does with its tree of folders and images. GUI thread only, like the model.

bool IsImage(const KXBatchInputModel::Node& node);

// An image that a job is to work on.
struct BatchInput
{
    QString path;
    // The top row that it lies below; empty for an image that is a top row itself.
    QString root;
};
// In the order of the rows.
QVector<BatchInput> ListInputs(const KXBatchInputModel& model);
int CountFolders(const KXBatchInputModel& model);

// Bare suffixes of what a batch takes in: all that is read but the native format.
QStringList InputSuffixes();

// The caller owns the copy.
KXBatchInputModel::Node* CopyBranch(const KXBatchInputModel::Node& node);
// Inserts the skeletons of a survey with its scanned parts hung under them; what hangs under none becomes a
// top row.
void InsertParts(const FolderSurvey& survey, const KXBatchInputModel& parts, KXBatchInputModel* model);
// What the survey saw and the model lacks after a scan of these folders with all that is below them.
QVector<PassedOver> FindVanished(const FolderSurvey& survey, const QStringList& scanned,
                                 const KXBatchInputModel& model);
// The rows that are no images.
QSet<QString> FolderPaths(const KXBatchInputModel& model);
// One of them, or below one of them. All paths are absolute and clean.
bool IsWithin(const QString& path, const QSet<QString>& folders);

// Without those that lie below another one.
QModelIndexList TopMost(const QModelIndexList& indexes);
void RemoveIndexes(KXBatchInputModel* model, const QModelIndexList& indexes);
