// The scan of whole folders: queue, links between nodes, file counts, texts, and what becomes of it when it
// is cancelled, started anew or deleted at any stage.

#include <QDeadlineTimer>
#include <QMetaMethod>
#include <QRunnable>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThreadPool>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>

#include "BusyThreads.h"
#include "FolderTree.h"
#include "KXAddToBatchManager.h"
#include "NVImageFileManager.h"
#include "ScanLeak.h"
#include "SignalLog.h"
#include "SystemCalls.h"
#include "TestMain.h"

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;
using Manager = KXAddToBatchManager;
using Act = std::function<void(Manager&)>;

Q_DECLARE_METATYPE(Act)

namespace
{

// The roots of a scan, deleted in the end.
struct Roots
{
    explicit Roots(const QList<Node*>& nodes) : list(nodes) { }
    ~Roots() { qDeleteAll(list); }
    Roots(const Roots&) = delete;
    Roots& operator=(const Roots&) = delete;

    const QList<Node*> list;
};

QString PathOf(const Node* node)
{
    return node->data.roles.value(Model::NodePathRole).toString();
}

bool IsFile(const Node* node)
{
    return node->data.roles.value(Model::NodeIsFileRole).toInt() != 0;
}

int FileCount(const Node* node)
{
    return node->data.roles.value(Model::NodeFileCountRole).toInt();
}

QList<const Node*> AllBelow(const Node* node)
{
    QList<const Node*> nodes{node};
    for (const Node* child : node->children)
        nodes += AllBelow(child);
    return nodes;
}

QStringList PathsBelow(const Node* node)
{
    QStringList paths;
    for (const Node* each : AllBelow(node))
        paths << PathOf(each);
    return paths;
}

// What is wrong with links, order or counts; empty if nothing is.
QString Flaw(const Node* node)
{
    if (!node)
        return "no tree";
    int files = IsFile(node) ? 1 : 0;
    for (int i = 0; i < node->children.size(); ++i)
    {
        const Node* child = node->children[i];
        if (child->parent != node)
            return PathOf(child) + " hangs elsewhere";
        if (i > 0 && child->data < node->children[i - 1]->data)
            return PathOf(child) + " is out of order";
        const QString flaw = Flaw(child);
        if (!flaw.isEmpty())
            return flaw;
        files += FileCount(child);
    }
    return files == FileCount(node)
        ? QString()
        : QString("%1 says %2, holds %3").arg(PathOf(node)).arg(FileCount(node)).arg(files);
}

bool RunToTheEnd(Manager& manager)
{
    QSignalSpy finished(&manager, &Manager::ScanFinished);
    return finished.wait(60000);
}

// What is wrong with the only tree that there is then.
QString FlawInTheEnd(Manager& manager)
{
    if (!RunToTheEnd(manager))
        return "no end";
    const Roots roots(manager.TakeResult());
    return roots.list.size() > 1 ? "several trees" : Flaw(roots.list.value(0));
}

// The formats "png" and "jpg" and what the plugins read.
struct Formats
{
    explicit Formats(const QStringList& suffixes = {"png", "jpg"}) { manager.SetGroup("test", suffixes); }
    QStringList List() const { return manager.GetSupportedReadFormats(); }

    NVImageFileManager manager;
};

void MakeTree(const FolderTree& tree)
{
    for (int i = 0; i < 6; ++i)
    {
        const QByteArray folder = "folder " + QByteArray::number(i);
        for (int j = 0; j < 7; ++j)
        {
            tree.File(folder + "/IMG_" + QByteArray::number(j) + (j % 3 ? ".png" : ".txt"));
            tree.File(folder + "/in/" + QByteArray::number(j) + ".JPG");
        }
        tree.Folder(folder + "/empty");
    }
}

// Forty small folders one within the other, with two files each.
void MakeChain(const FolderTree& tree)
{
    QByteArray folder;
    for (int i = 0; i < 40; ++i)
    {
        folder += "in/";
        tree.Files({folder + "1.png", folder + "2.png"});
    }
}

// A signal ReadyAt of such a chain's scan, counted from 1: the empty line with which the 15th folder begins.
// The root gives two, the first folder in it two more, each further one four.
constexpr int FolderBegins = 2 + 2 + 14 * 4 + 1;
// The last line on a node before that.
constexpr int FolderEnds = FolderBegins - 1;

// Empty ones.
QStringList MakeFolders(const FolderTree& tree, int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
    {
        tree.Folder("f" + QByteArray::number(i));
        paths << tree.Path("f" + QByteArray::number(i));
    }
    return paths;
}

// Acts once, at the signal ReadyAt that is the given one from now on.
class AfterSignals : public QObject
{
public:
    AfterSignals(Manager* manager, int count, const std::function<void()>& act) : m_left(count), m_act(act)
    {
        connect(manager, &Manager::ReadyAt, this,
                [this]
                {
                    if (--m_left == 0)
                        m_act();
                });
    }
    bool Acted() const { return m_left <= 0; }

private:
    int m_left;
    const std::function<void()> m_act;
};

class Shouting : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "KXAddToBatchManager") == 0 ? QString(text).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }
};

