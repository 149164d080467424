// The dialog that bends a text: its form, its pairs of slider and number box, and what it tells.

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QSlider>
#include <QTranslator>
#include <QtTest>

#include <limits>

#include "KXCommonComboBox.h"
#include "ModalDriver.h"
#include "NVWarpTextDialog.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const char* const Boxes[] = {"m_pBend", "m_pHDistortion", "m_pVDistortion"};
const char* const Sliders[] = {"m_pBendSldr", "m_pHDistortionSldr", "m_pVDistortionSldr"};

template <class T>
T* Find(const QWidget* dialog, const char* name)
{
    T* control = dialog->findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

QDoubleSpinBox* Box(const QWidget* dialog, int pair)
{
    return Find<QDoubleSpinBox>(dialog, Boxes[pair]);
}

QSlider* Slider(const QWidget* dialog, int pair)
{
    return Find<QSlider>(dialog, Sliders[pair]);
}

KXCommonComboBox* StyleList(const QWidget* dialog)
{
    return Find<KXCommonComboBox>(dialog, "m_pStyle");
}

double Amount(const NVTextDeformation& value, int pair)
{
    const double amounts[] = {value.GetBend(), value.GetHorizontalDistortion(),
                              value.GetVerticalDistortion()};
    return amounts[pair];
}

NVTextDeformation Value(double bend, double horizontal, double vertical, int orientation, int style)
{
    NVTextDeformation value;
    value.SetBend(bend);
    value.SetHorizontalDistortion(horizontal);
    value.SetVerticalDistortion(vertical);
    value.SetOrientation(static_cast<NVTextDeformation::Orientation>(orientation));
    value.SetStyle(static_cast<NVTextDeformation::Style>(style));
    return value;
}

QWidget* At(const QWidget* box, int row, int column)
{
    const auto* grid = qobject_cast<const QGridLayout*>(box->layout());
    QLayoutItem* item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? item->widget() : nullptr;
}

void AddPairRows()
{
    QTest::addColumn<int>("pair");
    QTest::newRow("bending") << 0;
    QTest::newRow("horizontal distortion") << 1;
    QTest::newRow("vertical distortion") << 2;
}

// The number box as it stands when the dialog tells of a change.
class Listener : public QObject
{
public:
    explicit Listener(NVWarpTextDialog* dialog)
    {
        connect(dialog, &NVWarpTextDialog::DeformationChanged, this,
                [this, dialog] { values.append(dialog->GetDeformation()); });
    }
    QList<NVTextDeformation> values;
};

class Prefixed : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return QString("%1/%2").arg(context, text);
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class tst_NVWarpTextDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithADefaultValue();
    void frameIsAsStated();
    void firstBoxHoldsStyleAndOrientation();
    void pairIsAsStated_data();
    void pairIsAsStated();
    void buttonsAreOkAndCancel();
    void tabsGoThroughTheForm();
    void textsAreTranslated();
    void interfaceIsThis();
    void sliderMovesTheBoxAndTellsOnce_data();
    void sliderMovesTheBoxAndTellsOnce();
    void sliderGivesHundredthsOverItsWholeRange_data();
    void sliderGivesHundredthsOverItsWholeRange();
    void boxMovesTheSliderTruncatedOverItsWholeRange_data();
    void boxMovesTheSliderTruncatedOverItsWholeRange();
    void truncationLosesAHundredth();
    void typingTellsEachKeystroke();
    void sliderStillLeadsAfterTheBoxWasTyped_data();
    void sliderStillLeadsAfterTheBoxWasTyped();
    void draggedSliderTellsEachStep();
    void sameValueTellsNothing_data();
    void sameValueTellsNothing();
    void listenerReadsTheNewValue();
    void choosingAnOrientationTellsOnce();
    void choosingAStyleTellsOnce();
    void valueComesBackAsItWasSet_data();
    void valueComesBackAsItWasSet();
    void setValueTellsInThisOrder();
    void amountIsClampedAndRounded_data();
    void amountIsClampedAndRounded();
    void styleOutOfTheListIsNoSelection_data();
    void styleOutOfTheListIsNoSelection();
    void unknownOrientationChangesNothing();
    void matrixIsLost();
    void endsWithThisResult_data();
    void endsWithThisResult();
    void endingChangesNoValue();
    void deletionEndsTheRun();
};

