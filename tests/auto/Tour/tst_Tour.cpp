// The tour from end to end: every step goes well, and its pictures and page are there.

#include "Tour.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "NVApplication.h"
#include "SamplePicture.h"
#include "ScanLeak.h"
#include "TestMain.h"

class tst_Tour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStepGoesWell()
    {
        QTemporaryDir folder;
        const QString picture = folder.filePath("picture.png");
        QVERIFY(DrawSamplePicture(QSize(2400, 1600)).save(picture));
        AnnounceWarning(QRegularExpression("Corrupt JPEG data"));

        QCOMPARE(RunTour(folder.filePath("tour/deep"), picture), 0);

        const QDir tour(folder.filePath("tour/deep"));
        const QStringList pictures = tour.entryList({"*.png"}, QDir::Files, QDir::Name);
        QVERIFY(pictures.size() >= 90);
        for (const char* theme : {"dark-*.png", "contrast-*.png"})
            QVERIFY(tour.entryList({theme}, QDir::Files).size() >= 60);
        QFile page(tour.filePath("index.html"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        const bool hasPrinters = qEnvironmentVariableIsSet("NORVANE_PRINT_FOLDER");
        QCOMPARE(text.contains("skipped: there is no print server"), !hasPrinters);
        for (const QString& each : pictures)
        {
            QVERIFY2(text.contains(each), qPrintable(each));
            // The window has a number; a bar or a panel alone has none.
            const int width = each.at(0).isDigit() ? 600 : 100;
            QVERIFY2(QImage(tour.filePath(each)).width() > width, qPrintable(each));
        }
        NVApplication::GetInstance()->SetTheme(0);
    }

    void aPictureThatIsNoneFailsTheTour()
    {
        QTemporaryDir folder;

        QCOMPARE(RunTour(folder.filePath("tour"), folder.filePath("nowhere.png")), 1);
    }

    void aFolderThatCannotBeMadeFailsTheTour()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));

        QCOMPARE(RunTour(folder.filePath("file/tour"), QString()), 1);
    }
};

NV_TEST_MAIN(tst_Tour)
#include "tst_Tour.moc"