// Runs the event loop as it runs in a program, without pauses: QTRY_VERIFY sleeps between two looks.
bool RunUntil(const std::function<bool()>& isDone)
{
    const QDeadlineTimer patience(60000);
    // There may be nothing else left to wait for.
    QTimer look;
    look.start(20);
    while (!isDone() && !patience.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isDone();
}

QThreadPool* Pool()
{
    return QThreadPool::globalInstance();
}

// Whether no thread of the pool is in use, once it has worked off all it has.
bool IsPoolAtRest()
{
    Pool()->waitForDone();
    return Pool()->activeThreadCount() == 0;
}

// What waits in a run is looked at one by one.
class OneThread
{
public:
    OneThread() : m_count(Pool()->maxThreadCount()) { Pool()->setMaxThreadCount(1); }
    ~OneThread() { Pool()->setMaxThreadCount(m_count); }

private:
    Q_DISABLE_COPY(OneThread)

    const int m_count;
};

// Threads of the pool that have nothing to do. None may be there when that is set.
class ThreadsEndAtOnce
{
public:
    ThreadsEndAtOnce() : m_expiry(Pool()->expiryTimeout()) { set(0); }
    ~ThreadsEndAtOnce() { set(m_expiry); }

private:
    Q_DISABLE_COPY(ThreadsEndAtOnce)
    static void set(int expiry)
    {
        Pool()->waitForDone();
        Pool()->setExpiryTimeout(expiry);
    }

    const int m_expiry;
};

bool HasThreadsOfThePool()
{
    const QStringList threads = QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(threads.cbegin(), threads.cend(),
                       [](const QString& thread)
                       {
                           QFile name("/proc/self/task/" + thread + "/comm");
                           return name.open(QFile::ReadOnly) && name.readAll().contains("pooled");
                       });
}

// Everything that was posted, and what the pool still works on.
void Settle()
{
    Pool()->waitForDone();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The scan of a chain, in which something may happen once.
struct ChainScan
{
    explicit ChainScan(
        int stageAt = 0, const Act& act = [](Manager&) {})
        : stage(&manager, stageAt, [this, act] { act(manager); })
    {
        MakeChain(tree);
        manager.ScanFolders({tree.Path()});
    }

    const Formats formats;
    const FolderTree tree;
    Manager manager{nullptr};
    const AfterSignals stage;
};

} // namespace

class tst_KXAddToBatchManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void interfaceIsAsHostsKnowIt();
    void fileAloneGivesItsTexts();
    void foldersGiveTheirTextsLevelByLevel();
    void textsAreTranslated();
    void treeIsSortedCountedAndComplete();
    void countsGoOnFromWhatTheNewOwnerSet();
    void treesOfOneManagerDoNotShareCounts();
    void eachNodeIsToldOnceAndEachRunBeginsEmpty();
    void eachPathIsLookedAtOnceAndEachFolderIsReadOnce();
    void progressBeginsAnewWithEachRun();
    void nothingHappensWithoutAnEventLoop();
    void eventLoopGoesOnWhileAFolderCannotBegin();
    void threadOfThePoolIsGivenBack_data();
    void threadOfThePoolIsGivenBack();
    void threadOfThePoolIsGivenBackInTheEnd();
    void threadOfThePoolIsGivenBackWhileASlotWaits();
    void poolOfOneThreadServesOthersInMidScan();
    void twoScansAtOnce();
    void emptyListFinishes();
    void emptyFolderHasNoFurtherRun();
    void pathsWithoutANodeAreDroppedSilently();
    void filesAndFoldersAreTakenByEitherSlot();
    void rootsComeInTheirListTwiceIfAskedTwice();
    void resultIsTakenOnce();
    void secondScanAfterTheFirstOne();
    void foldersComeBeforeFilesInARun();
    void countsAreThoseOfFind_data();
    void countsAreThoseOfFind();
    void withoutFormatsThereAreFoldersOnly();
    void nativeFormatIsNoInput();
    void formatsInUpperCaseMatchNothing();
    void changeOfFormatsCountsFromTheNextRun();
    void formatsMayGoInMidScan();
    void scanInMidScanTakesTheOldestInTheQueue();
    void scanStartedInTheSameBreathLosesTheRunInFlight();
    void scanInMidScanWaitsForTheRunInFlight();
    void cancelWhenIdle();
    void cancelTwice();
    void cancelAtEveryStage_data();
    void cancelAtEveryStage();
    void cancelFromWithinASignalOfTheNextRun();
    void cancelledManagerTellsProgressOnly();
    void cancelWaitsForTheRunInFlight();
    void cancelForgetsWhatWaits();
    void deletedAtEveryStage_data();
    void deletedAtEveryStage();
    void folderThatHoldsALinkToItselfEnds();
    void folderThatHoldsTwoLinksToItselfIsCancelledAtOnce();
    void pathsThatGoBeforeTheyAreLookedAt();
    void folderThatBecomesAFile();
    void filesThatComeLate();
    void unreadableFoldersAreEmptyRows();
    void treeThatNeverRests();
    void finishedScanLeavesNothingBehind();
    void leakIsBoundedToTheRunInFlight();
};

// No manager is left, and none of them has kept a thread.
void tst_KXAddToBatchManager::cleanup()
{
    QVERIFY(IsPoolAtRest());
}

void tst_KXAddToBatchManager::interfaceIsAsHostsKnowIt()
{
    const QMetaObject& meta = Manager::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const QMetaMethod method = meta.method(i);
        methods << QString("%1 %2 %3")
                       .arg(int(method.methodType()))
                       .arg(QString(method.methodSignature()), QString(method.parameterNames().join(',')));
    }
    QCOMPARE(
        methods,
        QStringList({"1 ReadyAt(QString) fileName", "1 NewFolder(QString) folder", "1 Progress(int) value",
                     "1 ProgressChanged(int,int) min,max", "1 ScanFinished() ",
                     "2 ScanFolders(QStringList) folders", "2 ScanFiles(QStringList) files", "2 Cancel() ",
                     "2 OnScanReadyAt(int) index", "2 OnScanFinished() ", "2 OnSupportedGroupChanged() "}));
}

void tst_KXAddToBatchManager::fileAloneGivesItsTexts()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("a b.png");
    Manager manager(nullptr);
    SignalLog log(&manager);

    manager.ScanFiles({tree.Path("a b.png")});
    QCOMPARE(log.Entries(), QStringList({"NewFolder(\"Folder:\")", "ReadyAt(\"\")"}));
    QVERIFY(RunToTheEnd(manager));

    QStringList texts = log.Entries().filter("ReadyAt") + log.Entries().filter("NewFolder");
    QCOMPARE(texts,
             QStringList({"ReadyAt(\"\")", "ReadyAt(\"File:" + tree.Path("a b.png") + "\")",
                          "NewFolder(\"Folder:\")"}));
    QCOMPARE(log.Entries().last(), QString("ScanFinished()"));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    QVERIFY(IsFile(roots.list.first()) && !roots.list.first()->parent);
}