void tst_NVWarpTextDialog::startsWithADefaultValue()
{
    const NVWarpTextDialog dialog(nullptr);
    QCOMPARE(int(dialog.GetDeformation().GetStyle()), 0);
    NVWarpTextDialog loaded(nullptr);
    loaded.SetDeformation(NVTextDeformation());
    QVERIFY(loaded.GetDeformation() == NVTextDeformation());
    QCOMPARE(StyleList(&loaded)->currentText(), QString("Flag"));
}

void tst_NVWarpTextDialog::frameIsAsStated()
{
    NVWarpTextDialog dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QString("Warp text"));
    QCOMPARE(dialog.Content()->objectName(), QString("WarpText"));
    QCOMPARE(dialog.Content()->minimumSize(), QSize(480, 170));
    for (const char* name : {"groupBox", "groupBox_2"})
        QCOMPARE(Find<QGroupBox>(&dialog, name)->title(), QString());
    QCOMPARE(At(dialog.Content(), 0, 0), Find<QWidget>(&dialog, "groupBox"));
    QCOMPARE(At(dialog.Content(), 1, 0), Find<QWidget>(&dialog, "groupBox_2"));
    QCOMPARE(At(dialog.Content(), 2, 0), Find<QWidget>(&dialog, "m_pButtonBox"));
    QCOMPARE(dialog.Content()->size(), QSize(480, 223));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    // Large letters may need more height.
    QCOMPARE(dialog.Content()->size(), QSize(480, qMax(223, dialog.Content()->minimumSizeHint().height())));
}

void tst_NVWarpTextDialog::firstBoxHoldsStyleAndOrientation()
{
    const NVWarpTextDialog dialog(nullptr);
    const auto* row = qobject_cast<QHBoxLayout*>(Find<QGroupBox>(&dialog, "groupBox")->layout());
    QVERIFY(row);
    QStringList names;
    for (int i = 0; i < row->count(); ++i)
    {
        if (const QWidget* widget = row->itemAt(i)->widget())
            names << widget->objectName();
    }
    QCOMPARE(names, QStringList({"label_4", "m_pStyle", "m_pHorizontal", "m_pVertical"}));
    const auto* label = Find<QLabel>(&dialog, "label_4");
    const KXCommonComboBox* list = StyleList(&dialog);
    QCOMPARE(label->text(), QString("Style:"));
    QCOMPARE(label->buddy(), list);
    QCOMPARE(list->minimumWidth(), 100);
    QCOMPARE(list->focusPolicy(), Qt::NoFocus);
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->itemText(0), QString("None"));
    QCOMPARE(list->itemText(1), QString("Flag"));
    const auto* horizontal = Find<QRadioButton>(&dialog, "m_pHorizontal");
    const auto* vertical = Find<QRadioButton>(&dialog, "m_pVertical");
    QCOMPARE(horizontal->text(), QString("Horizontal"));
    QCOMPARE(horizontal->toolTip(), QString("Use horizontal deformation"));
    QCOMPARE(vertical->text(), QString("Vertical"));
    QCOMPARE(vertical->toolTip(), QString("Use vertical deformation"));
    QVERIFY(horizontal->isChecked() && !vertical->isChecked());
    QCOMPARE(horizontal->focusPolicy(), Qt::NoFocus);
    QCOMPARE(vertical->focusPolicy(), Qt::NoFocus);
}

