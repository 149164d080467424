// The dialog of the canvas size: its form, its arithmetic by tables and against a model, typing, units with
// and without Shift, the anchor, and what it does with sizes that are none.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTranslator>
#include <QtTest>

#include <cmath>
#include <random>

#include "CutText.h"
#include "ModalDriver.h"
#include "NVCanvasSize.h"
#include "NVMeasureUnit.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

enum UnitIndex
{
    Pixels,
    Inches,
    Millimetres,
    Centimetres,
    Points,
    Picas,
    UnitCount
};

const double Factors[UnitCount] = {-1.0, 1.0, 25.4, 2.54, 72.0, 6.0};
const char* const UnitTexts[UnitCount] = {"px", "in", "mm", "cm", "pt", "pc"};
const QSize NoSize(std::numeric_limits<int>::min(), std::numeric_limits<int>::min());

// The dialog with its controls at hand.
class Dialog : public NVCanvasSize
{
public:
    Dialog(int dpi, const QSize& size) : NVCanvasSize(dpi, size, nullptr) { }

    template <class T>
    T* Find(const char* name) const
    {
        T* control = findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    QDoubleSpinBox* Width() const { return Find<QDoubleSpinBox>("m_pNewWidth"); }
    QDoubleSpinBox* Height() const { return Find<QDoubleSpinBox>("m_pNewHeight"); }
    QComboBox* WidthUnits() const { return Find<QComboBox>("m_pWidthUnits"); }
    QComboBox* HeightUnits() const { return Find<QComboBox>("m_pHeightUnits"); }
    QSpinBox* DPI() const { return Find<QSpinBox>("m_pDPI"); }
    QCheckBox* Constrain() const { return Find<QCheckBox>("m_pConstrainProportions"); }
    KXAnchorSelection* Anchor() const { return Find<KXAnchorSelection>("m_pAnchorWidget"); }
    QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
    QString CurrentTitle() const { return Find<QGroupBox>("m_pCurrentSizeGroup")->title(); }
    QString NewTitle() const { return Find<QGroupBox>("m_pNewSizeGroup")->title(); }

    bool Show()
    {
        show();
        return QTest::qWaitForWindowActive(this);
    }
};

// "800.00 x 600.00"
QString Boxes(const Dialog& dialog)
{
    return QString("%1 x %2").arg(dialog.Width()->text(), dialog.Height()->text());
}

QString RangeOf(const QDoubleSpinBox* box)
{
    return QString("%1 to %2").arg(box->minimum(), 0, 'f', 2).arg(box->maximum(), 0, 'f', 2);
}

QString RangeOf(const QSpinBox* box)
{
    return QString("%1 to %2").arg(box->minimum()).arg(box->maximum());
}

// Which axes the anchor widget shows as shrinking.
QString Shrinks(const Dialog& dialog)
{
    QString shrinks;
    if (dialog.Anchor()->IsShrinkHorizontal())
        shrinks += 'w';
    if (dialog.Anchor()->IsShrinkVertical())
        shrinks += 'h';
    return shrinks;
}

// One edit: "w400" types a width, "h300" a height, "u2" chooses a unit for both axes, "c0" and "c1" turn the
// proportions off and on, "d150" sets the resolution.
void Edit(const Dialog& dialog, const QString& edit)
{
    const QString value = edit.mid(1);
    switch (edit.at(0).toLatin1())
    {
    case 'w':
        dialog.Width()->setValue(value.toDouble());
        return;
    case 'h':
        dialog.Height()->setValue(value.toDouble());
        return;
    case 'u':
        dialog.WidthUnits()->setCurrentIndex(value.toInt());
        return;
    case 'c':
        dialog.Constrain()->setChecked(value == "1");
        return;
    case 'd':
        dialog.DPI()->setValue(value.toInt());
        return;
    default:
        qFatal("no edit: %s", qPrintable(edit));
    }
}

void Edits(const Dialog& dialog, const QString& edits)
{
    for (const QString& edit : edits.split(' ', Qt::SkipEmptyParts))
        Edit(dialog, edit);
}

const QRegularExpression DebugLine("^Build date=[A-Z][a-z]{2} [ \\d]\\d \\d{4}, time=\\d\\d:\\d\\d:\\d\\d\\. "
                                   "Line=[1-9]\\d*, file=\"src/NVCanvasSize\"\\. Error dpi range\\.$");

// Counts the debug lines of the range of the resolution; whatever else is said goes on as before.
class DebugLines
{
public:
    DebugLines()
    {
        s_count = 0;
        s_before = qInstallMessageHandler(Handle);
    }
    ~DebugLines() { qInstallMessageHandler(s_before); }

    int Count() const { return s_count; }

private:
    static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type == QtDebugMsg && DebugLine.match(text).hasMatch())
            ++s_count;
        else if (s_before)
            s_before(type, context, text);
    }

    static int s_count;
    static QtMessageHandler s_before;
};

int DebugLines::s_count = 0;
QtMessageHandler DebugLines::s_before = nullptr;

// What a number box with two decimals makes of what it is given.
struct ModelBox
{
    static double Rounded(double value) { return QString::number(value, 'f', 2).toDouble(); }

    void SetRange(double low, double high)
    {
        smallest = Rounded(low);
        largest = std::max(Rounded(high), smallest);
        value = std::min(std::max(value, smallest), largest);
    }
    // True if the value is another one now.
    bool SetValue(double to)
    {
        const double before = value;
        value = std::min(std::max(Rounded(to), smallest), largest);
        return value != before;
    }

    double smallest = 0.0;
    double largest = 99.99;
    double value = 0.0;
};

// The dialog once more, as plain arithmetic on numbers. An axis is 0 for the width and 1 for the height.
class Model
{
public:
    Model(int resolution, int width, int height) : dpi(std::min(std::max(resolution, 1), 9999))
    {
        for (int axis = 0; axis < 2; ++axis)
        {
            current[axis] = fresh[axis] = axis == 0 ? width : height;
            box[axis].SetRange(1.0, 10000.0);
            box[axis].SetValue(current[axis]);
            lengths[axis] = QString::number(current[axis]);
        }
        currentTitle = "Current size: " + memory(width, height);
        newTitle = "New size: " + memory(width, height);
        calcRanges();
    }

    void SetSide(int axis, double to)
    {
        if (!box[axis].SetValue(to))
            return;
        const int other = 1 - axis;
        fresh[axis] = toPixels(unit[axis], box[axis].value);
        if (constrained)
        {
            const double ratio = double(std::max(1, current[0])) / double(std::max(1, current[1]));
            fresh[other] = whole(axis == 0 ? fresh[0] / ratio : fresh[1] * ratio);
            box[other].SetValue(fromPixels(unit[other], fresh[other]));
            shrinks[other] = fresh[other] < current[other];
        }
        newTitle = "New size: " + memory(fresh[0], fresh[1]);
        calcRanges();
        shrinks[axis] = fresh[axis] < current[axis];
    }

    void SetUnit(int axis, int index, bool alone)
    {
        if (unit[axis] == index)
            return;
        unit[axis] = index;
        const double length = fromPixels(index, current[axis]);
        lengths[axis] = index == 0 ? QString::number(whole(length)) : QString::number(length, 'f', 2);
        const double now = fromPixels(index, fresh[axis]);
        box[axis].SetRange(0.0, now);
        box[axis].SetValue(now);
        calcRanges();
        if (!alone)
            SetUnit(1 - axis, index, false);
    }

    void SetConstrained(bool on)
    {
        if (on == constrained)
            return;
        constrained = on;
        if (!on)
            return;
        for (int axis = 0; axis < 2; ++axis)
        {
            fresh[axis] = current[axis];
            box[axis].SetValue(fromPixels(unit[axis], fresh[axis]));
            shrinks[axis] = false;
        }
    }

    void SetDpi(int to)
    {
        to = std::min(std::max(to, smallestDpi), largestDpi);
        if (to == dpi)
            return;
        dpi = to;
        fresh[0] = toPixels(unit[0], box[0].value);
        // Pixels of the height are read as inches.
        fresh[1] = unit[1] == 0 ? whole(box[1].value * dpi) : toPixels(unit[1], box[1].value);
        for (int axis = 0; axis < 2; ++axis)
            shrinks[axis] = fresh[axis] < current[axis];
        newTitle = "New size: " + memory(fresh[0], fresh[1]);
        calcRanges();
    }

