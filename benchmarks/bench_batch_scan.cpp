// The scan of a batch's input.
//
// Without arguments: a folder and a small tree, as a benchmark like the others. For
// tools/batch-scan-ratios.py, which compares whole programs, one of these instead; a line of figures goes to
// the standard output:
//
//     bench_batch_scan --scan DIR      the scan alone
//     bench_batch_scan --dialog DIR    the scan with its dialog on the screen
//     bench_batch_scan --cancel DIR    how long a cancel waits, at the worst of several moments of the scan
//     bench_batch_scan --walk DIR      what a plain QDirIterator takes to list the same files
//     bench_batch_scan --limit DIR     what the system takes to name them all and to look at each once
//     bench_batch_scan --suffixes      those that count as images

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdlib>

#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "KXAddToBatchDialog.h"
#include "KXAddToBatchManager.h"
#include "NVImageFileManager.h"

namespace
{

using Node = KXBatchInputModel::Node;

// The longest time in which the event loop did not come round.
class GapMeter : public QObject
{
public:
    GapMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] { look(); });
        m_clock.start();
        m_timer.start(2);
    }
    double Longest()
    {
        look();
        return double(m_longest) * 1e-6;
    }

private:
    void look() { m_longest = qMax(m_longest, m_clock.nsecsElapsed()), m_clock.start(); }

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

// The formats of the figures: twenty suffixes, with those that the toolkit reads without any plugin.
QStringList suffixes()
{
    return QStringLiteral(
               "avif bmp cr2 dng exr gif heic jp2 jpeg jpg nef pbm pgm png ppm psd tif webp xbm xpm")
        .split(QLatin1Char(' '));
}

class TwentyFormats
{
public:
    TwentyFormats()
    {
        m_manager.SetGroup(QStringLiteral("bench"), suffixes());
        if (m_manager.GetSupportedReadFormats() != suffixes())
            qFatal("other formats: %s",
                   qPrintable(m_manager.GetSupportedReadFormats().join(QLatin1Char(' '))));
    }

private:
    NVImageFileManager m_manager;
};

int nodesBelow(const Node* node)
{
    int count = 1;
    for (const Node* child : node->children)
        count += nodesBelow(child);
    return count;
}

QList<Node*> scan(const QString& path)
{
    KXAddToBatchManager manager(nullptr);
    QEventLoop loop;
    QObject::connect(&manager, &KXAddToBatchManager::ScanFinished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    manager.ScanFolders({path});
    loop.exec();
    return manager.TakeResult();
}

size_t liveBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// What the process has in memory at present.
double residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QFile::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE));
}

double peakBytes()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) * 1024;
}

void print(int nodes, const QElapsedTimer& clock)
{
    printf("nodes=%d ms=%.1f\n", nodes, double(clock.nsecsElapsed()) * 1e-6);
}

int scanAlone(const QString& path)
{
    const TwentyFormats formats;
    const size_t liveBefore = liveBytes();
    const double residentBefore = residentBytes();
    GapMeter gaps;
    QElapsedTimer clock;
    clock.start();
    const QList<Node*> roots = scan(path);
    const double gap = gaps.Longest();
    const double ms = double(clock.nsecsElapsed()) * 1e-6;
    int nodes = 0;
    for (const Node* root : roots)
        nodes += nodesBelow(root);
    printf("nodes=%d ms=%.1f gap_ms=%.1f bytes_a_node=%.0f peak_a_node=%.0f\n", nodes, ms, gap,
           double(liveBytes() - liveBefore) / qMax(1, nodes),
           (peakBytes() - residentBefore) / qMax(1, nodes));
    fflush(stdout);
    // Taking the tree down is no part of the figures.
    std::_Exit(0);
}

int scanWithDialog(const QString& path)
{
    const TwentyFormats formats;
    KXBatchInputModel model;
    // Fonts and the style are loaded in a running editor.
    KXAddToBatchDialog(&model, nullptr).AddFolders({});
    GapMeter gaps;
    QElapsedTimer clock;
    clock.start();
    KXAddToBatchDialog dialog(&model, nullptr);
    dialog.AddFolders({path});
    const double gap = gaps.Longest();
    const double ms = double(clock.nsecsElapsed()) * 1e-6;
    const int nodes = model.rowCount() ? nodesBelow(model.NodeAt(model.index(0, 0))) : 0;
    printf("nodes=%d ms=%.1f gap_ms=%.1f\n", nodes, ms, gap);
    fflush(stdout);
    std::_Exit(0);
}