void tst_NVWarpTextDialog::pairIsAsStated_data()
{
    QTest::addColumn<int>("pair");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::newRow("bending") << 0 << "label"
                             << "Bending:" << 70;
    QTest::newRow("horizontal") << 1 << "label_2"
                                << "Horizontal Distortion:" << 0;
    QTest::newRow("vertical") << 2 << "label_3"
                              << "Vertical Distortion:" << 0;
}

void tst_NVWarpTextDialog::pairIsAsStated()
{
    QFETCH(int, pair);
    QFETCH(QString, label);
    QFETCH(QString, text);
    QFETCH(int, width);
    const NVWarpTextDialog dialog(nullptr);
    const auto* group = Find<QGroupBox>(&dialog, "groupBox_2");
    const auto* caption = Find<QLabel>(&dialog, qPrintable(label));
    QDoubleSpinBox* box = Box(&dialog, pair);
    const QSlider* slider = Slider(&dialog, pair);
    QCOMPARE(qobject_cast<QGridLayout*>(group->layout())->verticalSpacing(), 12);
    QCOMPARE(At(group, pair, 0), caption);
    QCOMPARE(At(group, pair, 1), slider);
    QCOMPARE(At(group, pair, 2), box);
    QCOMPARE(caption->text(), text);
    QVERIFY(caption->alignment().testFlag(Qt::AlignRight));
    QCOMPARE(caption->buddy(), box);
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->minimum(), -10000);
    QCOMPARE(slider->maximum(), 10000);
    QCOMPARE(slider->value(), 0);
    QCOMPARE(slider->focusPolicy(), Qt::NoFocus);
    QCOMPARE(box->minimum(), -100.0);
    QCOMPARE(box->maximum(), 100.0);
    QCOMPARE(box->decimals(), 2);
    QCOMPARE(box->value(), 0.0);
    QCOMPARE(box->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(box->minimumWidth(), width);
}