    // All that can be seen.
    QString State() const
    {
        QStringList parts{QString("%1 x %2 px at %3 (%4 to %5)")
                              .arg(fresh[0])
                              .arg(fresh[1])
                              .arg(dpi)
                              .arg(smallestDpi)
                              .arg(largestDpi)};
        for (int axis = 0; axis < 2; ++axis)
        {
            parts << QString("%1 %2 (%3 to %4), is %5")
                         .arg(box[axis].value, 0, 'f', 2)
                         .arg(UnitTexts[unit[axis]])
                         .arg(box[axis].smallest, 0, 'f', 2)
                         .arg(box[axis].largest, 0, 'f', 2)
                         .arg(lengths[axis]);
        }
        parts << (shrinks[0] ? "narrower" : "") << (shrinks[1] ? "lower" : "") << currentTitle << newTitle;
        return parts.join("; ");
    }

    int debugLines = 0;

private:
    // Truncated, and the nearest int of what no int can hold.
    static int whole(double value)
    {
        const double most = std::numeric_limits<int>::max();
        return int(std::min(std::max(value, -most - 1.0), most));
    }
    int toPixels(int index, double value) const
    {
        return whole(index == 0 ? value : value * dpi / Factors[index]);
    }
    double fromPixels(int index, double pixels) const
    {
        return index == 0 ? pixels : pixels * Factors[index] / dpi;
    }

    static QString memory(int width, int height)
    {
        const int bytes = int(quint32(width) * quint32(height) * 4);
        if (bytes <= 1023)
            return QString("%1 b").arg(bytes);
        if (bytes <= 1048575)
            return QString("%1 Kb").arg(bytes / 1024.0, 0, 'f', 2);
        if (bytes <= 1073741823)
            return QString("%1 Mb").arg(bytes / 1048576.0, 0, 'f', 2);
        return QString("%1 Gb").arg(bytes / 1073741824.0, 0, 'f', 2);
    }

    void calcRanges()
    {
        int low[2];
        int high[2];
        for (int axis = 0; axis < 2; ++axis)
        {
            low[axis] = 1;
            high[axis] = 9999;
            if (unit[axis] == 0)
            {
                box[axis].SetRange(1.0, 10000.0);
                continue;
            }
            const double factor = Factors[unit[axis]];
            box[axis].SetRange(factor / dpi, 10000.0 * factor / dpi);
            if (fresh[axis] == 0)
            {
                low[axis] = std::numeric_limits<int>::max();
                continue;
            }
            const double length = fromPixels(unit[axis], fresh[axis]);
            low[axis] = std::max(1, whole(factor / length));
            high[axis] = std::min(9999, whole(10000.0 * factor / length));
        }
        const bool apart = low[0] > high[1] || low[1] > high[0];
        debugLines += apart;
        smallestDpi = apart ? 1 : std::max(low[0], low[1]);
        largestDpi = apart ? 9999 : std::min(high[0], high[1]);
        // As the toolkit has it for a range that is upside down.
        largestDpi = std::max(largestDpi, smallestDpi);
        dpi = std::min(std::max(dpi, smallestDpi), largestDpi);
    }

    int dpi;
    int smallestDpi = 1;
    int largestDpi = 9999;
    int current[2];
    int fresh[2];
    int unit[2] = {0, 0};
    ModelBox box[2];
    QString lengths[2];
    bool shrinks[2] = {false, false};
    bool constrained = true;
    QString currentTitle;
    QString newTitle;
};

QString StateOf(const Dialog& dialog)
{
    QStringList parts{QString("%1 x %2 px at %3 (%4)")
                          .arg(dialog.GetNewSize().width())
                          .arg(dialog.GetNewSize().height())
                          .arg(dialog.DPI()->value())
                          .arg(RangeOf(dialog.DPI()))};
    parts << QString("%1 %2 (%3), is %4")
                 .arg(dialog.Width()->text(), dialog.Text("m_pUnitsWidth"), RangeOf(dialog.Width()),
                      dialog.Text("m_pCurrUnitsWidth"));
    parts << QString("%1 %2 (%3), is %4")
                 .arg(dialog.Height()->text(), dialog.Text("m_pUnitsHeight"), RangeOf(dialog.Height()),
                      dialog.Text("m_pCurrUnitsHeight"));
    parts << (dialog.Anchor()->IsShrinkHorizontal() ? "narrower" : "")
          << (dialog.Anchor()->IsShrinkVertical() ? "lower" : "") << dialog.CurrentTitle()
          << dialog.NewTitle();
    return parts.join("; ");
}

// Chooses an entry of a list as a person does, with keys held.
void Choose(QComboBox* list, int row, Qt::KeyboardModifiers modifiers)
{
    // Else the list takes a click that comes this soon for the end of the one that opened it.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    list->showPopup();
    const QRect entry = list->view()->visualRect(list->model()->index(row, 0));
    const QPoint place(entry.left() + 10, entry.center().y());
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, modifiers, place);
    QApplication::setDoubleClickInterval(interval);
    QVERIFY(!list->view()->isVisible());
}

// Holds the key for its lifetime, if at all.
class HeldShift
{
public:
    explicit HeldShift(bool held)
    {
        if (held)
            QTest::keyPress(&m_window, Qt::Key_Shift, Qt::ShiftModifier);
    }
    ~HeldShift() { QTest::keyRelease(&m_window, Qt::Key_Shift, Qt::NoModifier); }

private:
    Q_DISABLE_COPY(HeldShift)

    QWidget m_window;
};

// A random edit of both; says which.
QString EditBoth(std::mt19937& random, const Dialog& dialog, Model& model)
{
    const auto pick = [&random](int count) { return int(random() % unsigned(count)); };
    QString done;
    const int axis = pick(2);
    QDoubleSpinBox* box = axis == 0 ? dialog.Width() : dialog.Height();
    switch (pick(8))
    {
    case 0:
    {
        const int unit = pick(UnitCount);
        const bool alone = pick(3) == 0;
        done = QString("unit %1 of axis %2, alone %3").arg(unit).arg(axis).arg(alone);
        const HeldShift shift(alone);
        (axis == 0 ? dialog.WidthUnits() : dialog.HeightUnits())->setCurrentIndex(unit);
        model.SetUnit(axis, unit, alone);
        break;
    }
    case 1:
    {
        const bool on = pick(2) == 1;
        done = QString("constrain %1").arg(on);
        dialog.Constrain()->setChecked(on);
        model.SetConstrained(on);
        break;
    }
    case 2:
    {
        const int to = pick(3) == 0 ? pick(10001) : dialog.DPI()->minimum() + pick(200);
        done = QString("dpi %1").arg(to);
        dialog.DPI()->setValue(to);
        model.SetDpi(to);
        break;
    }
    default:
    {
        // Near the ends, near what is there, or anywhere.
        const double span = box->maximum() - box->minimum();
        const double to = pick(4) == 0 ? (pick(2) ? box->maximum() + 1.0 : box->minimum() - 1.0)
            : pick(3) == 0             ? box->value() + (pick(201) - 100) / 100.0
                                       : box->minimum() + span * pick(100001) / 100000.0;
        done = QString("side %1 of axis %2").arg(to, 0, 'g', 17).arg(axis);
        box->setValue(to);
        model.SetSide(axis, to);
    }
    }
    return done;
}

// Edits by chance, from that size and resolution, after each of which the dialog shows what the model says.
void Walk(const QSize& start, int dpi, int steps)
{
    std::mt19937 random(unsigned(start.width()) * 31U + unsigned(start.height()) * 7U + unsigned(dpi));
    const Dialog dialog(dpi, start);
    Model model(dpi, start.width(), start.height());
    const DebugLines lines;
    QString walk = QString("%1 x %2 at %3").arg(start.width()).arg(start.height()).arg(dpi);
    for (int step = 0; step <= steps; ++step)
    {
        QVERIFY2(StateOf(dialog) == model.State(),
                 qPrintable(StateOf(dialog) + '\n' + model.State() + '\n' + walk));
        QCOMPARE(lines.Count(), model.debugLines);
        walk += '\n' + EditBoth(random, dialog, model);
    }
}

} // namespace

