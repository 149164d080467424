#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <memory>

#include "KXBatchInputModel.h"

// A look through folders before they are scanned: where links lead back, and what the scan will pass over
// without a word. Free of widgets; every function is thread-safe. Texts are translated plain text.

// Something that is no part of the input, and why.
struct PassedOver
{
    enum Reason
    {
        Unsupported, // files of other types
        Unreadable, // a folder that cannot be listed or searched, or what a link leads to in one
        Vanished, // was asked for or seen before, and is gone
        ImagesVanished, // of those seen in a folder before some are gone
        LeadsBack, // a link back into a folder that it lies in
        LeadsNowhere, // a link to nothing
        Hidden,
        NotPlain, // a device, pipe or socket that is named like an image
        NameNotText // the bytes of the name are no text
    };

    // Absolute; for several files the folder that they lie in.
    QString path;
    Reason reason = Unsupported;
    // How many files the entry stands for.
    int count = 1;
    // What more there is to say: suffixes, or the target of a link.
    QString detail;
};
QString ReasonText(const PassedOver& entry);
// One line an entry: the reason, a tab and the path.
QString PassedOverText(const QVector<PassedOver>& entries);

// What is at the path is a folder that the path has come through already.
struct LinkLoop
{
    QString path;
    QString target;
};

struct SurveyProgress
{
    // Set from any thread; the survey ends soon after with what it has.
    std::atomic<bool> cancelled{false};
    // Folders seen so far.
    std::atomic<int> folders{0};
};

struct FolderSurvey
{
    using Node = KXBatchInputModel::Node;

    // At most MaxLoops; there may be more then, and the survey has stopped.
    QVector<LinkLoop> loops;
    bool hasAllLoops = true;
    // Without the loops.
    QVector<PassedOver> passedOver;
    // Images directly in each folder.
    QHash<QString, int> imageCounts;
    // In all, together with the files that were asked for themselves; each once.
    int imageCount = 0;

    // To scan all but the loops: the folders that lead to them, each tree of them with its root, and what is
    // to be scanned and hung under them. Without loops, what was asked for, less what lies in the rest of it.
    QVector<std::shared_ptr<Node>> skeletons;
    QStringList parts;
};

constexpr int MaxLoops = 50;

// Follows the rules of a scan: hidden entries are left out unless they are asked for themselves, links are
// followed, files are taken by their suffix in lower case. The progress may be null.
FolderSurvey SurveyFolders(const QStringList& paths, const QStringList& suffixes,
                           SurveyProgress* progress = nullptr);
