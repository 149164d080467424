// Reading and writing files: every format there is, and everything that can be wrong with a file.

#include "DocumentFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QTemporaryDir>
#include <QtEndian>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

#include "KXDocumentInterface.h"
#include "ProcessLimit.h"
#include "SamplePicture.h"
#include "ShortMemory.h"
#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

// Files that only their owner may touch are those of somebody else in this scope. Without effect unless root.
class AsNobody
{
public:
    AsNobody() { m_isOther = geteuid() == 0 && seteuid(65534) == 0; }
    ~AsNobody()
    {
        if (m_isOther && seteuid(0) != 0)
            qFatal("no way back to root");
    }

private:
    bool m_isOther = false;
};

QImage Transparent()
{
    QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.fillRect(0, 0, 30, 40, QColor(200, 30, 60));
    painter.fillRect(0, 0, 60, 10, QColor(10, 200, 60, 100));
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
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, 20, 20, Qt::red);
    image.save(&buffer, "jpg", 100);
    const QByteArray exif = QByteArray::fromHex("ffe10022457869660000"
                                                "4d4d002a00000008"
                                                "000101120003000000010006000000000000");
    return bytes.left(2) + exif + bytes.mid(2);
}

// Of the shades of a grey picture: a white point and a curve.
QByteArray GrayProfile()
{
    QByteArray bytes(196, 0);
    const auto put = [&bytes](int at, quint32 value) { qToBigEndian(value, bytes.data() + at); };
    put(0, quint32(bytes.size()));
    put(8, 0x02400000);
    bytes.replace(12, 12, "mntrGRAYXYZ ");
    bytes.replace(36, 4, "acsp");
    const quint32 white[] = {0xf6d6, 0x10000, 0xd32d};
    for (int i = 0; i < 3; ++i)
    {
        put(68 + 4 * i, white[i]);
        put(164 + 4 * i, white[i]);
    }
    put(128, 2);
    bytes.replace(132, 4, "wtpt");
    put(136, 156);
    put(140, 20);
    bytes.replace(144, 4, "kTRC");
    put(148, 176);
    put(152, 14);
    bytes.replace(156, 4, "XYZ ");
    bytes.replace(176, 4, "curv");
    put(184, 1);
    // 2.2 in 256ths.
    put(188, 0x02330000);
    return bytes;
}

} // namespace