class tst_NVCanvasSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void formIsAsStated();
    void formIsInThisOrder();
    void captionsAreThese();
    void textsAreTranslated();
    void interfaceIsAsHostsKnowIt();
    void startsWithTheSizeThatItIsGiven();
    void resolutionIsShownWithinItsRange_data();
    void resolutionIsShownWithinItsRange();
    void unitsAreThoseOfTheHost();
    void sizeOfTheDialogFollowsItsTexts();
    void longestTextsAreNotCutOff_data();
    void longestTextsAreNotCutOff();
    void keysStartInTheWidth();
    void tabOrderIsThis();
    void editGivesThis_data();
    void editGivesThis();
    void orderOfEditsCounts_data();
    void orderOfEditsCounts();
    void memoryTextIsThis_data();
    void memoryTextIsThis();
    void memoryTextOfTheNewSizeWraps();
    void rangesAreThese_data();
    void rangesAreThese();
    void currentSizeFollowsTheUnit_data();
    void currentSizeFollowsTheUnit();
    void unitLeavesTheNewSizeAlone();
    void unitLabelsFollowTheChoiceAndNotItsText();
    void unitsGoTogetherUnlessShiftAloneIsHeld_data();
    void unitsGoTogetherUnlessShiftAloneIsHeld();
    void keysChooseUnitsToo();
    void shrinkFollowsTheEdit();
    void constraintOnResetsSilently();
    void constraintOnKeepsTheRanges();
    void constraintOffChangesNothing();
    void lengthsThatDontMeetAreToldToTheLog_data();
    void lengthsThatDontMeetAreToldToTheLog();
    void resolutionCannotBeTyped();
    void resolutionChangesThePixelsOfALength();
    void resolutionReadsPixelsOfTheHeightAsInches();
    void hugeDocumentMovesTheResolutionSilently();
    void eachKeystrokeCounts_data();
    void eachKeystrokeCounts();
    void sizesOutOfRangeCannotBeTyped();
    void otherBoxIsSetWithoutASignal();
    void unitsMoveWithoutSignalsOfTheBoxes();
    void emptySizeIsAccepted();
    void walkAgreesWithTheModel_data();
    void walkAgreesWithTheModel();
    void walkFromExtremesAgreesWithTheModel_data();
    void walkFromExtremesAgreesWithTheModel();
    void anchorIsChosenByMouse();
    void anchorIsChosenByKeys();
    void endsWithThisResult_data();
    void endsWithThisResult();
    void cancelLeavesWhatWasTyped();
    void deletionEndsTheRun();
    void sizesThatAreNoneDoNoHarm_data();
    void sizesThatAreNoneDoNoHarm();
};

void tst_NVCanvasSize::init()
{
    QLocale::setDefault(QLocale::c());
}

void tst_NVCanvasSize::formIsAsStated()
{
    const Dialog dialog(300, QSize(800, 600));
    QCOMPARE(dialog.Content()->objectName(), QString("CanvasSize"));
    for (const char* name : {"m_pNewWidth", "m_pNewHeight"})
    {
        const auto* box = dialog.Find<QDoubleSpinBox>(name);
        QCOMPARE(box->decimals(), 2);
        QCOMPARE(box->minimumWidth(), 100);
        QCOMPARE(box->suffix(), QString());
    }
    QVERIFY(dialog.DPI()->isReadOnly());
    QVERIFY(dialog.Constrain()->isChecked());
    QVERIFY(dialog.WidthUnits()->inherits("KXCommonComboBox"));
    QVERIFY(dialog.HeightUnits()->inherits("KXCommonComboBox"));
    QCOMPARE(dialog.Find<QDialogButtonBox>("m_pButtonBox")->standardButtons(),
             QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(dialog.Find<QLabel>("label")->minimumWidth(), 60);
    for (const char* name : {"label", "m_pCurrUnitsWidth", "m_pCurrPixWidth", "label_2", "m_pCurrUnitsHeight",
                             "m_pCurrPixHeight"})
        QVERIFY2(dialog.Find<QLabel>(name)->alignment().testFlag(Qt::AlignRight), name);
    QCOMPARE(dialog.Find<QLabel>("label_4")->buddy(), dialog.Width());
    QCOMPARE(dialog.Find<QLabel>("label_3")->buddy(), dialog.Height());
    QCOMPARE(dialog.Find<QLabel>("label_5")->buddy(), dialog.DPI());
    QCOMPARE(dialog.Find<QLabel>("label_6")->buddy(), dialog.Anchor());
}

void tst_NVCanvasSize::formIsInThisOrder()
{
    const QStringList order{"m_pButtonBox",
                            "m_pCurrentSizeGroup",
                            "label",
                            "m_pCurrUnitsWidth",
                            "m_pUnitsWidth",
                            "m_pCurrPixWidth",
                            "label_9",
                            "label_2",
                            "m_pCurrUnitsHeight",
                            "m_pUnitsHeight",
                            "m_pCurrPixHeight",
                            "label_10",
                            "m_pNewSizeGroup",
                            "label_4",
                            "m_pNewWidth",
                            "m_pWidthUnits",
                            "label_3",
                            "m_pNewHeight",
                            "m_pHeightUnits",
                            "label_5",
                            "m_pDPI",
                            "m_pConstrainProportions",
                            "label_6",
                            "m_pAnchorWidget"};
    const Dialog dialog(300, QSize(800, 600));
    QStringList found;
    const QList<QWidget*> widgets = dialog.Content()->findChildren<QWidget*>();
    for (const QWidget* widget : widgets)
    {
        if (order.contains(widget->objectName()))
            found << widget->objectName();
    }
    QCOMPARE(found, order);
    // The buttons come first and stand below both groups.
    const auto* grid = qobject_cast<QGridLayout*>(dialog.Content()->layout());
    QCOMPARE(grid->itemAtPosition(0, 0)->widget()->objectName(), QString("m_pCurrentSizeGroup"));
    QCOMPARE(grid->itemAtPosition(1, 0)->widget()->objectName(), QString("m_pNewSizeGroup"));
    QCOMPARE(grid->itemAtPosition(2, 0)->widget()->objectName(), QString("m_pButtonBox"));
}

void tst_NVCanvasSize::captionsAreThese()
{
    const Dialog dialog(300, QSize(800, 600));
    QCOMPARE(dialog.windowTitle(), QString("Canvas Size"));
    QCOMPARE(dialog.Text("label"), QString("Width:"));
    QCOMPARE(dialog.Text("label_2"), QString("Height:"));
    QCOMPARE(dialog.Text("label_3"), QString("Height:"));
    QCOMPARE(dialog.Text("label_4"), QString("Width:"));
    QCOMPARE(dialog.Text("label_5"), QString("DPI:"));
    QCOMPARE(dialog.Text("label_6"), QString("Anchor:"));
    QCOMPARE(dialog.Text("label_9"), QString("px"));
    QCOMPARE(dialog.Text("label_10"), QString("px"));
    QCOMPARE(dialog.Constrain()->text(), QString("Constrain proportions"));
    QCOMPARE(dialog.Anchor()->toolTip(), QString("Click to change the anchor settings"));
}

void tst_NVCanvasSize::textsAreTranslated()
{
    struct Marker : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return QString("%1/%2").arg(context, text);
        }
        bool isEmpty() const override { return false; }
    };
    Marker marker;
    QCoreApplication::installTranslator(&marker);
    const Dialog dialog(300, QSize(512, 512));
    const QString before = dialog.NewTitle();
    dialog.Width()->setValue(10.0);
    const QString after = dialog.NewTitle();
    QCoreApplication::removeTranslator(&marker);
    QCOMPARE(dialog.windowTitle(), QString("CanvasSize/Canvas Size"));
    QCOMPARE(dialog.Text("label_5"), QString("CanvasSize/DPI:"));
    QCOMPARE(dialog.Anchor()->toolTip(), QString("CanvasSize/Click to change the anchor settings"));
    QCOMPARE(dialog.CurrentTitle(), QString("NVCanvasSize/Current size: NVCanvasSize/1.00 Mb"));
    QCOMPARE(before, QString("NVCanvasSize/New size: NVCanvasSize/1.00 Mb"));
    QCOMPARE(after, QString("NVCanvasSize/New size: NVCanvasSize/400 b"));
    QCOMPARE(dialog.WidthUnits()->itemText(0), QString("NVCanvasSize/px"));
    QCOMPARE(dialog.WidthUnits()->itemText(1), QString("NVMeasureUnit/in"));
    QCOMPARE(dialog.Text("m_pUnitsHeight"), QString("NVCanvasSize/px"));
}

void tst_NVCanvasSize::interfaceIsAsHostsKnowIt()
{
    const QMetaObject& meta = NVCanvasSize::staticMetaObject;
    QCOMPARE(meta.superClass(), &KXDialog::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), QMetaMethod::Private);
        methods << meta.method(i).methodSignature();
    }
    QCOMPARE(methods,
             QStringList({"OnWidthUnitsChanged(int)", "OnHeightUnitsChanged(int)", "OnHeightChanged(double)",
                          "OnWidthChanged(double)", "OnDPIChanged(int)", "OnConstrainProportions(bool)"}));
}

