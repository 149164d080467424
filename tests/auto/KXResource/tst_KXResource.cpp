// The pictures of the "theme:" scheme in all themes and sizes, and the style sheets by their roles.

#include "KXResource.h"
#include "TestMain.h"

#include <QDir>
#include <QIcon>
#include <QPixmap>
#include <QPixmapCache>
#include <QTemporaryDir>

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

    void rolesHaveTheirNumbers();
    void eachRoleHasASheetInEachTheme();
    void sheetTakesTheColorsOfTheTheme();
    void sheetIsReadOnceAndShared();
    void sheetsOfAHostAreTaken();
    void unknownRoleHasNoData();
    void missingSheetHasNoData();
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

    for (const char* name : {"tool-bar-brush",
                             "eraser",
                             "tool-bar-stamp",
                             "tool-bar-blurbrush",
                             "healing-brush_white",
                             "tool-bar-dodge",
                             "red-eyes-icon",
                             "tool-bar-bucket",
                             "tool-bar-text",
                             "linear_gradient",
                             "circ_gradient",
                             "rect_gradient",
                             "angle_gradient",
                             "dialog-information",
                             "dialog-warning",
                             "dialog-error",
                             "dialog-question",
                             "picker",
                             "sampler",
                             "ruler",
                             "tool-bar-search",
                             "crop_tool"})
        QTest::newRow(name) << name << 32;
    for (const char* name :
         {"tool-brush",     "tool-hand",        "tool-zoom",      "document-new",   "document-open",
          "document-save",  "document-save-as", "document-close", "edit-undo",      "edit-redo",
          "zoom-in",        "zoom-out",         "zoom-fit",       "zoom-original",  "swap-colors",
          "default-colors", "theme-light",      "theme-dark",     "theme-contrast", "commit_btn1",
          "cancel_btn1",    "tool-picker",      "tool-sampler",   "tool-ruler",     "tool-crop",
          "tool-text",      "switch_arrows",    "top-menu-file"})
        QTest::newRow(name) << name << 24;
    for (const char* name : {"zoom_in", "zoom_out"})
        QTest::newRow(name) << name << 16;
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
    const QStringList names = QDir(Folders[0]).entryList({"*.png"}, QDir::Files);
    QVERIFY(!names.isEmpty());

    for (const QString& folder : Folders)
    {
        QCOMPARE(QDir(folder).entryList({"*.png"}, QDir::Files), names);
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
        for (const QFileInfo& file : QDir(Folders[i]).entryInfoList({"*.png"}, QDir::Files))
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

void tst_KXResource::rolesHaveTheirNumbers()
{
    QCOMPARE(int(KXResource::HistoryItemSelected), 54);
    QCOMPARE(int(KXResource::HistoryItemSelectedHover), 55);
    QCOMPARE(int(KXResource::HistoryItem), 56);
    QCOMPARE(int(KXResource::HistoryItemHover), 57);
    QCOMPARE(int(KXResource::HistoryItemUndone), 58);
    QCOMPARE(int(KXResource::HistoryItemUndoneHover), 59);
}

void tst_KXResource::eachRoleHasASheetInEachTheme()
{
    for (int theme = 0; theme < 3; ++theme)
    {
        KXResource::UseTheme(theme);
        QSet<QString> sheets;
        for (int role = 54; role <= 59; ++role)
        {
            const QVariant data = KXResource::GetData(static_cast<KXResource::ConstRole>(role));
            QCOMPARE(data.userType(), int(QMetaType::QString));
            QVERIFY2(data.toString().startsWith("NVHistoryItem {"), qPrintable(data.toString()));
            sheets.insert(data.toString());
        }
        QCOMPARE(sheets.size(), 6);
    }
}

void tst_KXResource::sheetTakesTheColorsOfTheTheme()
{
    const auto sheet = [] { return KXResource::GetData(KXResource::HistoryItemHover).toString(); };
    const QString light = sheet();
    QVERIFY2(light.contains("#d3e4f7"), qPrintable(light));

    KXResource::UseTheme(KXResource::DarkTheme);
    QVERIFY2(sheet().contains("#3a4f66") && !sheet().contains("#d3e4f7"), qPrintable(sheet()));
    KXResource::UseTheme(KXResource::HighContrastTheme);
    QVERIFY2(sheet().contains("#0000c0") && !sheet().contains("#d3e4f7"), qPrintable(sheet()));
    KXResource::UseTheme(KXResource::LightTheme);
    QCOMPARE(sheet(), light);
}

void tst_KXResource::sheetIsReadOnceAndShared()
{
    const QString one = KXResource::GetData(KXResource::HistoryItem).toString();
    const QString two = KXResource::GetData(KXResource::HistoryItem).toString();

    QCOMPARE(two.constData(), one.constData());
}

void tst_KXResource::sheetsOfAHostAreTaken()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("history-item.qss"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("NVHistoryItem { color: red; }");
    file.close();

    QDir::setSearchPaths("theme", {folder.path(), ":/theme/dark"});

    QCOMPARE(KXResource::GetData(KXResource::HistoryItem).toString(),
             QString("NVHistoryItem { color: red; }"));
    QVERIFY(KXResource::GetData(KXResource::HistoryItemHover).toString().contains("#3a4f66"));
}

void tst_KXResource::unknownRoleHasNoData()
{
    for (const int role : {0, 53, 60, 64})
        QVERIFY(!KXResource::GetData(static_cast<KXResource::ConstRole>(role)).isValid());
}

void tst_KXResource::missingSheetHasNoData()
{
    QDir::setSearchPaths("theme", {});

    QVERIFY(!KXResource::GetData(KXResource::HistoryItem).isValid());
}

NV_TEST_MAIN(tst_KXResource)

#include "tst_KXResource.moc"