void tst_KXAddToBatchManager::foldersGiveTheirTextsLevelByLevel()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("%1/b %2/c.png");
    Manager manager(nullptr);
    SignalLog log(&manager);

    manager.ScanFolders({tree.Path("%1")});
    QVERIFY(RunToTheEnd(manager));

    QStringList texts;
    for (const QString& entry : log.Entries())
    {
        if (!entry.startsWith("Progress"))
            texts << entry;
    }
    const QString top = tree.Path("%1");
    QCOMPARE(texts,
             QStringList({"NewFolder(\"Folder:\")", "ReadyAt(\"\")", "ReadyAt(\"Folder:" + top + "\")",
                          "NewFolder(\"Folder: " + top + "\")", "ReadyAt(\"\")",
                          "ReadyAt(\"Folder:" + top + "/b %2\")", "NewFolder(\"Folder: " + top + "/b %2\")",
                          "ReadyAt(\"\")", "ReadyAt(\"File:" + top + "/b %2/c.png\")", "ScanFinished()"}));
    const Roots roots(manager.TakeResult());
}

void tst_KXAddToBatchManager::textsAreTranslated()
{
    Shouting translator;
    QCoreApplication::installTranslator(&translator);
    const Formats formats;
    const FolderTree tree;
    tree.File("a/b.png");
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path("a")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    manager.Cancel();
    const QStringList entries = log.Entries();
    QVERIFY(entries.contains("NewFolder(\"FOLDER:\")"));
    QVERIFY(entries.contains("ReadyAt(\"FOLDER:" + tree.Path("a") + "\")"));
    // The place mark is the text's own.
    QVERIFY(entries.contains("NewFolder(\"FOLDER: " + tree.Path("a") + "\")"));
    QVERIFY(entries.contains("ReadyAt(\"FILE:" + tree.Path("a/b.png") + "\")"));
    QCOMPARE(entries.mid(entries.size() - 2),
             QStringList({"ReadyAt(\"CANCELLED\")", "NewFolder(\"CANCELLED\")"}));
}

void tst_KXAddToBatchManager::treeIsSortedCountedAndComplete()
{
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    const Node* root = roots.list.first();
    QCOMPARE(Flaw(root), QString());
    QCOMPARE(FileCount(root), 6 * (4 + 7));
    QCOMPARE(AllBelow(root).size(), 1 + 6 * 3 + 6 * (4 + 7));
    QCOMPARE(PathsBelow(root->children.first()).mid(0, 3),
             QStringList({tree.Path("folder 0"), tree.Path("folder 0/empty"), tree.Path("folder 0/in")}));
}

void tst_KXAddToBatchManager::countsGoOnFromWhatTheNewOwnerSet()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("a.png");
    tree.File("b.png");
    tree.File("c.png");
    Manager manager(nullptr);
    QList<Node*> taken;
    KXBatchInputModel::NodeData before;
    // Behind the count among the roles.
    const int ownersRole = Model::NodeFileCountRole + 38;
    // An empty line, the folder, an empty line, its first file.
    const AfterSignals first(&manager, 4,
                             [&]
                             {
                                 taken = manager.TakeResult();
                                 before = taken.value(0)->data;
                                 taken.value(0)->data.roles[Model::NodeFileCountRole] = 100;
                                 taken.value(0)->data.roles[ownersRole] = 7;
                             });
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(taken);
    QCOMPARE(roots.list.size(), 1);
    QCOMPARE(FileCount(roots.list[0]), 102);
    QCOMPARE(roots.list[0]->data.roles.value(ownersRole).toInt(), 7);
    QCOMPARE(before.roles.value(Model::NodeFileCountRole).toInt(), 1);

    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots again(manager.TakeResult());
    QCOMPARE(Flaw(again.list.value(0)), QString());
    QCOMPARE(FileCount(again.list[0]), 3);
    QCOMPARE(FileCount(roots.list[0]), 102);
}

void tst_KXAddToBatchManager::treesOfOneManagerDoNotShareCounts()
{
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    for (int i = 0; i < 30; ++i)
    {
        manager.ScanFolders({tree.Path()});
        // The tree is gone before the next one, which may get its place in memory.
        QCOMPARE(FlawInTheEnd(manager), QString());
    }
}

void tst_KXAddToBatchManager::eachNodeIsToldOnceAndEachRunBeginsEmpty()
{
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path(), tree.Path("nowhere")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());

    QStringList told;
    int runs = 0;
    for (const QString& entry : log.Entries())
    {
        if (entry == "ReadyAt(\"\")")
            ++runs;
        else if (entry.startsWith("ReadyAt"))
            told << entry.mid(entry.indexOf('/')).chopped(2);
    }
    QStringList expected = PathsBelow(roots.list.first());
    std::sort(told.begin(), told.end());
    std::sort(expected.begin(), expected.end());
    QCOMPARE(told, expected);
    // The caller's own, the root's, and two for each of six folders: "empty" has none.
    QCOMPARE(runs, 2 + 6 * 2);
    QCOMPARE(log.Count("NewFolder"), runs);
    QCOMPARE(log.Count("ScanFinished"), 1);
}

void tst_KXAddToBatchManager::eachPathIsLookedAtOnceAndEachFolderIsReadOnce()
{
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    SystemCalls::Reset();
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    const int nodes = AllBelow(roots.list.first()).size();
    // What is listed has a suffix that is wanted, so all of it becomes nodes.
    QCOMPARE(SystemCalls::looks.load(), nodes);
    QCOMPARE(SystemCalls::accesses.load(), 0);
    QCOMPARE(SystemCalls::folders.load(), nodes - FileCount(roots.list.first()));
    QCOMPARE(SystemCalls::expressions.load(), 0);
}