void tst_NVCanvasSize::startsWithTheSizeThatItIsGiven()
{
    const Dialog dialog(300, QSize(800, 600));
    QCOMPARE(dialog.GetNewSize(), QSize(800, 600));
    QCOMPARE(dialog.GetAnchor(), KXAnchorSelection::Center);
    QCOMPARE(Boxes(dialog), QString("800.00 x 600.00"));
    QCOMPARE(RangeOf(dialog.Width()), QString("1.00 to 10000.00"));
    QCOMPARE(RangeOf(dialog.Height()), QString("1.00 to 10000.00"));
    QCOMPARE(dialog.DPI()->value(), 300);
    QCOMPARE(RangeOf(dialog.DPI()), QString("1 to 9999"));
    QCOMPARE(dialog.Text("m_pCurrPixWidth"), QString("800"));
    QCOMPARE(dialog.Text("m_pCurrPixHeight"), QString("600"));
    QCOMPARE(dialog.Text("m_pCurrUnitsWidth"), QString("800"));
    QCOMPARE(dialog.Text("m_pCurrUnitsHeight"), QString("600"));
    QCOMPARE(dialog.Text("m_pUnitsWidth"), QString("px"));
    QCOMPARE(dialog.Text("m_pUnitsHeight"), QString("px"));
    // 800 * 600 * 4 = 1920000 bytes
    QCOMPARE(dialog.CurrentTitle(), QString("Current size: 1.83 Mb"));
    QCOMPARE(dialog.NewTitle(), QString("New size: 1.83 Mb"));
    QCOMPARE(Shrinks(dialog), QString());
}

void tst_NVCanvasSize::resolutionIsShownWithinItsRange_data()
{
    QTest::addColumn<int>("dpi");
    QTest::addColumn<int>("shown");
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("-300") << -300 << 1;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("9999") << 9999 << 9999;
    QTest::newRow("10000") << 10000 << 9999;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << 9999;
}

void tst_NVCanvasSize::resolutionIsShownWithinItsRange()
{
    QFETCH(int, dpi);
    QFETCH(int, shown);
    const Dialog dialog(dpi, QSize(800, 600));
    QCOMPARE(dialog.DPI()->value(), shown);
}

void tst_NVCanvasSize::unitsAreThoseOfTheHost()
{
    const Dialog dialog(300, QSize(800, 600));
    for (const QComboBox* list : {dialog.WidthUnits(), dialog.HeightUnits()})
    {
        QCOMPARE(list->currentIndex(), 0);
        QStringList texts;
        for (int i = 0; i < list->count(); ++i)
            texts << list->itemText(i);
        QStringList expected{"px"};
        for (const NVMeasureUnit& unit : NVMeasureUnit::StandardUnits())
            expected << unit.GetAbbreviation();
        QCOMPARE(texts, expected);
        QCOMPARE(texts.mid(0, 3), QStringList({"px", "in", "mm"}));
    }
}

void tst_NVCanvasSize::sizeOfTheDialogFollowsItsTexts()
{
    Dialog dialog(300, QSize(800, 600));
    QCOMPARE(dialog.layout()->sizeConstraint(), QLayout::SetFixedSize);
    QVERIFY(dialog.Show());
    QCOMPARE(dialog.size(), dialog.sizeHint());
    QCOMPARE(dialog.minimumSize(), dialog.size());
    QCOMPARE(dialog.maximumSize(), dialog.size());
}

void tst_NVCanvasSize::longestTextsAreNotCutOff_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("dpi");
    for (const int points : {9, 12, 16})
        for (const int dpi : {1, 300, 9999})
            QTest::addRow("%d pt at %d", points, dpi) << points << dpi;
}

void tst_NVCanvasSize::longestTextsAreNotCutOff()
{
    QFETCH(int, points);
    QFETCH(int, dpi);
    struct LongNames : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            const bool isUnit = qstrcmp(context, "NVMeasureUnit") == 0 || qstrcmp(text, "px") == 0;
            return isUnit ? QString("centimetres (%1)").arg(text) : QString();
        }
        bool isEmpty() const override { return false; }
    };
    LongNames names;
    QCoreApplication::installTranslator(&names);
    const FontSize larger(points);
    Dialog dialog(dpi, QSize(10000, 10000));
    QVERIFY(dialog.Show());

    for (int unit = 0; unit < UnitCount; ++unit)
    {
        dialog.WidthUnits()->setCurrentIndex(unit);
        for (const double value : {0.0, 1e9})
        {
            dialog.Width()->setValue(value);
            QTRY_COMPARE(dialog.size(), dialog.sizeHint());
            QTRY_COMPARE(CutText(&dialog), QString());
        }
    }
    QCoreApplication::removeTranslator(&names);
}

void tst_NVCanvasSize::keysStartInTheWidth()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    QVERIFY(dialog.Width()->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), "400");
    QCOMPARE(dialog.GetNewSize(), QSize(400, 300));
}

void tst_NVCanvasSize::tabOrderIsThis()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    QStringList reached;
    dialog.Width()->setFocus();
    for (int i = 0; i < 9; ++i)
    {
        QWidget* focused = QApplication::focusWidget();
        const auto* button = qobject_cast<QPushButton*>(focused);
        reached << (button                                           ? button->text().remove('&')
                        : focused->parentWidget() == dialog.Anchor() ? "anchor"
                                                                     : focused->objectName());
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    QCOMPARE(reached,
             QStringList({"m_pNewWidth", "m_pNewHeight", "m_pDPI", "m_pConstrainProportions", "m_pWidthUnits",
                          "m_pHeightUnits", "anchor", "OK", "Cancel"}));
    QVERIFY(dialog.Width()->hasFocus());
}

void tst_NVCanvasSize::editGivesThis_data()
{
    QTest::addColumn<QSize>("start");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("boxes");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("shrinks");

    const QSize landscape(800, 600);
    // 400 / (4 / 3) = 300; 400 * 300 * 4 = 480000 bytes
    QTest::newRow("landscape, even") << landscape << 100 << "w400" << QSize(400, 300) << "400.00 x 300.00"
                                     << "468.75 Kb"
                                     << "wh";
    // 401 / (4 / 3) = 300.75
    QTest::newRow("landscape, cut off") << landscape << 100 << "w401" << QSize(401, 300) << "401.00 x 300.00"
                                        << "469.92 Kb"
                                        << "wh";
    // 301 * 4 / 3 = 401.33
    QTest::newRow("landscape, height") << landscape << 100 << "h301" << QSize(401, 301) << "401.00 x 301.00"
                                       << "471.49 Kb"
                                       << "wh";
    QTest::newRow("landscape, larger")
        << landscape << 100 << "w1600" << QSize(1600, 1200) << "1600.00 x 1200.00"
        << "7.32 Mb"
        << "";
    // What the box shows behind its point is cut off too.
    QTest::newRow("landscape, half a pixel")
        << landscape << 100 << "w400.99" << QSize(400, 300) << "400.99 x 300.00"
        << "468.75 Kb"
        << "wh";
    // 1 / (4 / 3) = 0.75: the box cannot show 0, the size has it.
    QTest::newRow("landscape, down to one column") << landscape << 100 << "w1" << QSize(1, 0) << "1.00 x 1.00"
                                                   << "0 b"
                                                   << "wh";
    // 10000 * 4 / 3 = 13333.3: the box cannot show it, the size has it. 13333 * 10000 * 4 = 533320000 bytes
    QTest::newRow("landscape, beyond the box")
        << landscape << 100 << "h10000" << QSize(13333, 10000) << "10000.00 x 10000.00"
        << "508.61 Mb"
        << "";
    QTest::newRow("landscape, one axis")
        << landscape << 100 << "c0 w400" << QSize(400, 600) << "400.00 x 600.00"
        << "937.50 Kb"
        << "w";
    QTest::newRow("landscape, other axis")
        << landscape << 100 << "c0 h599" << QSize(800, 599) << "800.00 x 599.00"
        << "1.83 Mb"
        << "h";

    const QSize portrait(600, 800);
    // 301 / 0.75 = 401.33
    QTest::newRow("portrait, width") << portrait << 100 << "w301" << QSize(301, 401) << "301.00 x 401.00"
                                     << "471.49 Kb"
                                     << "wh";
    // 401 * 0.75 = 300.75
    QTest::newRow("portrait, height") << portrait << 100 << "h401" << QSize(300, 401) << "300.00 x 401.00"
                                      << "469.92 Kb"
                                      << "wh";

    const QSize square(500, 500);
    QTest::newRow("square") << square << 100 << "w333" << QSize(333, 333) << "333.00 x 333.00"
                            << "433.16 Kb"
                            << "wh";

    const QSize dot(1, 1);
    // 400000000 bytes
    QTest::newRow("one pixel, largest")
        << dot << 100 << "w10000" << QSize(10000, 10000) << "10000.00 x 10000.00"
        << "381.47 Mb"
        << "";
    QTest::newRow("one pixel, two") << dot << 100 << "h2" << QSize(2, 2) << "2.00 x 2.00"
                                    << "16 b"
                                    << "";
    QTest::newRow("one pixel, no less") << dot << 100 << "w0.5" << QSize(1, 1) << "1.00 x 1.00"
                                        << "4 b"
                                        << "";

    const QSize large(10000, 10000);
    // 9999 * 9999 * 4 = 399920004 bytes
    QTest::newRow("largest, one less") << large << 100 << "w9999" << QSize(9999, 9999) << "9999.00 x 9999.00"
                                       << "381.39 Mb"
                                       << "wh";
    QTest::newRow("largest, no more")
        << large << 100 << "w10001" << QSize(10000, 10000) << "10000.00 x 10000.00"
        << "381.47 Mb"
        << "";

    const QSize line(1, 10000);
    // 2 / 0.0001 = 20000, beyond the box; 2 * 20000 * 4 = 160000 bytes
    QTest::newRow("line, twice as wide") << line << 100 << "w2" << QSize(2, 20000) << "2.00 x 10000.00"
                                         << "156.25 Kb"
                                         << "";
    // 5000 * 0.0001 = 0.5
    QTest::newRow("line, half as high") << line << 100 << "h5000" << QSize(0, 5000) << "1.00 x 5000.00"
                                        << "0 b"
                                        << "wh";
    QTest::newRow("line, one axis") << line << 100 << "c0 h5000" << QSize(1, 5000) << "1.00 x 5000.00"
                                    << "19.53 Kb"
                                    << "h";

    QTest::newRow("inches") << landscape << 100 << "u1 w4" << QSize(400, 300) << "4.00 x 3.00"
                            << "468.75 Kb"
                            << "wh";
    // 3.33 * 100 / (4 / 3) = 249.75
    QTest::newRow("inches, cut off") << landscape << 100 << "u1 w3.33" << QSize(333, 249) << "3.33 x 2.49"
                                     << "323.89 Kb"
                                     << "wh";
    // 100 * 300 / 25.4 = 1181.1; 1181 / (4 / 3) = 885.75; 885 * 25.4 / 300 = 74.93
    QTest::newRow("millimetres") << landscape << 300 << "u2 w100" << QSize(1181, 885) << "100.00 x 74.93"
                                 << "3.99 Mb"
                                 << "";
    // 10 * 300 / 2.54 = 1181.1; 885 * 2.54 / 300 = 7.493
    QTest::newRow("centimetres") << landscape << 300 << "u3 w10" << QSize(1181, 885) << "10.00 x 7.49"
                                 << "3.99 Mb"
                                 << "";
    // 100 * 300 / 72 = 416.67; 416 / (4 / 3) = 312; 312 * 72 / 300 = 74.88
    QTest::newRow("points") << landscape << 300 << "u4 w100" << QSize(416, 312) << "100.00 x 74.88"
                            << "507.00 Kb"
                            << "wh";
    // 10 * 300 / 6 = 500; 500 * 4 / 3 = 666.67; 666 * 6 / 300 = 13.32
    QTest::newRow("picas, height") << landscape << 300 << "u5 h10" << QSize(666, 500) << "13.32 x 10.00"
                                   << "1.27 Mb"
                                   << "wh";
    QTest::newRow("portrait, millimetres")
        << portrait << 300 << "u2 h100" << QSize(885, 1181) << "74.93 x 100.00"
        << "3.99 Mb"
        << "";
    // 0.01 inches of 100 dpi are one pixel; 1 / (4 / 3) is none
    QTest::newRow("inches, smallest") << landscape << 100 << "u1 w0.01" << QSize(1, 0) << "0.01 x 0.01"
                                      << "0 b"
                                      << "wh";
}

