// The node of the batch tree: who owns whom, and where a child lands, for payloads of all sorts.

#include "TestMain.h"

#include "../../../src/TreeNode_p.h"

#include <QThread>
#include <QtConcurrent>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace
{

int s_comparisons = 0;
QStringList s_deleted;
// Called with each payload that goes.
std::function<void()> s_whenDeleted;

// Compares by key; `mark` tells equals apart.
struct Plain
{
    bool operator<(const Plain& other) const { return ++s_comparisons, key < other.key; }
    bool operator<=(const Plain& other) const { return ++s_comparisons, key <= other.key; }
    bool operator>(const Plain& other) const { return ++s_comparisons, key > other.key; }
    bool operator!=(const Plain& other) const { return ++s_comparisons, key != other.key; }

    int key = 0;
    int mark = 0;
};

// The same, and says that it is a total order.
struct Total : Plain
{
    static constexpr bool IsTotallyOrdered = true;
};

// Its != sees what < and > do not.
struct SeesMore : Plain
{
    bool operator!=(const SeesMore& other) const { return mark != other.mark; }
};

// Nothing differs for it.
struct SeesNothing : Plain
{
    bool operator!=(const SeesNothing&) const { return false; }
};

// Equals are not "less or equal".
struct StrictOnly : Plain
{
    bool operator<=(const StrictOnly& other) const { return key < other.key; }
};

// Always "less or equal".
struct AlwaysBelow : Plain
{
    bool operator<=(const AlwaysBelow&) const { return true; }
};

// A partial order: neighbours cannot be told apart.
struct Partial : Plain
{
    bool operator<(const Partial& other) const { return key + 1 < other.key; }
    bool operator<=(const Partial& other) const { return key <= other.key; }
    bool operator>(const Partial& other) const { return key > other.key + 1; }
};

struct Named
{
    ~Named()
    {
        if (!name.isEmpty())
            s_deleted.append(name);
        if (s_whenDeleted)
            s_whenDeleted();
    }
    bool operator<(const Named& other) const { return name < other.name; }
    bool operator<=(const Named& other) const { return name <= other.name; }
    bool operator>(const Named& other) const { return name > other.name; }
    bool operator!=(const Named& other) const { return name != other.name; }

    QString name;
};

template <class Data>
using Tree = KXBatchInputModel::TreeNode<Data>;
using Node = KXBatchInputModel::Node;

template <class Data>
Tree<Data>* keyed(int key, int mark = 0)
{
    auto* node = new Tree<Data>;
    node->data.key = key;
    node->data.mark = mark;
    return node;
}

Tree<Named>* named(const QString& name, Tree<Named>* parent = nullptr)
{
    auto* node = new Tree<Named>;
    node->data.name = name;
    Tree<Named>::AddChild(parent, node);
    return node;
}

template <class Data>
QList<int> keys(const Tree<Data>& node)
{
    QList<int> list;
    for (const Tree<Data>* child : node.children)
        list.append(child->data.key);
    return list;
}

template <class Data>
QList<int> marks(const Tree<Data>& node)
{
    QList<int> list;
    for (const Tree<Data>* child : node.children)
        list.append(child->data.mark);
    return list;
}

// The place by halving, as the interface states it: told as a recursion over what is left of the list.
template <class Data>
int statedPlace(const QList<Data>& list, const Data& data, int low, int high)
{
    const int middle = (low + high) / 2;
    const Data& there = list.at(middle);
    if (low == high)
        return there <= data ? middle + 1 : middle;
    if (there < data)
        return statedPlace(list, data, std::min(middle + 1, list.size() - 1), high);
    if (there > data)
        return statedPlace(list, data, low, middle);
    const auto differs = [&data](const Data& one) { return one != data; };
    return int(std::find_if(list.cbegin() + middle, list.cend(), differs) - list.cbegin());
}

// Random children, most of them equal to others: each lands where it is stated.
template <class Data>
void checkPlaces(uint seed, int keyCount)
{
    std::mt19937 random(seed);
    Tree<Data> parent;
    QList<Data> list;
    for (int i = 0; i < 300; ++i)
    {
        auto* child = keyed<Data>(int(random() % uint(keyCount)), int(random() % 3));
        const Data data = child->data;
        const int stated = list.isEmpty() ? 0 : statedPlace(list, data, 0, list.size() - 1);
        list.insert(stated, data);
        QCOMPARE(Tree<Data>::AddChild(&parent, child), stated);
        QCOMPARE(child->parent, &parent);
        QCOMPARE(parent.children.at(stated), child);
    }
    QCOMPARE(parent.children.size(), 300);
}

// With operators that agree the children are sorted, equals in the order in which they came.
template <class Data>
void checkSorted(uint seed, int keyCount)
{
    std::mt19937 random(seed);
    Tree<Data> parent;
    QList<QPair<int, int>> list;
    for (int i = 0; i < 300; ++i)
    {
        list.append({int(random() % uint(keyCount)), i});
        Tree<Data>::AddChild(&parent, keyed<Data>(list.last().first, i));
    }
    const auto byKey = [](const QPair<int, int>& a, const QPair<int, int>& b) { return a.first < b.first; };
    std::stable_sort(list.begin(), list.end(), byKey);
    for (int i = 0; i < list.size(); ++i)
    {
        QCOMPARE(parent.children.at(i)->data.key, list.at(i).first);
        QCOMPARE(parent.children.at(i)->data.mark, list.at(i).second);
    }
}

} // namespace