void tst_KXAddToBatchManager::progressBeginsAnewWithEachRun()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "a/2.png", "a/3.png", "a/x.txt"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFiles({tree.Path("a"), tree.Path("nowhere")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(log.Entries().filter("ProgressChanged"),
             QStringList({"ProgressChanged(0, 2)", "ProgressChanged(0, 3)"}));
    const QStringList values = log.Entries().filter("Progress(");
    QVERIFY(values.contains("Progress(2)"));
    QCOMPARE(values.last(), QString("Progress(3)"));
}

void tst_KXAddToBatchManager::nothingHappensWithoutAnEventLoop()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("a.png");
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path()});
    Pool()->waitForDone();
    QCOMPARE(log.Count(), 2);
    QVERIFY(manager.TakeResult().isEmpty());
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
}

void tst_KXAddToBatchManager::eventLoopGoesOnWhileAFolderCannotBegin()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("a.png");
    BusyThreads threads;
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path()});
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&ticks] { ++ticks; });
    timer.start(1);
    QTRY_VERIFY(ticks > 3);
    QVERIFY(manager.TakeResult().isEmpty());
    threads.Open();
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
}

void tst_KXAddToBatchManager::threadOfThePoolIsGivenBack_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<bool>("isPosted");
    const auto row = [](const char* name, const Act& act, bool isPosted = false)
    { QTest::newRow(name) << act << isPosted; };
    row("cancelled as a folder begins", &Manager::Cancel);
    row("cancelled while one is in work", &Manager::Cancel, true);
    row("cancelled and begun anew",
        [](Manager& manager)
        {
            manager.Cancel();
            manager.ScanFolders({});
        });
    row("a second scan in mid-scan", [](Manager& manager) { manager.ScanFolders({}); });
}

// While folders are small, a scan holds one, whatever comes in between.
void tst_KXAddToBatchManager::threadOfThePoolIsGivenBack()
{
    QFETCH(Act, act);
    QFETCH(bool, isPosted);
    bool isDone = false;
    bool isGivenBack = false;
    ChainScan scan(FolderBegins,
                   [&](Manager& manager)
                   {
                       const auto look = [&]
                       {
                           act(manager);
                           // No event comes in between.
                           isGivenBack = IsPoolAtRest();
                           isDone = true;
                       };
                       if (isPosted)
                           QTimer::singleShot(0, &manager, look);
                       else
                           look();
                   });
    QVERIFY(RunUntil([&] { return isDone; }));
    QVERIFY(isGivenBack);
}

void tst_KXAddToBatchManager::threadOfThePoolIsGivenBackInTheEnd()
{
    ChainScan scan;
    bool isGivenBack = false;
    connect(&scan.manager, &Manager::ScanFinished, this, [&] { isGivenBack = IsPoolAtRest(); });
    QCOMPARE(FlawInTheEnd(scan.manager), QString());
    QVERIFY(isGivenBack);
}

void tst_KXAddToBatchManager::threadOfThePoolIsGivenBackWhileASlotWaits()
{
    bool isGivenBack = false;
    // No folder is in work meanwhile.
    ChainScan scan(FolderBegins, [&](Manager&) { isGivenBack = RunUntil(IsPoolAtRest); });
    QCOMPARE(FlawInTheEnd(scan.manager), QString());
    QVERIFY(isGivenBack);
}

void tst_KXAddToBatchManager::poolOfOneThreadServesOthersInMidScan()
{
    const OneThread one;
    const ThreadsEndAtOnce expiry;
    ChainScan scan(FolderEnds);
    QVERIFY(RunUntil([&] { return scan.stage.Acted(); }));
    // The event loop rests until the thread has ended.
    const QDeadlineTimer patience(10000);
    while (HasThreadsOfThePool() && !patience.hasExpired())
        QThread::yieldCurrentThread();
    QVERIFY(!HasThreadsOfThePool());
    const auto done = std::make_shared<QSemaphore>();
    Pool()->start(QRunnable::create([done] { done->release(); }));
    QVERIFY(done->tryAcquire(1, 10000));
    QCOMPARE(FlawInTheEnd(scan.manager), QString());
}

void tst_KXAddToBatchManager::twoScansAtOnce()
{
    const Formats formats;
    const FolderTree tree;
    MakeChain(tree);
    Manager one(nullptr);
    Manager other(nullptr);
    int finished = 0;
    for (Manager* manager : {&one, &other})
    {
        connect(manager, &Manager::ScanFinished, this, [&finished] { ++finished; });
        manager->ScanFolders({tree.Path()});
    }
    QVERIFY(RunUntil([&] { return finished == 2; }));
    const Roots roots(one.TakeResult() + other.TakeResult());
    QCOMPARE(roots.list.size(), 2);
    for (const Node* root : roots.list)
    {
        QCOMPARE(Flaw(root), QString());
        QCOMPARE(FileCount(root), 80);
    }
}

void tst_KXAddToBatchManager::emptyListFinishes()
{
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({});
    QVERIFY(log.Count("ScanFinished") == 0);
    QVERIFY(RunToTheEnd(manager));
    QCOMPARE(log.Count("ScanFinished"), 1);
    QCOMPARE(log.Count("ReadyAt"), 1);
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::emptyFolderHasNoFurtherRun()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("note.txt");
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    QCOMPARE(FileCount(roots.list.first()), 0);
    QCOMPARE(log.Count("NewFolder"), 1);
}