class tst_DocumentFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void losslessFormatsGiveBackEachPixel_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* suffix : {"png", "bmp", "tif", "tiff", "ppm", "tga"})
            QTest::newRow(suffix) << QString::fromLatin1(suffix);
    }
    void losslessFormatsGiveBackEachPixel()
    {
        QFETCH(QString, suffix);
        if (!HasWritableSuffix("x." + suffix))
            QSKIP("no plugin writes it here: install qt5-image-formats-plugins");
        const QImage picture =
            DrawSamplePicture(QSize(123, 77)).convertToFormat(QImage::Format_ARGB32_Premultiplied);

        const SaveResult saved = SaveDocumentFile(picture, path("a." + suffix));
        const LoadResult loaded = LoadDocumentFile(path("a." + suffix));

        QVERIFY2(saved.ok, qPrintable(saved.error));
        QVERIFY2(loaded.error.isEmpty(), qPrintable(loaded.error));
        QCOMPARE(loaded.image.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(loaded.image, picture);
    }

    void pngKeepsTransparencyAndResolution()
    {
        QImage picture = Transparent();
        picture.setDotsPerMeterX(5906);
        picture.setDotsPerMeterY(5906);

        QVERIFY(SaveDocumentFile(picture, path("a.png")).ok);

        const LoadResult loaded = LoadDocumentFile(path("a.png"));
        QCOMPARE(loaded.image, picture);
        QCOMPARE(loaded.image.dotsPerMeterX(), 5906);
    }

    void jpegGetsTransparentPartsOnWhite()
    {
        QVERIFY(SaveDocumentFile(Transparent(), path("a.JPG")).ok);

        const QImage loaded = LoadDocumentFile(path("a.JPG")).image;
        QVERIFY(qRed(loaded.pixel(50, 30)) > 250 && qBlue(loaded.pixel(50, 30)) > 250);
        QVERIFY(qGreen(loaded.pixel(10, 30)) < 50);
    }

    void jpegKeepsTheColorsThatAreMeant_data()
    {
        QTest::addColumn<QColorSpace>("space");
        QTest::addColumn<QColorSpace>("kept");
        const QColorSpace adobe(QColorSpace::AdobeRgb);
        QTest::newRow("a profile of its own") << adobe << adobe;
        QTest::newRow("none") << QColorSpace() << QColorSpace();
        const QColorSpace gray = QColorSpace::fromIccProfile(GrayProfile());
        QVERIFY(gray.isValid());
        QTest::newRow("that of a grey picture") << gray << QColorSpace();
    }
    void jpegKeepsTheColorsThatAreMeant()
    {
        QFETCH(QColorSpace, space);
        QFETCH(QColorSpace, kept);
        QImage image = Transparent();
        image.setColorSpace(space);

        QVERIFY(SaveDocumentFile(image, path("a.jpg")).ok);

        QCOMPARE(LoadDocumentFile(path("a.jpg")).image.colorSpace(), kept);
    }

    void everyWritableFormatIsWrittenAndReadOrSaysWhyNot()
    {
        const QImage picture = DrawSamplePicture(QSize(64, 48));
        for (const QString& suffix : WritableSuffixes())
        {
            if (suffix.startsWith("ep"))
                continue; // made by another program, which need not be there
            const SaveResult saved = SaveDocumentFile(picture, path("a." + suffix));
            QVERIFY2(saved.ok != !saved.error.isEmpty(), qPrintable(suffix));
            if (saved.ok && ReadableSuffixes().contains(suffix))
            {
                const LoadResult loaded = LoadDocumentFile(path("a." + suffix));
                QVERIFY2(!loaded.image.isNull(), qPrintable(suffix + ": " + loaded.error));
            }
        }
    }

    void jpegIsTurnedAsTheCameraWasHeld()
    {
        WriteBytes(path("a.jpg"), TurnedJpeg());

        const LoadResult loaded = LoadDocumentFile(path("a.jpg"));

        QCOMPARE(loaded.error, QString());
        QCOMPARE(loaded.image.size(), QSize(20, 40));
        QVERIFY(qGreen(loaded.image.pixel(10, 5)) < 40);
        QVERIFY(qGreen(loaded.image.pixel(10, 35)) > 200);
    }

    void aWrongSuffixDoesNoHarm()
    {
        QVERIFY(SaveDocumentFile(Transparent(), path("a.png")).ok);
        QVERIFY(QFile::rename(path("a.png"), path("b.jpg")));

        QCOMPARE(LoadDocumentFile(path("b.jpg")).image, Transparent());
    }

    void whatIsNoPictureIsRefusedWithTheReason_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not there") << "nowhere.png"
                                   << "does not exist";
        QTest::newRow("a folder") << "folder.png"
                                  << "folder";
        QTest::newRow("a pipe") << "pipe.png"
                                << "pipe";
        QTest::newRow("empty") << "empty.png"
                               << "empty";
        QTest::newRow("text") << "text.png"
                              << "not a picture";
        QTest::newRow("text without suffix") << "text"
                                             << "not a picture";
        QTest::newRow("larger than a document may be") << "large.pgm"
                                                       << "10000 pixels";
        QTest::newRow("dangling link") << "link.png"
                                       << "does not exist";
    }
    void whatIsNoPictureIsRefusedWithTheReason()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(QDir().mkdir(path("folder.png")));
        QCOMPARE(mkfifo(qPrintable(path("pipe.png")), 0600), 0);
        WriteBytes(path("empty.png"), QByteArray());
        WriteBytes(path("text.png"), "A text.\n");
        WriteBytes(path("text"), "A text.\n");
        WriteBytes(path("large.pgm"), "P5\n10001 4\n255\n" + QByteArray(10001 * 4, 'x'));
        QVERIFY(QFile::link(path("gone.png"), path("link.png")));

        const LoadResult loaded = LoadDocumentFile(path(name));

        QVERIFY(loaded.image.isNull());
        QVERIFY2(loaded.error.contains(reason), qPrintable(loaded.error));
    }

    void theLargestDocumentIsOpened()
    {
        WriteBytes(path("a.pgm"), "P5\n10000 1\n255\n" + QByteArray(10000, 'x'));

        QCOMPARE(LoadDocumentFile(path("a.pgm")).image.size(), QSize(10000, 1));
    }

    void aFileThatWasCutShortIsRefused_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<int>("percent");
        QTest::addColumn<QString>("warning");
        for (const int percent : {10, 60, 97})
        {
            const auto row = [percent](const char* suffix, const char* warning)
            {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2 %").arg(suffix).arg(percent)))
                    << QString::fromLatin1(suffix) << percent << QString::fromLatin1(warning);
            };
            row("png", "");
            row("jpg", "Corrupt JPEG");
            row("bmp", "");
            row("ppm", "");
            row("tga", "");
            row("webp", "");
        }
    }
    void aFileThatWasCutShortIsRefused()
    {
        QFETCH(QString, suffix);
        QFETCH(int, percent);
        QFETCH(QString, warning);
        if (!HasWritableSuffix("x." + suffix))
            QSKIP("no plugin writes it here: install qt5-image-formats-plugins");
        QVERIFY(SaveDocumentFile(DrawSamplePicture(QSize(200, 150)), path("a." + suffix)).ok);
        const QByteArray whole = BytesOf(path("a." + suffix));
        WriteBytes(path("a." + suffix), whole.left(whole.size() * percent / 100));

        if (!warning.isEmpty())
            AnnounceWarning(QRegularExpression(warning));
        const LoadResult loaded = LoadDocumentFile(path("a." + suffix));

        QVERIFY(loaded.image.isNull());
        QVERIFY2(!loaded.error.isEmpty(), "no reason");
    }

    void aPictureLargerThanMemoryIsRefusedBeforeItIsDecoded()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("a sanitizer cannot live with a limit of addresses; the plain build has this test");