class tst_TreeNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { s_deleted.clear(); }
    void newNodeIsEmpty();
    void nodePointerIsPayloadPointer();
    void nullParentOrChildChangesNothing();
    void firstChildGetsPlaceZero();
    void childOfAnotherParentIsMoved();
    void childOfTheSameParentIsPlacedAnew();
    void firstOccurrenceIsTakenFromTheOldParent();
    void equalLandsBehindItsEquals();
    void equalLandsAtTheMiddleIfItDiffersThere();
    void childLandsWhereItIsStated_data();
    void childLandsWhereItIsStated();
    void childrenAreSortedAndEqualsKeepTheirOrder_data();
    void childrenAreSortedAndEqualsKeepTheirOrder();
    void sortedChildTakesOneComparison();
    void anyChildTakesFewComparisons();
    void disagreeingOperatorsTakeNoShortCut();
    void deletingDeletesTheChildrenInOrder();
    void deletingTakesTheNodeFromItsParent();
    void deletingLeavesTheListAloneThatIsWalked();
    void deletingSkipsNullChildren();
    void deletingTheLastChildFirstLeavesTheList();
    void chainOfThousandsIsDeleted();
    void nodesAreMadeOnManyThreads();
};

void tst_TreeNode::newNodeIsEmpty()
{
    const Node node;
    QVERIFY(node.data.roles.isEmpty());
    QVERIFY(node.data.bookmark.IsNull());
    QVERIFY(!node.parent);
    QVERIFY(node.children.isEmpty());
}

void tst_TreeNode::nodePointerIsPayloadPointer()
{
    const Node node;
    QCOMPARE(static_cast<const void*>(&node), static_cast<const void*>(&node.data));
    QCOMPARE(static_cast<const void*>(&node.data), static_cast<const void*>(&node.data.roles));
}

void tst_TreeNode::nullParentOrChildChangesNothing()
{
    Tree<Plain> old;
    auto* child = keyed<Plain>(1);
    Tree<Plain>::AddChild(&old, child);
    QCOMPARE(Tree<Plain>::AddChild(nullptr, child), -1);
    QCOMPARE(child->parent, &old);
    QCOMPARE(old.children.size(), 1);
    QCOMPARE(Tree<Plain>::AddChild(&old, nullptr), -1);
    QCOMPARE(Tree<Plain>::AddChild(nullptr, nullptr), -1);
    QCOMPARE(old.children.size(), 1);
    QCOMPARE(Node::AddChild(nullptr, nullptr), -1);
}

void tst_TreeNode::firstChildGetsPlaceZero()
{
    Tree<Plain> parent;
    s_comparisons = 0;
    QCOMPARE(Tree<Plain>::AddChild(&parent, keyed<Plain>(5)), 0);
    QCOMPARE(s_comparisons, 0);
}

void tst_TreeNode::childOfAnotherParentIsMoved()
{
    Tree<Plain> from;
    Tree<Plain> to;
    auto* child = keyed<Plain>(2);
    Tree<Plain>::AddChild(&from, keyed<Plain>(1));
    Tree<Plain>::AddChild(&from, child);
    Tree<Plain>::AddChild(&to, keyed<Plain>(3));
    QCOMPARE(Tree<Plain>::AddChild(&to, child), 0);
    QCOMPARE(keys(from), QList<int>({1}));
    QCOMPARE(keys(to), QList<int>({2, 3}));
    QCOMPARE(child->parent, &to);
}

