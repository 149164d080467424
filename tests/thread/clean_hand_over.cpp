// Work that is mapped over the global pool and watched from the main thread, all of it through the toolkit's
// own means. The thread sanitizer must stay silent: what it reports here comes from a toolkit that is not
// built for it, and would hide what it reports of the tests.

#include <QCoreApplication>
#include <QFutureWatcher>
#include <QtConcurrent>

#include <numeric>

namespace
{

constexpr int PIECES = 500;

QVector<int> squares(int piece)
{
    QVector<int> values(100);
    std::iota(values.begin(), values.end(), piece);
    for (int& value : values)
    {
        value *= value;
    }
    return values;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QVector<int> pieces(PIECES);
    std::iota(pieces.begin(), pieces.end(), 0);

    qint64 sum = 0;
    QFutureWatcher<QVector<int>> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::resultReadyAt, &watcher,
                     [&](int index) { sum += watcher.resultAt(index).constFirst(); });
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &application, &QCoreApplication::quit);
    watcher.setFuture(QtConcurrent::mapped(pieces, squares));
    QCoreApplication::exec();

    const qint64 expected = qint64(PIECES - 1) * PIECES * (2 * PIECES - 1) / 6;
    return sum == expected ? 0 : 1;
}