#endif
        WriteBytes(path("a.pgm"), "P5\n10000 10000\n255\n" + QByteArray(100, 'x'));
        const ProcessLimit memory(RLIMIT_AS, 700u * 1024 * 1024);

        const LoadResult loaded = LoadDocumentFile(path("a.pgm"));

        QCOMPARE(
            loaded.error,
            QString("A picture of 10000 by 10000 pixels needs %1 of memory, which is more than there is.")
                .arg(QLocale().formattedDataSize(1300000000)));
    }

    void aPictureThatCannotBeMadeOpaqueIsRefusedWithItsSize()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        QImage large(2000, 1000, QImage::Format_ARGB32_Premultiplied);
        large.fill(Qt::transparent);
        SaveResult saved;
        {
            const ShortMemory shortMemory;
            saved = SaveDocumentFile(large, path("a.jpg"));
        }

        QVERIFY(!saved.ok);
        QCOMPARE(saved.error, QString("There is not enough memory to write its 2000 by 1000 pixels."));
        QVERIFY(!QFile::exists(path("a.jpg")));
    }

    void aFileOfAnotherPersonIsRefused()
    {
        QVERIFY(SaveDocumentFile(Transparent(), path("a.png")).ok);
        QVERIFY(QFile::setPermissions(path("a.png"), QFileDevice::Permissions()));
        const AsNobody nobody;

        const LoadResult loaded = LoadDocumentFile(path("a.png"));

        QVERIFY(loaded.image.isNull());
        QVERIFY(!loaded.error.isEmpty());
    }

    void whatCannotBeWrittenIsRefusedWithTheReason_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no folder") << "nowhere/a.png"
                                   << "does not exist";
        QTest::newRow("a folder") << "folder.png"
                                  << "folder";
        QTest::newRow("a pipe") << "pipe.png"
                                << "pipe";
        QTest::newRow("no suffix") << "picture"
                                   << "ending";
        QTest::newRow("unknown suffix") << "picture.docx"
                                        << ".docx";
    }
    void whatCannotBeWrittenIsRefusedWithTheReason()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QVERIFY(QDir().mkdir(path("folder.png")));
        QCOMPARE(mkfifo(qPrintable(path("pipe.png")), 0600), 0);

        const SaveResult saved = SaveDocumentFile(Transparent(), path(name));

        QVERIFY(!saved.ok);
        QVERIFY2(saved.error.contains(reason), qPrintable(saved.error));
    }

    void aFolderOfAnotherPersonIsRefused()
    {
        const AsNobody nobody;
        if (geteuid() == 0)
            QSKIP("root reads every folder, and this system does not let it become somebody else");
        QTemporaryDir locked;
        QVERIFY(QFile::setPermissions(locked.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));

        const SaveResult saved = SaveDocumentFile(Transparent(), locked.filePath("a.png"));

        QVERIFY(!saved.ok);
        QVERIFY(!saved.error.isEmpty());
        QFile::setPermissions(locked.path(),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }

    void aFullDiskLeavesTheOldFile_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* suffix : {"png", "jpg", "bmp", "tiff"})
            QTest::newRow(suffix) << QString::fromLatin1(suffix);
    }
    void aFullDiskLeavesTheOldFile()
    {
        QFETCH(QString, suffix);
        const QString file = path("a." + suffix);
        QVERIFY(SaveDocumentFile(Transparent(), file).ok);
        const QByteArray before = BytesOf(file);
        const auto handler = signal(SIGXFSZ, SIG_IGN);
        const QImage large = DrawSamplePicture(QSize(1200, 900));
        SaveResult saved;
        {
            const ProcessLimit size(RLIMIT_FSIZE, 30000);
            saved = SaveDocumentFile(large, file);
        }
        signal(SIGXFSZ, handler);

        QVERIFY(!saved.ok);
        QVERIFY2(!saved.error.isEmpty(), "no reason");
        QCOMPARE(BytesOf(file), before);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
    }

    void cancelledReadingGivesNothingAndNoReason()
    {
        QVERIFY(SaveDocumentFile(Transparent(), path("a.bmp")).ok);
        FileProgress progress;
        progress.cancelled = true;

        const LoadResult loaded = LoadDocumentFile(path("a.bmp"), &progress);

        QVERIFY(loaded.image.isNull());
        QCOMPARE(loaded.error, QString());
    }

    void cancelledWritingLeavesTheOldFile()
    {
        QVERIFY(SaveDocumentFile(Transparent(), path("a.png")).ok);
        const QByteArray before = BytesOf(path("a.png"));
        FileProgress progress;
        progress.cancelled = true;

        const SaveResult saved = SaveDocumentFile(DrawSamplePicture(QSize(50, 50)), path("a.png"), &progress);

        QVERIFY(!saved.ok);
        QCOMPARE(saved.error, QString());
        QCOMPARE(BytesOf(path("a.png")), before);
    }

    void readingTellsItsProgress()
    {
        QVERIFY(SaveDocumentFile(DrawSamplePicture(QSize(500, 400)), path("a.bmp")).ok);
        FileProgress progress;

        QVERIFY(LoadDocumentFile(path("a.bmp"), &progress).error.isEmpty());

        QCOMPARE(progress.percent.load(), 100);
    }

    void filtersNameTheFormats()
    {
        QVERIFY(OpenNameFilters().contains("*.jpg"));
        QVERIFY(SaveNameFilters().contains("*.png"));
        QVERIFY(HasWritableSuffix("/a/B.PNG"));
        QVERIFY(!HasWritableSuffix("/a.png/b"));
    }

private:
    QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_DocumentFile)
#include "tst_DocumentFile.moc"
