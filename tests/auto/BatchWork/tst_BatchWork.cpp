// One image at a time: what is written, what is left alone, and every way to fail.

#include "BatchWork.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <memory>

#include "FolderTree.h"
#include "ShortMemory.h"
#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

QImage Picture(const QSize& size = QSize(40, 20))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    return image;
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

// A JPEG that says it has to be turned by a quarter to the right.
QByteArray TurnedJpeg()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    Picture().save(&buffer, "jpg", 100);
    const QByteArray exif = QByteArray::fromHex("ffe10022457869660000"
                                                "4d4d002a00000008"
                                                "000101120003000000010006000000000000");
    return bytes.left(2) + exif + bytes.mid(2);
}

BatchChange Half()
{
    BatchChange change;
    change.resize = BatchChange::ByPercent;
    change.percent = 50;
    return change;
}

} // namespace

class tst_BatchWork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(Picture().save(path("a.png")));
    }

    void anImageIsChangedAndWritten()
    {
        BatchChange change = Half();
        change.rotation = 90;

        const BatchOutcome outcome = RunTask({path("a.png"), path("out/deep/b.bmp")}, change);

        QCOMPARE(outcome.status, BatchOutcome::Done);
        QCOMPARE(outcome.source, path("a.png"));
        QCOMPARE(outcome.target, path("out/deep/b.bmp"));
        const QImage image(outcome.target);
        QCOMPARE(image.size(), QSize(10, 20));
        QCOMPARE(image.pixelColor(5, 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(5, 17), QColor(Qt::white));
    }

    void theSourceStaysAsItIs()
    {
        const QByteArray before = BytesOf(path("a.png"));

        RunTask({path("a.png"), path("a.png")}, Half());

        QCOMPARE(BytesOf(path("a.png")), before);
        QCOMPARE(QImage(path("a (2).png")).size(), QSize(20, 10));
    }

    void anUprightImageComesOutUpright()
    {
        WriteBytes(path("turned.jpg"), TurnedJpeg());

        const BatchOutcome outcome = RunTask({path("turned.jpg"), path("out.png")}, Half());

        const QImage image(outcome.target);
        QCOMPARE(image.size(), QSize(10, 20));
        QVERIFY(image.pixelColor(5, 2).green() < 60);
        QVERIFY(image.pixelColor(5, 17).green() > 200);
    }

    void anImageThatNeedsNoChangeIsCopiedByteForByte()
    {
        WriteBytes(path("turned.jpg"), TurnedJpeg());
        BatchChange fit;
        fit.resize = BatchChange::FitWithin;

        const BatchOutcome outcome = RunTask({path("turned.jpg"), path("out/copy.JPG")}, fit);

        QCOMPARE(outcome.status, BatchOutcome::Done);
        QCOMPARE(BytesOf(path("out/copy.JPG")), TurnedJpeg());
    }

    void aFileThatCameMeanwhileIsNotOverwritten()
    {
        WriteBytes(path("out.png"), "mine");
        WriteBytes(path("out (2).png"), "mine too");

        const BatchOutcome outcome = RunTask({path("a.png"), path("out.png")}, Half());

        QCOMPARE(outcome.target, path("out (3).png"));
        QCOMPARE(BytesOf(path("out.png")), QByteArray("mine"));
        QCOMPARE(BytesOf(path("out (2).png")), QByteArray("mine too"));
    }

    void aLinkToNothingIsNotWrittenThrough()
    {
        QVERIFY(QFile::link(path("elsewhere.png"), path("out.png")));

        const BatchOutcome outcome = RunTask({path("a.png"), path("out.png")}, Half());

        QCOMPARE(outcome.target, path("out (2).png"));
        QVERIFY(!QFile::exists(path("elsewhere.png")));
    }

    void whatIsNoPictureFailsWithAReason_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("text") << "text.png"
                              << "not a picture";
        QTest::newRow("empty") << "empty.png"
                               << "empty";
        QTest::newRow("folder") << "folder.png"
                                << "folder";
        QTest::newRow("cut short") << "short.bmp"
                                   << "cut short";
    }
    void whatIsNoPictureFailsWithAReason()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        WriteBytes(path("text.png"), "text");
        WriteBytes(path("empty.png"), "");
        QDir().mkdir(path("folder.png"));
        QVERIFY(Picture(QSize(200, 200)).save(path("short.bmp")));
        QVERIFY(QFile::resize(path("short.bmp"), 5000));

        const BatchOutcome outcome = RunTask({path(name), path("out/b.png")}, Half());

        QCOMPARE(outcome.status, BatchOutcome::Failed);
        QVERIFY2(outcome.reason.contains(reason), qPrintable(outcome.reason));
        QVERIFY(!QFile::exists(path("out/b.png")));
    }

    void aResultThatCannotBeWrittenLeavesNothing()
    {
        const BatchOutcome outcome = RunTask({path("a.png"), path("b.nosuchformat")}, Half());

        QCOMPARE(outcome.status, BatchOutcome::Failed);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.png"));
    }

    void aResultThatWouldBeTooLargeFails()
    {
        QVERIFY(Picture(QSize(2000, 2)).save(path("long.png")));
        BatchChange change = Half();
        change.percent = 1000;

        const BatchOutcome outcome = RunTask({path("long.png"), path("out.png")}, change);

        QVERIFY(outcome.reason.contains("too large"));
        QVERIFY(!QFile::exists(path("out.png")));
    }

    void aFolderThatCannotBeMadeFails()
    {
        WriteBytes(path("file"), "");

        const BatchOutcome outcome = RunTask({path("a.png"), path("file/sub/b.png")}, Half());

        QCOMPARE(outcome.status, BatchOutcome::Failed);
        QVERIFY(outcome.reason.contains("could not be made"));
    }

    void aFolderThatCannotBeWrittenFails()
    {
        const FolderTree tree;
        tree.Folder("locked");
        tree.SetMode("locked", 0555);
        QVERIFY(Picture().save(tree.Path("a.png")));
        BatchOutcome outcome;
        {
            const WithoutRights nobody;
            outcome = RunTask({tree.Path("a.png"), tree.Path("locked/b.png")}, Half());
        }

        QCOMPARE(outcome.status, BatchOutcome::Failed);
        QVERIFY(!outcome.reason.isEmpty());
    }

    void aResultForWhichThereIsNoMemoryIsRefusedWithItsSize()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        BatchChange tenfold = Half();
        tenfold.percent = 1000;
        QVERIFY(Picture(QSize(1000, 1000)).save(path("small.png")));
        const ProcessLimit memory(RLIMIT_AS, AddressesTaken() + 400 * 1000 * 1000);

        const BatchOutcome outcome = RunTask({path("small.png"), path("b.png")}, tenfold);

        QCOMPARE(outcome.status, BatchOutcome::Failed);
        QVERIFY2(outcome.reason.startsWith("A picture of 10000 by 10000 pixels needs"),
                 qPrintable(outcome.reason));
        QVERIFY(!QFile::exists(path("b.png")));
    }

    void whatIsGoneIsSkipped()
    {
        const BatchOutcome outcome = RunTask({path("gone.png"), path("b.png")}, Half());

        QCOMPARE(outcome.status, BatchOutcome::Skipped);
        QVERIFY(!QFile::exists(path("b.png")));
    }

    void aCancelledTaskIsSkipped()
    {
        FileProgress progress;
        progress.cancelled = true;

        const BatchOutcome outcome = RunTask({path("a.png"), path("b.png")}, Half(), &progress);

        QCOMPARE(outcome.status, BatchOutcome::Skipped);
        QVERIFY(outcome.reason.contains("cancelled"));
        QVERIFY(!QFile::exists(path("b.png")));
    }

    void aNameAsLongAsTheDiskTakesIsWorkedOn()
    {
        const QString name = QString(251, 'n') + ".png";
        QVERIFY(QFile::copy(path("a.png"), path(name)));

        const BatchOutcome outcome = RunTask({path(name), path(QString(236, 'n') + ".png")}, Half());

        QCOMPARE(outcome.status, BatchOutcome::Done);
    }

    void weightsAreMillionsOfPixels()
    {
        QVERIFY(Picture(QSize(3000, 2000)).save(path("six.png")));
        WriteBytes(path("text.png"), "text");

        QCOMPARE(WeightOf(path("six.png"), Half(), 100), 6);
        QCOMPARE(WeightOf(path("six.png"), Half(), 4), 4);
        QCOMPARE(WeightOf(path("a.png"), Half(), 100), 1);
        QCOMPARE(WeightOf(path("gone.png"), Half(), 100), 1);
        QCOMPARE(WeightOf(path("text.png"), Half(), 100), 20);
        QCOMPARE(WeightOf(path("text.png"), Half(), 10), 10);
        BatchChange threefold = Half();
        threefold.percent = 300;
        QCOMPARE(WeightOf(path("six.png"), threefold, 100), 54);
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_BatchWork)
#include "tst_BatchWork.moc"
