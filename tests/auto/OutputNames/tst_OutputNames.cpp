// Where results go: never on a source, on another result or on what is there already.

#include "OutputNames.h"

#include <QFile>
#include <QSet>

#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

bool Nothing(const QString&)
{
    return false;
}

QStringList Plan(const QVector<BatchInput>& inputs, const OutputRule& rule)
{
    return PlanOutputs(inputs, rule, Nothing);
}

OutputRule Rule(const QString& suffix = QString(), bool keepsFolders = true)
{
    return {"/out", keepsFolders, suffix};
}

} // namespace

class tst_OutputNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersAreKeptFromTheTopRowDown()
    {
        QCOMPARE(Plan({{"/a/Photos/x.png", "/a/Photos"},
                       {"/a/Photos/2019/trip/y.png", "/a/Photos"},
                       {"/b/single.png", QString()}},
                      Rule()),
                 QStringList({"/out/Photos/x.png", "/out/Photos/2019/trip/y.png", "/out/single.png"}));
    }

    void withoutFoldersNamesAreNumbered()
    {
        QCOMPARE(
            Plan({{"/a/x.png", "/a"}, {"/a/b/x.png", "/a"}, {"/a/c/X.PNG", "/a"}}, Rule(QString(), false)),
            QStringList({"/out/x.png", "/out/x (2).png", "/out/X (3).PNG"}));
    }

    void twoTopRowsOfTheSameNameAreKeptApart()
    {
        QCOMPARE(Plan({{"/a/Photos/x.png", "/a/Photos"},
                       {"/b/photos/x.png", "/b/photos"},
                       {"/a/Photos/y.png", "/a/Photos"}},
                      Rule()),
                 QStringList({"/out/Photos/x.png", "/out/photos (2)/x.png", "/out/Photos/y.png"}));
    }

    void theRootOfTheDiskHasNoNameToKeep()
    {
        QCOMPARE(Plan({{"/usr/x.png", "/"}}, Rule()), QStringList("/out/usr/x.png"));
    }

    void theFormatGivesTheSuffix_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("target");
        QTest::newRow("the source's") << "/a/x.JPG"
                                      << ""
                                      << "/out/x.JPG";
        QTest::newRow("another") << "/a/x.JPG"
                                 << "png"
                                 << "/out/x.png";
        QTest::newRow("cannot be written") << "/a/x.svg"
                                           << ""
                                           << "/out/x.png";
        QTest::newRow("two dots") << "/a/x.tar.jpg"
                                  << "png"
                                  << "/out/x.tar.png";
        QTest::newRow("hidden") << "/a/.x.png"
                                << "jpg"
                                << "/out/.x.jpg";
    }
    void theFormatGivesTheSuffix()
    {
        QFETCH(QString, source);
        QFETCH(QString, suffix);
        QFETCH(QString, target);

        QCOMPARE(Plan({{source, QString()}}, Rule(suffix)), QStringList(target));
    }

    void imagesThatBecomeTheSameNameAreNumbered()
    {
        QCOMPARE(Plan({{"/a/x.jpg", "/a"}, {"/a/x.bmp", "/a"}}, Rule("png")),
                 QStringList({"/out/a/x.png", "/out/a/x (2).png"}));
    }

    void aSourceIsNeverOverwritten()
    {
        QCOMPARE(Plan({{"/out/a/x.png", "/out/a"}, {"/out/a/x (2).png", "/out/a"}}, Rule()),
                 QStringList({"/out/a/x (3).png", "/out/a/x (2) (2).png"}));
    }

    void anExistingFileIsNeverOverwritten()
    {
        const QSet<QString> there = {"/out/x.png", "/out/x (2).png"};

        QCOMPARE(PlanOutputs({{"/a/x.png", QString()}}, Rule(),
                             [&there](const QString& path) { return there.contains(path); }),
                 QStringList("/out/x (3).png"));
    }

    void namesThatDifferInTheFormOfTheirLettersAreTheSame()
    {
        const QString composed = QString::fromUtf8("/a/\xc3\xa9.png");
        const QString decomposed = QString::fromUtf8("/a/b/e\xcc\x81.png");

        const QStringList paths = Plan({{composed, QString()}, {decomposed, QString()}}, Rule());

        QVERIFY(paths.at(1).endsWith(" (2).png"));
    }

    void namesAreCutToWhatADiskTakes_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::newRow("latin") << "a";
        QTest::newRow("two bytes") << QString::fromUtf8("\xc3\xa4");
        QTest::newRow("right to left") << QString::fromUtf8("\xd7\x90");
        QTest::newRow("four bytes") << QString::fromUtf8("\xf0\x9f\x98\x80");
    }
    void namesAreCutToWhatADiskTakes()
    {
        QFETCH(QString, letter);
        const QString base = letter.repeated(300);

        const QString one = NumberedName(base, 1, "png");
        const QString other = NumberedName(base, 12345, "png");

        for (const QString& name : {one, other})
        {
            QVERIFY(QFile::encodeName(name).size() <= 240);
            QVERIFY(QFile::encodeName(name).size() > 230);
            QCOMPARE(QString::fromUtf8(name.toUtf8()), name);
            QVERIFY(name.endsWith(".png"));
        }
        QVERIFY(other.contains(" (12345).png"));
    }

    void longNamesThatAreCutToTheSameAreNumbered()
    {
        const QString base(250, 'a');

        const QStringList paths =
            Plan({{"/a/" + base + "1.png", QString()}, {"/a/" + base + "2.png", QString()}}, Rule());

        QVERIFY(paths.at(0) != paths.at(1));
    }

    void manyOfTheSameNameAreNumberedInOneGo()
    {
        QVector<BatchInput> inputs;
        for (int i = 0; i < 20000; ++i)
            inputs.append({QString("/a/%1/x.png").arg(i), "/a"});
        int asked = 0;

        const QStringList paths = PlanOutputs(inputs, Rule(QString(), false),
                                              [&asked](const QString&)
                                              {
                                                  ++asked;
                                                  return false;
                                              });

        QCOMPARE(paths.last(), QString("/out/x (20000).png"));
        QCOMPARE(asked, 20000);
        QCOMPARE(QSet<QString>(paths.cbegin(), paths.cend()).size(), 20000);
    }

    void aCancelEndsThePlan()
    {
        const QVector<BatchInput> inputs(1000, {"/a/x.png", "/a"});
        FileProgress progress;
        int asked = 0;

        const QStringList paths = PlanOutputs(
            inputs, Rule(QString(), false),
            [&](const QString&)
            {
                progress.cancelled = ++asked == 10;
                return false;
            },
            &progress);

        QCOMPARE(paths.size(), 10);
        QCOMPARE(asked, 10);
        QVERIFY(PlanOutputs(inputs, Rule(), Nothing, &progress).isEmpty());
    }
};

NV_TEST_MAIN(tst_OutputNames)
#include "tst_OutputNames.moc"
