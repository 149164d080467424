// What a survey says of trees of all kinds: counts that are those of a scan, everything that a scan leaves
// out, and links that lead back.

#include "FolderSurvey.h"

#include <QFileInfo>

#include <algorithm>
#include <thread>

#include "FolderTree.h"
#include "TestMain.h"

namespace
{

const QStringList Suffixes = {"jpg", "png"};

// "Reason path", relative to the tree, sorted; with the count if it is not one.
QStringList Entries(const FolderSurvey& survey, const FolderTree& tree)
{
    static const char* const names[] = {"other",   "unreadable", "vanished",  "images",  "back",
                                        "nowhere", "hidden",     "not plain", "not text"};
    QStringList entries;
    for (const PassedOver& entry : survey.passedOver)
    {
        QString text = QString("%1 %2").arg(names[entry.reason], entry.path.mid(tree.Path().size() + 1));
        if (entry.count != 1)
            text += QString(" x%1").arg(entry.count);
        entries += text;
    }
    entries.sort();
    return entries;
}

QStringList Loops(const FolderSurvey& survey, const FolderTree& tree)
{
    QStringList loops;
    for (const LinkLoop& loop : survey.loops)
        loops += loop.path.mid(tree.Path().size() + 1) + " > " + QFileInfo(loop.target).fileName();
    return loops;
}

QStringList Parts(const FolderSurvey& survey, const FolderTree& tree)
{
    QStringList parts;
    for (const QString& path : survey.parts)
        parts += path.mid(tree.Path().size() + 1);
    parts.sort();
    return parts;
}

FolderSurvey Survey(const FolderTree& tree, const QByteArray& name = QByteArray())
{
    return SurveyFolders({tree.Path(name)}, Suffixes);
}

} // namespace