void tst_NVCanvasSize::editGivesThis()
{
    QFETCH(QSize, start);
    QFETCH(int, dpi);
    QFETCH(QString, edits);
    QFETCH(QSize, size);
    QFETCH(QString, boxes);
    QFETCH(QString, title);
    QFETCH(QString, shrinks);
    const Dialog dialog(dpi, start);
    const DebugLines lines;
    Edits(dialog, edits);
    QCOMPARE(dialog.GetNewSize(), size);
    QCOMPARE(Boxes(dialog), boxes);
    QCOMPARE(dialog.NewTitle(), "New size: " + title);
    QCOMPARE(Shrinks(dialog), shrinks);
}

void tst_NVCanvasSize::orderOfEditsCounts_data()
{
    QTest::addColumn<QString>("edits");
    QTest::addColumn<QSize>("size");
    // All on 800 by 600 at 300 dpi.
    QTest::newRow("width") << "w401" << QSize(401, 300);
    QTest::newRow("width, then the height that it gave") << "w401 h300" << QSize(401, 300);
    QTest::newRow("width, then height") << "w401 h301" << QSize(401, 301);
    QTest::newRow("height, then width") << "h301 w402" << QSize(402, 301);
    QTest::newRow("height there and back") << "h301 h300" << QSize(400, 300);
    QTest::newRow("free, then bound") << "c0 w401 c1" << QSize(800, 600);
    QTest::newRow("bound, then free") << "w401 c0 h5" << QSize(401, 5);
    // 800 px are 67.73 mm; the unit alone loses nothing.
    QTest::newRow("unit there and back") << "u2 u0" << QSize(800, 600);
    // 401 px are 33.95 mm, which is 400.98 px.
    QTest::newRow("unit, then the same width") << "w402 u2 w33.95" << QSize(400, 300);
    QTest::newRow("width, then unit") << "w401 u2" << QSize(401, 300);
}

void tst_NVCanvasSize::orderOfEditsCounts()
{
    QFETCH(QString, edits);
    QFETCH(QSize, size);
    const Dialog dialog(300, QSize(800, 600));
    Edits(dialog, edits);
    QCOMPARE(dialog.GetNewSize(), size);
}

void tst_NVCanvasSize::memoryTextIsThis_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("1020 bytes") << QSize(255, 1) << "1020 b";
    QTest::newRow("1024 bytes") << QSize(256, 1) << "1.00 Kb";
    QTest::newRow("1536 bytes") << QSize(384, 1) << "1.50 Kb";
    QTest::newRow("1048572 bytes") << QSize(262143, 1) << "1024.00 Kb";
    QTest::newRow("1048576 bytes") << QSize(512, 512) << "1.00 Mb";
    QTest::newRow("1073676288 bytes") << QSize(16384, 16383) << "1023.94 Mb";
    QTest::newRow("1073741824 bytes") << QSize(16384, 16384) << "1.00 Gb";
    QTest::newRow("2147483644 bytes") << QSize(536870911, 1) << "2.00 Gb";
    QTest::newRow("2^31 bytes") << QSize(536870912, 1) << "-2147483648 b";
    // 2400000000 - 2^32
    QTest::newRow("2400000000 bytes") << QSize(20000, 30000) << "-1894967296 b";
    QTest::newRow("2^32 bytes") << QSize(32768, 32768) << "0 b";
    // 6400000000 - 2^32 = 2105032704
    QTest::newRow("6400000000 bytes") << QSize(40000, 40000) << "1.96 Gb";
}

// From 2^31 bytes on it wraps.
void tst_NVCanvasSize::memoryTextIsThis()
{
    QFETCH(QSize, size);
    QFETCH(QString, text);
    const Dialog dialog(300, size);
    QCOMPARE(dialog.CurrentTitle(), "Current size: " + text);
    QCOMPARE(dialog.NewTitle(), "New size: " + text);
}

void tst_NVCanvasSize::memoryTextOfTheNewSizeWraps()
{
    const Dialog dialog(100, QSize(1, 10));
    // 10000 by 100000 pixels: 4000000000 - 2^32
    Edits(dialog, "w10000");
    QCOMPARE(dialog.GetNewSize(), QSize(10000, 100000));
    QCOMPARE(dialog.NewTitle(), QString("New size: -294967296 b"));
}

void tst_NVCanvasSize::rangesAreThese_data()
{
    QTest::addColumn<QSize>("start");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<QString>("boxes");
    QTest::addColumn<QString>("resolution");
    const QSize size(800, 600);
    QTest::newRow("pixels") << size << 100 << ""
                            << "1.00 to 10000.00"
                            << "1 to 9999";
    QTest::newRow("pixels after an edit") << size << 100 << "w2000"
                                          << "1.00 to 10000.00"
                                          << "1 to 9999";
    // 8 by 6 inches: 10000 / 8 and 10000 / 6 dpi
    QTest::newRow("inches at 100 dpi") << size << 100 << "u1"
                                       << "0.01 to 100.00"
                                       << "1 to 1250";
    // 80 by 60 inches
    QTest::newRow("inches after an edit") << size << 100 << "u1 w80"
                                          << "0.01 to 100.00"
                                          << "1 to 125";
    // 1 / 300 and 10000 / 300
    QTest::newRow("inches at 300 dpi") << size << 300 << "u1"
                                       << "0.00 to 33.33"
                                       << "1 to 3750";
    // 203.2 mm: 254000 / 203.2
    QTest::newRow("millimetres at 100 dpi") << size << 100 << "u2"
                                            << "0.25 to 2540.00"
                                            << "1 to 1250";
    QTest::newRow("points at 1 dpi") << size << 1 << "u4"
                                     << "72.00 to 720000.00"
                                     << "1 to 12";
    // 0.08 inches: 1 / 0.08 dpi at least
    QTest::newRow("inches, small") << size << 100 << "c0 u1 w0.08"
                                   << "0.01 to 100.00"
                                   << "12 to 1666";
    QTest::newRow("there and back") << size << 100 << "u1 u0"
                                    << "1.00 to 10000.00"
                                    << "1 to 9999";
    // 0.5 inches: no more than 9999
    QTest::newRow("square of fifty") << QSize(50, 50) << 100 << "u1"
                                     << "0.01 to 100.00"
                                     << "2 to 9999";
}

