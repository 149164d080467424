// The dialog of the automatic crop: its form, what it reports, and mouse and keys on it.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTranslator>
#include <QtTest>

#include "CutText.h"
#include "ModalDriver.h"
#include "NVAutoCrop.h"
#include "TestMain.h"

namespace
{

template <class T>
T* Find(const QWidget* dialog, const char* name)
{
    T* control = dialog->findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

QWidget* At(const QWidget* box, int row, int column)
{
    const auto* grid = qobject_cast<const QGridLayout*>(box->layout());
    QLayoutItem* item = grid ? grid->itemAtPosition(row, column) : nullptr;
    return item ? item->widget() : nullptr;
}

const QStringList Modes{"m_pTransparent", "m_pLeftTop", "m_pBottomRight", "m_pAuto"};
const QStringList Sides{"m_pLeft", "m_pTop", "m_pRight", "m_pBottom"};

// Which of the controls are checked, one digit each.
QString Checks(const QWidget* dialog, const QStringList& names)
{
    QString checks;
    for (const QString& name : names)
        checks += Find<QAbstractButton>(dialog, qPrintable(name))->isChecked() ? '1' : '0';
    return checks;
}

} // namespace

class tst_NVAutoCrop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheseValues();
    void numbersAreThoseOfTheHost();
    void formIsAsStated();
    void captionsAreThese();
    void longestTextsAreNotCutOff_data();
    void longestTextsAreNotCutOff();
    void tabOrderIsThis();
    void textsAreTranslated();
    void sizeIsFixed();
    void modeChecksItsButtonAlone_data();
    void modeChecksItsButtonAlone();
    void modeIsReadInThisOrder();
    void withoutAChoiceTheModeIsAuto();
    void areaIsThatOfTheBoxes_data();
    void areaIsThatOfTheBoxes();
    void bitsBeyondTheFourSidesAreDropped();
    void toleranceIsClamped_data();
    void toleranceIsClamped();
    void personChoosesByMouse();
    void personChoosesByKeys();
    void toleranceIsTyped();
    void endsWithThisResult_data();
    void endsWithThisResult();
    void noSideAtAllIsAccepted();
    void valuesStayFromRunToRun();
    void deletionEndsTheRun();
};

void tst_NVAutoCrop::startsWithTheseValues()
{
    const NVAutoCrop dialog(nullptr);
    QCOMPARE(int(dialog.GetMode()), 3);
    QCOMPARE(int(dialog.GetArea()), 15);
    QCOMPARE(dialog.GetTolerance(), 15);
}

void tst_NVAutoCrop::numbersAreThoseOfTheHost()
{
    QCOMPARE(int(NVAutoCrop::ModeTransparent), 0);
    QCOMPARE(int(NVAutoCrop::ModeLeftTop), 1);
    QCOMPARE(int(NVAutoCrop::ModeBottomRight), 2);
    QCOMPARE(int(NVAutoCrop::ModeAuto), 3);
    QCOMPARE(int(NVAutoCrop::AreaLeft), 1);
    QCOMPARE(int(NVAutoCrop::AreaTop), 2);
    QCOMPARE(int(NVAutoCrop::AreaRight), 4);
    QCOMPARE(int(NVAutoCrop::AreaBottom), 8);
    QCOMPARE(NVAutoCrop::staticMetaObject.superClass(), &KXDialog::staticMetaObject);
    QCOMPARE(NVAutoCrop::staticMetaObject.methodCount(), NVAutoCrop::staticMetaObject.methodOffset());
}