void tst_KXAddToBatchManager::pathsWithoutANodeAreDroppedSilently()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"note.txt", "noname", "a.png"});
    tree.Link("nowhere", "dangling.png");
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFiles({tree.Path("missing"), tree.Path("note.txt"), tree.Path("noname"),
                       tree.Path("dangling.png"), QString(), tree.Path("a.png")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    QCOMPARE(log.Count("ReadyAt"), 2);
}

void tst_KXAddToBatchManager::filesAndFoldersAreTakenByEitherSlot()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a.png", "in/b.png"});
    for (auto slot : {&Manager::ScanFolders, &Manager::ScanFiles})
    {
        Manager manager(nullptr);
        (manager.*slot)({tree.Path("a.png"), tree.Path("in")});
        QVERIFY(RunToTheEnd(manager));
        const Roots roots(manager.TakeResult());
        QCOMPARE(roots.list.size(), 2);
        QCOMPARE(FileCount(roots.list[0]) + FileCount(roots.list[1]), 2);
    }
}

void tst_KXAddToBatchManager::rootsComeInTheirListTwiceIfAskedTwice()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("in/b.png");
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path("in"), tree.Path("in")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 2);
    QVERIFY(roots.list[0] != roots.list[1]);
    for (const Node* root : roots.list)
        QCOMPARE(Flaw(root) + QString::number(FileCount(root)), QString("1"));
}

void tst_KXAddToBatchManager::resultIsTakenOnce()
{
    const FolderTree tree;
    Manager manager(nullptr);
    QVERIFY(manager.TakeResult().isEmpty());
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::secondScanAfterTheFirstOne()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "b/2.png"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path("a")});
    QVERIFY(RunToTheEnd(manager));
    manager.ScanFolders({tree.Path("b")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 2);
    QCOMPARE(PathOf(roots.list[0]) + PathOf(roots.list[1]), tree.Path("a") + tree.Path("b"));
    QCOMPARE(log.Count("ScanFinished"), 2);
}