void tst_NVCanvasSize::rangesAreThese()
{
    QFETCH(QSize, start);
    QFETCH(int, dpi);
    QFETCH(QString, edits);
    QFETCH(QString, boxes);
    QFETCH(QString, resolution);
    const Dialog dialog(dpi, start);
    Edits(dialog, edits);
    QCOMPARE(RangeOf(dialog.Width()), boxes);
    QCOMPARE(RangeOf(dialog.Height()), boxes);
    QCOMPARE(RangeOf(dialog.DPI()), resolution);
    QCOMPARE(dialog.DPI()->value(), dpi);
}

void tst_NVCanvasSize::currentSizeFollowsTheUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("boxes");
    QTest::newRow("px") << int(Pixels) << "800 px, 600 px"
                        << "800.00 x 600.00";
    QTest::newRow("in") << int(Inches) << "2.67 in, 2.00 in"
                        << "2.67 x 2.00";
    QTest::newRow("mm") << int(Millimetres) << "67.73 mm, 50.80 mm"
                        << "67.73 x 50.80";
    QTest::newRow("cm") << int(Centimetres) << "6.77 cm, 5.08 cm"
                        << "6.77 x 5.08";
    QTest::newRow("pt") << int(Points) << "192.00 pt, 144.00 pt"
                        << "192.00 x 144.00";
    QTest::newRow("pc") << int(Picas) << "16.00 pc, 12.00 pc"
                        << "16.00 x 12.00";
}

void tst_NVCanvasSize::currentSizeFollowsTheUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, text);
    QFETCH(QString, boxes);
    const Dialog dialog(300, QSize(800, 600));
    // By way of another unit, so that pixels are chosen too.
    dialog.HeightUnits()->setCurrentIndex(unit == Inches ? Points : Inches);
    dialog.HeightUnits()->setCurrentIndex(unit);
    const QString shown = QString("%1 %2, %3 %4")
                              .arg(dialog.Text("m_pCurrUnitsWidth"), dialog.Text("m_pUnitsWidth"),
                                   dialog.Text("m_pCurrUnitsHeight"), dialog.Text("m_pUnitsHeight"));
    QCOMPARE(shown, text);
    QCOMPARE(Boxes(dialog), boxes);
    QCOMPARE(dialog.Text("m_pCurrPixWidth"), QString("800"));
    QCOMPARE(dialog.Text("m_pCurrPixHeight"), QString("600"));
}

void tst_NVCanvasSize::unitLeavesTheNewSizeAlone()
{
    const Dialog dialog(299, QSize(777, 555));
    Edits(dialog, "c0 w331 h997");
    const QString title = dialog.NewTitle();
    for (const int unit : {5, 1, 4, 2, 0, 3, 2, 1, 0})
    {
        dialog.WidthUnits()->setCurrentIndex(unit);
        QCOMPARE(dialog.GetNewSize(), QSize(331, 997));
        dialog.HeightUnits()->setCurrentIndex((unit + 1) % UnitCount);
        QCOMPARE(dialog.GetNewSize(), QSize(331, 997));
    }
    QCOMPARE(dialog.NewTitle(), title);
}

void tst_NVCanvasSize::unitLabelsFollowTheChoiceAndNotItsText()
{
    const Dialog dialog(300, QSize(800, 600));
    dialog.WidthUnits()->setItemText(0, "dots");
    QCOMPARE(dialog.Text("m_pUnitsWidth"), QString("px"));
    Edits(dialog, "u1 u0");
    QCOMPARE(dialog.Text("m_pUnitsWidth"), QString("dots"));
    QCOMPARE(dialog.Text("m_pUnitsHeight"), QString("px"));
}

void tst_NVCanvasSize::unitsGoTogetherUnlessShiftAloneIsHeld_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("together");
    QTest::newRow("nothing") << int(Qt::NoModifier) << true;
    QTest::newRow("shift") << int(Qt::ShiftModifier) << false;
    QTest::newRow("control") << int(Qt::ControlModifier) << true;
    QTest::newRow("alt") << int(Qt::AltModifier) << true;
    QTest::newRow("shift and control") << int(Qt::ShiftModifier | Qt::ControlModifier) << true;
    QTest::newRow("shift and alt") << int(Qt::ShiftModifier | Qt::AltModifier) << true;
    QTest::newRow("shift and key pad") << int(Qt::ShiftModifier | Qt::KeypadModifier) << true;
}

void tst_NVCanvasSize::unitsGoTogetherUnlessShiftAloneIsHeld()
{
    QFETCH(int, modifiers);
    QFETCH(bool, together);
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    Choose(dialog.WidthUnits(), Millimetres, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(dialog.WidthUnits()->currentIndex(), int(Millimetres));
    QCOMPARE(dialog.HeightUnits()->currentIndex(), together ? int(Millimetres) : int(Pixels));
    QCOMPARE(dialog.Text("m_pUnitsHeight"), QString(together ? "mm" : "px"));
    QCOMPARE(Boxes(dialog), QString(together ? "67.73 x 50.80" : "67.73 x 600.00"));
    // The other way round; from a mixed choice, too.
    Choose(dialog.HeightUnits(), Points, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(dialog.HeightUnits()->currentIndex(), int(Points));
    QCOMPARE(dialog.WidthUnits()->currentIndex(), together ? int(Points) : int(Millimetres));
    QCOMPARE(Boxes(dialog), QString(together ? "192.00 x 144.00" : "67.73 x 144.00"));
    QCOMPARE(dialog.GetNewSize(), QSize(800, 600));
    // Without a key both meet again.
    Choose(dialog.HeightUnits(), Inches, Qt::NoModifier);
    QCOMPARE(dialog.WidthUnits()->currentIndex(), int(Inches));
    QCOMPARE(Boxes(dialog), QString("2.67 x 2.00"));
}

void tst_NVCanvasSize::keysChooseUnitsToo()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    dialog.WidthUnits()->setFocus();
    QTest::keyClick(dialog.WidthUnits(), Qt::Key_Down);
    QCOMPARE(dialog.WidthUnits()->currentIndex(), int(Inches));
    QCOMPARE(dialog.HeightUnits()->currentIndex(), int(Inches));
    QTest::keyClick(dialog.WidthUnits(), Qt::Key_M);
    QCOMPARE(dialog.HeightUnits()->currentIndex(), int(Millimetres));
}

void tst_NVCanvasSize::shrinkFollowsTheEdit()
{
    const Dialog dialog(300, QSize(800, 600));
    Edits(dialog, "c0 w799");
    QCOMPARE(Shrinks(dialog), QString("w"));
    Edits(dialog, "h599");
    QCOMPARE(Shrinks(dialog), QString("wh"));
    Edits(dialog, "w800");
    QCOMPARE(Shrinks(dialog), QString("h"));
    Edits(dialog, "h600");
    QCOMPARE(Shrinks(dialog), QString());
    Edits(dialog, "w801 h601");
    QCOMPARE(Shrinks(dialog), QString());
    Edits(dialog, "c1 w700");
    QCOMPARE(Shrinks(dialog), QString("wh"));
    Edits(dialog, "h600");
    QCOMPARE(Shrinks(dialog), QString());
    Edits(dialog, "h500");
    QCOMPARE(Shrinks(dialog), QString("wh"));
    Edits(dialog, "w900");
    QCOMPARE(Shrinks(dialog), QString());
}

void tst_NVCanvasSize::constraintOnResetsSilently()
{
    const Dialog dialog(100, QSize(800, 600));
    Edits(dialog, "c0 w400 h100");
    QCOMPARE(dialog.NewTitle(), QString("New size: 156.25 Kb"));
    QCOMPARE(Shrinks(dialog), QString("wh"));
    Edits(dialog, "c1");
    QCOMPARE(dialog.GetNewSize(), QSize(800, 600));
    QCOMPARE(Boxes(dialog), QString("800.00 x 600.00"));
    QCOMPARE(Shrinks(dialog), QString());
    // The memory of the size that was given up.
    QCOMPARE(dialog.NewTitle(), QString("New size: 156.25 Kb"));
    Edits(dialog, "w801");
    QCOMPARE(dialog.NewTitle(), QString("New size: 1.83 Mb"));

    Edits(dialog, "c0 u1 w1");
    Edits(dialog, "c1");
    QCOMPARE(Boxes(dialog), QString("8.00 x 6.00"));
    QCOMPARE(dialog.NewTitle(), QString("New size: 234.38 Kb"));
}

void tst_NVCanvasSize::constraintOnKeepsTheRanges()
{
    const Dialog dialog(100, QSize(800, 600));
    Edits(dialog, "c0 u1 w80 h0.08");
    QCOMPARE(RangeOf(dialog.DPI()), QString("12 to 125"));
    Edits(dialog, "c1");
    QCOMPARE(RangeOf(dialog.DPI()), QString("12 to 125"));
    Edits(dialog, "w4");
    QCOMPARE(RangeOf(dialog.DPI()), QString("1 to 2500"));
}

void tst_NVCanvasSize::constraintOffChangesNothing()
{
    const Dialog dialog(100, QSize(800, 600));
    Edits(dialog, "u1 w3.33");
    const QString before = StateOf(dialog);
    Edits(dialog, "c0");
    QCOMPARE(StateOf(dialog), before);
}

void tst_NVCanvasSize::lengthsThatDontMeetAreToldToTheLog_data()
{
    QTest::addColumn<QSize>("start");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<int>("lines");
    // The smallest width at 300 dpi is shown, and read, as no inch at all.
    QTest::newRow("no width") << QSize(800, 600) << "c0 u1 w0" << 1;
    QTest::newRow("no height") << QSize(800, 600) << "c0 u1 h0" << 1;
    QTest::newRow("neither") << QSize(800, 600) << "c0 u1 w0 h0" << 2;
    QTest::newRow("no width, height in pixels") << QSize(800, 600) << "c0 u1 w0 u0 w0" << 1;
    // 20000 by 1 pixels, in inches: at most 150 dpi for the width, which makes 75 of it in the next step, and
    // at least 150 for the height.
    QTest::newRow("far too long a line") << QSize(20000, 1) << "u1" << 1;
    QTest::newRow("longest line") << QSize(10000, 1) << "u1" << 0;
    QTest::newRow("ordinary") << QSize(800, 600) << "c0 u1 w0.02 h33" << 0;
}

void tst_NVCanvasSize::lengthsThatDontMeetAreToldToTheLog()
{
    QFETCH(QSize, start);
    QFETCH(QString, edits);
    QFETCH(int, lines);
    const Dialog dialog(300, start);
    const DebugLines log;
    Edits(dialog, edits);
    QCOMPARE(log.Count(), lines);
    if (lines > 0 && !edits.contains("u0"))
        QCOMPARE(RangeOf(dialog.DPI()), QString("1 to 9999"));
}

void tst_NVCanvasSize::resolutionCannotBeTyped()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    dialog.DPI()->setFocus();
    dialog.DPI()->selectAll();
    QTest::keyClicks(dialog.DPI(), "72");
    QTest::keyClick(dialog.DPI(), Qt::Key_Up);
    QTest::keyClick(dialog.DPI(), Qt::Key_PageDown);
    QTest::mouseClick(dialog.DPI(), Qt::LeftButton, Qt::NoModifier,
                      dialog.DPI()->rect().bottomRight() - QPoint(5, 5));
    QCOMPARE(dialog.DPI()->value(), 300);
    QCOMPARE(dialog.GetNewSize(), QSize(800, 600));
}

