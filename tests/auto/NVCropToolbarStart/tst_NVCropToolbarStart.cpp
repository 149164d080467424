// The option bar of the crop tool before there is a rectangle: its form and the size that it holds.

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "BarForm.h"
#include "NVCropToolbarStart.h"
#include "NVSpinBox.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

BarControl Button(const char* name, const char* text, const char* toolTip)
{
    BarControl button;
    button.ClassName = "QPushButton";
    button.Name = name;
    button.With("text", QString(text)).With("enabled", true).With("checkable", false);
    return button.ToolTip(toolTip).Focus(Qt::NoFocus);
}

BarControl WideButton(const char* name, const char* text, const char* toolTip)
{
    BarControl button = Button(name, text, toolTip);
    return button.With("minimumSize", QSize(80, 24))
        .With("maximumSize", QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

BarForm Form()
{
    BarControl swap = Button("m_pSwap", "", "Swap width and height");
    swap.FixedSize(24, 24).With("accessibleName", "Swap width and height");
    BarControl height = BarControl::NumberBox("m_pHeight", 0, 10000, 0, " px");
    return BarForm(
        [] { return new NVCropToolbarStart(nullptr); }, "CropToolBarStart", "Form", "theme:crop_tool.png",
        {BarControl::Separator("frame_4"), BarControl::Caption("label", "Width:", "m_pWidth"),
         BarControl::NumberBox("m_pWidth", 0, 10000, 0, " px"), swap,
         BarControl::Caption("label_2", "Height:", "m_pHeight"), height.ToolTip("Set the crop height"),
         BarControl::Separator("frame_5"), WideButton("m_pClear", "Clear", ""),
         WideButton("m_pFromImage", "From Image", "Use values from the image").With("enabled", false),
         BarControl::Separator("frame_8")},
        {"m_pWidth", "m_pHeight", "m_pSwap", "m_pClear", "m_pFromImage"});
}

// A bar on the screen, used by hand.
struct Host
{
    Host()
    {
        bar.show();
        (void)QTest::qWaitForWindowActive(&bar);
    }
    QPushButton* Button(const char* name) { return bar.findChild<QPushButton*>(name); }
    NVSpinBox* Box(const char* name) { return bar.findChild<NVSpinBox*>(name); }
    void Press(const char* name) { QTest::mouseClick(Button(name), Qt::LeftButton); }
    void Type(const char* name, const QString& keys)
    {
        auto* line = Box(name)->findChild<QLineEdit*>();
        QTest::mouseClick(line, Qt::LeftButton);
        line->selectAll();
        QTest::keyClicks(line, keys);
    }

    NVCropToolbarStart bar{nullptr};
};

} // namespace

class tst_NVCropToolbarStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndLayout();
    void controlsAndGapsStandInTheirOrder() { Form().CheckRow(); }
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void tabGoesThroughTheBoxesFirst() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void textsStayWhenTheLanguageChanges() { Form().CheckLanguageChange(); }
    void swapButtonShowsItsArrows();

    void signalsAreThese();
    void startsClear();
    void setterClampsAndTellsOnce_data();
    void setterClampsAndTellsOnce();
    void typingTellsEachValue();
    void oneSideAloneIsNotClear_data();
    void oneSideAloneIsNotClear();
    void emptiedBoxIsClearAtOnce();
    void clearIsJudgedByTheShownText();
    void clearButtonSetsTheWidthFirst();
    void clearOfAClearBarTellsNothing();
    void swapExchangesTheSides_data();
    void swapExchangesTheSides();
    void swapOfEqualSidesTellsNothing();
    void fromImageWaitsForAnImage();
    void fromImageOnlyAsks();
    void buttonsLeaveTheKeysWhereTheyAre();
    void diesWithAnUnfinishedNumber();
};