void tst_KXAddToBatchManager::foldersComeBeforeFilesInARun()
{
    const Formats formats;
    const OneThread oneThread;
    const FolderTree tree;
    tree.Files({"a.png", "z/b.png", "y/c.png"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    QStringList runs;
    connect(&manager, &Manager::NewFolder, this, [&runs](const QString& text) { runs << text; });
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(runs.size(), 4);
    QCOMPARE(runs.mid(0, 2), QStringList({"Folder:", "Folder: " + tree.Path()}));
    QVERIFY(runs.contains("Folder: " + tree.Path("y")) && runs.contains("Folder: " + tree.Path("z")));
    QStringList kinds;
    for (const Node* child : roots.list.first()->children)
        kinds << PathOf(child).mid(tree.Path().size() + 1);
    QCOMPARE(kinds, QStringList({"y", "z", "a.png"}));
    // One thread looks at them in their order.
    QStringList told;
    for (const QString& entry : log.Entries().filter("ReadyAt(\"F"))
        told << entry.mid(entry.indexOf(tree.Path()) + tree.Path().size()).chopped(2);
    QCOMPARE(told, QStringList({"", "/y", "/z", "/a.png", "/y/c.png", "/z/b.png"}));
}

void tst_KXAddToBatchManager::countsAreThoseOfFind_data()
{
    QTest::addColumn<QList<QByteArray>>("files");
    QTest::newRow("nothing") << QList<QByteArray>();
    QTest::newRow("quotes, blanks, new lines") << QList<QByteArray>{
        "a b.png",  "'q'.png", "\"d\".png", "n\nl.png", "tab\t.png",   "-rf.png",    "%1.png",     "$x.png",
        "b\\s.png", " .png",   "x.png ",    "x.png\n",  "in \n/a.png", "'in'/b.png", "<b>x<i>.png"};
    QTest::newRow("right to left") << QList<QByteArray>{"\xd7\x90\xd7\x91.png",
                                                        "\xe2\x80\xae"
                                                        "gnp.png",
                                                        "\xd8\xa7/\xd8\xa8.jpg"};
    QTest::newRow("no UTF-8") << QList<QByteArray>{"\xff\xfe.png", "a.png", "in\xff/b.png", "in/c\x80.png",
                                                   "in/d.png"};
    QTest::newRow("hidden") << QList<QByteArray>{".a.png", ".in/b.png", "in/.c.png", "in/d.png", "..e.png"};
    QTest::newRow("case") << QList<QByteArray>{"a.png", "A.png", "a.PNG", "A.PNG", "in/a.pNg", "IN/a.jpG"};
    QTest::newRow("suffixes") << QList<QByteArray>{"png",       ".png",   "a.",    "a.png.txt",
                                                   "a.txt.png", "a.pngx", "a.xpng"};
    QTest::newRow("folders that look like files") << QList<QByteArray>{"a.png/b.png", "a.png/c.png/d.png"};
    QTest::newRow("full length") << QList<QByteArray>{
        QByteArray(251, 'x') + ".png", QByteArray(255, 'y') + '/' + QByteArray(251, 'z') + ".jpg"};
    QByteArray deep;
    for (int i = 0; i < 200; ++i)
        deep += "deep/";
    QTest::newRow("deep") << QList<QByteArray>{deep + "a.png", "deep/deep/b.png"};
    QList<QByteArray> many;
    for (int i = 0; i < 3000; ++i)
        many << "many/" + QByteArray::number(i * 7919 % 3000) + (i % 4 ? ".png" : ".txt");
    QTest::newRow("many in one") << many;
}

void tst_KXAddToBatchManager::countsAreThoseOfFind()
{
    QFETCH(QList<QByteArray>, files);
    const Formats formats;
    const FolderTree tree;
    tree.Folder("top");
    for (const QByteArray& file : files)
        tree.File("top/" + file);
    tree.File("beside/linked.png");
    tree.Link("../beside", "top/way");
    tree.Link("../beside/linked.png", "top/link.png");
    tree.Link("../beside/linked.png", "top/link.txt");
    tree.Link("nowhere", "top/dangling.png");
    tree.Fifo("top/pipe.png");

    Manager manager(nullptr);
    manager.ScanFolders({tree.Path("top")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());

    QCOMPARE(roots.list.size(), 1);
    QCOMPARE(Flaw(roots.list.first()), QString());
    QCOMPARE(FileCount(roots.list.first()), FolderTree::CountOfFind(tree.Path("top"), formats.List()));
}

void tst_KXAddToBatchManager::withoutFormatsThereAreFoldersOnly()
{
    QVERIFY(!NVImageFileManager::GetInstance());
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    const Formats tooLate;
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(AllBelow(roots.list.first()).size(), 1 + 6 * 3);
    QCOMPARE(FileCount(roots.list.first()), 0);
}

void tst_KXAddToBatchManager::nativeFormatIsNoInput()
{
    const Formats formats({"png", "nvdoc", "NVDOC"});
    const FolderTree tree;
    tree.Files({"a.png", "b.nvdoc"});
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(FileCount(roots.list.first()), 1);
}

void tst_KXAddToBatchManager::formatsInUpperCaseMatchNothing()
{
    const Formats formats({"RAWX"});
    const FolderTree tree;
    tree.Files({"a.rawx", "b.RAWX"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(FileCount(roots.list.first()), 0);
    // They are listed, and turned down one by one.
    QCOMPARE(log.Count("NewFolder"), 2);
}

void tst_KXAddToBatchManager::changeOfFormatsCountsFromTheNextRun()
{
    Formats formats({"foo"});
    const FolderTree tree;
    tree.Files({"top/a.foo", "top/b.bar", "top/in/c.foo", "top/in/d.bar"});
    Manager manager(nullptr);
    SignalLog log(&manager);

    manager.ScanFolders({tree.Path("top")});
    // The run in flight lists a.foo by the old formats; the next one turns it down by the new ones.
    formats.manager.SetGroup("test", {"bar"});
    QVERIFY(RunToTheEnd(manager));

    const Roots roots(manager.TakeResult());
    QCOMPARE(PathsBelow(roots.list.first()),
             QStringList({tree.Path("top"), tree.Path("top/in"), tree.Path("top/in/d.bar")}));
    QVERIFY(log.Entries().contains("ProgressChanged(0, 2)"));
}

void tst_KXAddToBatchManager::formatsMayGoInMidScan()
{
    const FolderTree tree;
    tree.Files({"top/a.png", "top/in/c.png"});
    QScopedPointer<Formats> formats(new Formats);
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path("top")});
    formats.reset();
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(FileCount(roots.list.first()), 2);
}

void tst_KXAddToBatchManager::scanInMidScanTakesTheOldestInTheQueue()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "b/2.png"});
    Manager manager(nullptr);
    QStringList runs;
    connect(&manager, &Manager::NewFolder, this, [&runs](const QString& text) { runs << text; });
    // By then the content of "a" waits, and all of the run in flight has been taken over.
    const AfterSignals second(&manager, 2, [&] { manager.ScanFolders({tree.Path("b")}); });
    manager.ScanFolders({tree.Path("a")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(runs,
             QStringList({"Folder:", "Folder: " + tree.Path("a"), "Folder:", "Folder: " + tree.Path("b")}));
    QCOMPARE(roots.list.size(), 2);
    for (const Node* root : roots.list)
        QCOMPARE(FileCount(root), 1);
}

void tst_KXAddToBatchManager::scanStartedInTheSameBreathLosesTheRunInFlight()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "b/2.png"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.ScanFolders({tree.Path("a")});
    manager.ScanFolders({tree.Path("b")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(roots.list.size(), 1);
    QCOMPARE(PathsBelow(roots.list.first()), QStringList({tree.Path("b"), tree.Path("b/2.png")}));
    QCOMPARE(log.Count("ScanFinished"), 1);
}

void tst_KXAddToBatchManager::cancelWhenIdle()
{
    Manager manager(nullptr);
    SignalLog log(&manager);
    manager.Cancel();
    QCOMPARE(log.Entries(), QStringList({"ReadyAt(\"Cancelled\")", "NewFolder(\"Cancelled\")"}));
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::cancelTwice()
{
    const FolderTree tree;
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path()});
    manager.Cancel();
    SignalLog log(&manager);
    manager.Cancel();
    Settle();
    QCOMPARE(log.Count("ReadyAt") + log.Count("NewFolder"), 2);
    QCOMPARE(log.Count("ScanFinished"), 0);
}

void tst_KXAddToBatchManager::cancelAtEveryStage_data()
{
    QTest::addColumn<int>("signalsBefore");
    for (const int count : {0, 1, 2, 3, 5, 9, 10, 17, 30, 50, 80, 98})
        QTest::addRow("after %d", count) << count;
}

void tst_KXAddToBatchManager::cancelAtEveryStage()
{
    QFETCH(int, signalsBefore);
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    SignalLog log(&manager);
    bool cancelled = false;
    const auto cancel = [&]
    {
        log.Clear();
        manager.Cancel();
        cancelled = true;
        QCOMPARE(log.Entries(), QStringList({"ReadyAt(\"Cancelled\")", "NewFolder(\"Cancelled\")"}));
    };
    // The first one tells of no node.
    const AfterSignals stage(&manager, signalsBefore + 1, cancel);
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunUntil([&] { return cancelled; }));
    Settle();
    QVERIFY(manager.TakeResult().isEmpty());
    QCOMPARE(log.Count("ScanFinished"), 0);
    QCOMPARE(log.Count("ReadyAt"), 1);
}

void tst_KXAddToBatchManager::cancelFromWithinASignalOfTheNextRun()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "a/2.png"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    const QString text = "Folder: " + tree.Path("a");
    connect(&manager, &Manager::NewFolder, this,
            [&](const QString& folder)
            {
                if (folder == text)
                    manager.Cancel();
            });
    manager.ScanFolders({tree.Path("a")});
    QTRY_VERIFY(log.Entries().contains("NewFolder(\"Cancelled\")"));
    Settle();
    QCOMPARE(log.Count("ScanFinished"), 0);
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::cancelledManagerTellsProgressOnly()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a.png", "b.png"});
    Manager manager(nullptr);
    manager.ScanFiles({tree.Path("a.png"), tree.Path("b.png")});
    manager.Cancel();
    SignalLog log(&manager);
    Settle();
    QTRY_VERIFY(log.Entries().contains("Progress(2)"));
    QCOMPARE(log.Count("Progress") + log.Count("ProgressChanged"), log.Count());

    // A scan that is asked for all the same runs and delivers nothing.
    log.Clear();
    manager.ScanFolders({tree.Path()});
    QCOMPARE(log.Entries(), QStringList({"NewFolder(\"Folder:\")", "ReadyAt(\"\")"}));
    Settle();
    QCOMPARE(log.Count("ScanFinished"), 0);
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::cancelWaitsForTheRunInFlight()
{
    const FolderTree tree;
    Manager manager(nullptr);
    const QStringList paths = MakeFolders(tree, 300);
    SystemCalls::Reset();
    manager.ScanFolders(paths);
    manager.Cancel();
    // All of it has been worked off.
    QCOMPARE(SystemCalls::folders.load(), 300);
    SignalLog log(&manager);
    QTRY_VERIFY(log.Entries().contains("Progress(300)"));
}

void tst_KXAddToBatchManager::scanInMidScanWaitsForTheRunInFlight()
{
    const FolderTree tree;
    Manager manager(nullptr);
    const QStringList paths = MakeFolders(tree, 300);
    SystemCalls::Reset();
    manager.ScanFolders(paths);
    manager.ScanFolders({});
    QCOMPARE(SystemCalls::folders.load(), 300);
    QVERIFY(RunToTheEnd(manager));
    QVERIFY(manager.TakeResult().isEmpty());
}

void tst_KXAddToBatchManager::cancelForgetsWhatWaits()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "b/2.png"});
    Manager manager(nullptr);
    SignalLog log(&manager);
    // The content of "a" waits by then.
    const AfterSignals stage(&manager, 2, [&] { manager.Cancel(); });
    manager.ScanFolders({tree.Path("a")});
    QTRY_VERIFY(log.Entries().contains("NewFolder(\"Cancelled\")"));
    Settle();
    log.Clear();
    manager.ScanFolders({tree.Path("b")});
    QCOMPARE(log.Entries().filter("NewFolder"), QStringList("NewFolder(\"Folder:\")"));
    Settle();
}