void tst_NVCanvasSize::resolutionChangesThePixelsOfALength()
{
    const Dialog dialog(100, QSize(800, 600));
    Edits(dialog, "u1 d150");
    QCOMPARE(dialog.GetNewSize(), QSize(1200, 900));
    QCOMPARE(Boxes(dialog), QString("8.00 x 6.00"));
    QCOMPARE(Shrinks(dialog), QString());
    QCOMPARE(dialog.NewTitle(), QString("New size: 4.12 Mb"));
    QCOMPARE(RangeOf(dialog.Width()), QString("0.01 to 66.67"));
    Edits(dialog, "d50");
    QCOMPARE(dialog.GetNewSize(), QSize(400, 300));
    QCOMPARE(Shrinks(dialog), QString("wh"));
    // 203.2 mm at 33 dpi are 264 px, 152.4 mm are 198.
    Edits(dialog, "d100 u2 d33");
    QCOMPARE(dialog.GetNewSize(), QSize(264, 198));
}

void tst_NVCanvasSize::resolutionReadsPixelsOfTheHeightAsInches()
{
    const Dialog dialog(300, QSize(800, 600));
    Edits(dialog, "d200");
    QCOMPARE(dialog.GetNewSize(), QSize(800, 600 * 200));
    QCOMPARE(Boxes(dialog), QString("800.00 x 600.00"));
    QCOMPARE(Shrinks(dialog), QString());
    // 800 * 120000 * 4 bytes
    QCOMPARE(dialog.NewTitle(), QString("New size: 366.21 Mb"));
}

// More than 10000 pixels make the largest resolution smaller than the present one.
void tst_NVCanvasSize::hugeDocumentMovesTheResolutionSilently()
{
    const Dialog dialog(300, QSize(20000, 20000));
    QCOMPARE(Boxes(dialog), QString("10000.00 x 10000.00"));
    QCOMPARE(dialog.GetNewSize(), QSize(20000, 20000));
    const SignalLog log(dialog.DPI());
    Edits(dialog, "u1");
    // 20000 / 300 inches of width allow 150 dpi; then 20000 / 150 of height allow 75.
    QCOMPARE(dialog.DPI()->value(), 75);
    QCOMPARE(log.Count(), 0);
    QCOMPARE(dialog.GetNewSize(), QSize(20000, 20000));
}

void tst_NVCanvasSize::eachKeystrokeCounts_data()
{
    QTest::addColumn<bool>("isWidth");
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QString>("keys");
    // After each key.
    QTest::addColumn<QList<QSize>>("sizes");
    QTest::newRow("width") << true << ""
                           << "250" << QList<QSize>{QSize(2, 1), QSize(25, 18), QSize(250, 187)};
    QTest::newRow("height") << false << ""
                            << "301" << QList<QSize>{QSize(4, 3), QSize(40, 30), QSize(401, 301)};
    QTest::newRow("width in inches") << true << "u1"
                                     << "1.55"
                                     << QList<QSize>{QSize(100, 75), QSize(100, 75), QSize(150, 112),
                                                     QSize(155, 116)};
    QTest::newRow("free height in centimetres")
        << false << "c0 u3"
        << "12.7" << QList<QSize>{QSize(800, 39), QSize(800, 472), QSize(800, 472), QSize(800, 500)};
}

void tst_NVCanvasSize::eachKeystrokeCounts()
{
    QFETCH(bool, isWidth);
    QFETCH(QString, setup);
    QFETCH(QString, keys);
    QFETCH(QList<QSize>, sizes);
    Dialog dialog(100, QSize(800, 600));
    Edits(dialog, setup);
    QVERIFY(dialog.Show());
    QDoubleSpinBox* box = isWidth ? dialog.Width() : dialog.Height();
    box->setFocus();
    box->selectAll();
    for (int i = 0; i < keys.size(); ++i)
    {
        QTest::keyClicks(box, keys.mid(i, 1));
        QCOMPARE(dialog.GetNewSize(), sizes.at(i));
        // What is typed is left as it is typed.
        QCOMPARE(box->text(), keys.left(i + 1));
    }
    QTest::keyClick(box, Qt::Key_Tab);
    QCOMPARE(dialog.GetNewSize(), sizes.last());
}

void tst_NVCanvasSize::sizesOutOfRangeCannotBeTyped()
{
    Dialog dialog(100, QSize(800, 600));
    QVERIFY(dialog.Show());
    dialog.Width()->setFocus();
    dialog.Width()->selectAll();
    QTest::keyClicks(dialog.Width(), "10001");
    QCOMPARE(dialog.Width()->text(), QString("1000"));
    QCOMPARE(dialog.GetNewSize(), QSize(1000, 750));
    dialog.Width()->selectAll();
    QTest::keyClicks(dialog.Width(), "-5");
    QCOMPARE(dialog.GetNewSize(), QSize(5, 3));
    // 0 may be typed on the way to 0.5, which is too small as well.
    dialog.Width()->selectAll();
    QTest::keyClicks(dialog.Width(), "0");
    QCOMPARE(dialog.GetNewSize(), QSize(5, 3));
    QTest::keyClick(dialog.Width(), Qt::Key_Tab);
    QVERIFY(dialog.GetNewSize().width() >= 1);
}

