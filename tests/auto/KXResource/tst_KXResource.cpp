// The pictures of the "theme:" scheme in all themes and sizes.

#include "KXResource.h"
#include "TestMain.h"

#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <QPixmapCache>

#include <cmath>

namespace
{
// Where "theme:" led before anybody called anything.
const QStringList foldersAtStart = QDir::searchPaths(QStringLiteral("theme"));

const QStringList Folders = {":/theme/light", ":/theme/dark", ":/theme/contrast"};

QImage picture(const QString& name)
{
    return QPixmap(name).toImage();
}

double luminance(const QColor& color)
{
    const auto linear = [](double c)
    { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// The best contrast that an opaque pixel of the picture has to the background.
double contrast(const QImage& image, const QColor& background)
{
    const double ground = luminance(background);
    double best = 1.0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() < 255)
                continue;
            const double light = luminance(color);
            best = qMax(best, (qMax(light, ground) + 0.05) / (qMin(light, ground) + 0.05));
        }
    }
    return best;
}
} // namespace

class tst_KXResource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void lightThemeIsInForceBeforeAnyCall();
    void themeNumberChoosesTheFolder_data();
    void themeNumberChoosesTheFolder();
    void picturesOfAllToolsAreThere_data();
    void picturesOfAllToolsAreThere();
    void eachPictureHasAllThemesAndSizes();
    void eachPictureStandsOutFromItsWindow();
    void colorsFollowTheTheme();
    void pixmapLoadedAgainShowsTheNewTheme();
    void pixmapThatIsHeldStaysAsItIs();
    void pixelRatioComesFromTheName();
    void iconTakesTheFineVersionsToo();
    void unknownPictureIsNull();
};

void tst_KXResource::cleanup()
{
    KXResource::UseTheme(KXResource::LightTheme);
}

void tst_KXResource::lightThemeIsInForceBeforeAnyCall()
{
    QCOMPARE(foldersAtStart, QStringList(":/theme/light"));
}

void tst_KXResource::themeNumberChoosesTheFolder_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("folder");

    QTest::newRow("light") << 0 << ":/theme/light";
    QTest::newRow("dark") << 1 << ":/theme/dark";
    QTest::newRow("high contrast") << 2 << ":/theme/contrast";
    QTest::newRow("behind the last") << 3 << ":/theme/light";
    QTest::newRow("negative") << -1 << ":/theme/light";
    QTest::newRow("largest") << std::numeric_limits<int>::max() << ":/theme/light";
}

void tst_KXResource::themeNumberChoosesTheFolder()
{
    QFETCH(int, theme);
    QFETCH(QString, folder);
    KXResource::UseTheme(KXResource::DarkTheme);

    KXResource::UseTheme(theme);

    QCOMPARE(QDir::searchPaths("theme"), QStringList(folder));
}

void tst_KXResource::picturesOfAllToolsAreThere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("side");

    for (const char* name : {"tool-bar-brush", "eraser", "tool-bar-stamp", "tool-bar-blurbrush",
                             "healing-brush_white", "tool-bar-dodge", "red-eyes-icon", "tool-bar-bucket",
                             "linear_gradient", "circ_gradient", "rect_gradient", "angle_gradient",
                             "dialog-information", "dialog-warning", "dialog-error", "dialog-question"})
        QTest::newRow(name) << name << 32;
    for (const char* name :
         {"tool-brush",     "tool-hand",        "tool-zoom",      "document-new",   "document-open",
          "document-save",  "document-save-as", "document-close", "edit-undo",      "edit-redo",
          "zoom-in",        "zoom-out",         "zoom-fit",       "zoom-original",  "swap-colors",
          "default-colors", "theme-light",      "theme-dark",     "theme-contrast", "commit_btn1",
          "cancel_btn1"})
        QTest::newRow(name) << name << 24;
    QTest::newRow("app-norvane") << "app-norvane" << 64;
}

void tst_KXResource::picturesOfAllToolsAreThere()
{
    QFETCH(QString, name);
    QFETCH(int, side);

    QCOMPARE(QPixmap("theme:" + name + ".png").size(), QSize(side, side));
}

