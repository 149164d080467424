// The themes: colours that can be read, pictures that follow, one sheet with class selectors.

#include "Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>

#include <cmath>

#include "NVApplication.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

double Luminance(const QColor& color)
{
    const auto linear = [](double v)
    { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other)
{
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

} // namespace

class tst_Theme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        NVApplication::GetInstance()->SetTheme(0);
        qApp->setStyleSheet(QString());
    }

    void emptyCheckBoxesAndRadioButtonsCanBeSeenInEachTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("least");
        QTest::newRow("light") << 0 << 1.5;
        QTest::newRow("dark") << 1 << 3.0;
        QTest::newRow("high contrast") << 2 << 10.0;
    }
    void emptyCheckBoxesAndRadioButtonsCanBeSeenInEachTheme()
    {
        QFETCH(int, theme);
        QFETCH(double, least);
        Theme themes;
        NVApplication::GetInstance()->SetTheme(theme);
        QCheckBox check;
        QRadioButton radio;
        for (QAbstractButton* button :
             {static_cast<QAbstractButton*>(&check), static_cast<QAbstractButton*>(&radio)})
        {
            button->setPalette(Theme::Palette(theme));
            button->resize(button->sizeHint());
            const QImage image = button->grab().toImage();
            double most = 1.0;
            for (int x = 0; x < image.width() / 2; ++x)
                most = qMax(most,
                            Contrast(image.pixelColor(x, image.height() / 2),
                                     Theme::Palette(theme).color(QPalette::Window)));
            QVERIFY2(most >= least, qPrintable(QString::number(most)));
        }
    }

    void framesOfGroupsCanBeSeenInEachTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<QString>("title");
        QTest::addColumn<double>("least");
        for (const QString& title : {QString(), QString("Page")})
        {
            QTest::addRow("light, \"%s\"", qPrintable(title)) << 0 << title << 1.5;
            QTest::addRow("dark, \"%s\"", qPrintable(title)) << 1 << title << 1.6;
            QTest::addRow("high contrast, \"%s\"", qPrintable(title)) << 2 << title << 20.0;
        }
    }
    void framesOfGroupsCanBeSeenInEachTheme()
    {
        QFETCH(int, theme);
        QFETCH(QString, title);
        QFETCH(double, least);
        Theme themes;
        NVApplication::GetInstance()->SetTheme(theme);
        QGroupBox group(title);
        group.setPalette(Theme::Palette(theme));
        group.resize(160, 100);
        const QColor window = Theme::Palette(theme).color(QPalette::Window);

        const QImage image = group.grab().toImage();

        QVERIFY(Contrast(image.pixelColor(0, 60), window) >= least);
        QVERIFY(Contrast(image.pixelColor(159, 60), window) >= least);
        QVERIFY(Contrast(image.pixelColor(80, 99), window) >= least);
        QCOMPARE(image.pixelColor(80, 60), window);
        // It is closed: above the contents, and below a title.
        QStyleOptionGroupBox option;
        option.initFrom(&group);
        option.text = title;
        option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
        const QRect contents =
            group.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxContents, &group);
        double most = 1.0;
        for (int y = 0; y < contents.top(); ++y)
            most = qMax(most, Contrast(image.pixelColor(120, y), window));
        QVERIFY2(most >= least, qPrintable(QString::number(most)));
    }

    void linesBetweenThePartsOfABarCanBeSeenInEachTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("least");
        QTest::newRow("light") << 0 << 1.5;
        QTest::newRow("dark") << 1 << 1.6;
        QTest::newRow("high contrast") << 2 << 4.5;
    }
    void linesBetweenThePartsOfABarCanBeSeenInEachTheme()
    {
        QFETCH(int, theme);
        QFETCH(double, least);
        Theme themes;
        NVApplication::GetInstance()->SetTheme(theme);
        QFrame line;
        line.setPalette(Theme::Palette(theme));
        line.setFrameShape(QFrame::StyledPanel);
        line.resize(1, 40);

        const double contrast =
            Contrast(line.grab().toImage().pixelColor(0, 20), Theme::Palette(theme).color(QPalette::Window));

        QVERIFY2(contrast >= least, qPrintable(QString::number(contrast)));
    }

    void theTitleButtonsOfAPanelAreInTheTextColourOfTheTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::newRow("light") << 0;
        QTest::newRow("dark") << 1;
        QTest::newRow("high contrast") << 2;
    }
    // Switched while the panel is open.
    void theTitleButtonsOfAPanelAreInTheTextColourOfTheTheme()
    {
        QFETCH(int, theme);
        Theme themes;
        NVApplication::GetInstance()->SetTheme(theme == 0 ? 1 : 0);
        QDockWidget panel;
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));

        NVApplication::GetInstance()->SetTheme(theme);

        for (const char* name : {"qt_dockwidget_floatbutton", "qt_dockwidget_closebutton"})
        {
            const auto* button = panel.findChild<QAbstractButton*>(name);
            QVERIFY(button);
            for (const qreal ratio : {1.0, 2.0})
            {
                const QImage picture = button->icon()
                                           .pixmap(QSize(10, 10) * ratio)
                                           .toImage()
                                           .convertToFormat(QImage::Format_ARGB32);
                QCOMPARE(picture.size(), QSize(10, 10) * ratio);
                int inked = 0;
                for (int y = 0; y < picture.height(); ++y)
                {
                    for (int x = 0; x < picture.width(); ++x)
                        inked += picture.pixelColor(x, y).alpha() > 128 &&
                            Contrast(picture.pixelColor(x, y),
                                     Theme::Palette(theme).color(QPalette::Window)) >= 7;
                }
                QVERIFY2(inked >= 8 * ratio, qPrintable(QString::number(inked)));
            }
        }
    }

    void pressedInToolButtonStandsOutInEachTheme_data()
    {
        emptyCheckBoxesAndRadioButtonsCanBeSeenInEachTheme_data();
    }
    void pressedInToolButtonStandsOutInEachTheme()
    {
        QFETCH(int, theme);
        Theme themes;
        NVApplication::GetInstance()->SetTheme(theme);
        QToolButton button;
        button.setPalette(Theme::Palette(theme));
        button.setCheckable(true);
        button.resize(24, 24);
        const QColor before = button.grab().toImage().pixelColor(1, 12);

        button.setChecked(true);

        const QColor after = button.grab().toImage().pixelColor(1, 12);
        QVERIFY2(Contrast(before, after) >= 2.5, qPrintable(QString::number(Contrast(before, after))));
    }

    void textsCanBeReadInEachTheme_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("least");
        QTest::newRow("light") << 0 << 7.0;
        QTest::newRow("dark") << 1 << 7.0;
        QTest::newRow("high contrast") << 2 << 20.0;
    }
    void textsCanBeReadInEachTheme()
    {
        QFETCH(int, theme);
        QFETCH(double, least);
        const QPalette palette = Theme::Palette(theme);

        QVERIFY(Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)) >= least);
        QVERIFY(Contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)) >= least);
        QVERIFY(Contrast(palette.color(QPalette::ButtonText), palette.color(QPalette::Button)) >= least);
        QVERIFY(Contrast(palette.color(QPalette::ToolTipText), palette.color(QPalette::ToolTipBase)) >=
                least);
        QVERIFY(Contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) >=
                4.4);
        QVERIFY(Contrast(palette.color(QPalette::Link), palette.color(QPalette::Base)) >= 4.5);
    }

    void anUnknownThemeIsTheLightOne()
    {
        QCOMPARE(Theme::Palette(77), Theme::Palette(0));
        QCOMPARE(Theme::StyleSheet(-1), Theme::StyleSheet(0));
    }

    void theSheetHasClassSelectorsOnly()
    {
        for (int theme = 0; theme < 3; ++theme)
        {
            QString sheet = Theme::StyleSheet(theme);
            sheet.remove(QRegularExpression("\\{[^}]*\\}"));
            for (const QString& selector : sheet.split(' ', Qt::SkipEmptyParts))
                QVERIFY2(QRegularExpression("^Q[A-Za-z]+(::[a-z-]+)?$").match(selector).hasMatch(),
                         qPrintable(selector));
        }
    }

    void aLivingThemeFollowsTheApplication()
    {
        Theme theme;
        QCOMPARE(QApplication::palette().color(QPalette::Window), Theme::Palette(0).color(QPalette::Window));
        SignalLog log(&theme);

        NVApplication::GetInstance()->SetTheme(1);
        NVApplication::GetInstance()->SetTheme(1);

        QCOMPARE(log.Entries(), QStringList("Changed(1)"));
        QCOMPARE(QApplication::palette().color(QPalette::Window), Theme::Palette(1).color(QPalette::Window));
        QCOMPARE(qApp->styleSheet(), Theme::StyleSheet(1));
    }

    void aShownWidgetIsDrawnInTheNewColours()
    {
        Theme theme;
        QWidget window;
        window.resize(60, 60);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        NVApplication::GetInstance()->SetTheme(1);
        QCoreApplication::processEvents();

        const ProbeImage probe(&window);
        NV_VERIFY_NEAR(probe, 30, 30, Theme::Palette(1).color(QPalette::Window), 2);
    }

    void outlinesAreStrongInHighContrast()
    {
        Theme theme;
        QWidget window;
        QSpinBox box(&window);
        box.move(10, 10);
        window.resize(120, 60);
        NVApplication::GetInstance()->SetTheme(2);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        const ProbeImage probe(&window);

        double best = 0;
        for (int y = 8; y < 14; ++y)
            best = qMax(best, Contrast(probe.At(10 + box.width() / 3, y), Qt::white));
        QVERIFY2(best >= 4.5, qPrintable(QString::number(best)));
        NV_VERIFY_NEAR(probe, 3, 3, QColor(Qt::white), 1);
    }

    void iconsAreThoseOfTheTheme()
    {
        Theme theme;
        const QImage light = Theme::Icon("tool-hand").pixmap(24, 24).toImage();

        NVApplication::GetInstance()->SetTheme(1);

        const QImage dark = Theme::Icon("tool-hand").pixmap(24, 24).toImage();
        QVERIFY(!light.isNull() && !dark.isNull());
        QVERIFY(light != dark);
    }

    void everyIconOfTheProgramIsThere_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"document-new",   "document-open", "document-save", "document-save-as", "document-close",
              "edit-undo",      "edit-redo",     "zoom-in",       "zoom-out",         "zoom-original",
              "zoom-fit",       "tool-brush",    "tool-hand",     "tool-zoom",        "swap-colors",
              "default-colors", "theme-light",   "theme-dark",    "theme-contrast",   "app-norvane"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void everyIconOfTheProgramIsThere()
    {
        QFETCH(QString, name);
        for (int theme = 0; theme < 3; ++theme)
        {
            NVApplication::GetInstance()->SetTheme(theme);
            QVERIFY(!Theme::Icon(name).pixmap(24, 24).isNull());
        }
    }
};

NV_TEST_MAIN(tst_Theme)
#include "tst_Theme.moc"
