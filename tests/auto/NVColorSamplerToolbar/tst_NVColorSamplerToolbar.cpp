// The option bar of the colour sampler: its form, its list and its button.

#include <QAbstractItemView>
#include <QPushButton>
#include <QtTest>

#include "BarForm.h"
#include "FormFacts.h"
#include "KXCommonComboBox.h"
#include "NVColorSamplerToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

BarForm Form()
{
    BarControl clear;
    clear.ClassName = "QPushButton";
    clear.Name = "m_pClear";
    clear.With("text", QString("Clear")).With("enabled", false).With("minimumSize", QSize(0, 0));
    clear.With("checkable", false).ToolTip("").Focus(Qt::NoFocus);
    BarForm form(
        [] { return new NVColorSamplerToolbar(nullptr); }, "ColorSamplerToolBar", "Form", "theme:sampler.png",
        {BarControl::Separator("frame_4"), BarControl::Caption("label", "Sample size:", "m_pSize"),
         BarControl::List("m_pSize", {"Point sample", "3x3 average", "5x5 average", "7x7 average"}, 0, 150),
         clear, BarControl::Separator("frame_5")},
        {});
    form.PictureLabel("m_pPicture");
    return form;
}

} // namespace

class tst_NVColorSamplerToolbar : public QObject
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

    void signalsAreThese();
    void settingTheSizeTellsOnce_data();
    void settingTheSizeTellsOnce();
    void choosingASizeTellsOnce();
    void clickOnClearTellsOnlyWhileEnabled();
    void enablingClearTwiceIsTheSame();
    void diesInItsOwnSignal();
};

void tst_NVColorSamplerToolbar::signalsAreThese()
{
    NVColorSamplerToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(), QStringList({"SizeChanged", "Clear"}));
}

void tst_NVColorSamplerToolbar::settingTheSizeTellsOnce_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("kept");
    QTest::addColumn<QStringList>("told");

    QTest::newRow("as it is") << 0 << 0 << QStringList();
    QTest::newRow("3x3") << 1 << 1 << QStringList("SizeChanged(1)");
    QTest::newRow("7x7") << 3 << 3 << QStringList("SizeChanged(3)");
    QTest::newRow("behind the last") << 4 << -1 << QStringList("SizeChanged(-1)");
    QTest::newRow("negative") << -2 << -1 << QStringList("SizeChanged(-1)");
}

void tst_NVColorSamplerToolbar::settingTheSizeTellsOnce()
{
    QFETCH(const int, index);
    NVColorSamplerToolbar bar(nullptr);
    QCOMPARE(bar.GetSize(), 0);
    const SignalLog log(&bar);

    bar.SetSize(index);
    bar.SetSize(index);

    QTEST(bar.GetSize(), "kept");
    QTEST(log.Entries(), "told");
}

void tst_NVColorSamplerToolbar::choosingASizeTellsOnce()
{
    NVColorSamplerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    const SignalLog log(&bar);
    auto* list = bar.findChild<QComboBox*>();

    list->showPopup();
    QTest::keyClick(list->view(), Qt::Key_End);
    QTest::keyClick(list->view(), Qt::Key_Return);

    QCOMPARE(bar.GetSize(), 3);
    QCOMPARE(log.Entries(), QStringList("SizeChanged(3)"));
}

void tst_NVColorSamplerToolbar::clickOnClearTellsOnlyWhileEnabled()
{
    NVColorSamplerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    const SignalLog log(&bar);
    auto* clear = bar.findChild<QPushButton*>();

    QTest::mouseClick(clear, Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList());
    bar.SetClearEnabled(true);
    QTest::mouseClick(clear, Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList("Clear()"));
    QVERIFY(clear->isEnabled());
    bar.SetClearEnabled(false);
    QTest::mouseClick(clear, Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList("Clear()"));
}

void tst_NVColorSamplerToolbar::enablingClearTwiceIsTheSame()
{
    NVColorSamplerToolbar bar(nullptr);
    const SignalLog log(&bar);

    bar.SetClearEnabled(true);
    bar.SetClearEnabled(true);
    QVERIFY(bar.findChild<QPushButton*>()->isEnabled());
    bar.SetClearEnabled(false);

    QVERIFY(!bar.findChild<QPushButton*>()->isEnabled());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVColorSamplerToolbar::diesInItsOwnSignal()
{
    QPointer<NVColorSamplerToolbar> bar(new NVColorSamplerToolbar(nullptr));
    bar->show();
    bar->SetClearEnabled(true);
    connect(bar, &NVColorSamplerToolbar::Clear, bar, &QObject::deleteLater);

    QTest::mouseClick(bar->findChild<QPushButton*>(), Qt::LeftButton);

    QTRY_VERIFY(!bar);
}

NV_TEST_MAIN(tst_NVColorSamplerToolbar)
#include "tst_NVColorSamplerToolbar.moc"