void tst_NVAutoCrop::formIsAsStated()
{
    const NVAutoCrop dialog(nullptr);
    QCOMPARE(dialog.Content()->objectName(), QString("AutoCrop"));
    const auto* modes = Find<QGroupBox>(&dialog, "groupBox");
    const auto* areas = Find<QGroupBox>(&dialog, "groupBox_2");
    const auto* options = Find<QGroupBox>(&dialog, "groupBox_3");
    auto* buttons = Find<QDialogButtonBox>(&dialog, "m_pButtonBox");
    QCOMPARE(At(dialog.Content(), 0, 0), modes);
    QCOMPARE(At(dialog.Content(), 1, 0), areas);
    QCOMPARE(At(dialog.Content(), 2, 0), options);
    QCOMPARE(At(dialog.Content(), 3, 0), buttons);
    for (int i = 0; i < 4; ++i)
    {
        QCOMPARE(At(modes, i, 0), Find<QRadioButton>(&dialog, qPrintable(Modes.at(i))));
        QCOMPARE(At(areas, i / 2, i % 2), Find<QCheckBox>(&dialog, qPrintable(Sides.at(i))));
    }
    QCOMPARE(At(options, 0, 0), Find<QLabel>(&dialog, "label"));
    auto* tolerance = Find<QSpinBox>(&dialog, "m_pTolerance");
    QCOMPARE(At(options, 0, 1), tolerance);
    QCOMPARE(tolerance->minimum(), 0);
    QCOMPARE(tolerance->maximum(), 255);
    QCOMPARE(Find<QLabel>(&dialog, "label")->buddy(), tolerance);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(Checks(&dialog, Modes), QString("0001"));
    QCOMPARE(Checks(&dialog, Sides), QString("1111"));
}

void tst_NVAutoCrop::longestTextsAreNotCutOff_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("small") << 9;
    QTest::newRow("larger") << 12;
    QTest::newRow("large") << 16;
}

void tst_NVAutoCrop::longestTextsAreNotCutOff()
{
    QFETCH(int, points);
    struct LongTexts : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "AutoCrop") == 0 ? QString("%1 und noch etwas").arg(text) : QString();
        }
        bool isEmpty() const override { return false; }
    };
    LongTexts texts;
    QCoreApplication::installTranslator(&texts);
    const FontSize larger(points);
    NVAutoCrop dialog(nullptr);
    dialog.SetTolerance(255);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QCOMPARE(Find<QLabel>(&dialog, "label")->text(), QString("Tolerance: und noch etwas"));
    QCOMPARE(CutText(&dialog), QString());
    QCoreApplication::removeTranslator(&texts);
}

void tst_NVAutoCrop::captionsAreThese()
{
    const NVAutoCrop dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QString("Auto-crop image"));
    QStringList titles;
    const QList<QGroupBox*> boxes = dialog.findChildren<QGroupBox*>();
    for (const QGroupBox* box : boxes)
        titles << box->title();
    QCOMPARE(titles, QStringList({"Crop mode", "Crop areas", "Options"}));
    QStringList texts;
    for (const QString& name : Modes + Sides)
        texts << Find<QAbstractButton>(&dialog, qPrintable(name))->text();
    QCOMPARE(texts,
             QStringList({"Transparent", "Left top pixel", "Bottom right pixel", "Auto", "Left", "Top",
                          "Right", "Bottom"}));
    QCOMPARE(Find<QLabel>(&dialog, "label")->text(), QString("Tolerance:"));
}

// The sides go column by column, though they are read row by row.
void tst_NVAutoCrop::tabOrderIsThis()
{
    const QStringList order{"m_pTransparent", "m_pLeftTop", "m_pBottomRight", "m_pAuto",     "m_pLeft",
                            "m_pRight",       "m_pTop",     "m_pBottom",      "m_pTolerance"};
    const NVAutoCrop dialog(nullptr);
    QStringList chain;
    QWidget* widget = Find<QWidget>(&dialog, "m_pTransparent");
    do
    {
        if (order.contains(widget->objectName()))
            chain << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget->objectName() != "m_pTransparent");
    QCOMPARE(chain, order);
}

void tst_NVAutoCrop::textsAreTranslated()
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
    const NVAutoCrop dialog(nullptr);
    QCoreApplication::removeTranslator(&marker);
    QCOMPARE(dialog.windowTitle(), QString("AutoCrop/Auto-crop image"));
    QCOMPARE(Find<QGroupBox>(&dialog, "groupBox_2")->title(), QString("AutoCrop/Crop areas"));
    QCOMPARE(Find<QRadioButton>(&dialog, "m_pLeftTop")->text(), QString("AutoCrop/Left top pixel"));
    QCOMPARE(Find<QCheckBox>(&dialog, "m_pBottom")->text(), QString("AutoCrop/Bottom"));
    QCOMPARE(Find<QLabel>(&dialog, "label")->text(), QString("AutoCrop/Tolerance:"));
}