void tst_NVCropToolbarStart::formHasItsTitleNameAndLayout()
{
    const NVCropToolbarStart bar(nullptr);

    QCOMPARE(bar.objectName(), QString("CropToolBarStart"));
    QCOMPARE(bar.windowTitle(), QString("Form"));
    const auto* outer = qobject_cast<QHBoxLayout*>(bar.layout());
    QVERIFY(outer);
    QCOMPARE(outer->objectName(), QString("horizontalLayout_2"));
    QCOMPARE(outer->contentsMargins(), QMargins());
    QCOMPARE(outer->count(), 1);
    const auto* row = qobject_cast<QHBoxLayout*>(outer->itemAt(0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 2);
    QCOMPARE(row->contentsMargins(), QMargins());
}

void tst_NVCropToolbarStart::swapButtonShowsItsArrows()
{
    NVCropToolbarStart bar(nullptr);
    const QIcon icon = bar.findChild<QPushButton*>("m_pSwap")->icon();

    QCOMPARE(icon.pixmap(24, 24).toImage(), QIcon("theme:switch_arrows.png").pixmap(24, 24).toImage());
    QVERIFY(!icon.pixmap(24, 24).isNull());
}

void tst_NVCropToolbarStart::signalsAreThese()
{
    NVCropToolbarStart bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(), QStringList({"FromImage", "WidthChanged", "HeightChanged"}));
}

void tst_NVCropToolbarStart::startsClear()
{
    const NVCropToolbarStart bar(nullptr);

    QCOMPARE(bar.GetWidth(), 0);
    QCOMPARE(bar.GetHeight(), 0);
    QVERIFY(bar.IsClear());
}

void tst_NVCropToolbarStart::setterClampsAndTellsOnce_data()
{
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("kept");
    QTest::addColumn<int>("told");

    QTest::newRow("negative") << -5 << 0 << 0;
    QTest::newRow("least of all") << std::numeric_limits<int>::min() << 0 << 0;
    QTest::newRow("zero") << 0 << 0 << 0;
    QTest::newRow("one") << 1 << 1 << 1;
    QTest::newRow("largest") << 10000 << 10000 << 1;
    QTest::newRow("too large") << 20000 << 10000 << 1;
    QTest::newRow("largest of all") << std::numeric_limits<int>::max() << 10000 << 1;
}

void tst_NVCropToolbarStart::setterClampsAndTellsOnce()
{
    QFETCH(const int, given);
    QFETCH(const int, kept);
    QFETCH(const int, told);
    NVCropToolbarStart bar(nullptr);
    SignalLog log(&bar);

    bar.SetWidth(given);
    bar.SetWidth(given);
    bar.SetHeight(given);
    bar.SetHeight(given);

    QCOMPARE(bar.GetWidth(), kept);
    QCOMPARE(bar.GetHeight(), kept);
    QStringList wanted;
    if (told)
        wanted << QString("WidthChanged(%1)").arg(kept) << QString("HeightChanged(%1)").arg(kept);
    QCOMPARE(log.Entries(), wanted);
}

void tst_NVCropToolbarStart::typingTellsEachValue()
{
    Host host;
    SignalLog log(&host.bar);

    host.Type("m_pWidth", "64");
    host.Type("m_pHeight", "8");
    QTest::keyClick(host.Box("m_pHeight"), Qt::Key_Up);

    QCOMPARE(log.Entries(),
             QStringList({"WidthChanged(6)", "WidthChanged(64)", "HeightChanged(8)", "HeightChanged(9)"}));
}

void tst_NVCropToolbarStart::oneSideAloneIsNotClear_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("clear");

    QTest::newRow("none") << 0 << 0 << true;
    QTest::newRow("width") << 1 << 0 << false;
    QTest::newRow("height") << 0 << 1 << false;
    QTest::newRow("both") << 7 << 5 << false;
}

void tst_NVCropToolbarStart::oneSideAloneIsNotClear()
{
    QFETCH(const int, width);
    QFETCH(const int, height);
    NVCropToolbarStart bar(nullptr);

    bar.SetWidth(width);
    bar.SetHeight(height);

    QTEST(bar.IsClear(), "clear");
}

void tst_NVCropToolbarStart::emptiedBoxIsClearAtOnce()
{
    Host host;
    host.bar.SetWidth(64);
    SignalLog log(&host.bar);

    auto* line = host.Box("m_pWidth")->findChild<QLineEdit*>();
    QTest::mouseClick(line, Qt::LeftButton);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);

    QVERIFY(host.bar.IsClear());
    QCOMPARE(host.bar.GetWidth(), 0);
    QCOMPARE(log.Entries(), QStringList({"WidthChanged(0)"}));
}

