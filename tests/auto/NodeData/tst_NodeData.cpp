// The order of siblings in the batch tree.

#include "KXBatchInputModel.h"
#include "TestMain.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <random>

using NodeData = KXBatchInputModel::NodeData;

// Every allocation of the process goes through here; sanitizers bring their own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define COUNTS_ALLOCATIONS
namespace
{
std::atomic<int> s_allocations{0};
}
extern "C" void* __libc_malloc(size_t size);
extern "C" void* malloc(size_t size)
{
    ++s_allocations;
    return __libc_malloc(size);
}
#endif

namespace
{

NodeData row(const QString& name, bool isFile = true, const QString& path = QString())
{
    NodeData data;
    data.roles.insert(Qt::DisplayRole, name);
    data.roles.insert(KXBatchInputModel::NodeIsFileRole, int(isFile));
    data.roles.insert(KXBatchInputModel::NodePathRole, path);
    return data;
}

// -1, 0 or 1; 9 if the operators contradict one another.
int order(const NodeData& a, const NodeData& b)
{
    const int order = a < b ? -1 : (a > b ? 1 : 0);
    const bool agree = (a <= b) == (order <= 0) && (a != b) == (order != 0) && (b < a) == (order > 0) &&
        (b > a) == (order < 0);
    return agree ? order : 9;
}

QString randomName(std::mt19937& random)
{
    static const QStringList pieces = {"a",
                                       "A",
                                       "b",
                                       "0",
                                       "00",
                                       "1",
                                       "01",
                                       "10",
                                       "9",
                                       "2",
                                       "/",
                                       ":",
                                       " ",
                                       ".",
                                       "_",
                                       "é",
                                       "É",
                                       "ß",
                                       "\u0664",
                                       "\u0661",
                                       "",
                                       "z",
                                       "\n",
                                       "<b>",
                                       QString::fromUcs4(U"\U00010400"),
                                       QString::fromUcs4(U"\U00010428"),
                                       QString(QChar(0xd801))};
    QString name;
    for (int i = int(random() % 5); i >= 0; --i)
        name += pieces.at(int(random() % uint(pieces.size())));
    return name;
}

} // namespace

class tst_NodeData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstStandsBeforeSecond_data();
    void firstStandsBeforeSecond();
    void sameRowsAreEqual();
    void rolesThatAreNoPlaceDoNotCount();
    void emptyRowsAreEqualFoldersWithoutName();
    void nameThatIsNoTextIsTakenAsEmpty();
    void orderIsTotal();
    void comparisonAllocatesNothing();
};

void tst_NodeData::firstStandsBeforeSecond_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const auto rowOf = [](const char* sentence, const QString& first, const QString& second)
    { QTest::newRow(sentence) << first << second; };
    rowOf("alphabet", "abc", "abd");
    rowOf("case does not count", "abc", "ABD");
    rowOf("case does not count, turned round", "ABC", "abd");
    rowOf("capital first where all else is equal", "ABC", "abc");
    rowOf("beginning before the whole", "img", "img1");
    rowOf("nothing before anything", "", "a");
    rowOf("numbers by value", "img9", "img10");
    rowOf("numbers by value amid a name", "IMG_9 (2).jpg", "img_10 (1).jpg");
    rowOf("second number decides", "a1b2", "a1b10");
    rowOf("leading zeros do not count", "a007", "a8");
    rowOf("more zeros first where all else is equal", "a01", "a1");
    rowOf("what follows counts more than leading zeros", "a1b", "a01c");
    rowOf("zero before one", "a0", "a1");
    rowOf("numbers of any length", "a99999999999999999999999998", "a99999999999999999999999999");
    rowOf("longer number is greater", "a9999999999999999999", "a10000000000000000000");
    rowOf("number that goes on is greater", "img12x", "img120");
    rowOf("digit before letter", "a1", "ab");
    rowOf("blank before digit", "a b", "a1");
    rowOf("letters beyond ASCII fold", QString::fromUtf8("ÉCOLE1"), QString::fromUtf8("école2"));
    rowOf("letters beyond 16 bits fold", QString::fromUcs4(U"\U00010400a"),
          QString::fromUcs4(U"\U00010428b"));
    rowOf("letters beyond 16 bits fold, turned round", QString::fromUcs4(U"\U00010428a"),
          QString::fromUcs4(U"\U00010400b"));
    rowOf("digits of other scripts are characters", QString::fromUtf8("٢"), QString::fromUtf8("٣"));
}