void tst_NVWarpTextDialog::buttonsAreOkAndCancel()
{
    const NVWarpTextDialog dialog(nullptr);
    QCOMPARE(Find<QDialogButtonBox>(&dialog, "m_pButtonBox")->standardButtons(),
             QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

void tst_NVWarpTextDialog::tabsGoThroughTheForm()
{
    const NVWarpTextDialog dialog(nullptr);
    const QStringList wanted{"m_pStyle",      "m_pHorizontal",      "m_pVertical",    "m_pBendSldr",
                             "m_pBend",       "m_pHDistortionSldr", "m_pHDistortion", "m_pVDistortionSldr",
                             "m_pVDistortion"};
    const QWidget* first = Find<QWidget>(&dialog, "m_pStyle");
    QStringList names;
    const QWidget* widget = first;
    do
    {
        if (wanted.contains(widget->objectName()))
            names << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != first);
    QCOMPARE(names, wanted);
}

void tst_NVWarpTextDialog::textsAreTranslated()
{
    Prefixed translator;
    QCoreApplication::installTranslator(&translator);
    const NVWarpTextDialog dialog(nullptr);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(dialog.windowTitle(), QString("WarpText/Warp text"));
    QCOMPARE(Find<QRadioButton>(&dialog, "m_pVertical")->text(), QString("WarpText/Vertical"));
    QCOMPARE(Find<QRadioButton>(&dialog, "m_pVertical")->toolTip(),
             QString("WarpText/Use vertical deformation"));
    QCOMPARE(Find<QLabel>(&dialog, "label_2")->text(), QString("WarpText/Horizontal Distortion:"));
    QCOMPARE(StyleList(&dialog)->itemText(0), QString("NVWarpTextDialog/None"));
    QCOMPARE(StyleList(&dialog)->itemText(1), QString("NVWarpTextDialog/Flag"));
}

void tst_NVWarpTextDialog::interfaceIsThis()
{
    const QMetaObject& meta = NVWarpTextDialog::staticMetaObject;
    QCOMPARE(meta.superClass(), &KXDialog::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << meta.method(i).methodSignature();
    QCOMPARE(methods,
             QStringList({"DeformationChanged()", "OnStyle(int)", "OnVertical(bool)", "OnBend(double)",
                          "OnBend(int)", "OnHorizontalDistortion(double)", "OnHorizontalDistortion(int)",
                          "OnVerticalDistortion(double)", "OnVerticalDistortion(int)"}));
}

void tst_NVWarpTextDialog::sliderMovesTheBoxAndTellsOnce_data()
{
    AddPairRows();
}

void tst_NVWarpTextDialog::sliderMovesTheBoxAndTellsOnce()
{
    QFETCH(int, pair);
    NVWarpTextDialog dialog(nullptr);
    const SignalLog log(&dialog);
    Slider(&dialog, pair)->setValue(1234);
    QCOMPARE(Box(&dialog, pair)->value(), 12.34);
    QCOMPARE(log.Entries(), QStringList({"DeformationChanged()"}));
    Slider(&dialog, pair)->setValue(-5);
    QCOMPARE(Box(&dialog, pair)->value(), -0.05);
    QCOMPARE(log.Count("DeformationChanged"), 2);
    for (int other = 0; other < 3; ++other)
    {
        if (other != pair)
            QCOMPARE(Box(&dialog, other)->value(), 0.0);
    }
}

void tst_NVWarpTextDialog::sliderGivesHundredthsOverItsWholeRange_data()
{
    AddPairRows();
}

// Each from afar: the slider of the value before may stand on this one already, cut off.
void tst_NVWarpTextDialog::sliderGivesHundredthsOverItsWholeRange()
{
    QFETCH(int, pair);
    NVWarpTextDialog dialog(nullptr);
    QSlider* slider = Slider(&dialog, pair);
    const QDoubleSpinBox* box = Box(&dialog, pair);
    const SignalLog log(&dialog);
    for (int hundredths = -10000; hundredths <= 10000; ++hundredths)
    {
        slider->setValue(hundredths < 0 ? 5000 : -5000);
        slider->setValue(hundredths);
        if (qRound(box->value() * 100) != hundredths || slider->value() != int(box->value() * 100.0))
            QFAIL(qPrintable(QString("%1 gives %2").arg(hundredths).arg(box->value())));
    }
    QCOMPARE(log.Count("DeformationChanged"), 2 * 20001);
}

void tst_NVWarpTextDialog::boxMovesTheSliderTruncatedOverItsWholeRange_data()
{
    AddPairRows();
}

void tst_NVWarpTextDialog::boxMovesTheSliderTruncatedOverItsWholeRange()
{
    QFETCH(int, pair);
    NVWarpTextDialog dialog(nullptr);
    const QSlider* slider = Slider(&dialog, pair);
    QDoubleSpinBox* box = Box(&dialog, pair);
    const SignalLog log(&dialog);
    int lost = 0;
    for (int hundredths = -10000; hundredths <= 10000; ++hundredths)
    {
        box->setValue(hundredths / 100.0);
        if (slider->value() != int(box->value() * 100.0))
            QFAIL(qPrintable(QString::number(hundredths)));
        lost += slider->value() != hundredths;
        QVERIFY(qAbs(slider->value()) <= qAbs(hundredths));
    }
    QCOMPARE(log.Count("DeformationChanged"), 20001);
    QVERIFY(lost > 0);
}

void tst_NVWarpTextDialog::truncationLosesAHundredth()
{
    NVWarpTextDialog dialog(nullptr);
    Box(&dialog, 0)->setValue(0.29);
    QVERIFY(0.29 * 100.0 < 29.0);
    QCOMPARE(Slider(&dialog, 0)->value(), 28);
    QCOMPARE(Box(&dialog, 0)->value(), 0.29);
    Box(&dialog, 0)->setValue(-0.29);
    QCOMPARE(Slider(&dialog, 0)->value(), -28);
    QCOMPARE(dialog.GetDeformation().GetBend(), -0.29);
}

void tst_NVWarpTextDialog::typingTellsEachKeystroke()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QDoubleSpinBox* box = Box(&dialog, 0);
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(box->hasFocus());
    box->selectAll();
    Listener listener(&dialog);
    QTest::keyClicks(box, "12.34");
    QList<double> bends;
    for (const NVTextDeformation& value : qAsConst(listener.values))
        bends << value.GetBend();
    QCOMPARE(bends, QList<double>({1.0, 12.0, 12.3, 12.34}));
    QCOMPARE(Slider(&dialog, 0)->value(), int(12.34 * 100.0));
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(dialog.GetDeformation().GetBend(), 13.34);
}

void tst_NVWarpTextDialog::sliderStillLeadsAfterTheBoxWasTyped_data()
{
    AddPairRows();
}

void tst_NVWarpTextDialog::sliderStillLeadsAfterTheBoxWasTyped()
{
    QFETCH(int, pair);
    NVWarpTextDialog dialog(nullptr);
    const SignalLog log(&dialog);
    for (int i = 1; i <= 3; ++i)
    {
        Box(&dialog, pair)->setValue(i * 10.5);
        QCOMPARE(Slider(&dialog, pair)->value(), i * 1050);
        Slider(&dialog, pair)->setValue(i * 100);
        QCOMPARE(Box(&dialog, pair)->value(), double(i));
        QCOMPARE(Amount(dialog.GetDeformation(), pair), double(i));
        QCOMPARE(log.Count("DeformationChanged"), 2 * i);
    }
}

void tst_NVWarpTextDialog::draggedSliderTellsEachStep()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QSlider* slider = Slider(&dialog, 1);
    const QPoint start = slider->rect().center();
    const SignalLog log(&dialog);
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, start);
    double last = 0;
    for (int step = 1; step <= 3; ++step)
    {
        QMouseEvent move(QEvent::MouseMove, start + QPoint(10 * step, 0), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(slider, &move);
        QVERIFY(dialog.GetDeformation().GetHorizontalDistortion() > last);
        last = dialog.GetDeformation().GetHorizontalDistortion();
        QCOMPARE(log.Count("DeformationChanged"), step);
    }
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, start + QPoint(30, 0));
    QCOMPARE(log.Count("DeformationChanged"), 3);
    QVERIFY(!slider->hasFocus());
}

