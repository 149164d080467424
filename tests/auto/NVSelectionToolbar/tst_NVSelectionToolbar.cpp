// The option bar of the selection tools: its form, its values and the states of its buttons.

#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

#include "NVSelectionToolbar.h"
#include "NVSpinBox.h"
#include "SelectionBarChecks.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

SelectionBar Facts()
{
    SelectionBar facts = SelectionBarOf<NVSelectionToolbar>();
    facts.Form = "SelectionToolbar";
    facts.Title = "Selection toolbar";
    facts.Picture = "theme:rect_sel.png";
    facts.Columns = {{12, "m_pFeatherLabel_2"},    {13, "m_pRadius"},     {15, "m_pFeatherLabel"},
                     {16, "m_pFeather"},           {18, "m_pAutoscroll"}, {20, "m_pFeatherSplitter"},
                     {24, "REFINESELECTIONBUTTON"}};
    BarControl radius = BarControl::NumberBox("m_pRadius", 0, 99, 0, " px");
    BarControl autoscroll = BarControl::CheckBox("m_pAutoscroll", "Autoscroll", false);
    facts.Controls = {BarControl::Caption("m_pFeatherLabel_2", "Radius:", "m_pRadius"),
                      radius.ToolTip("Corner radius"),
                      BarControl::Caption("m_pFeatherLabel", "Feather:", "m_pFeather"),
                      BarControl::NumberBox("m_pFeather", 0, 1000, 0, " px"),
                      autoscroll.ToolTip("Autoscroll during selection"),
                      BarControl::Separator("m_pFeatherSplitter")};
    facts.TabOrder = QStringList({"m_pRadius", "m_pFeather", "m_pAutoscroll", "REFINESELECTIONBUTTON"});
    return facts;
}

BarForm Form()
{
    return SelectionForm(Facts());
}

template <class T>
T* Find(const QWidget& bar, const char* name)
{
    T* control = bar.findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

// As a person does it, in a bar that is shown.
void Type(QSpinBox* box, const QString& text)
{
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, text);
}

} // namespace

class tst_NVSelectionToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { ResetAfterSelectionBarCheck(); }

    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void tabOrderRunsFromLeftToRight() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void textsStayWhenTheLanguageChanges() { Form().CheckLanguageChange(); }
    void isAsItsFamily_data() { AddSelectionBarChecks(); }
    void isAsItsFamily() { RunSelectionBarCheck(Facts()); }

    void signalsAreThese();
    void valuesAreTakenOnceAndTold();
    void valuesAreClamped();
    void typedFeatherIsTold();
    void typedRadiusIsTold();
    void clickOnAutoscrollIsTold();
    void hiddenFeatherStillAnswers();
    void shownFeatherIsBack();
    void hiddenFeatherCanBeSet();
    void diesWithAnUnfinishedFeather();
};

void tst_NVSelectionToolbar::signalsAreThese()
{
    NVSelectionToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(),
             QStringList({"StateChanged", "FeatherChanged", "RadiusChanged", "AutoscrollChanged"}));
}

void tst_NVSelectionToolbar::valuesAreTakenOnceAndTold()
{
    NVSelectionToolbar bar(nullptr);
    SignalLog log(&bar);

    for (int twice = 0; twice < 2; ++twice)
    {
        bar.SetFeather(12);
        bar.SetRadius(7);
        bar.SetAutoscroll(true);
    }

    QCOMPARE(log.Entries(),
             QStringList({"FeatherChanged(12)", "RadiusChanged(7)", "AutoscrollChanged(true)"}));
    QCOMPARE(bar.GetFeather(), 12);
    QCOMPARE(bar.GetRadius(), 7);
    QVERIFY(bar.IsAutoscroll());
}

void tst_NVSelectionToolbar::valuesAreClamped()
{
    NVSelectionToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.SetFeather(-1);
    bar.SetRadius(-1);
    bar.SetFeather(1001);
    bar.SetRadius(100);

    QCOMPARE(log.Entries(), QStringList({"FeatherChanged(1000)", "RadiusChanged(99)"}));
    QCOMPARE(bar.GetFeather(), 1000);
    QCOMPARE(bar.GetRadius(), 99);
}

void tst_NVSelectionToolbar::typedFeatherIsTold()
{
    NVSelectionToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    SignalLog log(&bar);

    Type(Find<NVSpinBox>(bar, "m_pFeather"), "25");

    QCOMPARE(log.Entries(), QStringList({"FeatherChanged(2)", "FeatherChanged(25)"}));
    QCOMPARE(bar.GetFeather(), 25);
}

void tst_NVSelectionToolbar::typedRadiusIsTold()
{
    NVSelectionToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    SignalLog log(&bar);

    Type(Find<NVSpinBox>(bar, "m_pRadius"), "9");

    QCOMPARE(log.Entries(), QStringList({"RadiusChanged(9)"}));
    QCOMPARE(bar.GetRadius(), 9);
}

void tst_NVSelectionToolbar::clickOnAutoscrollIsTold()
{
    NVSelectionToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    SignalLog log(&bar);
    auto* box = Find<QCheckBox>(bar, "m_pAutoscroll");

    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box->height() / 2));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box->height() / 2));

    QCOMPARE(log.Entries(), QStringList({"AutoscrollChanged(true)", "AutoscrollChanged(false)"}));
}

void tst_NVSelectionToolbar::hiddenFeatherStillAnswers()
{
    NVSelectionToolbar bar(nullptr);
    bar.SetFeather(30);
    bar.show();

    bar.HideFeather(true);

    for (const char* name : {"m_pFeather", "m_pFeatherLabel", "m_pFeatherSplitter"})
        QVERIFY2(!Find<QWidget>(bar, name)->isVisible(), name);
    for (const char* name :
         {"m_pRadius", "m_pFeatherLabel_2", "m_pAutoscroll", "REFINESELECTIONBUTTON", "frame_5"})
        QVERIFY2(Find<QWidget>(bar, name)->isVisible(), name);
    QCOMPARE(bar.GetFeather(), 30);
}

void tst_NVSelectionToolbar::shownFeatherIsBack()
{
    NVSelectionToolbar bar(nullptr);
    bar.HideFeather(true);
    bar.show();

    bar.HideFeather(false);

    for (const char* name : {"m_pFeather", "m_pFeatherLabel", "m_pFeatherSplitter"})
        QVERIFY2(Find<QWidget>(bar, name)->isVisible(), name);
}

void tst_NVSelectionToolbar::hiddenFeatherCanBeSet()
{
    NVSelectionToolbar bar(nullptr);
    bar.HideFeather(true);
    SignalLog log(&bar);

    bar.SetFeather(5);

    QCOMPARE(log.Entries(), QStringList({"FeatherChanged(5)"}));
    QCOMPARE(bar.GetFeather(), 5);
}

void tst_NVSelectionToolbar::diesWithAnUnfinishedFeather()
{
    QWidget window;
    auto* bar = new NVSelectionToolbar(&window);
    window.resize(700, 50);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    Type(Find<NVSpinBox>(*bar, "m_pFeather"), "2*");

    delete bar;

    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVSelectionToolbar)
#include "tst_NVSelectionToolbar.moc"