void tst_NodeData::firstStandsBeforeSecond()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QCOMPARE(order(row(first), row(second)), -1);
    QCOMPARE(order(row(second), row(first)), 1);
    // A folder stands before a file whatever the names are.
    QCOMPARE(order(row(second, false), row(first, true)), -1);
    QCOMPARE(order(row(first, true), row(second, false)), 1);
    // Paths decide in the same way where names are equal.
    QCOMPARE(order(row("x", true, '/' + first), row("x", true, '/' + second)), -1);
}

void tst_NodeData::sameRowsAreEqual()
{
    QCOMPARE(order(row("a1", true, "/a1"), row("a1", true, "/a1")), 0);
    QCOMPARE(order(row("a1", false, "/a1"), row("a1", false, "/a1")), 0);
}

void tst_NodeData::rolesThatAreNoPlaceDoNotCount()
{
    NodeData one = row("a", true, "/a");
    NodeData other = row("a", true, "/a");
    one.roles.insert(Qt::ToolTipRole, "x");
    one.roles.insert(KXBatchInputModel::NodeFileCountRole, 5);
    other.roles.insert(-1, "before the name");
    other.bookmark = NVFileBookmark("/a");
    QCOMPARE(order(one, other), 0);
    QCOMPARE(order(row("b"), other), 1);
}

void tst_NodeData::emptyRowsAreEqualFoldersWithoutName()
{
    QCOMPARE(order(NodeData(), NodeData()), 0);
    QCOMPARE(order(NodeData(), row("", false)), 0);
    QCOMPARE(order(NodeData(), row("a", false)), -1);
}

void tst_NodeData::nameThatIsNoTextIsTakenAsEmpty()
{
    NodeData odd = row("", true);
    odd.roles.insert(Qt::DisplayRole, 17);
    QCOMPARE(order(odd, row("", true)), 0);
    QCOMPARE(order(odd, row("a", true)), -1);
}

void tst_NodeData::orderIsTotal()
{
    std::mt19937 random(11);
    for (int round = 0; round < 60000; ++round)
    {
        QList<NodeData> three;
        for (int i = 0; i < 3; ++i)
        {
            const QString name = randomName(random);
            three.append(row(name, random() % 4 != 0, random() % 2 ? '/' + name : "/q/" + name));
        }
        std::sort(three.begin(), three.end());
        for (int i = 0; i < 3; ++i)
        {
            QCOMPARE(order(three.at(i), three.at(i)), 0);
            for (int j = i + 1; j < 3; ++j)
                QVERIFY(order(three.at(i), three.at(j)) <= 0);
        }
    }
}

void tst_NodeData::comparisonAllocatesNothing()
{
#ifdef COUNTS_ALLOCATIONS
    const QList<NodeData> rows = {row(QString::fromUtf8("Größe 010.JPG"), true, "/a/b/c"),
                                  row(QString::fromUtf8("größe 10.jpg"), true, "/a/b/c"),
                                  row("a", true, "/a/x"),
                                  row("a", true, "/a/y"),
                                  row("a", false, "/a/y"),
                                  {}};
    const int control = s_allocations;
    delete new NodeData(row("x"));
    QVERIFY(s_allocations > control);
    const int before = s_allocations;
    int sum = 0;
    for (const NodeData& one : rows)
    {
        for (const NodeData& other : rows)
            sum += order(one, other);
    }
    const int after = s_allocations;
    QCOMPARE(after, before);
    QCOMPARE(sum, 0);
#else
    QSKIP("the sanitizer has the allocations; the plain build has this test");
#endif
}

NV_TEST_MAIN(tst_NodeData)

#include "tst_NodeData.moc"