int cancelled(const QString& path)
{
    const TwentyFormats formats;
    double longest = 0;
    for (const int moment : {5, 20, 60, 120, 240, 480})
    {
        KXAddToBatchManager manager(nullptr);
        QEventLoop loop;
        QObject::connect(&manager, &KXAddToBatchManager::ScanFinished, &loop, &QEventLoop::quit,
                         Qt::QueuedConnection);
        QTimer::singleShot(moment, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        manager.ScanFolders({path});
        loop.exec();
        QElapsedTimer clock;
        clock.start();
        manager.Cancel();
        longest = qMax(longest, double(clock.nsecsElapsed()) * 1e-6);
    }
    return printf("ms=%.1f\n", longest) < 0;
}

int walk(const QString& path)
{
    QStringList filters;
    for (const QString& suffix : suffixes())
        filters << QStringLiteral("*.") + suffix;
    QElapsedTimer clock;
    clock.start();
    int count = 0;
    QDirIterator files(path, filters, QDir::Files, QDirIterator::Subdirectories);
    for (; files.hasNext(); files.next())
        ++count;
    print(count, clock);
    return 0;
}

bool isWanted(const QByteArray& name, const QList<QByteArray>& endings)
{
    return std::any_of(endings.cbegin(), endings.cend(),
                       [&name](const QByteArray& ending) { return name.endsWith(ending); });
}

// By the system's own calls. Suffixes of the trees are in lower case.
int limit(const QString& path)
{
    QList<QByteArray> endings;
    for (const QString& suffix : suffixes())
        endings << '.' + suffix.toLatin1();
    QElapsedTimer clock;
    clock.start();
    int count = 0;
    QList<QByteArray> folders{QFile::encodeName(path)};
    for (int i = 0; i < folders.size(); ++i)
    {
        DIR* folder = opendir(folders[i]);
        if (!folder)
            continue;
        while (const dirent* entry = readdir(folder))
        {
            const QByteArray name = QByteArray::fromRawData(entry->d_name, int(qstrlen(entry->d_name)));
            if (name.startsWith('.'))
                continue;
            if (entry->d_type == DT_DIR)
                folders << folders[i] + '/' + name;
            struct statx unused;
            if (entry->d_type == DT_REG && isWanted(name, endings) &&
                statx(AT_FDCWD, folders[i] + '/' + name, 0, STATX_BASIC_STATS, &unused) == 0)
                ++count;
        }
        closedir(folder);
    }
    print(count, clock);
    return 0;
}

// Folders with 20 files each, 13 of them images.
void makeTree(const QString& root, int folders, int files)
{
    for (int i = 0; i < folders; ++i)
    {
        const QString folder = QStringLiteral("%1/folder %2").arg(root).arg(i);
        QDir().mkpath(folder);
        for (int j = 0; j < files; ++j)
        {
            const char* suffix = j % 3 == 2 ? "txt" : "jpg";
            QFile file(
                QStringLiteral("%1/IMG_%2 (%3).%4").arg(folder).arg(i).arg(j).arg(QLatin1String(suffix)));
            if (!file.open(QFile::WriteOnly))
                qFatal("cannot write %s", qPrintable(file.fileName()));
        }
    }
}

void OneFolder(benchmark::State& state)
{
    QTemporaryDir dir;
    makeTree(dir.path(), 1, int(state.range(0)));
    ScanFunctor functor;
    for (const QString& suffix : suffixes())
        functor.filters << QStringLiteral("*.") + suffix;
    const QString path = dir.filePath(QStringLiteral("folder 0"));
    for (auto _ : state)
        delete functor(path).node;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OneFolder)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);

void Tree(benchmark::State& state)
{
    const TwentyFormats formats;
    QTemporaryDir dir;
    makeTree(dir.path(), int(state.range(0)), 20);
    for (auto _ : state)
    {
        const QList<Node*> roots = scan(dir.path());
        state.PauseTiming();
        qDeleteAll(roots);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 20);
}
BENCHMARK(Tree)->Arg(100)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    // No plugins but those of platforms, so that the formats are the same everywhere.
    qputenv("QT_QPA_PLATFORM_PLUGIN_PATH",
            (QLibraryInfo::location(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms")).toLocal8Bit());
    QCoreApplication::setLibraryPaths({QStringLiteral("/nowhere")});
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.mid(1) == QStringList(QStringLiteral("--suffixes")))
        return puts(qPrintable(suffixes().join(QLatin1Char(' ')))) < 0;
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--scan"))
        return scanAlone(arguments[2]);
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--dialog"))
        return scanWithDialog(arguments[2]);
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--cancel"))
        return cancelled(arguments[2]);
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--walk"))
        return walk(arguments[2]);
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--limit"))
        return limit(arguments[2]);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