void tst_KXAddToBatchManager::deletedAtEveryStage_data()
{
    cancelAtEveryStage_data();
}

void tst_KXAddToBatchManager::deletedAtEveryStage()
{
    QFETCH(int, signalsBefore);
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    QPointer<Manager> manager(new Manager(nullptr));
    const AfterSignals stage(manager, signalsBefore + 1, [&] { manager->deleteLater(); });
    manager->ScanFolders({tree.Path()});
    QVERIFY(RunUntil(
        [&]
        {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return !manager;
        }));
    Settle();
    // In mid-run, from outside of all signals.
    auto* plain = new Manager(nullptr);
    plain->ScanFolders({tree.Path()});
    delete plain;
    Settle();
}

void tst_KXAddToBatchManager::folderThatHoldsALinkToItselfEnds()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("in/a.png");
    tree.Link(".", "in/self");
    Manager manager(nullptr);
    manager.ScanFolders({tree.Path("in")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    // The system follows forty links and no more.
    const Node* root = roots.list.first();
    QCOMPARE(Flaw(root), QString());
    QCOMPARE(AllBelow(root).size() - FileCount(root), 41);
    QCOMPARE(FileCount(root), 41);
}

void tst_KXAddToBatchManager::folderThatHoldsTwoLinksToItselfIsCancelledAtOnce()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("in/a.png");
    tree.Link(".", "in/one");
    tree.Link(".", "in/two");
    Manager manager(nullptr);
    bool cancelled = false;
    const auto cancel = [&]
    {
        SystemCalls::Reset();
        manager.Cancel();
        cancelled = true;
    };
    // Not from within a signal: one of them stands before a run that begins all the same.
    const AfterSignals stage(&manager, 2000,
                             [&] { QMetaObject::invokeMethod(&manager, cancel, Qt::QueuedConnection); });
    manager.ScanFolders({tree.Path("in")});
    QVERIFY(RunUntil([&] { return cancelled; }));
    // The folder in work has three entries. Two of them are folders, and in their lists stand two links each
    // that are looked at. Hundreds of folders wait that nobody looks at any more.
    QVERIFY(SystemCalls::looks <= 3 + 2 * 2);
    QVERIFY(SystemCalls::folders <= 2);
    SignalLog log(&manager);
    SystemCalls::Reset();
    Settle();
    QCOMPARE(log.Count("ReadyAt") + log.Count("NewFolder") + log.Count("ScanFinished"), 0);
    QCOMPARE(SystemCalls::looks + SystemCalls::folders, 0);
}

