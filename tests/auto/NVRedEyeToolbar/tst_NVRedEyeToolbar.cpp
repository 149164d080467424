// The option bar of the red-eye tool: its form and its level.

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QtTest>

#include <limits>

#include "BarForm.h"
#include "NVRedEyeToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

BarForm Form()
{
    BarControl level;
    level.ClassName = "QDoubleSpinBox";
    level.Name = "m_pIntensity";
    level.With("minimum", 0.01).With("maximum", 10.0).With("singleStep", 0.1).With("value", 1.0);
    level.With("decimals", 2).With("suffix", QString()).ToolTip("").Focus(Qt::ClickFocus);
    return BarForm(
        [] { return new NVRedEyeToolbar(nullptr, Qt::WindowFlags()); }, "RedEye", "Red eye toolbar",
        "theme:red-eyes-icon.png",
        {BarControl::Separator("frame_4"), BarControl::Caption("label", "Level:", "m_pIntensity"), level},
        {"m_pIntensity"});
}

} // namespace

class tst_NVRedEyeToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndLayout() { Form().CheckFrame(); }
    void controlsAndGapsStandInTheirOrder() { Form().CheckRow(); }
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }

    void hasNoMetaObjectOfItsOwn();
    void parentAndFlagsAreTakenOver();
    void startsAtOne();
    void levelIsClampedToItsRange_data();
    void levelIsClampedToItsRange();
    void typedLevelIsKept_data();
    void typedLevelIsKept();
    void stepIsATenth();
    void steppingDownNeverReachesZero();
    void diesWithAFocusedUnfinishedLevel();
};

void tst_NVRedEyeToolbar::hasNoMetaObjectOfItsOwn()
{
    const NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());

    QCOMPARE(bar.metaObject(), &QWidget::staticMetaObject);
}

void tst_NVRedEyeToolbar::parentAndFlagsAreTakenOver()
{
    QWidget parent;
    const NVRedEyeToolbar plain(&parent, Qt::WindowFlags());
    const NVRedEyeToolbar floating(&parent, Qt::Tool);

    QCOMPARE(plain.parentWidget(), &parent);
    QVERIFY(!plain.isWindow());
    QCOMPARE(floating.windowType(), Qt::Tool);
}

void tst_NVRedEyeToolbar::startsAtOne()
{
    const NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());

    QCOMPARE(bar.GetIntensity(), 1.0);
}

void tst_NVRedEyeToolbar::levelIsClampedToItsRange_data()
{
    QTest::addColumn<double>("level");
    QTest::addColumn<double>("kept");
    QTest::addColumn<int>("signalled");

    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("between") << 2.5 << 2.5 << 1;
    QTest::newRow("as it is") << 1.0 << 1.0 << 0;
    QTest::newRow("least") << 0.01 << 0.01 << 1;
    QTest::newRow("zero") << 0.0 << 0.01 << 1;
    QTest::newRow("below the least hundredth") << 0.004 << 0.01 << 1;
    QTest::newRow("negative") << -3.0 << 0.01 << 1;
    QTest::newRow("largest") << 10.0 << 10.0 << 1;
    QTest::newRow("too large") << 10.01 << 10.0 << 1;
    QTest::newRow("rounded to hundredths") << 3.14159 << 3.14 << 1;
    QTest::newRow("infinite") << infinity << 10.0 << 1;
    QTest::newRow("negative infinite") << -infinity << 0.01 << 1;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1.0 << 0;
}

void tst_NVRedEyeToolbar::levelIsClampedToItsRange()
{
    QFETCH(const double, level);
    QFETCH(const double, kept);
    NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());
    SignalLog log(bar.findChild<QDoubleSpinBox*>());

    bar.SetIntensity(level);
    bar.SetIntensity(level);

    QCOMPARE(bar.GetIntensity(), kept);
    QTEST(log.Count("valueChanged(double)"), "signalled");
}

void tst_NVRedEyeToolbar::typedLevelIsKept_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("kept");

    QTest::newRow("tenths") << "3.5" << 3.5;
    QTest::newRow("least") << "0.01" << 0.01;
    QTest::newRow("zero") << "0" << 1.0; // no value until a further digit comes
    QTest::newRow("largest") << "10" << 10.0;
}

void tst_NVRedEyeToolbar::typedLevelIsKept()
{
    QFETCH(const QString, typed);
    NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());
    auto* box = bar.findChild<QDoubleSpinBox*>();
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(box->hasFocus());

    box->selectAll();
    QTest::keyClicks(box, typed);
    QTest::keyClick(box, Qt::Key_Return);

    QTEST(bar.GetIntensity(), "kept");
    QVERIFY(bar.GetIntensity() > 0.0);
}

void tst_NVRedEyeToolbar::stepIsATenth()
{
    NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());

    QTest::keyClick(bar.findChild<QDoubleSpinBox*>(), Qt::Key_Up);

    QCOMPARE(bar.GetIntensity(), 1.1);
}

void tst_NVRedEyeToolbar::steppingDownNeverReachesZero()
{
    NVRedEyeToolbar bar(nullptr, Qt::WindowFlags());

    for (int i = 0; i < 20; ++i)
    {
        QTest::keyClick(bar.findChild<QDoubleSpinBox*>(), Qt::Key_Down);
        QVERIFY(bar.GetIntensity() >= 0.01);
    }

    QCOMPARE(bar.GetIntensity(), 0.01);
}

void tst_NVRedEyeToolbar::diesWithAFocusedUnfinishedLevel()
{
    QWidget window;
    auto* bar = new NVRedEyeToolbar(&window, Qt::WindowFlags());
    window.resize(300, 50);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* box = bar->findChild<QDoubleSpinBox*>();
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, "0.");

    delete bar;

    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVRedEyeToolbar)
#include "tst_NVRedEyeToolbar.moc"
