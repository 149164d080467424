// What the command line of the gallery asks for.

#include "GalleryRequest.h"

#include <QCommandLineParser>

#include "TestMain.h"

namespace
{

GalleryRequest Read(const QStringList& arguments)
{
    QCommandLineParser parser;
    AddGalleryOptions(parser);
    parser.parse(QStringList("gallery") + arguments);
    return ReadGalleryRequest(parser);
}

} // namespace

class tst_GalleryRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsTheWindowComesInTheLightTheme()
    {
        const GalleryRequest request = Read({});

        QCOMPARE(request.error, QString());
        QCOMPARE(request.folder, QString());
        QCOMPARE(request.name, QString());
        QCOMPARE(request.theme, 0);
        QCOMPARE(request.scale, 1);
        QVERIFY(!request.list);
    }

    void allThatIsGivenIsRead()
    {
        const GalleryRequest request =
            Read({"--render", "some/where", "--theme", "contrast", "--scale", "3", "--list", "NVZoomPanel"});

        QCOMPARE(request.error, QString());
        QCOMPARE(request.folder, QString("some/where"));
        QCOMPARE(request.name, QString("NVZoomPanel"));
        QCOMPARE(request.theme, 2);
        QCOMPARE(request.scale, 3);
        QVERIFY(request.list);
    }

    void theDarkThemeIsNumberOne() { QCOMPARE(Read({"--theme", "dark"}).theme, 1); }

    void whatCannotBeDoneIsTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::newRow("no folder") << QStringList{"--render", ""} << "--render needs a folder.";
        QTest::newRow("unknown theme")
            << QStringList{"--theme", "blue"} << "There is no theme \"blue\", only light, dark, contrast.";
        const QString scale("The scale is a number from 1 to 4, not \"%1\".");
        QTest::newRow("no scale") << QStringList{"--scale", "0"} << scale.arg("0");
        QTest::newRow("too large a scale") << QStringList{"--scale", "5"} << scale.arg("5");
        QTest::newRow("a scale that is no number") << QStringList{"--scale", "two"} << scale.arg("two");
        QTest::newRow("two widgets") << QStringList{"NVZoomPanel", "NVZoomToolbar"}
                                     << "One widget can be shown at a time.";
        QTest::newRow("unknown widget")
            << QStringList{"NVZoom"} << "There is no widget \"NVZoom\". --list prints all.";
    }
    void whatCannotBeDoneIsTold()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);

        QCOMPARE(Read(arguments).error, error);
    }
};

NV_TEST_MAIN(tst_GalleryRequest)
#include "tst_GalleryRequest.moc"