void tst_NVAutoCrop::sizeIsFixed()
{
    NVAutoCrop dialog(nullptr);
    QCOMPARE(dialog.layout()->sizeConstraint(), QLayout::SetFixedSize);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.minimumSize(), dialog.size());
    QCOMPARE(dialog.maximumSize(), dialog.size());
    QCOMPARE(dialog.size(), dialog.sizeHint());
}

void tst_NVAutoCrop::modeChecksItsButtonAlone_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("checks");
    QTest::newRow("transparent") << 0 << "1000";
    QTest::newRow("left top") << 1 << "0100";
    QTest::newRow("bottom right") << 2 << "0010";
    QTest::newRow("auto") << 3 << "0001";
}

void tst_NVAutoCrop::modeChecksItsButtonAlone()
{
    QFETCH(int, mode);
    QFETCH(QString, checks);
    for (int before = 0; before < 4; ++before)
    {
        NVAutoCrop dialog(nullptr);
        dialog.SetMode(static_cast<NVAutoCrop::Mode>(before));
        dialog.SetMode(static_cast<NVAutoCrop::Mode>(mode));
        QCOMPARE(Checks(&dialog, Modes), checks);
        QCOMPARE(int(dialog.GetMode()), mode);
    }
}

void tst_NVAutoCrop::modeIsReadInThisOrder()
{
    const NVAutoCrop dialog(nullptr);
    for (const QString& name : Modes)
    {
        auto* button = Find<QRadioButton>(&dialog, qPrintable(name));
        button->setAutoExclusive(false);
        button->setChecked(true);
    }
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeTransparent);
    Find<QRadioButton>(&dialog, "m_pTransparent")->setChecked(false);
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeLeftTop);
    Find<QRadioButton>(&dialog, "m_pLeftTop")->setChecked(false);
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeBottomRight);
    Find<QRadioButton>(&dialog, "m_pBottomRight")->setChecked(false);
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeAuto);
}

void tst_NVAutoCrop::withoutAChoiceTheModeIsAuto()
{
    const NVAutoCrop dialog(nullptr);
    auto* button = Find<QRadioButton>(&dialog, "m_pAuto");
    button->setAutoExclusive(false);
    button->setChecked(false);
    QCOMPARE(Checks(&dialog, Modes), QString("0000"));
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeAuto);
}

void tst_NVAutoCrop::areaIsThatOfTheBoxes_data()
{
    QTest::addColumn<int>("area");
    for (int area = 0; area < 16; ++area)
        QTest::newRow(qPrintable(QString::number(area))) << area;
}

void tst_NVAutoCrop::areaIsThatOfTheBoxes()
{
    QFETCH(int, area);
    NVAutoCrop dialog(nullptr);
    dialog.SetArea(NVAutoCrop::Areas(area));
    QString checks;
    for (const int bit : {1, 2, 4, 8})
        checks += area & bit ? '1' : '0';
    QCOMPARE(Checks(&dialog, Sides), checks);
    QCOMPARE(int(dialog.GetArea()), area);
}

void tst_NVAutoCrop::bitsBeyondTheFourSidesAreDropped()
{
    NVAutoCrop dialog(nullptr);
    dialog.SetArea(NVAutoCrop::Areas(0x7ffffff5));
    QCOMPARE(int(dialog.GetArea()), 5);
    dialog.SetArea(NVAutoCrop::AreaTop | NVAutoCrop::AreaBottom);
    QCOMPARE(int(dialog.GetArea()), 10);
}

void tst_NVAutoCrop::toleranceIsClamped_data()
{
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<int>("taken");
    QTest::newRow("300") << 300 << 255;
    QTest::newRow("255") << 255 << 255;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("-1") << -1 << 0;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << 255;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << 0;
    QTest::newRow("128") << 128 << 128;
}