void tst_TreeNode::childOfTheSameParentIsPlacedAnew()
{
    Tree<Plain> parent;
    auto* child = keyed<Plain>(1);
    Tree<Plain>::AddChild(&parent, child);
    Tree<Plain>::AddChild(&parent, keyed<Plain>(5));
    child->data.key = 9;
    QCOMPARE(Tree<Plain>::AddChild(&parent, child), 1);
    QCOMPARE(keys(parent), QList<int>({5, 9}));
}

void tst_TreeNode::firstOccurrenceIsTakenFromTheOldParent()
{
    Tree<Plain> from;
    Tree<Plain> to;
    auto* child = keyed<Plain>(1);
    Tree<Plain>::AddChild(&from, child);
    from.children.append(child);
    Tree<Plain>::AddChild(&to, child);
    QCOMPARE(from.children.size(), 1);
    from.children.clear();
}

void tst_TreeNode::equalLandsBehindItsEquals()
{
    Tree<Plain> parent;
    for (int mark = 0; mark < 5; ++mark)
        Tree<Plain>::AddChild(&parent, keyed<Plain>(7, mark));
    Tree<Plain>::AddChild(&parent, keyed<Plain>(9, 90));
    Tree<Plain>::AddChild(&parent, keyed<Plain>(1, 10));
    QCOMPARE(Tree<Plain>::AddChild(&parent, keyed<Plain>(7, 5)), 6);
    QCOMPARE(marks(parent), QList<int>({10, 0, 1, 2, 3, 4, 5, 90}));
}

void tst_TreeNode::equalLandsAtTheMiddleIfItDiffersThere()
{
    Tree<SeesMore> parent;
    for (int mark = 0; mark < 5; ++mark)
        parent.children.append(keyed<SeesMore>(7, mark));
    // Place 2 is the first that is looked at.
    QCOMPARE(Tree<SeesMore>::AddChild(&parent, keyed<SeesMore>(7, 9)), 2);
    // The middle is alike now, the next one is not.
    QCOMPARE(Tree<SeesMore>::AddChild(&parent, keyed<SeesMore>(7, 9)), 3);
}

void tst_TreeNode::childLandsWhereItIsStated_data()
{
    QTest::addColumn<QString>("operators");
    QTest::addColumn<int>("keyCount");
    for (const char* operators :
         {"agreeing", "total", "!= sees more", "!= sees nothing", "<= is <", "<= is true", "partial"})
    {
        for (int keyCount : {1, 2, 7, 40, 1000})
            QTest::addRow("%s, %d keys", operators, keyCount) << QString(operators) << keyCount;
    }
}

void tst_TreeNode::childLandsWhereItIsStated()
{
    QFETCH(QString, operators);
    QFETCH(int, keyCount);
    const QHash<QString, void (*)(uint, int)> checks = {
        {"agreeing", checkPlaces<Plain>},        {"total", checkPlaces<Total>},
        {"!= sees more", checkPlaces<SeesMore>}, {"!= sees nothing", checkPlaces<SeesNothing>},
        {"<= is <", checkPlaces<StrictOnly>},    {"<= is true", checkPlaces<AlwaysBelow>},
        {"partial", checkPlaces<Partial>},
    };
    QVERIFY(checks.contains(operators));
    for (uint seed = 1; seed <= 20; ++seed)
    {
        checks.value(operators)(seed, keyCount);
        if (QTest::currentTestFailed())
            qInfo("seed %u", seed);
        QVERIFY(!QTest::currentTestFailed());
    }
}

void tst_TreeNode::childrenAreSortedAndEqualsKeepTheirOrder_data()
{
    QTest::addColumn<int>("keyCount");
    for (int keyCount : {1, 2, 7, 40, 1000})
        QTest::addRow("%d keys", keyCount) << keyCount;
}

void tst_TreeNode::childrenAreSortedAndEqualsKeepTheirOrder()
{
    QFETCH(int, keyCount);
    for (uint seed = 1; seed <= 20; ++seed)
    {
        checkSorted<Plain>(seed, keyCount);
        checkSorted<Total>(seed, keyCount);
        QVERIFY(!QTest::currentTestFailed());
    }
}

