// The program: a picture of each widget, in each theme and density, and what it says on the command line.

#include "Gallery.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include "GalleryExhibits.h"
#include "GalleryRequest.h"
#include "NVApplication.h"
#include "ProbeImage.h"
#include "TestMain.h"
#include "Theme.h"

namespace
{

struct Outcome
{
    int status = -1;
    QString output;
    QString errors;
};

// The program stands beside the test.
Outcome Run(const QStringList& arguments)
{
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + "/gallery", arguments);
    if (!program.waitForFinished(120000) || program.exitStatus() != QProcess::NormalExit)
        return {-1, QString(), program.errorString()};
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

QStringList FileNames()
{
    QStringList names;
    for (const GalleryRow& row : GalleryRows())
        names.append(QString(row.name) + ".png");
    names.sort();
    return names;
}

QStringList FilesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

} // namespace

class tst_Gallery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        NVApplication::GetInstance()->SetTheme(0);
        qApp->setStyleSheet(QString());
    }

    void everyWidgetHasAPictureInEachTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::newRow("light") << 0;
        QTest::newRow("dark") << 1;
        QTest::newRow("high contrast") << 2;
    }
    void everyWidgetHasAPictureInEachTheme()
    {
        QFETCH(int, theme);
        QTemporaryDir folder;
        NVApplication::GetInstance()->SetTheme(theme);
        const Theme look;

        QCOMPARE(RenderGallery(folder.filePath("deep/pictures")), QStringList());

        const QDir pictures(folder.filePath("deep/pictures"));
        QCOMPARE(FilesIn(pictures.path()), FileNames());
        const QStringList names = FileNames();
        for (const QString& name : names)
            QVERIFY2(ProbeImage(QImage(pictures.filePath(name))).ColorCount() > 5, qPrintable(name));
    }

    void noWidgetLooksTheSameInTwoThemes_data()
    {
        QTest::addColumn<QString>("name");
        for (const GalleryRow& row : GalleryRows())
            QTest::newRow(row.name) << row.name;
    }
    void noWidgetLooksTheSameInTwoThemes()
    {
        QFETCH(QString, name);
        const Theme look;
        QList<QImage> pictures;
        for (int theme = 0; theme < 3; ++theme)
        {
            NVApplication::GetInstance()->SetTheme(theme);
            pictures.append(TakeGalleryPicture(*FindGalleryRow(name)).toImage());
        }

        QVERIFY(pictures.at(0) != pictures.at(1));
        QVERIFY(pictures.at(1) != pictures.at(2));
        QVERIFY(pictures.at(2) != pictures.at(0));
    }

    void aFolderThatCannotBeMadeLeavesAllWithoutPicture()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));

        QCOMPARE(size_t(RenderGallery(folder.filePath("file/pictures")).size()), GalleryRows().size());
        GalleryRequest request;
        request.folder = folder.filePath("file/pictures");
        QCOMPARE(RunGallery(request), 1);
    }

    void theProgramPrintsTheNames()
    {
        const Outcome outcome = Run({"--list"});

        QCOMPARE(outcome.status, 0);
        QStringList names = outcome.output.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(size_t(names.size()), GalleryRows().size());
        QCOMPARE(names.constFirst(), QString("NVBlurToolbar"));
        QCOMPARE(names.constLast(), QString("NVWarpTextDialog"));
    }

    void theProgramWritesAllFilesAtTheDensityAskedFor()
    {
        QTemporaryDir folder;

        const Outcome once = Run({"--render", folder.filePath("once")});
        const Outcome twice = Run({"--render", folder.filePath("twice"), "--scale", "2", "--theme", "dark"});

        QVERIFY2(once.status == 0, qPrintable(once.errors));
        QVERIFY2(twice.status == 0, qPrintable(twice.errors));
        QCOMPARE(FilesIn(folder.filePath("once")), FileNames());
        QCOMPARE(FilesIn(folder.filePath("twice")), FileNames());
        // Of a width that the form fixes.
        const QImage light(folder.filePath("once/KXAddToBatchDialog.png"));
        const QImage dark(folder.filePath("twice/KXAddToBatchDialog.png"));
        QCOMPARE(dark.width(), 2 * light.width());
        QVERIFY(light.pixelColor(2, 2).lightness() > 200);
        QVERIFY(dark.pixelColor(2, 2).lightness() < 80);
    }

    void theProgramFailsWhenPicturesAreMissing()
    {
        const Outcome outcome = Run({"--render", "/dev/null/pictures"});

        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.errors.contains("There is no picture of NVBlurToolbar."));
    }

    void theProgramTellsWhatItCannotDo()
    {
        const Outcome outcome = Run({"--list", "NVZoom"});

        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.errors.contains("gallery: There is no widget \"NVZoom\". --list prints all.\n"),
                 qPrintable(outcome.errors));
        QCOMPARE(outcome.output, QString());
    }
};

NV_TEST_MAIN(tst_Gallery)
#include "tst_Gallery.moc"
