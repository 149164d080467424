// The option bar of the magic wand: its form, its values and the states of its buttons.

#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

#include "NVMagicWandToolbar.h"
#include "NVSpinBox.h"
#include "SelectionBarChecks.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

SelectionBar Facts()
{
    SelectionBar facts = SelectionBarOf<NVMagicWandToolbar>();
    facts.Form = "MagicWandToolbar";
    facts.Title = "Magic wand toolbar";
    facts.Picture = "theme:tool-bar-wand.png";
    facts.Columns = {{12, "m_pToleranceLabel"}, {13, "m_pTolerance"},       {15, "m_pAllLayers"},
                     {17, "m_pContiguous"},     {19, "m_pFeatherSplitter"}, {21, "REFINESELECTIONBUTTON"}};
    BarControl caption = BarControl::Caption("m_pToleranceLabel", "Tolerance: ", "m_pTolerance");
    caption.With("styleSheet", QString("padding:0px;")).With("layoutDirection", int(Qt::LeftToRight));
    BarControl tolerance = BarControl::NumberBox("m_pTolerance", 0, 255, 0, "");
    facts.Controls = {caption, tolerance.With("maximumSize", QSize(50, QWIDGETSIZE_MAX)),
                      BarControl::CheckBox("m_pAllLayers", "Sample all layers", true),
                      BarControl::CheckBox("m_pContiguous", "Contiguous", true),
                      BarControl::Separator("m_pFeatherSplitter")};
    facts.TabOrder = QStringList({"m_pTolerance", "m_pAllLayers", "m_pContiguous", "REFINESELECTIONBUTTON"});
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

class tst_NVMagicWandToolbar : public QObject
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
    void toleranceIsClamped();
    void typedToleranceIsTold();
    void largestToleranceIsNotClipped();
    void clickOnASwitchIsTold_data();
    void clickOnASwitchIsTold();
    void captionReadsFromTheLeftInARightToLeftBar();
    void diesWithAnUnfinishedTolerance();
};

void tst_NVMagicWandToolbar::signalsAreThese()
{
    NVMagicWandToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(),
             QStringList({"StateChanged", "ToleranceChanged", "AllLayersChanged", "ContiguousChanged"}));
}

void tst_NVMagicWandToolbar::valuesAreTakenOnceAndTold()
{
    NVMagicWandToolbar bar(nullptr);
    SignalLog log(&bar);

    for (int twice = 0; twice < 2; ++twice)
    {
        bar.SetTolerance(32);
        bar.SetSampleAllLayers(false);
        bar.SetContiguous(false);
    }

    QCOMPARE(log.Entries(),
             QStringList({"ToleranceChanged(32)", "AllLayersChanged(false)", "ContiguousChanged(false)"}));
    QCOMPARE(bar.GetTolerance(), 32);
    QVERIFY(!bar.IsSampleAllLayers());
    QVERIFY(!bar.IsContiguous());
}

void tst_NVMagicWandToolbar::toleranceIsClamped()
{
    NVMagicWandToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.SetTolerance(-1);
    bar.SetTolerance(256);

    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(255)"}));
    QCOMPARE(bar.GetTolerance(), 255);
}

void tst_NVMagicWandToolbar::typedToleranceIsTold()
{
    NVMagicWandToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    SignalLog log(&bar);

    Type(Find<NVSpinBox>(bar, "m_pTolerance"), "32");

    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(3)", "ToleranceChanged(32)"}));
    QCOMPARE(bar.GetTolerance(), 32);
}

void tst_NVMagicWandToolbar::largestToleranceIsNotClipped()
{
    NVMagicWandToolbar bar(nullptr);
    bar.SetTolerance(255);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    const auto* line = Find<NVSpinBox>(bar, "m_pTolerance")->findChild<QLineEdit*>();

    QVERIFY2(line->fontMetrics().horizontalAdvance(line->text()) <= line->contentsRect().width(),
             qPrintable(QString::number(line->width())));
}

void tst_NVMagicWandToolbar::clickOnASwitchIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    QTest::newRow("all layers") << "m_pAllLayers"
                                << "AllLayersChanged";
    QTest::newRow("contiguous") << "m_pContiguous"
                                << "ContiguousChanged";
}

void tst_NVMagicWandToolbar::clickOnASwitchIsTold()
{
    QFETCH(const QString, name);
    QFETCH(const QString, told);
    NVMagicWandToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    SignalLog log(&bar);
    auto* box = Find<QCheckBox>(bar, name.toLatin1());

    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box->height() / 2));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box->height() / 2));

    QCOMPARE(log.Entries(), QStringList({told + "(false)", told + "(true)"}));
}

void tst_NVMagicWandToolbar::captionReadsFromTheLeftInARightToLeftBar()
{
    NVMagicWandToolbar bar(nullptr);

    bar.setLayoutDirection(Qt::RightToLeft);

    QCOMPARE(Find<QWidget>(bar, "m_pToleranceLabel")->layoutDirection(), Qt::LeftToRight);
    QCOMPARE(Find<QWidget>(bar, "m_pTolerance")->layoutDirection(), Qt::RightToLeft);
}

void tst_NVMagicWandToolbar::diesWithAnUnfinishedTolerance()
{
    QWidget window;
    auto* bar = new NVMagicWandToolbar(&window);
    window.resize(700, 50);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    Type(Find<NVSpinBox>(*bar, "m_pTolerance"), "2*");

    delete bar;

    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVMagicWandToolbar)
#include "tst_NVMagicWandToolbar.moc"