void tst_TreeNode::sortedChildTakesOneComparison()
{
    Tree<Total> parent;
    Tree<Total>::AddChild(&parent, keyed<Total>(0));
    s_comparisons = 0;
    for (int key = 1; key <= 1000; ++key)
        Tree<Total>::AddChild(&parent, keyed<Total>(key));
    QCOMPARE(s_comparisons, 1000);
}

void tst_TreeNode::anyChildTakesFewComparisons()
{
    std::mt19937 random(4);
    Tree<Total> parent;
    QList<int> order;
    for (int key = 0; key < 4096; ++key)
        order.append(key);
    std::shuffle(order.begin(), order.end(), random);
    for (int i = 0; i < order.size(); ++i)
    {
        s_comparisons = 0;
        Tree<Total>::AddChild(&parent, keyed<Total>(order.at(i)));
        QVERIFY(s_comparisons <= 2 * std::ceil(std::log2(qMax(1, i))) + 2);
    }
}

void tst_TreeNode::disagreeingOperatorsTakeNoShortCut()
{
    // The last child is less, but the first one looked at cannot be told from the new one.
    Tree<Partial> parent;
    parent.children.append(keyed<Partial>(5));
    parent.children.append(keyed<Partial>(3));
    QCOMPARE(Tree<Partial>::AddChild(&parent, keyed<Partial>(6)), 0);
}

void tst_TreeNode::deletingDeletesTheChildrenInOrder()
{
    auto* root = named("root");
    auto* a = named("a", root);
    named("b", root);
    named("a2", a);
    named("a1", a);
    delete root;
    // A payload goes after the children of its node.
    QCOMPARE(s_deleted, QStringList({"a1", "a2", "a", "b", "root"}));
}

void tst_TreeNode::deletingTakesTheNodeFromItsParent()
{
    Tree<Named> root;
    auto* a = named("a", &root);
    auto* b = named("b", &root);
    named("below a", a);
    delete a;
    QCOMPARE(root.children, QList<Tree<Named>*>({b}));
    QCOMPARE(s_deleted, QStringList({"below a", "a"}));
}

void tst_TreeNode::deletingLeavesTheListAloneThatIsWalked()
{
    auto* root = new Tree<Named>;
    for (const char* name : {"a", "b", "c"})
        named(name, root);
    QList<int> sizes;
    s_whenDeleted = [&]
    {
        if (sizes.size() < 3)
            sizes << root->children.size();
    };
    delete root;
    s_whenDeleted = nullptr;
    QCOMPARE(sizes, QList<int>({3, 3, 3}));
}

void tst_TreeNode::deletingSkipsNullChildren()
{
    {
        Tree<Named> root;
        named("a", &root);
        root.children.prepend(nullptr);
        root.children.append(nullptr);
    }
    QCOMPARE(s_deleted, QStringList({"a"}));
}

void tst_TreeNode::deletingTheLastChildFirstLeavesTheList()
{
    Tree<Named> root;
    named("a", &root);
    auto* b = named("b", &root);
    delete b;
    delete root.children.first();
    QVERIFY(root.children.isEmpty());
}

void tst_TreeNode::chainOfThousandsIsDeleted()
{
    auto* root = named("0");
    auto* last = root;
    for (int i = 1; i < 4000; ++i)
        last = named(QString::number(i), last);
    delete root;
    QCOMPARE(s_deleted.size(), 4000);
    QCOMPARE(s_deleted.first(), QString("3999"));
}

void tst_TreeNode::nodesAreMadeOnManyThreads()
{
    QList<int> numbers;
    for (int i = 0; i < 500; ++i)
        numbers.append(i);
    const std::function<Node*(const int&)> make = [](const int& number)
    {
        auto* node = new Node;
        node->data.roles.insert(Qt::DisplayRole, QString::number(number));
        return node;
    };
    Node parent;
    const QList<Node*> nodes = QtConcurrent::mapped(numbers, make).results();
    for (Node* node : nodes)
        Node::AddChild(&parent, node);
    QCOMPARE(parent.children.size(), 500);
    for (int i = 0; i < 500; ++i)
        QCOMPARE(parent.children.at(i)->data.roles.value(Qt::DisplayRole).toString(), QString::number(i));
}

NV_TEST_MAIN(tst_TreeNode)

#include "tst_TreeNode.moc"