void tst_NVAutoCrop::toleranceIsClamped()
{
    QFETCH(int, tolerance);
    QFETCH(int, taken);
    NVAutoCrop dialog(nullptr);
    dialog.SetTolerance(tolerance);
    QCOMPARE(dialog.GetTolerance(), taken);
    dialog.SetTolerance(tolerance);
    QCOMPARE(dialog.GetTolerance(), taken);
}

void tst_NVAutoCrop::personChoosesByMouse()
{
    NVAutoCrop dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    for (int mode = 0; mode < 4; ++mode)
    {
        QTest::mouseClick(Find<QRadioButton>(&dialog, qPrintable(Modes.at(mode))), Qt::LeftButton,
                          Qt::NoModifier, QPoint(8, 12));
        QCOMPARE(int(dialog.GetMode()), mode);
    }
    for (int side = 0; side < 4; ++side)
    {
        QTest::mouseClick(Find<QCheckBox>(&dialog, qPrintable(Sides.at(side))), Qt::LeftButton,
                          Qt::NoModifier, QPoint(8, 12));
        QCOMPARE(int(dialog.GetArea()), 15 & ~((2 << side) - 1));
    }
}

void tst_NVAutoCrop::personChoosesByKeys()
{
    NVAutoCrop dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    Find<QRadioButton>(&dialog, "m_pAuto")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeBottomRight);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeLeftTop);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QString("m_pLeft"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(int(dialog.GetArea()), NVAutoCrop::AreaTop | NVAutoCrop::AreaBottom);
}

void tst_NVAutoCrop::toleranceIsTyped()
{
    NVAutoCrop dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* box = Find<QSpinBox>(&dialog, "m_pTolerance");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "25");
    QCOMPARE(dialog.GetTolerance(), 25);
    QTest::keyClicks(box, "6");
    QCOMPARE(dialog.GetTolerance(), 25);
    QTest::keyClicks(box, "5");
    QCOMPARE(dialog.GetTolerance(), 255);
}

void tst_NVAutoCrop::endsWithThisResult_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("ok") << "ok" << 1;
    QTest::newRow("cancel") << "cancel" << 0;
    QTest::newRow("enter") << "enter" << 1;
    QTest::newRow("escape") << "escape" << -1;
    QTest::newRow("close") << "close" << -1;
}

void tst_NVAutoCrop::endsWithThisResult()
{
    QFETCH(QString, way);
    QFETCH(int, result);
    NVAutoCrop dialog(nullptr);
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

void tst_NVAutoCrop::noSideAtAllIsAccepted()
{
    NVAutoCrop dialog(nullptr);
    dialog.SetArea(NVAutoCrop::Areas());
    const ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, QDialogButtonBox::Ok); });
    QCOMPARE(dialog.Exec(), int(KXDialog::ResultAccepted));
    QCOMPARE(int(dialog.GetArea()), 0);
    QVERIFY(driver.Finished());
}

void tst_NVAutoCrop::valuesStayFromRunToRun()
{
    NVAutoCrop dialog(nullptr);
    dialog.SetMode(NVAutoCrop::ModeLeftTop);
    dialog.SetTolerance(7);
    const auto close = [](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); };
    const ModalDriver driver({close, close});
    dialog.Exec();
    dialog.Exec();
    QCOMPARE(dialog.GetMode(), NVAutoCrop::ModeLeftTop);
    QCOMPARE(dialog.GetTolerance(), 7);
    QVERIFY(driver.Finished());
}

void tst_NVAutoCrop::deletionEndsTheRun()
{
    QPointer<NVAutoCrop> dialog(new NVAutoCrop(nullptr));
    const ModalDriver driver([](QWidget* window) { window->deleteLater(); });
    QCOMPARE(dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(!dialog);
    QVERIFY(driver.Finished());
}

NV_TEST_MAIN(tst_NVAutoCrop)
#include "tst_NVAutoCrop.moc"