void tst_KXResource::eachPictureHasAllThemesAndSizes()
{
    const QStringList names = QDir(Folders[0]).entryList(QDir::Files);
    QVERIFY(!names.isEmpty());

    for (const QString& folder : Folders)
    {
        QCOMPARE(QDir(folder).entryList(QDir::Files), names);
        for (const QString& name : names.filter(QRegularExpression("^[^@]*$")))
        {
            const QString base = folder + '/' + QFileInfo(name).completeBaseName();
            const QSize size = QImage(base + ".png").size();
            QVERIFY2(!size.isEmpty(), qPrintable(base));
            QCOMPARE(QImage(base + "@2x.png").size(), size * 2);
            QCOMPARE(QImage(base + "@3x.png").size(), size * 3);
        }
    }
}

void tst_KXResource::eachPictureStandsOutFromItsWindow()
{
    const QList<QColor> windows = {QColor(240, 241, 243), QColor(45, 47, 51), QColor(Qt::white)};
    const QList<double> enough = {3.0, 3.0, 7.0};

    for (int i = 0; i < Folders.size(); ++i)
    {
        for (const QFileInfo& file : QDir(Folders[i]).entryInfoList(QDir::Files))
        {
            const double best = contrast(QImage(file.filePath()), windows[i]);
            QVERIFY2(best >= enough[i], qPrintable(QString("%1: %2").arg(file.filePath()).arg(best)));
        }
    }
}

void tst_KXResource::colorsFollowTheTheme()
{
    // A place on the handle's outline of the undo arrow: ink alone.
    const QColor light = picture("theme:edit-undo.png").pixelColor(11, 9);
    KXResource::UseTheme(KXResource::DarkTheme);
    const QColor dark = picture("theme:edit-undo.png").pixelColor(11, 9);
    KXResource::UseTheme(KXResource::HighContrastTheme);
    const QColor contrasting = picture("theme:edit-undo.png").pixelColor(11, 9);

    QVERIFY2(light.lightness() < 80, qPrintable(light.name()));
    QVERIFY2(dark.lightness() > 200, qPrintable(dark.name()));
    QCOMPARE(contrasting, QColor(Qt::black));
}

void tst_KXResource::pixmapLoadedAgainShowsTheNewTheme()
{
    const QImage light = picture("theme:eraser.png");
    KXResource::UseTheme(KXResource::DarkTheme);

    const QImage dark = picture("theme:eraser.png");
    KXResource::UseTheme(KXResource::LightTheme);

    QVERIFY(dark != light);
    QCOMPARE(dark, picture(":/theme/dark/eraser.png"));
    QCOMPARE(picture("theme:eraser.png"), light);
}

void tst_KXResource::pixmapThatIsHeldStaysAsItIs()
{
    const QPixmap held("theme:eraser.png");
    const QImage before = held.toImage();

    KXResource::UseTheme(KXResource::DarkTheme);

    QCOMPARE(held.toImage(), before);
}

void tst_KXResource::pixelRatioComesFromTheName()
{
    QCOMPARE(QPixmap("theme:eraser.png").devicePixelRatio(), 1.0);
    QCOMPARE(QPixmap("theme:eraser@2x.png").devicePixelRatio(), 2.0);
    QCOMPARE(QPixmap("theme:eraser@2x.png").size(), QSize(64, 64));
    QCOMPARE(QPixmap("theme:eraser@3x.png").devicePixelRatio(), 3.0);
}

void tst_KXResource::iconTakesTheFineVersionsToo()
{
    const QIcon icon("theme:tool-hand.png");

    QVERIFY(!icon.isNull());
    QCOMPARE(icon.pixmap(24).toImage(), picture("theme:tool-hand.png"));
}

void tst_KXResource::unknownPictureIsNull()
{
    QVERIFY(QPixmap("theme:no-such-picture.png").isNull());
}

NV_TEST_MAIN(tst_KXResource)

#include "tst_KXResource.moc"