void tst_KXAddToBatchManager::pathsThatGoBeforeTheyAreLookedAt()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"in/a.png", "in/b.png", "in/gone/c.png"});
    Manager manager(nullptr);
    const AfterSignals stage(&manager, 2,
                             [&]
                             {
                                 tree.Remove("in/b.png");
                                 tree.Remove("in/gone/c.png");
                                 tree.Remove("in/gone");
                             });
    manager.ScanFolders({tree.Path("in")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(PathsBelow(roots.list.first()), QStringList({tree.Path("in"), tree.Path("in/a.png")}));
    QCOMPARE(FileCount(roots.list.first()), 1);
}

void tst_KXAddToBatchManager::folderThatBecomesAFile()
{
    const Formats formats;
    const FolderTree tree;
    tree.Folder("in/x.png");
    tree.File("in/y.png");
    Manager manager(nullptr);
    const AfterSignals stage(&manager, 2,
                             [&]
                             {
                                 tree.Remove("in/x.png");
                                 tree.File("in/x.png");
                                 tree.Remove("in/y.png");
                                 tree.File("in/y.png/z.png");
                             });
    manager.ScanFolders({tree.Path("in")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(PathsBelow(roots.list.first()),
             QStringList({tree.Path("in"), tree.Path("in/y.png"), tree.Path("in/y.png/z.png"),
                          tree.Path("in/x.png")}));
    QCOMPARE(Flaw(roots.list.first()), QString());
}

void tst_KXAddToBatchManager::filesThatComeLate()
{
    const Formats formats;
    const FolderTree tree;
    tree.Folder("in/later");
    Manager manager(nullptr);
    const AfterSignals stage(&manager, 2,
                             [&]
                             {
                                 tree.File("in/too late.png");
                                 tree.File("in/later/in time.png");
                             });
    manager.ScanFolders({tree.Path("in")});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(PathsBelow(roots.list.first()),
             QStringList({tree.Path("in"), tree.Path("in/later"), tree.Path("in/later/in time.png")}));
}

void tst_KXAddToBatchManager::unreadableFoldersAreEmptyRows()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"open/a.png", "closed/b.png"});
    tree.SetMode("closed", 0);
    {
        const WithoutRights nobody;
        Manager manager(nullptr);
        manager.ScanFolders({tree.Path()});
        QVERIFY(RunToTheEnd(manager));
        const Roots roots(manager.TakeResult());
        QCOMPARE(PathsBelow(roots.list.first()),
                 QStringList({tree.Path(), tree.Path("closed"), tree.Path("open"), tree.Path("open/a.png")}));
        QCOMPARE(FileCount(roots.list.first()), 1);
        // The threads of the pool that were started here go while they have the rights of now.
        Pool()->waitForDone();
    }
    tree.SetMode("closed", 0755);
}

void tst_KXAddToBatchManager::treeThatNeverRests()
{
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    Manager manager(nullptr);
    int step = 0;
    connect(&manager, &Manager::ReadyAt, this,
            [&]
            {
                const QByteArray folder = "folder " + QByteArray::number(step % 6);
                const QByteArray name = folder + "/in/" + QByteArray::number(step / 6 % 7) + ".JPG";
                if (QFile::exists(tree.Path(name)))
                    tree.Remove(name);
                else
                    tree.File(name);
                tree.File(folder + "/new " + QByteArray::number(++step) + "/x.png");
            });
    manager.ScanFolders({tree.Path()});
    QVERIFY(RunToTheEnd(manager));
    const Roots roots(manager.TakeResult());
    QCOMPARE(Flaw(roots.list.first()), QString());
    const QStringList paths = PathsBelow(roots.list.first());
    QCOMPARE(QSet<QString>(paths.cbegin(), paths.cend()).size(), paths.size());
}

void tst_KXAddToBatchManager::finishedScanLeavesNothingBehind()
{
    if (!LiveBytesAreExact)
        QSKIP("The sanitizers tell only roughly what is allocated; the plain build has this test.");
    const Formats formats;
    const FolderTree tree;
    MakeTree(tree);
    const auto scan = [&](bool take)
    {
        Manager manager(nullptr);
        manager.ScanFolders({tree.Path()});
        QVERIFY(RunToTheEnd(manager));
        if (take)
            const Roots roots(manager.TakeResult());
    };
    const auto leastAfterScans = [&]
    {
        std::size_t least = LiveBytes();
        for (int i = 0; i < 20; ++i)
        {
            scan(i % 2);
            Settle();
            least = i ? std::min(least, LiveBytes()) : LiveBytes();
        }
        return least;
    };
    // Caches, and threads that the pool starts anew, take memory once. A leak takes some in each round.
    std::size_t before = leastAfterScans();
    std::size_t after = leastAfterScans();
    // One tree alone has some 80,000 bytes, one node 900.
    for (int rounds = 0; rounds < 5 && after >= before + 8000; ++rounds)
    {
        before = after;
        after = leastAfterScans();
    }
    QVERIFY2(after < before + 8000, qPrintable(QString("%1 -> %2").arg(before).arg(after)));
}

void tst_KXAddToBatchManager::leakIsBoundedToTheRunInFlight()
{
    if (!LiveBytesAreExact)
        QSKIP("The sanitizers tell only roughly what is allocated; the plain build has this test.");
    const Formats formats;
    const FolderTree tree;
    // A hundred folders with ten files each: a thousand nodes, never more than a hundred of them in flight.
    for (int i = 0; i < 1000; ++i)
        tree.File("f" + QByteArray::number(i / 10) + '/' + QByteArray::number(i) + ".png");
    const auto cancelAfter = [&](int count)
    {
        Manager manager(nullptr);
        bool done = false;
        const AfterSignals stage(&manager, count,
                                 [&]
                                 {
                                     manager.Cancel();
                                     done = true;
                                 });
        manager.ScanFolders({tree.Path()});
        QVERIFY(RunUntil([&] { return done; }));
    };
    for (int i = 0; i < 3; ++i)
        cancelAfter(900);
    Settle();
    const std::size_t before = LiveBytes();
    for (int i = 0; i < 20; ++i)
        cancelAfter(900);
    Settle();
    const std::size_t after = LiveBytes();
    // By then runs have ten files. A node has less than 2,000 bytes; the 800 that were linked are gone.
    QVERIFY2(after < before + 20 * 10 * 2000, qPrintable(QString("%1 -> %2").arg(before).arg(after)));
}

NV_TEST_MAIN(tst_KXAddToBatchManager)
#include "tst_KXAddToBatchManager.moc"