void tst_NVCanvasSize::otherBoxIsSetWithoutASignal()
{
    const Dialog dialog(100, QSize(800, 600));
    SignalLog log;
    log.Watch(dialog.Width(), "w");
    log.Watch(dialog.Height(), "h");
    log.Watch(dialog.DPI(), "d");
    Edits(dialog, "w400");
    QCOMPARE(log.Count("w.valueChanged(double)"), 1);
    QCOMPARE(log.Count("h.valueChanged"), 0);
    Edits(dialog, "w400");
    QCOMPARE(log.Count("w.valueChanged(double)"), 1);
    log.Clear();
    Edits(dialog, "h150");
    QCOMPARE(log.Count("h.valueChanged(double)"), 1);
    QCOMPARE(log.Count("w.valueChanged"), 0);
    log.Clear();
    Edits(dialog, "c0 c1");
    QCOMPARE(log.Count(), 0);
}

void tst_NVCanvasSize::unitsMoveWithoutSignalsOfTheBoxes()
{
    const Dialog dialog(300, QSize(9000, 600));
    SignalLog log;
    log.Watch(dialog.Width(), "w");
    log.Watch(dialog.Height(), "h");
    log.Watch(dialog.DPI(), "d");
    SignalLog units;
    units.Watch(dialog.WidthUnits(), "w");
    units.Watch(dialog.HeightUnits(), "h");
    for (const int unit : {1, 2, 3, 4, 5, 0})
    {
        units.Clear();
        dialog.HeightUnits()->setCurrentIndex(unit);
        QCOMPARE(units.Count("w.currentIndexChanged(int)"), 1);
        QCOMPARE(units.Count("h.currentIndexChanged(int)"), 1);
    }
    QCOMPARE(log.Count(), 0);
    // Signals are let through again.
    Edits(dialog, "w3");
    QCOMPARE(log.Count("w.valueChanged(double)"), 1);
}

// Acceptance checks nothing.
void tst_NVCanvasSize::emptySizeIsAccepted()
{
    Dialog dialog(300, QSize(800, 600));
    Edits(dialog, "w1");
    const ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, QDialogButtonBox::Ok); });
    QCOMPARE(dialog.Exec(), int(KXDialog::ResultAccepted));
    QCOMPARE(dialog.GetNewSize(), QSize(1, 0));
    QVERIFY(driver.Finished());
}

void tst_NVCanvasSize::walkAgreesWithTheModel_data()
{
    QTest::addColumn<QSize>("start");
    QTest::addColumn<int>("dpi");
    int row = 0;
    for (const QSize& start : {QSize(800, 600), QSize(600, 800), QSize(500, 500), QSize(1, 1),
                               QSize(10000, 10000), QSize(1, 10000), QSize(10000, 3), QSize(1237, 991)})
    {
        for (const int dpi : {1, 72, 100, 300, 9999})
        {
            QTest::addRow("%d: %d x %d at %d", row++, start.width(), start.height(), dpi) << start << dpi;
        }
    }
}

void tst_NVCanvasSize::walkAgreesWithTheModel()
{
    QFETCH(QSize, start);
    QFETCH(int, dpi);
    Walk(start, dpi, 250);
}

void tst_NVCanvasSize::walkFromExtremesAgreesWithTheModel_data()
{
    QTest::addColumn<int>("dpi");
    for (const int dpi : {NoSize.width(), -1, 0, 1, 300, 9999, std::numeric_limits<int>::max()})
        QTest::addRow("%d", dpi) << dpi;
}

// Sizes that no document has: nothing is divided by zero or leaves what a number can hold.
void tst_NVCanvasSize::walkFromExtremesAgreesWithTheModel()
{
    QFETCH(int, dpi);
    const int most = std::numeric_limits<int>::max();
    const int sides[] = {NoSize.width(), -most, -1, 0, 1, 2, 9999, 10001, 65536, 1 << 30, most};
    for (const int width : sides)
    {
        for (const int height : sides)
        {
            Walk(QSize(width, height), dpi, 60);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_NVCanvasSize::anchorIsChosenByMouse()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    const QList<QRadioButton*> cells = dialog.Anchor()->findChildren<QRadioButton*>();
    QCOMPARE(cells.size(), 9);
    for (int state = 0; state < 9; ++state)
    {
        QTest::mouseClick(cells.at(state), Qt::LeftButton);
        QCOMPARE(int(dialog.GetAnchor()), state);
    }
    Edits(dialog, "w10 c0 u1 c1");
    QCOMPARE(dialog.GetAnchor(), KXAnchorSelection::BottomRight);
}

void tst_NVCanvasSize::anchorIsChosenByKeys()
{
    Dialog dialog(300, QSize(800, 600));
    QVERIFY(dialog.Show());
    dialog.HeightUnits()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(dialog.GetAnchor(), KXAnchorSelection::Top);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QCOMPARE(dialog.GetAnchor(), KXAnchorSelection::TopRight);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QCOMPARE(dialog.GetAnchor(), KXAnchorSelection::TopRight);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(dialog.GetResult(), int(KXDialog::ResultAccepted));
}

void tst_NVCanvasSize::endsWithThisResult_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("ok") << "ok" << 1;
    QTest::newRow("cancel") << "cancel" << 0;
    QTest::newRow("enter") << "enter" << 1;
    QTest::newRow("escape") << "escape" << -1;
    QTest::newRow("close") << "close" << -1;
}

void tst_NVCanvasSize::endsWithThisResult()
{
    QFETCH(QString, way);
    QFETCH(int, result);
    Dialog dialog(300, QSize(800, 600));
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

void tst_NVCanvasSize::cancelLeavesWhatWasTyped()
{
    Dialog dialog(300, QSize(800, 600));
    const ModalDriver driver(
        [](QWidget* window)
        {
            QTest::keyClicks(QApplication::focusWidget(), "40");
            ModalDriver::Press(window, QDialogButtonBox::Cancel);
        });
    QCOMPARE(dialog.Exec(), int(KXDialog::ResultRejected));
    QCOMPARE(dialog.GetNewSize(), QSize(40, 30));
    QVERIFY(driver.Finished());
}

void tst_NVCanvasSize::deletionEndsTheRun()
{
    QPointer<NVCanvasSize> dialog(new NVCanvasSize(300, QSize(800, 600), nullptr));
    const ModalDriver driver([](QWidget* window) { window->deleteLater(); });
    QCOMPARE(dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(!dialog);
    QVERIFY(driver.Finished());
}

void tst_NVCanvasSize::sizesThatAreNoneDoNoHarm_data()
{
    QTest::addColumn<QSize>("start");
    const int most = std::numeric_limits<int>::max();
    QTest::newRow("empty") << QSize(0, 0);
    QTest::newRow("no width") << QSize(0, 600);
    QTest::newRow("no height") << QSize(800, 0);
    QTest::newRow("invalid") << QSize();
    QTest::newRow("negative") << QSize(-800, -600);
    QTest::newRow("smallest") << NoSize;
    QTest::newRow("largest") << QSize(most, most);
    QTest::newRow("widest") << QSize(most, 1);
    QTest::newRow("highest") << QSize(1, most);
    QTest::newRow("widest of none") << QSize(most, 0);
    QTest::newRow("mixed") << QSize(-1, most);
}

// Whatever a host passes in, the controls stay within their ranges, and no side that was typed is negative.
void tst_NVCanvasSize::sizesThatAreNoneDoNoHarm()
{
    QFETCH(QSize, start);
    const DebugLines lines;
    for (const int dpi : {NoSize.width(), 0, 1, 300, 9999, std::numeric_limits<int>::max()})
    {
        const Dialog dialog(dpi, start);
        QCOMPARE(dialog.GetNewSize(), start);
        for (int unit = UnitCount - 1; unit >= 0; --unit)
        {
            dialog.WidthUnits()->setCurrentIndex(unit);
            for (QDoubleSpinBox* box : {dialog.Width(), dialog.Height()})
            {
                for (const double value : {-1e300, 0.0, 1.0, 1e300})
                {
                    box->setValue(value);
                    QVERIFY(std::isfinite(box->value()));
                    QVERIFY(box->value() >= box->minimum() && box->value() <= box->maximum());
                }
            }
            dialog.DPI()->setValue(1);
            dialog.DPI()->setValue(9999);
            QVERIFY(dialog.DPI()->minimum() >= 1 && dialog.DPI()->maximum() <= 9999);
            dialog.Constrain()->toggle();
        }
        dialog.WidthUnits()->setCurrentIndex(-1);
        dialog.Width()->setValue(3.0);
        dialog.WidthUnits()->clear();
        dialog.HeightUnits()->clear();
        dialog.Height()->setValue(3.0);
        QVERIFY(dialog.GetNewSize().height() >= 0);
    }
}

NV_TEST_MAIN(tst_NVCanvasSize)
#include "tst_NVCanvasSize.moc"
