// The colour picker: what it shows of the pixel under the pointer, and which colour a click takes.

#include "ColorPickerTool.h"

#include <QComboBox>
#include <QLabel>

#include "ColorSwatches.h"
#include "NVApplication.h"
#include "NVColorPickerToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

using Host = ToolHost<ColorPickerTool>;

// Red, but for a green pixel at 100, 50.
QImage Spotted()
{
    QImage image = PlainPicture(QColor(200, 0, 0));
    image.setPixelColor(100, 50, QColor(0, 250, 0));
    return image;
}

QString Text(const Host& host, const char* name)
{
    return host.window.findChild<QLabel*>(name)->text();
}

// Place, colour, opacity.
QStringList Shown(const Host& host)
{
    QStringList texts;
    for (const char* name : {"m_pXPos", "m_pYPos", "m_pR", "m_pG", "m_pB", "m_pOpacity"})
        texts.append(Text(host, name));
    return texts;
}

QColor Swatch(const Host& host)
{
    const QPixmap swatch = host.window.findChild<QLabel*>("m_pColor")->pixmap(Qt::ReturnByValue);
    return swatch.toImage().pixelColor(5, 5);
}

const QStringList Nothing = {"", "", "", "", "", ""};

} // namespace

class tst_ColorPickerTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        ColorSwatches::ResetToDefaults();
    }
    void cleanup() { ColorSwatches::ResetToDefaults(); }

    void pixelUnderThePointerIsShown()
    {
        Host host(settings(), Spotted());
        QCOMPARE(Shown(host), Nothing);

        host.move(100, 50, Qt::NoButton);
        QCOMPARE(Shown(host), QStringList({"100", "50", "0", "250", "0", "100%"}));
        QCOMPARE(Swatch(host), QColor(0, 250, 0));
        host.move(20, 30, Qt::NoButton);
        QCOMPARE(Shown(host), QStringList({"20", "30", "200", "0", "0", "100%"}));
        host.leave();

        QCOMPARE(Shown(host), Nothing);
        QCOMPARE(Swatch(host).alpha(), 0);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    }

    void outsideThereIsAPlaceButNoColor()
    {
        Host host(settings(), Spotted());

        host.move(-4, 30, Qt::NoButton);

        QCOMPARE(Shown(host), QStringList({"-4", "30", "", "", "", ""}));
    }

    void transparencyIsShown()
    {
        Host host(settings(), PlainPicture(QColor(0, 0, 255, 128)));

        host.move(20, 30, Qt::NoButton);

        QCOMPARE(Shown(host), QStringList({"20", "30", "0", "0", "255", "50%"}));
    }

    void clickTakesTheForegroundColor()
    {
        Host host(settings(), Spotted());

        host.click(20, 30);

        QCOMPARE(NVApplication::GetForeground(), QColor(200, 0, 0));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
        QCOMPARE(host.steps()->count(), 0);
    }

    void altTakesTheBackgroundColor()
    {
        Host host(settings(), Spotted());

        host.click(20, 30, Qt::AltModifier);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QCOMPARE(NVApplication::GetBackground(), QColor(200, 0, 0));
    }

    void swatchesShowWhatWasTaken()
    {
        Host host(settings(), Spotted());
        ColorSwatches swatches;

        host.click(20, 30);

        bool isShown = false;
        for (const QWidget* button : swatches.findChildren<QWidget*>())
            isShown = isShown || button->accessibleDescription() == "#c80000";
        QVERIFY(isShown);
    }

    void dragTakesAsLongAsItLasts()
    {
        Host host(settings(), Spotted());

        host.press(20, 30);
        host.move(100, 50);
        QCOMPARE(NVApplication::GetForeground(), QColor(0, 250, 0));
        host.move(-50, -50);
        QCOMPARE(NVApplication::GetForeground(), QColor(0, 250, 0));
        host.release(-50, -50);
        host.move(20, 30, Qt::NoButton);

        QCOMPARE(NVApplication::GetForeground(), QColor(0, 250, 0));
    }

    void escapeBringsTheColorBack()
    {
        Host host(settings(), Spotted());
        host.press(20, 30);
        QCOMPARE(NVApplication::GetForeground(), QColor(200, 0, 0));

        QTest::keyClick(host.view, Qt::Key_Escape);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        host.move(100, 50);
        host.release(100, 50);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QVERIFY(!host.tool->Cancel());
    }

    void otherButtonsTakeNothing()
    {
        Host host(settings(), Spotted());

        host.mouse(QEvent::MouseButtonPress, 20, 30, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 20, 30, Qt::RightButton, Qt::NoButton);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
    }

    void whatIsTransparentIsNotTaken()
    {
        Host host(settings(), PlainPicture(Qt::transparent));
        SignalLog log(host.tool.get());

        host.click(20, 30);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QCOMPARE(log.Count("Message"), 1);
    }

    void takenColorIsOpaque()
    {
        Host host(settings(), PlainPicture(QColor(0, 0, 255, 128)));

        host.click(20, 30);

        QCOMPARE(NVApplication::GetForeground(), QColor(0, 0, 255));
    }

    void sampleSizeIsTheMeanOfASquare_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QColor>("color");
        QTest::newRow("point") << 0 << QColor(0, 250, 0);
        QTest::newRow("3x3") << 1 << QColor(qRound(1600 / 9.0), qRound(250 / 9.0), 0);
        QTest::newRow("5x5") << 2 << QColor(qRound(4800 / 25.0), 10, 0);
        QTest::newRow("7x7") << 3 << QColor(qRound(9600 / 49.0), qRound(250 / 49.0), 0);
    }
    void sampleSizeIsTheMeanOfASquare()
    {
        QFETCH(const int, size);
        QFETCH(const QColor, color);
        Host host(settings(), Spotted());
        host.tool->GetPickerBar()->SetSize(size);

        host.click(100, 50);

        QCOMPARE(NVApplication::GetForeground(), color);
    }

    void optionThatChangesShowsThePixelAnew()
    {
        Host host(settings(), Spotted());
        host.move(100, 50, Qt::NoButton);

        host.tool->GetPickerBar()->SetSize(2);

        QCOMPARE(Text(host, "m_pG"), QString("10"));
    }

    void modeChoosesTheLayers()
    {
        Host host(settings(), Spotted());
        host.addLayer(PlainPicture(QColor(0, 0, 255, 128)));
        host.move(20, 30, Qt::NoButton);
        // Half of the blue lies over the red.
        const QColor mixed = host.pixel(20, 30);
        QVERIFY(mixed.red() > 90 && mixed.blue() > 120);
        QCOMPARE(Shown(host),
                 QStringList(
                     {"20", "30", QString::number(mixed.red()), "0", QString::number(mixed.blue()), "100%"}));

        host.tool->GetPickerBar()->SetMode(0);
        QCOMPARE(Shown(host), QStringList({"20", "30", "0", "0", "255", "50%"}));
        host.pixels()->SetCurrentLayer(0);
        host.click(20, 30);

        QCOMPARE(NVApplication::GetForeground(), QColor(200, 0, 0));
    }

    void changeOfThePictureIsShown()
    {
        Host host(settings(), Spotted());
        host.move(20, 30, Qt::NoButton);

        host.pixels()->EditLayer(0).fill(QColor(1, 2, 3));
        host.pixels()->NotifyChanged(host.pixels()->GetRect());

        QCOMPARE(Shown(host), QStringList({"20", "30", "1", "2", "3", "100%"}));
    }

    void numbersFitUnderALargeFont_data()
    {
        QTest::addColumn<int>("points");
        QTest::newRow("small") << 8;
        QTest::newRow("usual") << 10;
        QTest::newRow("large") << 15;
    }
    void numbersFitUnderALargeFont()
    {
        QFETCH(const int, points);
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        {
            ColorPickerTool tool(settings(), nullptr);
            for (const char* name : {"m_pXPos", "m_pYPos", "m_pR", "m_pG", "m_pB", "m_pOpacity"})
            {
                const auto* readOut = tool.GetPickerBar()->findChild<QLabel*>(name);
                QVERIFY(readOut->fontMetrics().horizontalAdvance("10000") <= 40);
                QVERIFY(readOut->fontMetrics().horizontalAdvance("100%") <= 40);
                QVERIFY(readOut->font().pointSize() >= 6);
                QVERIFY(points > 8 || readOut->font().pointSize() == points);
            }
        }
        QApplication::setFont(before);
    }

    void valuesAreKept()
    {
        {
            Host host(settings());
            host.tool->GetPickerBar()->SetSize(3);
            host.tool->GetPickerBar()->SetMode(0);
        }

        ColorPickerTool tool(settings(), nullptr);

        QCOMPARE(tool.GetPickerBar()->GetSize(), 3);
        QCOMPARE(tool.GetPickerBar()->GetMode(), 0);
    }

    void badValuesAreLeftOut()
    {
        settings()->setValue("picker/size", 17);
        settings()->setValue("picker/mode", -3);

        ColorPickerTool tool(settings(), nullptr);

        QCOMPARE(tool.GetPickerBar()->GetSize(), 3);
        QCOMPARE(tool.GetPickerBar()->GetMode(), 0);
    }

    void documentMayCloseUnderThePointer()
    {
        Host host(settings(), Spotted());
        host.press(20, 30);

        host.closeDocument();
        host.tool->SetCanvas(nullptr, nullptr);

        QCOMPARE(Shown(host), Nothing);
    }

private:
    QSettings* settings() { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_ColorPickerTool)
#include "tst_ColorPickerTool.moc"
