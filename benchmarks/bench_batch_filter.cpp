// The filter of the batch's tree: what a key typed into it costs in folders of many images.

#include <QApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>

#include "BatchFilterModel.h"
#include "BatchTree.h"
#include "BatchTreeView.h"

namespace
{

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

Node* makeNode(const QString& path, bool isFile)
{
    auto* node = new Node;
    node->data.roles.insert(Qt::DisplayRole, path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
    node->data.roles.insert(Model::NodeIsFileRole, int(isFile));
    node->data.roles.insert(Model::NodePathRole, path);
    node->data.roles.insert(Model::NodeFileCountRole, int(isFile));
    return node;
}

Node* makeFolder(int images)
{
    Node* folder = makeNode(QStringLiteral("/pictures"), false);
    for (int i = 0; i < images; ++i)
        Node::AddChild(folder, makeNode(QStringLiteral("/pictures/IMG_%1.jpg").arg(i), true));
    return folder;
}

// The tree as the window shows it, with one folder, opened.
struct OpenFolder
{
    explicit OpenFolder(int images)
    {
        model.InsertBranch(makeFolder(images), QModelIndex());
        view.show();
        view.expandAll();
    }

    Model model;
    BatchFilterModel filter{&model};
    BatchTreeView view{&filter};
};

// Half of the rows go and come back, no two of them neighbours for long.
void FilterOneFolder(benchmark::State& state)
{
    OpenFolder folder(int(state.range(0)));
    for (auto _ : state)
    {
        for (const char* text : {"5", "57", ""})
        {
            folder.filter.SetText(QString::fromLatin1(text));
            QCoreApplication::processEvents();
        }
    }
}
BENCHMARK(FilterOneFolder)
    ->ArgName("images")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

// What a filter leaves is taken off the list.
void RemoveFiltered(benchmark::State& state)
{
    for (auto _ : state)
    {
        OpenFolder folder(int(state.range(0)));
        folder.filter.SetText(QStringLiteral("5"));
        QElapsedTimer clock;
        clock.start();
        RemoveIndexes(&folder.model, folder.filter.SourceRows({folder.filter.index(0, 0)}));
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
    }
}
BENCHMARK(RemoveFiltered)
    ->ArgName("images")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