void tst_NVWarpTextDialog::sameValueTellsNothing_data()
{
    AddPairRows();
}

void tst_NVWarpTextDialog::sameValueTellsNothing()
{
    QFETCH(int, pair);
    NVWarpTextDialog dialog(nullptr);
    Box(&dialog, pair)->setValue(7.25);
    const SignalLog log(&dialog);
    Box(&dialog, pair)->setValue(7.25);
    Slider(&dialog, pair)->setValue(725);
    dialog.SetDeformation(dialog.GetDeformation());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVWarpTextDialog::listenerReadsTheNewValue()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(NVTextDeformation());
    Listener listener(&dialog);
    Box(&dialog, 2)->setValue(-33.5);
    Slider(&dialog, 1)->setValue(250);
    Find<QRadioButton>(&dialog, "m_pVertical")->setChecked(true);
    StyleList(&dialog)->setCurrentIndex(0);
    QCOMPARE(listener.values.size(), 4);
    QVERIFY(listener.values[0] == Value(0, 0, -33.5, 0, 1));
    QVERIFY(listener.values[1] == Value(0, 2.5, -33.5, 0, 1));
    QVERIFY(listener.values[2] == Value(0, 2.5, -33.5, 1, 1));
    QVERIFY(listener.values[3] == Value(0, 2.5, -33.5, 1, 0));
}

