// Names of pictures for displays of different pixel ratios.

#include "NVStringHelper.h"
#include "TestMain.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <limits>

namespace
{
// Asked before main() makes an application.
const QString nameWithoutApplication = NVStringHelper::DPIAdjustImageName(QStringLiteral("theme:eraser.png"));

const char ExpectedRatio[] = "TST_EXPECTED_RATIO";
} // namespace

class tst_NVStringHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void ratioChoosesTheFirstPictureThatCovers_data();
    void ratioChoosesTheFirstPictureThatCovers();
    void namesThatCannotBeMarkedStay_data();
    void namesThatCannotBeMarkedStay();
    void themeNamesAreResolved();
    void withoutAnApplicationTheNameStays();
    void displayGivesTheRatio();
    void applicationOfEachRatioNamesItsPicture_data();
    void applicationOfEachRatioNamesItsPicture();

private:
    QTemporaryDir m_folder;
};

void tst_NVStringHelper::initTestCase()
{
    const QStringList names = {"all.png",       "all@2x.png",       "all@3x.png",   "two.png",
                               "two@2x.png",    "three.png",        "three@3x.png", "plain.png",
                               "all@2x@2x.png", "dots.in.name.png", "@2x.png",      ".png",
                               "folder.d@2x/",  "odd@2.png",        "odd@2@2x.png", "dots.in.name@2x.png"};
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir::setCurrent(m_folder.path()));
    for (const QString& name : names)
    {
        if (name.endsWith('/'))
        {
            QVERIFY(QDir().mkpath(name));
            continue;
        }
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
}

void tst_NVStringHelper::ratioChoosesTheFirstPictureThatCovers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QString>("expected");

    QTest::newRow("ratio 1") << "all.png" << 1.0 << "all.png";
    QTest::newRow("a little above 1") << "all.png" << 1.01 << "all@2x.png";
    QTest::newRow("ratio 2") << "all.png" << 2.0 << "all@2x.png";
    QTest::newRow("a little above 2") << "all.png" << 2.01 << "all@3x.png";
    QTest::newRow("ratio 3") << "all.png" << 3.0 << "all@3x.png";
    QTest::newRow("beyond all pictures") << "all.png" << 8.0 << "all@3x.png";
    QTest::newRow("infinite") << "all.png" << std::numeric_limits<double>::infinity() << "all@3x.png";
    QTest::newRow("ratio 0") << "all.png" << 0.0 << "all.png";
    QTest::newRow("negative") << "all.png" << -2.0 << "all.png";
    QTest::newRow("not a number") << "all.png" << std::numeric_limits<double>::quiet_NaN() << "all.png";
    QTest::newRow("2, only @3x exists") << "three.png" << 2.0 << "three@3x.png";
    QTest::newRow("3, only @2x exists") << "two.png" << 3.0 << "two@2x.png";
    QTest::newRow("2, no other exists") << "plain.png" << 2.0 << "plain.png";
    QTest::newRow("3, no other exists") << "plain.png" << 3.0 << "plain.png";
    QTest::newRow("nothing exists") << "absent.png" << 2.0 << "absent.png";
    QTest::newRow("dots in the name") << "dots.in.name.png" << 2.0 << "dots.in.name@2x.png";
    QTest::newRow("a mark that is none") << "odd@2.png" << 2.0 << "odd@2@2x.png";
}

void tst_NVStringHelper::ratioChoosesTheFirstPictureThatCovers()
{
    QFETCH(QString, name);
    QFETCH(double, ratio);
    QFETCH(QString, expected);

    QCOMPARE(NVStringHelper::ImageNameForRatio(name, ratio), expected);
}

void tst_NVStringHelper::namesThatCannotBeMarkedStay_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("null") << QString();
    QTest::newRow("empty") << "";
    QTest::newRow("no suffix") << "all";
    QTest::newRow("dot at the end") << "all.";
    QTest::newRow("suffix alone") << ".png";
    QTest::newRow("dot in the folder alone") << "folder.d/all";
    QTest::newRow("folder") << "folder.d/";
    QTest::newRow("scheme alone") << "theme:";
    QTest::newRow("scheme and suffix alone") << "theme:.png";
    QTest::newRow("carries @2x") << "all@2x.png";
    QTest::newRow("carries @3x") << "all@3x.png";
}

void tst_NVStringHelper::namesThatCannotBeMarkedStay()
{
    QFETCH(QString, name);

    QCOMPARE(NVStringHelper::ImageNameForRatio(name, 2.0), name);
    QCOMPARE(NVStringHelper::ImageNameForRatio(name, 3.0), name);
    QCOMPARE(NVStringHelper::DPIAdjustImageName(name), name);
}

void tst_NVStringHelper::themeNamesAreResolved()
{
    QCOMPARE(NVStringHelper::ImageNameForRatio("theme:eraser.png", 2.0), QString("theme:eraser@2x.png"));
    QCOMPARE(NVStringHelper::ImageNameForRatio("theme:eraser.png", 3.0), QString("theme:eraser@3x.png"));
}

void tst_NVStringHelper::withoutAnApplicationTheNameStays()
{
    QCOMPARE(nameWithoutApplication, QString("theme:eraser.png"));
}

void tst_NVStringHelper::displayGivesTheRatio()
{
    const QString mark = qEnvironmentVariable(ExpectedRatio);
    if (!mark.isEmpty())
        QCOMPARE(qGuiApp->devicePixelRatio(), mark.toDouble());

    const QString expected =
        NVStringHelper::ImageNameForRatio("theme:eraser.png", qGuiApp->devicePixelRatio());
    QCOMPARE(NVStringHelper::DPIAdjustImageName("theme:eraser.png"), expected);
    if (!mark.isEmpty())
        QCOMPARE(expected, QString("theme:eraser@%1x.png").arg(mark));
}

void tst_NVStringHelper::applicationOfEachRatioNamesItsPicture_data()
{
    QTest::addColumn<QString>("ratio");
    QTest::newRow("2") << "2";
    QTest::newRow("3") << "3";
}

void tst_NVStringHelper::applicationOfEachRatioNamesItsPicture()
{
    QFETCH(QString, ratio);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", ratio);
    environment.insert(ExpectedRatio, ratio);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(QCoreApplication::applicationFilePath(), {"displayGivesTheRatio"});

    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             process.readAll().constData());
}

NV_TEST_MAIN(tst_NVStringHelper)

#include "tst_NVStringHelper.moc"
