// Small pictures: how they are read, which ones, and how many are kept.

#include "Thumbnails.h"

#include <QBuffer>
#include <QDir>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

#include "FolderTree.h"
#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

const QSize Box(40, 40);

QImage Picture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    return image;
}

} // namespace

class tst_Thumbnails : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void picturesFitTheBox_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QSize>("expected");
        for (const char* suffix : {"png", "jpg", "bmp"})
        {
            QTest::addRow("wide %s", suffix) << QSize(400, 100) << suffix << QSize(40, 10);
            QTest::addRow("high %s", suffix) << QSize(100, 400) << suffix << QSize(10, 40);
            QTest::addRow("small %s", suffix) << QSize(10, 5) << suffix << QSize(10, 5);
            QTest::addRow("a line %s", suffix) << QSize(4000, 1) << suffix << QSize(40, 1);
        }
    }
    void picturesFitTheBox()
    {
        QFETCH(QSize, size);
        QFETCH(QString, suffix);
        QFETCH(QSize, expected);
        const QString file = write("a." + suffix, size);

        QCOMPARE(ReadThumbnail(file, Box).size(), expected);
    }

    void anUprightPictureStandsUpright()
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        Picture(QSize(400, 200)).save(&buffer, "jpg", 100);
        const QByteArray exif = QByteArray::fromHex("ffe10022457869660000"
                                                    "4d4d002a00000008"
                                                    "000101120003000000010006000000000000");
        QFile file(path("turned.jpg"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes.left(2) + exif + bytes.mid(2));
        file.close();

        const QImage image = ReadThumbnail(file.fileName(), Box);

        QCOMPARE(image.size(), QSize(20, 40));
        QVERIFY(image.pixelColor(10, 5).green() < 60);
        QVERIFY(image.pixelColor(10, 35).green() > 200);
    }

    void aWrongSuffixDoesNoHarm()
    {
        QVERIFY(Picture(QSize(80, 80)).save(path("a.jpg"), "png"));

        QCOMPARE(ReadThumbnail(path("a.jpg"), Box).size(), Box);
    }

    void whatIsNoPictureHasNone()
    {
        const FolderTree tree;
        tree.File("empty.png");
        tree.Fifo("pipe.png");
        tree.Folder("folder.png");

        for (const char* name : {"empty.png", "pipe.png", "folder.png", "gone.png"})
            QVERIFY2(ReadThumbnail(tree.Path(name), Box).isNull(), name);
    }

    void aHugePictureIsNotDecodedInFull()
    {
        QImage image(10000, 5000, QImage::Format_Mono);
        image.fill(0);
        QVERIFY(image.save(path("huge.png")));

        QVERIFY(ReadThumbnail(path("huge.png"), Box).isNull());
    }

    void aCancelledReadGivesNothing()
    {
        FileProgress progress;
        progress.cancelled = true;

        QVERIFY(ReadThumbnail(write("a.bmp", QSize(80, 80)), Box, &progress).isNull());
    }

    void wantedPicturesBecomeReady()
    {
        const QStringList files = {write("a.png", QSize(80, 40)), write("b.png", QSize(40, 80))};
        Thumbnails thumbnails(40);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);
        QVERIFY(thumbnails.Get(files.at(0)).isNull());

        thumbnails.SetWanted(files);

        QTRY_COMPARE(ready.size(), 2);
        QCOMPARE(thumbnails.Get(files.at(0)).size(), QSize(40, 20));
        QCOMPARE(thumbnails.Get(files.at(1)).size(), QSize(20, 40));
        QCOMPARE(thumbnails.GetPending(), 0);
    }

    void whatIsThereIsNotReadAgain()
    {
        const QString file = write("a.png", QSize(80, 40));
        Thumbnails thumbnails(40);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);
        thumbnails.SetWanted({file});
        QTRY_COMPARE(ready.size(), 1);

        thumbnails.SetWanted({});
        thumbnails.SetWanted({file});

        QCOMPARE(thumbnails.GetPending(), 0);
    }

    void whatHasNoneIsNotTriedAgain()
    {
        QFile file(path("text.png"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        Thumbnails thumbnails(40);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);
        thumbnails.SetWanted({file.fileName()});
        QTRY_COMPARE(thumbnails.GetPending(), 0);

        thumbnails.SetWanted({file.fileName()});

        QCOMPARE(thumbnails.GetPending(), 0);
        QCOMPARE(ready.size(), 0);
    }

    void whatIsScrolledAwayIsDropped()
    {
        QStringList files;
        for (int i = 0; i < 50; ++i)
            files += write(QString("%1.png").arg(i), QSize(300, 300));
        Thumbnails thumbnails(40);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);
        thumbnails.SetWanted(files.mid(0, 49));
        QCOMPARE(thumbnails.GetPending(), 49);

        thumbnails.SetWanted({files.at(49)});

        // The one, and those whose reading was cancelled.
        QVERIFY(thumbnails.GetPending() <= 3);
        QTRY_COMPARE(thumbnails.GetPending(), 0);
        QCOMPARE(ready.size(), 1);
        QVERIFY(!thumbnails.Get(files.at(49)).isNull());
    }

    void whatComesBackIntoSightIsReadAfterAll()
    {
        const QStringList files = {write("a.png", QSize(300, 300)), write("b.png", QSize(300, 300))};
        Thumbnails thumbnails(40);
        thumbnails.SetWanted(files);
        thumbnails.SetWanted({});

        thumbnails.SetWanted(files);

        QTRY_VERIFY(!thumbnails.Get(files.at(0)).isNull() && !thumbnails.Get(files.at(1)).isNull());
    }

    void memoryIsBounded()
    {
        QStringList files;
        for (int i = 0; i < 40; ++i)
            files += write(QString("%1.png").arg(i), QSize(60, 60));
        const int limit = 40 * 40 * 4 * 10;
        Thumbnails thumbnails(40, limit);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);

        thumbnails.SetWanted(files);

        QTRY_COMPARE(ready.size(), 40);
        QVERIFY(thumbnails.GetBytes() <= limit);
        QVERIFY(thumbnails.Get(files.first()).isNull());
        QVERIFY(!thumbnails.Get(files.last()).isNull());
    }

    void clearReadsWhatIsWantedAgain()
    {
        const QString file = write("a.png", QSize(80, 40));
        Thumbnails thumbnails(40);
        QSignalSpy ready(&thumbnails, &Thumbnails::Ready);
        thumbnails.SetWanted({file});
        QTRY_COMPARE(ready.size(), 1);
        write("a.png", QSize(40, 80));

        thumbnails.Clear();

        QTRY_COMPARE(ready.size(), 2);
        QCOMPARE(thumbnails.Get(file).size(), QSize(20, 40));
    }

    void destroyedInMidReadItWaits()
    {
        QStringList files;
        for (int i = 0; i < 10; ++i)
            files += write(QString("%1.png").arg(i), QSize(500, 500));
        auto thumbnails = std::make_unique<Thumbnails>(40);
        thumbnails->SetWanted(files);

        thumbnails.reset();

        QCoreApplication::processEvents();
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QString write(const QString& name, const QSize& size) const
    {
        Picture(size).save(path(name));
        return path(name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_Thumbnails)
#include "tst_Thumbnails.moc"