void tst_NVWarpTextDialog::choosingAnOrientationTellsOnce()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* horizontal = Find<QRadioButton>(&dialog, "m_pHorizontal");
    auto* vertical = Find<QRadioButton>(&dialog, "m_pVertical");
    const SignalLog log(&dialog);
    QTest::mouseClick(vertical, Qt::LeftButton, Qt::NoModifier, QPoint(8, vertical->height() / 2));
    QCOMPARE(log.Entries(), QStringList({"DeformationChanged()"}));
    QCOMPARE(dialog.GetDeformation().GetOrientation(), NVTextDeformation::OrientationVertical);
    QTest::mouseClick(vertical, Qt::LeftButton, Qt::NoModifier, QPoint(8, vertical->height() / 2));
    QCOMPARE(log.Count(), 1);
    QTest::mouseClick(horizontal, Qt::LeftButton, Qt::NoModifier, QPoint(8, horizontal->height() / 2));
    QCOMPARE(log.Count("DeformationChanged"), 2);
    QCOMPARE(dialog.GetDeformation().GetOrientation(), NVTextDeformation::OrientationHorizontal);
}

void tst_NVWarpTextDialog::choosingAStyleTellsOnce()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(NVTextDeformation());
    const SignalLog log(&dialog);
    StyleList(&dialog)->setCurrentIndex(0);
    QCOMPARE(log.Entries(), QStringList({"DeformationChanged()"}));
    QCOMPARE(dialog.GetDeformation().GetStyle(), NVTextDeformation::StyleNone);
}

void tst_NVWarpTextDialog::valueComesBackAsItWasSet_data()
{
    QTest::addColumn<double>("bend");
    QTest::addColumn<double>("horizontal");
    QTest::addColumn<double>("vertical");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("style");
    QTest::newRow("nothing") << 0.0 << 0.0 << 0.0 << 0 << 1;
    QTest::newRow("all") << 12.34 << -56.78 << 99.99 << 1 << 0;
    QTest::newRow("ends") << -100.0 << 100.0 << -100.0 << 0 << 1;
    QTest::newRow("cut off on the slider") << 0.29 << -0.57 << 1.13 << 1 << 1;
}

void tst_NVWarpTextDialog::valueComesBackAsItWasSet()
{
    QFETCH(double, bend);
    QFETCH(double, horizontal);
    QFETCH(double, vertical);
    QFETCH(int, orientation);
    QFETCH(int, style);
    const NVTextDeformation value = Value(bend, horizontal, vertical, orientation, style);
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(value);
    QVERIFY(dialog.GetDeformation() == value);
    dialog.SetDeformation(NVTextDeformation());
    QVERIFY(dialog.GetDeformation() == NVTextDeformation());
    dialog.SetDeformation(value);
    QVERIFY(dialog.GetDeformation() == value);
}

void tst_NVWarpTextDialog::setValueTellsInThisOrder()
{
    NVWarpTextDialog dialog(nullptr);
    Listener listener(&dialog);
    dialog.SetDeformation(Value(1, 2, 3, 1, 1));
    QCOMPARE(listener.values.size(), 5);
    QVERIFY(listener.values[0] == Value(1, 0, 0, 0, 0));
    QVERIFY(listener.values[1] == Value(1, 0, 3, 0, 0));
    QVERIFY(listener.values[2] == Value(1, 2, 3, 0, 0));
    QVERIFY(listener.values[3] == Value(1, 2, 3, 1, 0));
    QVERIFY(listener.values[4] == Value(1, 2, 3, 1, 1));
    listener.values.clear();
    dialog.SetDeformation(Value(1, 2, 3, 0, 1));
    QCOMPARE(listener.values.size(), 1);
}

void tst_NVWarpTextDialog::amountIsClampedAndRounded_data()
{
    QTest::addColumn<double>("given");
    QTest::addColumn<double>("taken");
    QTest::newRow("above") << 100.01 << 100.0;
    QTest::newRow("below") << -1e12 << -100.0;
    QTest::newRow("three decimals") << 1.236 << 1.24;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << 100.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 100.0;
}

