// What a large batch tree costs: siblings sorted in as a scan delivers them, a branch handed to the model,
// and the room that a node takes.

#include <QCoreApplication>
#include <QElapsedTimer>

#include <malloc.h>

#include <algorithm>
#include <random>

#include <benchmark/benchmark.h>

#include "KXBatchInputModel.h"

namespace
{

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

const int SiblingCount = 100000;

double seconds(const QElapsedTimer& clock)
{
    return double(clock.nsecsElapsed()) * 1e-9;
}

// As the scan fills a node: a path is shared by its two roles, a type by all its kind.
Node* makeNode(const QString& path, bool isFile)
{
    static const QString suffix = QStringLiteral("jpg");
    static const QString folder = QStringLiteral("Folder");
    auto* node = new Node;
    QMap<int, QVariant>& roles = node->data.roles;
    roles.insert(Qt::DisplayRole, path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
    roles.insert(Qt::ToolTipRole, path);
    roles.insert(Model::NodeTypeRole, isFile ? suffix : folder);
    roles.insert(Model::NodeIsFileRole, int(isFile));
    roles.insert(Model::NodePathRole, path);
    roles.insert(Model::NodeExistsRole, true);
    roles.insert(Model::NodeFileCountRole, int(isFile));
    return node;
}

QList<Node*> makeSiblings()
{
    QList<Node*> nodes;
    for (int i = 0; i < SiblingCount; ++i)
    {
        const bool isFile = i % 50 != 0;
        const QString name = QStringLiteral("/pictures/of/a/journey/IMG_%1 (%2).jpg").arg(i / 7).arg(i % 7);
        nodes.append(makeNode(name, isFile));
    }
    return nodes;
}

bool standsBefore(const Node* a, const Node* b)
{
    return a->data < b->data;
}

enum Order
{
    Sorted,
    // Sorted blocks of 64, swapped in pairs: two workers deliver them.
    Blocks,
    Shuffled,
};

void arrange(QList<Node*>& nodes, Order order)
{
    std::mt19937 random(7);
    std::shuffle(nodes.begin(), nodes.end(), random);
    if (order == Shuffled)
        return;
    std::sort(nodes.begin(), nodes.end(), standsBefore);
    for (int i = 0; order == Blocks && i + 128 <= nodes.size(); i += 128)
        std::swap_ranges(nodes.begin() + i, nodes.begin() + i + 64, nodes.begin() + i + 64);
}

// AddChild() of all siblings, and in turns std::sort of the shuffled list.
void SortIn(benchmark::State& state)
{
    QList<Node*> nodes = makeSiblings();
    double own = 0.0;
    double sorting = 0.0;
    for (auto _ : state)
    {
        arrange(nodes, Shuffled);
        QElapsedTimer clock;
        clock.start();
        std::sort(nodes.begin(), nodes.end(), standsBefore);
        sorting += seconds(clock);

        arrange(nodes, Order(state.range(0)));
        Node parent;
        clock.start();
        for (Node* node : qAsConst(nodes))
            Node::AddChild(&parent, node);
        const double took = seconds(clock);
        state.SetIterationTime(took);
        own += took;
        parent.children.clear();
        for (Node* node : qAsConst(nodes))
            node->parent = nullptr;
    }
    state.counters["ratio_to_sort"] = own / sorting;
    qDeleteAll(nodes);
}
BENCHMARK(SortIn)->ArgName("order")->Arg(Sorted)->Arg(Blocks)->Arg(Shuffled)->UseManualTime()->Unit(
    benchmark::kMillisecond);

// Folders of 19 images each; paths of 80 characters.
Node* makeBranch(int folderCount)
{
    const QString top = QStringLiteral("/pictures/").leftJustified(50, QLatin1Char('p'));
    Node* branch = makeNode(top, false);
    for (int i = 0; i < folderCount; ++i)
    {
        const QString path = top + QStringLiteral("/folder %1").arg(i, 6, 10, QLatin1Char('0'));
        Node* folder = makeNode(path, false);
        for (int j = 0; j < 19; ++j)
            Node::AddChild(
                folder, makeNode(path + QStringLiteral("/IMG_%1.jpg").arg(j, 7, 10, QLatin1Char('0')), true));
        folder->data.roles.insert(Model::NodeFileCountRole, 19);
        Node::AddChild(branch, folder);
    }
    branch->data.roles.insert(Model::NodeFileCountRole, folderCount * 19);
    return branch;
}

// A branch of 200,000 nodes into an empty model; with 1, into one that holds all of it.
void InsertBranch(benchmark::State& state)
{
    for (auto _ : state)
    {
        Model model;
        if (state.range(0) == 1)
            model.InsertBranch(makeBranch(10000), QModelIndex());
        Node* branch = makeBranch(10000);
        QElapsedTimer clock;
        clock.start();
        model.InsertBranch(branch, QModelIndex());
        state.SetIterationTime(seconds(clock));
    }
}
BENCHMARK(InsertBranch)->ArgName("known")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// 100,000 images one by one as roots, as a drop of many files brings them.
void InsertRoots(benchmark::State& state)
{
    for (auto _ : state)
    {
        Model model;
        const QList<Node*> nodes = makeSiblings();
        QElapsedTimer clock;
        clock.start();
        for (Node* node : nodes)
            model.InsertBranch(node, QModelIndex());
        state.SetIterationTime(seconds(clock));
    }
}
BENCHMARK(InsertRoots)->UseManualTime()->Unit(benchmark::kMillisecond);

// parent() is asked for by a view for each row that it looks at, here of rows below 100,000 siblings.
void ParentOfRow(benchmark::State& state)
{
    Model model;
    Node* top = makeNode(QStringLiteral("/top"), false);
    for (int i = 0; i < SiblingCount; ++i)
    {
        const QString path = QStringLiteral("/top/folder %1").arg(i);
        Node* folder = makeNode(path, false);
        Node::AddChild(folder, makeNode(path + QStringLiteral("/a.jpg"), true));
        Node::AddChild(top, folder);
    }
    const QModelIndex index = model.InsertBranch(top, QModelIndex());
    QList<QModelIndex> rows;
    for (int i = 0; i < SiblingCount; i += 997)
        rows.append(model.index(0, 0, model.index(i, 0, index)));
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(rows.at(i++ % rows.size()).parent());
}
BENCHMARK(ParentOfRow)->Unit(benchmark::kMicrosecond);

// Live bytes of a node with all that it holds, in the model.
void BytesPerNode(benchmark::State& state)
{
    for (auto _ : state)
    {
        const size_t before = mallinfo2().uordblks;
        Model model;
        model.InsertBranch(makeBranch(10000), QModelIndex());
        state.counters["bytes_a_node"] = double(mallinfo2().uordblks - before) / 200001.0;
    }
}
BENCHMARK(BytesPerNode)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