void tst_NVCropToolbarStart::clearIsJudgedByTheShownText()
{
    NVCropToolbarStart bar(nullptr);

    bar.findChild<NVSpinBox*>("m_pWidth")->setSpecialValueText(QString());

    QCOMPARE(bar.GetWidth(), 0);
    QVERIFY(!bar.IsClear());
}

void tst_NVCropToolbarStart::clearButtonSetsTheWidthFirst()
{
    Host host;
    host.bar.SetHeight(20);
    host.bar.SetWidth(30);
    SignalLog log(&host.bar);

    host.Press("m_pClear");

    QVERIFY(host.bar.IsClear());
    QCOMPARE(log.Entries(), QStringList({"WidthChanged(0)", "HeightChanged(0)"}));
}

void tst_NVCropToolbarStart::clearOfAClearBarTellsNothing()
{
    Host host;
    SignalLog log(&host.bar);

    host.Press("m_pClear");
    host.bar.Clear();

    QCOMPARE(log.Count(), 0);
}

void tst_NVCropToolbarStart::swapExchangesTheSides_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");

    QTest::newRow("both") << 300 << 200;
    QTest::newRow("no height") << 100 << 0;
    QTest::newRow("no width") << 0 << 100;
    QTest::newRow("largest") << 10000 << 1;
}

void tst_NVCropToolbarStart::swapExchangesTheSides()
{
    QFETCH(const int, width);
    QFETCH(const int, height);
    Host host;
    host.bar.SetWidth(width);
    host.bar.SetHeight(height);
    SignalLog log(&host.bar);

    host.Press("m_pSwap");

    QCOMPARE(host.bar.GetWidth(), height);
    QCOMPARE(host.bar.GetHeight(), width);
    QCOMPARE(log.Entries(),
             QStringList({QString("WidthChanged(%1)").arg(height), QString("HeightChanged(%1)").arg(width)}));
}

void tst_NVCropToolbarStart::swapOfEqualSidesTellsNothing()
{
    Host host;
    host.bar.SetWidth(50);
    host.bar.SetHeight(50);
    SignalLog log(&host.bar);

    host.Press("m_pSwap");

    QCOMPARE(log.Count(), 0);
    QCOMPARE(host.bar.GetWidth(), 50);
}

void tst_NVCropToolbarStart::fromImageWaitsForAnImage()
{
    Host host;
    SignalLog log(&host.bar);

    host.Press("m_pFromImage");
    QCOMPARE(log.Count(), 0);
    host.bar.EnableFromImage(true);
    host.Press("m_pFromImage");
    QCOMPARE(log.Entries(), QStringList({"FromImage()"}));
    host.bar.EnableFromImage(false);
    host.Press("m_pFromImage");

    QCOMPARE(log.Count(), 1);
}

void tst_NVCropToolbarStart::fromImageOnlyAsks()
{
    Host host;
    host.bar.EnableFromImage(true);

    host.Press("m_pFromImage");

    QVERIFY(host.bar.IsClear());
}

void tst_NVCropToolbarStart::buttonsLeaveTheKeysWhereTheyAre()
{
    Host host;
    host.bar.EnableFromImage(true);
    host.Type("m_pWidth", "12");
    QVERIFY(host.Box("m_pWidth")->hasFocus());

    for (const char* button : {"m_pSwap", "m_pFromImage", "m_pClear"})
    {
        host.Press(button);
        QVERIFY(host.Box("m_pWidth")->hasFocus());
    }
}

void tst_NVCropToolbarStart::diesWithAnUnfinishedNumber()
{
    QWidget window;
    auto* bar = new NVCropToolbarStart(&window);
    window.resize(600, 50);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* line = bar->findChild<NVSpinBox*>("m_pWidth")->findChild<QLineEdit*>();
    QTest::mouseClick(line, Qt::LeftButton);
    QTest::keyClicks(line, "2*");

    delete bar;

    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVCropToolbarStart)
#include "tst_NVCropToolbarStart.moc"