void tst_NVWarpTextDialog::amountIsClampedAndRounded()
{
    QFETCH(double, given);
    QFETCH(double, taken);
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(Value(given, given, given, 0, 1));
    QVERIFY(dialog.GetDeformation() == Value(taken, taken, taken, 0, 1));
    for (int pair = 0; pair < 3; ++pair)
        QCOMPARE(Slider(&dialog, pair)->value(), int(taken * 100.0));
}

void tst_NVWarpTextDialog::styleOutOfTheListIsNoSelection_data()
{
    QTest::addColumn<int>("style");
    QTest::newRow("2") << 2;
    QTest::newRow("-1") << -1;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVWarpTextDialog::styleOutOfTheListIsNoSelection()
{
    QFETCH(int, style);
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(Value(0, 0, 0, 0, style));
    QCOMPARE(StyleList(&dialog)->currentIndex(), -1);
    QCOMPARE(int(dialog.GetDeformation().GetStyle()), -1);
}

void tst_NVWarpTextDialog::unknownOrientationChangesNothing()
{
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(Value(0, 0, 0, 1, 1));
    dialog.SetDeformation(Value(0, 0, 0, 2, 1));
    QCOMPARE(dialog.GetDeformation().GetOrientation(), NVTextDeformation::OrientationVertical);
}

void tst_NVWarpTextDialog::matrixIsLost()
{
    NVTextDeformation value = Value(1, 2, 3, 1, 1);
    QMatrix4x4 matrix;
    matrix.translate(1, 0);
    value.SetMatrix(matrix);
    NVWarpTextDialog dialog(nullptr);
    dialog.SetDeformation(value);
    QVERIFY(dialog.GetDeformation().GetMatrix().isIdentity());
    QVERIFY(dialog.GetDeformation() != value);
    value.SetMatrix(QMatrix4x4());
    QVERIFY(dialog.GetDeformation() == value);
}

void tst_NVWarpTextDialog::endsWithThisResult_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("ok") << "ok" << 1;
    QTest::newRow("cancel") << "cancel" << 0;
    QTest::newRow("enter") << "enter" << 1;
    QTest::newRow("escape") << "escape" << -1;
    QTest::newRow("close") << "close" << -1;
}

void tst_NVWarpTextDialog::endsWithThisResult()
{
    QFETCH(QString, way);
    QFETCH(int, result);
    NVWarpTextDialog dialog(nullptr);
    const ModalDriver driver(
        [way](QWidget* window)
        {
            if (way == "ok")
                ModalDriver::Press(window, QDialogButtonBox::Ok);
            else if (way == "cancel")
                ModalDriver::Press(window, QDialogButtonBox::Cancel);
            else if (way == "enter")
                ModalDriver::PressKey(window, Qt::Key_Return);
            else if (way == "escape")
                ModalDriver::PressKey(window, Qt::Key_Escape);
            else
                ModalDriver::CloseWindow(window);
        });
    QCOMPARE(dialog.Exec(), result);
    QVERIFY(driver.Finished());
}

void tst_NVWarpTextDialog::endingChangesNoValue()
{
    NVWarpTextDialog dialog(nullptr);
    const SignalLog log(&dialog);
    const auto change = [](QWidget* window)
    {
        Box(window, 0)->setValue(Box(window, 0)->value() + 1);
        ModalDriver::Press(window, QDialogButtonBox::Cancel);
    };
    const ModalDriver driver({change, change});
    dialog.Exec();
    dialog.Exec();
    QCOMPARE(dialog.GetDeformation().GetBend(), 2.0);
    QCOMPARE(log.Count("DeformationChanged"), 2);
    QVERIFY(driver.Finished());
}

void tst_NVWarpTextDialog::deletionEndsTheRun()
{
    QPointer<NVWarpTextDialog> dialog(new NVWarpTextDialog(nullptr));
    const ModalDriver driver([](QWidget* window) { window->deleteLater(); });
    QCOMPARE(dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(!dialog);
    QVERIFY(driver.Finished());
}

NV_TEST_MAIN(tst_NVWarpTextDialog)
#include "tst_NVWarpTextDialog.moc"