class tst_FolderSurvey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void imagesAreCountedAsFindCountsThem()
    {
        const FolderTree tree;
        tree.Files({"a.png", "B.PNG", "sub/c.Jpg", "sub/deep/d.png", "sub/e.txt", "sub/png", "x.png.txt",
                    "sub/two.dots.png", " blank.png", "new\nline.png", "-rf.png", "<b>%1.png"});
        tree.Link("sub/c.Jpg", "link.jpg");
        tree.Link("sub", "again");
        tree.Fifo("pipe.png");

        const FolderSurvey survey = Survey(tree);

        QCOMPARE(survey.imageCount, FolderTree::CountOfFind(tree.Path(), Suffixes));
        QCOMPARE(survey.imageCounts.value(tree.Path()), 7);
        QCOMPARE(survey.imageCounts.value(tree.Path("sub")), 2);
        QCOMPARE(survey.imageCounts.value(tree.Path("again/deep")), 1);
    }

    void whatAScanLeavesOutIsTold()
    {
        const FolderTree tree;
        tree.Files({"a.png", "b.txt", "sub/c.txt", "sub/d.pdf", ".hidden.png", ".hidden.txt", ".git/e.png"});
        tree.File("bytes-\xff.png");
        tree.File("bytes-\xff.txt");
        tree.Link("nothing", "dangling.png");
        tree.Link("self", "self");
        tree.Fifo("pipe.png");
        tree.Fifo("pipe");

        const FolderSurvey survey = Survey(tree);

        QStringList expected = {"hidden .git",  "hidden .hidden.png",   "not plain pipe.png",
                                "nowhere self", "nowhere dangling.png", "other b.txt",
                                "other sub x2"};
        QStringList entries = Entries(survey, tree);
        const auto isNotText = [](const QString& entry) { return entry.startsWith("not text"); };
        QCOMPARE(std::count_if(entries.cbegin(), entries.cend(), isNotText), 1);
        entries.erase(std::remove_if(entries.begin(), entries.end(), isNotText), entries.end());
        expected.sort();
        QCOMPARE(entries, expected);
        QCOMPARE(survey.imageCount, 1);
    }

    void suffixesOfOtherTypesAreNamed()
    {
        const FolderTree tree;
        tree.Files({"a.txt", "b.TXT", "c.pdf", "noSuffix"});

        const FolderSurvey survey = Survey(tree);

        QCOMPARE(survey.passedOver.size(), 1);
        QCOMPARE(ReasonText(survey.passedOver.first()), QString("4 files of other types: pdf, txt"));
    }

    void manySuffixesAreCutShort()
    {
        const FolderTree tree;
        for (const char* name : {"a.a", "a.b", "a.c", "a.d", "a.e", "a.f"})
            tree.File(name);

        QCOMPARE(Survey(tree).passedOver.first().detail, QString("a, b, c, d, e, ..."));
    }

    void aFolderThatCannotBeReadIsTold()
    {
        const FolderTree tree;
        tree.Files({"a.png", "locked/b.png"});
        tree.SetMode("locked", 0);
        FolderSurvey survey;
        {
            const WithoutRights nobody;
            survey = Survey(tree);
        }
        tree.SetMode("locked", 0755);

        QCOMPARE(Entries(survey, tree), QStringList("unreadable locked"));
        QCOMPARE(survey.imageCount, 1);
    }

    void aFolderThatGivesOutNamesOnlyIsToldOnce()
    {
        const FolderTree tree;
        tree.Files({"a.png", "names/b.png", "names/c.txt", "names/sub/d.png"});
        tree.SetMode("names", 0644);
        FolderSurvey survey;
        {
            const WithoutRights nobody;
            survey = Survey(tree);
        }
        tree.SetMode("names", 0755);

        QCOMPARE(Entries(survey, tree), QStringList("unreadable names"));
        QCOMPARE(survey.imageCount, 1);
    }

    void aLinkIntoALockedFolderIsTold()
    {
        const FolderTree tree;
        tree.Files({"top/a.png", "locked/b.png"});
        tree.Link("../locked/b.png", "top/link.png");
        tree.SetMode("locked", 0);
        FolderSurvey survey;
        {
            const WithoutRights nobody;
            survey = Survey(tree, "top");
        }
        tree.SetMode("locked", 0755);

        QCOMPARE(Entries(survey, tree), QStringList("unreadable top/link.png"));
        QCOMPARE(survey.imageCount, 1);
    }

    void aFolderThatVanishesMeanwhileIsToldAsGone()
    {
        QStringList entries;
        // The survey may be through before the other thread has begun.
        for (int attempt = 0; attempt < 50 && entries.isEmpty(); ++attempt)
        {
            const FolderTree tree;
            for (int i = 0; i < 200; ++i)
                tree.Folder("f" + QByteArray::number(i) + "/sub");
            tree.Folder("z");
            SurveyProgress progress;
            std::thread other(
                [&]
                {
                    // By then the folder above has been listed.
                    while (progress.folders < 2)
                        std::this_thread::yield();
                    tree.Remove("z");
                });
            const FolderSurvey survey = SurveyFolders({tree.Path()}, Suffixes, &progress);
            other.join();
            entries = Entries(survey, tree);
            QCOMPARE(survey.imageCounts.contains(tree.Path("z")), entries.isEmpty());
        }

        QCOMPARE(entries, QStringList("vanished z"));
    }

    void whatLiesInAnotherRequestIsWalkedOnce()
    {
        const FolderTree tree;
        tree.Files({"in/a.png", "in/b.txt", "in/sub/c.png", "in/sub/d.txt", "in/.secret/e.png",
                    "in/.hidden.png", "other.png"});

        const FolderSurvey survey = SurveyFolders(
            {tree.Path("in/sub"), tree.Path("in/a.png"), tree.Path("in/b.txt"), tree.Path("in/.secret"),
             tree.Path("in"), tree.Path("other.png"), tree.Path("in/gone.png")},
            Suffixes);

        QCOMPARE(Entries(survey, tree),
                 QStringList({"hidden in/.hidden.png", "other in/b.txt", "other in/sub/d.txt",
                              "vanished in/gone.png"}));
        QCOMPARE(survey.imageCount, 4);
        QCOMPARE(Parts(survey, tree), QStringList({"in", "in/.secret", "in/gone.png", "other.png"}));
    }

    void aLoopIsFoundFromTheFolderAboveThoughTheOneBelowIsAskedForFirst()
    {
        const FolderTree tree;
        tree.File("top/sub/a.png");
        tree.Link("..", "top/sub/up");

        const FolderSurvey survey = SurveyFolders({tree.Path("top/sub"), tree.Path("top")}, Suffixes);

        QCOMPARE(Loops(survey, tree), QStringList("top/sub/up > top"));
        QCOMPARE(survey.skeletons.size(), 1);
        QCOMPARE(Parts(survey, tree), QStringList("top/sub/a.png"));
    }

    void whatWasAskedForItselfIsLookedAt()
    {
        const FolderTree tree;
        tree.Files({".hidden.png", "a.txt", ".secret/b.png"});

        const FolderSurvey survey = SurveyFolders(
            {tree.Path(".hidden.png"), tree.Path("a.txt"), tree.Path("gone.png"), tree.Path(".secret") + "/"},
            Suffixes);

        QCOMPARE(Entries(survey, tree), QStringList({"other a.txt", "vanished gone.png"}));
        QCOMPARE(survey.imageCount, 2);
        QCOMPARE(survey.parts.last(), tree.Path(".secret"));
    }

    void withoutLoopsThePartsAreWhatWasAskedFor()
    {
        const FolderTree tree;
        tree.Files({"one/a.png", "two/b.png"});
        tree.Link("../one", "two/other");

        const FolderSurvey survey = SurveyFolders({tree.Path("one"), tree.Path("two")}, Suffixes);

        QVERIFY(survey.loops.isEmpty());
        QVERIFY(survey.skeletons.isEmpty());
        QCOMPARE(Parts(survey, tree), QStringList({"one", "two"}));
    }

    void aLinkToAFolderAboveIsALoop_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<QString>("loop");
        QTest::newRow("itself") << QByteArray(".") << "top/sub/link > sub";
        QTest::newRow("the one above") << QByteArray("..") << "top/sub/link > top";
        QTest::newRow("through another") << QByteArray("../sub/../../top") << "top/sub/link > top";
    }
    void aLinkToAFolderAboveIsALoop()
    {
        QFETCH(QByteArray, target);
        QFETCH(QString, loop);
        const FolderTree tree;
        tree.Files({"top/a.png", "top/sub/b.png", "top/other/c.png", "top/sub/d.txt"});
        tree.Link(target, "top/sub/link");

        const FolderSurvey survey = Survey(tree, "top");

        QCOMPARE(Loops(survey, tree), QStringList(loop));
        QVERIFY(survey.hasAllLoops);
        QCOMPARE(survey.imageCount, 3);
        QCOMPARE(survey.skeletons.size(), 1);
        QCOMPARE(survey.skeletons.first()->children.size(), 1);
        QCOMPARE(Parts(survey, tree), QStringList({"top/a.png", "top/other", "top/sub/b.png"}));
    }

    void aLinkAboveWhatWasAskedForIsALoopWhereItComesBack()
    {
        const FolderTree tree;
        tree.Files({"top/sub/a.png", "top/b.png"});
        tree.Link("..", "top/sub/up");

        const FolderSurvey survey = Survey(tree, "top/sub");

        QCOMPARE(Loops(survey, tree), QStringList("top/sub/up/sub > sub"));
        QCOMPARE(survey.imageCount, 2);
        QCOMPARE(Parts(survey, tree), QStringList({"top/sub/a.png", "top/sub/up/b.png"}));
    }

    void twoLinksThatWouldNeverEndAreTwoLoops()
    {
        const FolderTree tree;
        tree.File("top/a.png");
        tree.Link(".", "top/one");
        tree.Link(".", "top/two");

        const FolderSurvey survey = Survey(tree, "top");

        QCOMPARE(Loops(survey, tree), QStringList({"top/one > top", "top/two > top"}));
        QCOMPARE(Parts(survey, tree), QStringList("top/a.png"));
    }

    void foldersThatLeadIntoEachOtherAreFoundFromBothSides()
    {
        const FolderTree tree;
        tree.Files({"top/a/1.png", "top/b/2.png"});
        tree.Link("../b", "top/a/toB");
        tree.Link("../a", "top/b/toA");

        const FolderSurvey survey = Survey(tree, "top");

        QCOMPARE(Loops(survey, tree), QStringList({"top/a/toB/toA > a", "top/b/toA/toB > b"}));
        QCOMPARE(survey.imageCount, 4);
    }

    void aLoopBehindAnotherNameOfAFolderIsFoundAgain()
    {
        const FolderTree tree;
        tree.File("top/real/a.png");
        tree.Link(".", "top/real/loop");
        tree.Link("real", "top/alias");

        QCOMPARE(Loops(Survey(tree, "top"), tree),
                 QStringList({"top/alias/loop > real", "top/real/loop > real"}));
    }

    void aTreeOfVeryManyLoopsIsGivenUp()
    {
        const FolderTree tree;
        tree.File("top/a.png");
        for (int i = 0; i <= MaxLoops; ++i)
            tree.Link(".", "top/link" + QByteArray::number(i));

        const FolderSurvey survey = Survey(tree, "top");

        QCOMPARE(survey.loops.size(), MaxLoops);
        QVERIFY(!survey.hasAllLoops);
        QVERIFY(survey.skeletons.isEmpty());
    }

    void theSkeletonHoldsWhatAScanWouldHaveMade()
    {
        const FolderTree tree;
        tree.File("top/sub/a.png");
        tree.Link("..", "top/sub/up");

        const FolderSurvey survey = Survey(tree, "top");

        const KXBatchInputModel::Node* top = survey.skeletons.first().get();
        QCOMPARE(top->data.roles.value(KXBatchInputModel::NodePathRole).toString(), tree.Path("top"));
        QCOMPARE(top->data.roles.value(KXBatchInputModel::NodeIsFileRole).toInt(), 0);
        QVERIFY(top->data.roles.contains(KXBatchInputModel::NodeModifiedRole));
        QCOMPARE(top->children.first()->data.roles.value(Qt::DisplayRole).toString(), QString("sub"));
    }

    void aDeepChainOfFoldersIsWalked()
    {
        const FolderTree tree;
        QByteArray path = "c";
        for (int depth = 0; depth < 500; ++depth)
            path += "/c";
        tree.File(path + "/a.png");

        QCOMPARE(Survey(tree).imageCount, 1);
    }

    void aCancelledSurveyEndsAtOnce()
    {
        const FolderTree tree;
        tree.Files({"sub/a.png", "b.png"});
        SurveyProgress progress;
        progress.cancelled = true;

        const FolderSurvey survey = SurveyFolders({tree.Path()}, Suffixes, &progress);

        QCOMPARE(survey.imageCount, 0);
        QCOMPARE(progress.folders.load(), 0);
    }

    void aSurveyIsCancelledOnItsWay()
    {
        const FolderTree tree;
        for (int i = 0; i < 300; ++i)
            tree.Folder("f" + QByteArray::number(i) + "/sub/deep");
        SurveyProgress progress;
        std::thread other(
            [&progress]
            {
                while (progress.folders < 3)
                    std::this_thread::yield();
                progress.cancelled = true;
            });

        SurveyFolders({tree.Path()}, Suffixes, &progress);
        const bool wasCancelled = progress.folders < 901;
        other.join();

        QVERIFY(wasCancelled);
    }

    void reasonsAreSentences_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("text");
        QTest::newRow("other") << int(PassedOver::Unsupported) << 1 << "It is of another type";
        QTest::newRow("others") << int(PassedOver::Unsupported) << 3 << "3 files of other types: %1";
        QTest::newRow("unreadable") << int(PassedOver::Unreadable) << 1 << "It cannot be read";
        QTest::newRow("vanished") << int(PassedOver::Vanished) << 1 << "It does not exist any more";
        QTest::newRow("some vanished")
            << int(PassedOver::ImagesVanished) << 2000 << "2,000 images vanished while it was scanned";
        QTest::newRow("one vanished")
            << int(PassedOver::ImagesVanished) << 1 << "1 image vanished while it was scanned";
        QTest::newRow("back") << int(PassedOver::LeadsBack) << 1 << "Leads back into %1";
        QTest::newRow("nowhere") << int(PassedOver::LeadsNowhere) << 1 << "A link to nothing: %1";
        QTest::newRow("hidden") << int(PassedOver::Hidden) << 1 << "It is hidden";
        QTest::newRow("not plain") << int(PassedOver::NotPlain) << 1 << "A device, a pipe or a socket";
        QTest::newRow("not text") << int(PassedOver::NameNotText) << 1
                                  << "The name holds bytes that are no text";
    }
    void reasonsAreSentences()
    {
        QFETCH(int, reason);
        QFETCH(int, count);
        QFETCH(QString, text);

        // A detail may hold what looks like a place for another one.
        QCOMPARE(ReasonText({"/a", PassedOver::Reason(reason), count, "%1"}), text);
    }

    void theTextHasOneLineAnEntry()
    {
        const QVector<PassedOver> entries = {{"/a\nb", PassedOver::Hidden, 1, QString()},
                                             {"/c", PassedOver::Unreadable, 1, QString()}};

        QCOMPARE(PassedOverText(entries), QString("It is hidden\t/a\\nb\nIt cannot be read\t/c\n"));
    }
};

NV_TEST_MAIN(tst_FolderSurvey)
#include "tst_FolderSurvey.moc"
