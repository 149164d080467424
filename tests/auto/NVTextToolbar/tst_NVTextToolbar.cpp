// The option bar of the text tool: its form, its values and their signals, the size box key by key, the
// colour and the dialog that bends the text.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRegExpValidator>
#include <QSlider>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include <limits>
#include <memory>

#include "BarForm.h"
#include "KXColorDlg.h"
#include "KXCommonComboBox.h"
#include "KXMdiArea.h"
#include "ModalDriver.h"
#include "NVTextToolbar.h"
#include "NVWarpTextDialog.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QStringList SizeRows{"10", "20", "30", "50", "100", "150", "200", "250", "300"};

BarControl Plain(const char* className, const char* name)
{
    BarControl control = BarControl::CheckBox(name, "", false);
    control.ClassName = className;
    control.Facts.clear();
    control.ToolTip("");
    return control.Focus(Qt::NoFocus);
}

BarControl StyleButton(const char* name, const char* text, const char* toolTip)
{
    BarControl button = BarControl::PopupButton("QToolButton", name, toolTip);
    return button.With("text", QString(text));
}

BarControl FlatButton(const char* name, const char* toolTip)
{
    BarControl button = BarControl::PopupButton("QPushButton", name, toolTip);
    return button.With("checkable", false);
}

BarForm Form()
{
    BarControl family = BarControl::List("m_pFontFamily", QFontDatabase().families(), 0, 0);
    family.ToolTip("Font family").FixedHeight(24).With("accessibleName", "Font family");
    family.With("editable", false).With("sizeAdjustPolicy", int(QComboBox::AdjustToContents));
    BarControl size = BarControl::List("m_pFontSize", SizeRows, 0, 70);
    size.ToolTip("Font size").FixedHeight(24).With("accessibleName", "Font size");
    size.With("editable", true).With("sizeAdjustPolicy", int(QComboBox::AdjustToContents));
    BarControl color = FlatButton("m_pColor", "Color");
    BarControl warp = Plain("QPushButton", "m_pWarp");
    warp.ToolTip("Warp text").With("text", "Warp").With("maximumSize", QSize(QWIDGETSIZE_MAX, 24));
    BarForm form(
        [] { return new NVTextToolbar(nullptr); }, "TextToolbar", "Text toolbar", "theme:tool-bar-text.png",
        {BarControl::Separator("frame_4"), family, StyleButton("m_pBold", "B", "Bold"),
         StyleButton("m_pItalic", "I", "Italic"), StyleButton("m_pUnderline", "U", "Underline"), size,
         BarControl::CheckBox("m_pAliasing", "Anti-aliasing", false), BarControl::Separator("frame_5"),
         color.With("iconSize", QSize(16, 16)), warp, BarControl::Separator("m_pEditSectionBegin"),
         FlatButton("m_pCommit", "Apply changes"), FlatButton("m_pCancel", "Cancel changes")},
        {"m_pFontFamily", "m_pBold", "m_pItalic", "m_pUnderline", "m_pFontSize", "m_pAliasing", "m_pColor",
         "m_pWarp", "m_pCommit", "m_pCancel"});
    form.PictureLabel("m_pPicture");
    return form;
}

// A main window with the bar, and a canvas that takes the keys back when the bar says so.
struct Window
{
    enum Focus
    {
        KeepsFocus,
        TakesFocusBack
    };

    explicit Window(Focus focus = KeepsFocus)
    {
        window.resize(900, 300);
        area = new KXMdiArea(&window);
        area->setGeometry(0, 60, 900, 100);
        bar = new NVTextToolbar(&window);
        bar->setGeometry(0, 0, 900, 46);
        canvas = new QWidget(&window);
        canvas->setFocusPolicy(Qt::StrongFocus);
        canvas->setGeometry(0, 200, 900, 100);
        if (focus == TakesFocusBack)
            QObject::connect(bar, &NVTextToolbar::ReturnFocus, canvas, qOverload<>(&QWidget::setFocus));
    }
    bool Show()
    {
        window.show();
        canvas->setFocus();
        return QTest::qWaitForWindowActive(&window);
    }
    template <class T>
    T* Find(const char* name) const
    {
        T* control = bar->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    KXCommonComboBox* Sizes() const { return Find<KXCommonComboBox>("m_pFontSize"); }
    KXCommonComboBox* Families() const { return Find<KXCommonComboBox>("m_pFontFamily"); }
    QLineEdit* Edit() const { return Sizes()->lineEdit(); }
    QAbstractButton* Button(const char* name) const { return Find<QAbstractButton>(name); }
    void Click(const char* name) const
    {
        QAbstractButton* button = Button(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(10, button->height() / 2));
    }
    // Puts the cursor into the box and selects all.
    void EnterBox() const
    {
        QTest::mouseClick(Edit(), Qt::LeftButton);
        Edit()->selectAll();
    }
    void Type(const QString& text) const
    {
        EnterBox();
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    void Confirm(const QString& text) const
    {
        Type(text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    QStringList Rows() const
    {
        QStringList rows;
        for (int i = 0; i < Sizes()->count(); ++i)
            rows << Sizes()->itemText(i);
        return rows;
    }
    void ChooseBelow(QComboBox* list)
    {
        list->showPopup();
        QTest::keyClick(list->view(), Qt::Key_Down);
        QTest::keyClick(list->view(), Qt::Key_Return);
        // The platform of the tests leaves the closed list active.
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    KXMdiArea* area;
    NVTextToolbar* bar;
    QWidget* canvas;
};

QColor IconColor(const QAbstractButton* button)
{
    return button->icon().pixmap(button->iconSize()).toImage().pixelColor(8, 8);
}

NVTextDeformation Bent(double bend)
{
    NVTextDeformation value;
    value.SetBend(bend);
    return value;
}

// What the bar says at each of its two signals.
struct Deformations
{
    explicit Deformations(NVTextToolbar* bar)
    {
        QObject::connect(bar, &NVTextToolbar::DeformationCorrected, &guard,
                         [this, bar] { Add("corrected", bar); });
        QObject::connect(bar, &NVTextToolbar::DeformationChanged, &guard,
                         [this, bar] { Add("changed", bar); });
    }
    void Add(const char* what, const NVTextToolbar* bar)
    {
        entries << QString("%1 %2").arg(what).arg(bar->GetDeformation().GetBend());
    }
    QObject guard;
    QStringList entries;
};

void SetBend(const QWidget* dialog, double bend)
{
    dialog->findChild<QDoubleSpinBox*>("m_pBend")->setValue(bend);
}

void Leave(QWidget* dialog, const QString& way)
{
    if (way == "ok")
        ModalDriver::Press(dialog, "OK");
    else if (way == "enter")
        ModalDriver::PressKey(dialog, Qt::Key_Return);
    else if (way == "cancel")
        ModalDriver::Press(dialog, "Cancel");
    else if (way == "escape")
        ModalDriver::PressKey(dialog, Qt::Key_Escape);
    else
        ModalDriver::CloseWindow(dialog);
}

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

class tst_NVTextToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndLayout();
    void rowHasItsControlsAndGaps();
    void pictureIsTheTools() { Form().CheckPicture(); }
    void pictureIsSharpOnDenseScreens() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void tabOrderIsThatOfTheRow() { Form().CheckTabOrder(); }
    void styleButtonsShowTheirStyle();
    void buttonsShowTheirPictures();
    void textsAreTranslated();
    void interfaceIsThis();
    void startsWithTheseValues();
    void rowsHaveTheirData();
    void bothEndButtonsCanBeHidden();
    void warpCanBeSwitchedOff();
    void controlsTakeNoFocusByTab();

    void familyChosenByHandIsToldOnce();
    void familySetIsToldOnce();
    void unknownFamilyIsIgnored_data();
    void unknownFamilyIsIgnored();

    void typingTellsEachValidText_data();
    void typingTellsEachValidText();
    void pastedTextIsCheckedToo_data();
    void pastedTextIsCheckedToo();
    void emptiedBoxTellsNothing();
    void anyValidSizeIsTold();
    void digitOfAnotherScriptIsToldAsZero();
    void chosenRowIsTold();
    void setSizeTellsIt_data();
    void setSizeTellsIt();
    void setSizeAgainTellsNothing();
    void firstRowIsMadeCurrentToo();
    void rowBehindTypedTextIsShownAgain();
    void confirmedSizesLeaveOneRow();
    void confirmedStandardSizeAddsNoRow();
    void customRowCanBeChosenAndReplaced();
    void manyCustomRowsGoAtOnce();
    void leavingTheBoxAddsNoRow();
    void focusIsGivenBackBeforeTheListIsPutInOrder();
    void barMayGoWhileASizeIsTyped();
    void barMayGoWithAnOpenList();

    void styleButtonTellsTheMask();
    void setStyleTellsPassingMasks_data();
    void setStyleTellsPassingMasks();
    void setStyleTwiceStillTells();
    void strayBitsAreToldAndLost();

    void antialiasingHasNoSignal();
    void setColorStoresShowsAndTells();
    void sameColorIsShownAnewAndNotTold();
    void colorDialogGivesTheColor();
    void colorDialogWithTheSameColorTellsNothing();
    void leavingTheColorDialogChangesNothing_data();
    void leavingTheColorDialogChangesNothing();
    void barMayGoWhileTheColorDialogIsOpen();

    void setDeformationIsToldOnce();
    void dialogOpensOnTheValueAndTellsNothing();
    void liveChangesAreCorrections();
    void cancelledDialogPutsTheValueBack_data();
    void cancelledDialogPutsTheValueBack();
    void cancelledUnchangedDialogTellsNothing_data();
    void cancelledUnchangedDialogTellsNothing();
    void acceptedDialogTellsOneChange_data();
    void acceptedDialogTellsOneChange();
    void acceptedUnchangedDialogTellsNothing_data();
    void acceptedUnchangedDialogTellsNothing();
    void changeThatWasTakenBackIsNoChange();
    void cancelledAfterAChangeAndBackTellsNothingMore();
    void acceptedMatrixIsLostAndCounts();
    void cancelledMatrixComesBack();
    void notANumberCountsAsAChange_data();
    void notANumberCountsAsAChange();
    void deformationChangedByAnythingElseIsACorrection();
    void barMayGoWhileTheWarpDialogIsOpen();
    void barMayGoWhenTheValueIsPutBack();
    void windowMayGoWhileTheWarpDialogIsOpen();

    void commitAndCancelAreTold();
    void focusIsReturnedByTheseControls();
    void focusIsNotReturnedByTheOthers();
    void canvasKeepsTheKeysAfterEachControl();
};

void tst_NVTextToolbar::formHasItsTitleNameAndLayout()
{
    const NVTextToolbar bar(nullptr);
    QCOMPARE(bar.objectName(), QString("TextToolbar"));
    QCOMPARE(bar.windowTitle(), QString("Text toolbar"));
    QCOMPARE(bar.size(), QSize(855, 46));
    QCOMPARE(bar.minimumHeight(), 24);
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->verticalSpacing(), 0);
    QCOMPARE(grid->count(), 1);
    const auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 0);
}

void tst_NVTextToolbar::rowHasItsControlsAndGaps()
{
    Form().CheckRow();
}

void tst_NVTextToolbar::styleButtonsShowTheirStyle()
{
    const Window window;
    const QFont bold = window.Button("m_pBold")->font();
    const QFont italic = window.Button("m_pItalic")->font();
    const QFont underline = window.Button("m_pUnderline")->font();
    QCOMPARE(bold.weight(), 75);
    QVERIFY(!bold.italic() && !bold.underline());
    QCOMPARE(italic.weight(), 50);
    QVERIFY(italic.italic() && !italic.underline());
    QCOMPARE(underline.weight(), 75);
    QVERIFY(!underline.italic() && underline.underline());
}

void tst_NVTextToolbar::buttonsShowTheirPictures()
{
    const Window window;
    for (const char* name : {"m_pCommit", "m_pCancel"})
    {
        const QAbstractButton* button = window.Button(name);
        const QString file = QString("theme:%1_btn1.png").arg(QString(name).mid(3).toLower());
        QVERIFY(!QPixmap(file).isNull());
        QCOMPARE(button->icon().pixmap(16, 16).toImage(), QIcon(file).pixmap(16, 16).toImage());
    }
    QCOMPARE(IconColor(window.Button("m_pColor")), QColor(Qt::black));
}

void tst_NVTextToolbar::textsAreTranslated()
{
    Prefixed translator;
    QCoreApplication::installTranslator(&translator);
    const Window window;
    ModalDriver driver(
        [](QWidget* dialog)
        {
            QCOMPARE(dialog->windowTitle(), QString("NVTextToolbar/Selecte a text color"));
            ModalDriver::PressKey(dialog, Qt::Key_Escape);
        });
    window.Button("m_pColor")->click();
    QCoreApplication::removeTranslator(&translator);
    QVERIFY(driver.Finished());
    QCOMPARE(window.bar->windowTitle(), QString("TextToolbar/Text toolbar"));
    QCOMPARE(window.Button("m_pBold")->text(), QString("TextToolbar/B"));
    QCOMPARE(window.Button("m_pBold")->toolTip(), QString("TextToolbar/Bold"));
    QCOMPARE(window.Button("m_pAliasing")->text(), QString("TextToolbar/Anti-aliasing"));
    QCOMPARE(window.Button("m_pWarp")->text(), QString("TextToolbar/Warp"));
    QCOMPARE(window.Button("m_pCancel")->toolTip(), QString("TextToolbar/Cancel changes"));
    QCOMPARE(window.Sizes()->toolTip(), QString("TextToolbar/Font size"));
    QCOMPARE(window.Rows(), SizeRows);
}

void tst_NVTextToolbar::interfaceIsThis()
{
    const QMetaObject& meta = NVTextToolbar::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QStringList methods[3];
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const QMetaMethod method = meta.method(i);
        const int kind = method.methodType() == QMetaMethod::Signal ? 0
            : method.access() == QMetaMethod::Public                ? 1
                                                                    : 2;
        methods[kind] << method.methodSignature();
    }
    QCOMPARE(methods[0],
             QStringList({"FontFamilyChanged(QString)", "FontSizeChanged(int)", "FontStyleChanged(int)",
                          "ColorChanged(QColor)", "AntialiasingChanged(bool)", "DeformationCorrected()",
                          "DeformationChanged()", "Commit()", "Cancel()", "ReturnFocus()"}));
    QCOMPARE(methods[1],
             QStringList({"SetFontFamily(QString)", "SetFontSize(int)", "SetFontStyle(int)",
                          "SetColor(QColor)", "SetAntialiasing(bool)", "SetCommitVisible(bool)",
                          "SetCancelVisible(bool)", "SetWarpEnabled(bool)"}));
    QCOMPARE(methods[2],
             QStringList({"OnSizeEditFinished()", "OnSizeTextChanged(QString)", "OnColor()", "OnWarp()",
                          "OnDeformationChanged()", "OnBold()", "OnItalic()", "OnUnderline()"}));
}

void tst_NVTextToolbar::startsWithTheseValues()
{
    const NVTextToolbar bar(nullptr);
    QVERIFY(!QFontDatabase().families().isEmpty());
    QCOMPARE(bar.GetFontFamily(), QFontDatabase().families().constFirst());
    QCOMPARE(bar.GetFontSize(), 10);
    QCOMPARE(bar.GetFontStyle(), 0);
    QCOMPARE(bar.GetColor(), QColor(Qt::black));
    QVERIFY(!bar.IsAntialiasing());
    QVERIFY(bar.GetDeformation() == NVTextDeformation());
}

void tst_NVTextToolbar::rowsHaveTheirData()
{
    const Window window;
    for (int i = 0; i < window.Sizes()->count(); ++i)
    {
        QCOMPARE(window.Sizes()->itemData(i).userType(), int(QMetaType::Int));
        QCOMPARE(window.Sizes()->itemData(i).toInt(), window.Sizes()->itemText(i).toInt());
    }
    for (int i = 0; i < window.Families()->count(); ++i)
        QCOMPARE(window.Families()->itemData(i).toString(), window.Families()->itemText(i));
    const auto* validator = qobject_cast<const QRegExpValidator*>(window.Edit()->validator());
    QVERIFY(validator);
    QCOMPARE(validator->parent(), window.Edit());
    QCOMPARE(validator->regExp().pattern(), QString("([3][0]{2})|([1-2]\\d{2})|([1-9]\\d{1})|([1-9])"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(validator->regExp().patternSyntax(), QRegExp::RegExp);
}

void tst_NVTextToolbar::bothEndButtonsCanBeHidden()
{
    const Window window;
    const SignalLog log(window.bar);
    const QAbstractButton* commit = window.Button("m_pCommit");
    const QAbstractButton* cancel = window.Button("m_pCancel");
    QVERIFY(!commit->isHidden() && !cancel->isHidden());
    window.bar->SetCommitVisible(false);
    QVERIFY(commit->isHidden() && !cancel->isHidden());
    window.bar->SetCancelVisible(false);
    QVERIFY(commit->isHidden() && cancel->isHidden());
    window.bar->SetCommitVisible(true);
    window.bar->SetCancelVisible(true);
    QVERIFY(!commit->isHidden() && !cancel->isHidden());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVTextToolbar::warpCanBeSwitchedOff()
{
    Window window;
    QVERIFY(window.Show());
    window.bar->SetWarpEnabled(false);
    QVERIFY(!window.Button("m_pWarp")->isEnabled());
    window.Click("m_pWarp");
    QVERIFY(!QApplication::activeModalWidget());
    window.bar->SetWarpEnabled(true);
    QVERIFY(window.Button("m_pWarp")->isEnabled());
}

// A click into the box is the one way in.
void tst_NVTextToolbar::controlsTakeNoFocusByTab()
{
    Window window;
    QVERIFY(window.Show());
    for (int i = 0; i < 20; ++i)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(!window.bar->isAncestorOf(QApplication::focusWidget()));
    }
    window.EnterBox();
    QVERIFY(window.Edit()->hasFocus());
    QTest::mouseClick(window.canvas, Qt::LeftButton);
    QVERIFY(!window.Edit()->hasFocus());
}

void tst_NVTextToolbar::familyChosenByHandIsToldOnce()
{
    Window window;
    QVERIFY(window.Show());
    if (window.Families()->count() < 2)
        QSKIP("there is one font family alone: install fonts-dejavu-core");
    const QString second = window.Families()->itemText(1);
    const SignalLog log(window.bar);
    window.ChooseBelow(window.Families());
    QCOMPARE(window.bar->GetFontFamily(), second);
    QCOMPARE(log.Entries(), QStringList({QString("FontFamilyChanged(\"%1\")").arg(second), "ReturnFocus()"}));
}

void tst_NVTextToolbar::familySetIsToldOnce()
{
    const Window window;
    const QString last = window.Families()->itemText(window.Families()->count() - 1);
    const QString first = window.bar->GetFontFamily();
    if (last == first)
        QSKIP("there is one font family alone: install fonts-dejavu-core");
    const SignalLog log(window.bar);
    window.bar->SetFontFamily(last);
    window.bar->SetFontFamily(last);
    QCOMPARE(window.bar->GetFontFamily(), last);
    QCOMPARE(log.Entries(), QStringList({QString("FontFamilyChanged(\"%1\")").arg(last)}));
    window.bar->SetFontFamily(first);
    QCOMPARE(log.Count("FontFamilyChanged"), 2);
}

void tst_NVTextToolbar::unknownFamilyIsIgnored_data()
{
    QTest::addColumn<QString>("family");
    const QString last = QFontDatabase().families().constLast();
    QTest::newRow("unknown") << "No Such Family";
    QTest::newRow("empty") << "";
    QTest::newRow("other case") << last.toUpper() + " ";
    QTest::newRow("upper case") << (last == last.toUpper() ? last.toLower() : last.toUpper());
    QTest::newRow("a part of it") << last.left(last.size() - 1);
}

void tst_NVTextToolbar::unknownFamilyIsIgnored()
{
    QFETCH(QString, family);
    const Window window;
    const QString before = window.bar->GetFontFamily();
    const SignalLog log(window.bar);
    window.bar->SetFontFamily(family);
    QCOMPARE(window.bar->GetFontFamily(), before);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVTextToolbar::typingTellsEachValidText_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("told");
    QTest::newRow("120") << "120"
                         << "120" << QList<int>{1, 12, 120};
    QTest::newRow("300") << "300"
                         << "300" << QList<int>{3, 30, 300};
    QTest::newRow("0 is refused") << "0"
                                  << "10" << QList<int>{};
    QTest::newRow("301 is refused") << "301"
                                    << "30" << QList<int>{3, 30};
    QTest::newRow("012 is refused") << "012"
                                    << "12" << QList<int>{1, 12};
    QTest::newRow("310 is refused") << "310"
                                    << "31" << QList<int>{3, 31};
    QTest::newRow("400 is refused") << "400"
                                    << "40" << QList<int>{4, 40};
    QTest::newRow("four digits") << "1500"
                                 << "150" << QList<int>{1, 15, 150};
    QTest::newRow("letters, signs, blanks") << "a-1 +.5"
                                            << "15" << QList<int>{1, 15};
    QTest::newRow("299") << "299"
                         << "299" << QList<int>{2, 29, 299};
    QTest::newRow("100 of a row") << "100"
                                  << "100" << QList<int>{1, 10, 100};
}

void tst_NVTextToolbar::typingTellsEachValidText()
{
    QFETCH(QString, keys);
    QFETCH(QString, text);
    QFETCH(QList<int>, told);
    Window window;
    QVERIFY(window.Show());
    window.EnterBox();
    const SignalLog log(window.bar);
    QTest::keyClicks(QApplication::focusWidget(), keys);
    QStringList wanted;
    for (const int size : told)
        wanted << QString("FontSizeChanged(%1)").arg(size);
    QCOMPARE(log.Entries(), wanted);
    QCOMPARE(window.Edit()->text(), text);
    QCOMPARE(window.bar->GetFontSize(), text.toInt());
}

void tst_NVTextToolbar::pastedTextIsCheckedToo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("012") << "012" << false;
    QTest::newRow("301") << "301" << false;
    QTest::newRow("0") << "0" << false;
    QTest::newRow("-5") << "-5" << false;
    QTest::newRow("a line") << "4\n2" << false;
    QTest::newRow("255") << "255" << true;
}

void tst_NVTextToolbar::pastedTextIsCheckedToo()
{
    QFETCH(QString, text);
    QFETCH(bool, isTaken);
    Window window;
    QVERIFY(window.Show());
    window.EnterBox();
    const SignalLog log(window.bar);
    window.Edit()->insert(text);
    QCOMPARE(window.Edit()->text(), isTaken ? text : QString("10"));
    QCOMPARE(log.Count("FontSizeChanged"), isTaken ? 1 : 0);
}

void tst_NVTextToolbar::emptiedBoxTellsNothing()
{
    Window window;
    QVERIFY(window.Show());
    window.EnterBox();
    const SignalLog log(window.bar);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(window.Edit()->text(), QString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    window.canvas->setFocus();
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(window.bar->GetFontSize(), 0);
    QCOMPARE(window.Rows(), SizeRows);
    window.bar->SetFontSize(10);
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(10)"}));
}

void tst_NVTextToolbar::anyValidSizeIsTold()
{
    const Window window;
    const SignalLog log(window.bar);
    int told = 0;
    for (int size = -20; size <= 1000; ++size)
    {
        window.Edit()->setText(QString::number(size));
        told += size >= 1 && size <= 300 ? 1 : 0;
        QCOMPARE(log.Count("FontSizeChanged"), told);
        if (size >= 1 && size <= 300)
            QCOMPARE(log.Arguments(told - 1).constFirst().toInt(), size);
    }
    const QStringList others{"01",   "012",  " 12", "12 ", "+5",   "1e2",
                             "12.5", "3000", "",    "abc", "0x1F", "1\n"};
    for (const QString& text : others)
        window.Edit()->setText(text);
    QCOMPARE(log.Count(), told);
}

void tst_NVTextToolbar::digitOfAnotherScriptIsToldAsZero()
{
    const Window window;
    const SignalLog log(window.bar);
    window.Edit()->setText(QString("1") + QChar(0x0665));
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(0)"}));
}

void tst_NVTextToolbar::chosenRowIsTold()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    window.ChooseBelow(window.Sizes());
    QCOMPARE(window.bar->GetFontSize(), 20);
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(20)", "ReturnFocus()"}));
}

void tst_NVTextToolbar::setSizeTellsIt_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("36") << 36 << 0 << true;
    QTest::newRow("100") << 100 << 4 << true;
    QTest::newRow("300") << 300 << 8 << true;
    QTest::newRow("1") << 1 << 0 << true;
    QTest::newRow("400") << 400 << 0 << false;
    QTest::newRow("0") << 0 << 0 << false;
    QTest::newRow("-3") << -3 << 0 << false;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << 0 << false;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << 0 << false;
}

void tst_NVTextToolbar::setSizeTellsIt()
{
    QFETCH(int, size);
    QFETCH(int, row);
    QFETCH(bool, isTold);
    const Window window;
    const SignalLog log(window.bar);
    window.bar->SetFontSize(size);
    QCOMPARE(window.Edit()->text(), QString::number(size));
    QCOMPARE(window.bar->GetFontSize(), size);
    QCOMPARE(window.Sizes()->currentIndex(), row);
    QCOMPARE(window.Rows(), SizeRows);
    QCOMPARE(log.Entries(), isTold ? QStringList(QString("FontSizeChanged(%1)").arg(size)) : QStringList());
}

void tst_NVTextToolbar::setSizeAgainTellsNothing()
{
    const Window window;
    window.bar->SetFontSize(100);
    const SignalLog log(window.bar);
    window.bar->SetFontSize(100);
    QCOMPARE(log.Entries(), QStringList());
    window.bar->SetFontSize(36);
    window.bar->SetFontSize(36);
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(36)"}));
}

void tst_NVTextToolbar::firstRowIsMadeCurrentToo()
{
    const Window window;
    window.bar->SetFontSize(100);
    window.bar->SetFontSize(10);
    QCOMPARE(window.Sizes()->currentIndex(), 0);
    QCOMPARE(window.bar->GetFontSize(), 10);
}

// The row of before stays the current one while the box shows another size.
void tst_NVTextToolbar::rowBehindTypedTextIsShownAgain()
{
    const Window window;
    window.bar->SetFontSize(36);
    const SignalLog log(window.bar);
    window.bar->SetFontSize(10);
    QCOMPARE(window.Edit()->text(), QString("10"));
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(10)"}));
}

void tst_NVTextToolbar::confirmedSizesLeaveOneRow()
{
    Window window;
    QVERIFY(window.Show());
    window.Confirm("35");
    QCOMPARE(window.Rows(), SizeRows + QStringList("35"));
    QCOMPARE(window.Sizes()->currentIndex(), 9);
    window.Confirm("45");
    QCOMPARE(window.Rows(), SizeRows + QStringList("45"));
    QCOMPARE(window.Sizes()->currentIndex(), 9);
    QCOMPARE(window.bar->GetFontSize(), 45);
    window.Confirm("45");
    QCOMPARE(window.Rows(), SizeRows + QStringList("45"));
}

void tst_NVTextToolbar::confirmedStandardSizeAddsNoRow()
{
    Window window;
    QVERIFY(window.Show());
    window.Confirm("150");
    QCOMPARE(window.Rows(), SizeRows);
    QCOMPARE(window.Sizes()->currentIndex(), 5);
}

void tst_NVTextToolbar::customRowCanBeChosenAndReplaced()
{
    Window window;
    QVERIFY(window.Show());
    window.Confirm("35");
    window.bar->SetFontSize(20);
    const SignalLog log(window.bar);
    window.bar->SetFontSize(35);
    QCOMPARE(window.Sizes()->currentIndex(), 9);
    QCOMPARE(log.Entries(), QStringList({"FontSizeChanged(35)"}));
    window.bar->SetFontSize(36);
    QCOMPARE(window.Rows(), SizeRows + QStringList("35"));
    window.Confirm("7");
    QCOMPARE(window.Rows(), SizeRows + QStringList("7"));
    QCOMPARE(window.bar->GetFontSize(), 7);
}

void tst_NVTextToolbar::manyCustomRowsGoAtOnce()
{
    Window window;
    QVERIFY(window.Show());
    window.Sizes()->addItems({"11", "12", "13"});
    window.Confirm("14");
    QCOMPARE(window.Rows(), SizeRows + QStringList("14"));
    QCOMPARE(window.bar->GetFontSize(), 14);
}

void tst_NVTextToolbar::leavingTheBoxAddsNoRow()
{
    Window window;
    QVERIFY(window.Show());
    window.Type("35");
    const SignalLog log(window.bar);
    window.canvas->setFocus();
    QCOMPARE(log.Entries(), QStringList({"ReturnFocus()"}));
    QCOMPARE(window.Rows(), SizeRows);
    QCOMPARE(window.bar->GetFontSize(), 35);
}

void tst_NVTextToolbar::focusIsGivenBackBeforeTheListIsPutInOrder()
{
    // The window gives the focus back once more when it goes.
    QStringList rows;
    Window window;
    QVERIFY(window.Show());
    window.Confirm("35");
    window.Type("45");
    QObject::connect(window.bar, &NVTextToolbar::ReturnFocus, window.canvas,
                     [&rows, &window] { rows << window.Rows().mid(9).join(' '); });
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    // First from the list, which has chosen the new row, then from the edit.
    QCOMPARE(rows, QStringList({"35 45", "35 45"}));
    QCOMPARE(window.Rows().mid(9), QStringList("45"));
}

void tst_NVTextToolbar::barMayGoWhileASizeIsTyped()
{
    Window window;
    QVERIFY(window.Show());
    window.Type("35");
    const SignalLog log(window.bar);
    delete window.bar;
    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(!window.window.findChild<QComboBox*>());
}

void tst_NVTextToolbar::barMayGoWithAnOpenList()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    window.Sizes()->showPopup();
    delete window.bar;
    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(!window.window.findChild<QComboBox*>());
}

void tst_NVTextToolbar::styleButtonTellsTheMask()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    window.Click("m_pBold");
    window.Click("m_pUnderline");
    window.Click("m_pItalic");
    window.Click("m_pBold");
    QCOMPARE(log.Entries(),
             QStringList({"FontStyleChanged(1)", "ReturnFocus()", "FontStyleChanged(5)", "ReturnFocus()",
                          "FontStyleChanged(7)", "ReturnFocus()", "FontStyleChanged(6)", "ReturnFocus()"}));
    QCOMPARE(window.bar->GetFontStyle(), 6);
}

void tst_NVTextToolbar::setStyleTellsPassingMasks_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (int from = 0; from < 8; ++from)
    {
        for (int to = 0; to < 8; ++to)
            QTest::newRow(qPrintable(QString("%1 to %2").arg(from).arg(to))) << from << to;
    }
}

void tst_NVTextToolbar::setStyleTellsPassingMasks()
{
    QFETCH(int, from);
    QFETCH(int, to);
    NVTextToolbar bar(nullptr);
    bar.SetFontStyle(from);
    const SignalLog log(&bar);
    bar.SetFontStyle(to);
    QStringList wanted;
    int mask = from;
    for (const int bit : {1, 2, 4})
    {
        if ((mask & bit) == (to & bit))
            continue;
        mask ^= bit;
        wanted << QString("FontStyleChanged(%1)").arg(mask);
    }
    if (from != to)
        wanted << QString("FontStyleChanged(%1)").arg(to);
    QCOMPARE(log.Entries(), wanted);
    QCOMPARE(bar.GetFontStyle(), to);
}

void tst_NVTextToolbar::setStyleTwiceStillTells()
{
    const Window window;
    window.bar->SetFontStyle(3);
    window.bar->SetFontStyle(0);
    const SignalLog log(window.bar);
    window.bar->SetFontStyle(3);
    QCOMPARE(log.Entries(),
             QStringList({"FontStyleChanged(1)", "FontStyleChanged(3)", "FontStyleChanged(3)"}));
    window.bar->SetFontStyle(3);
    QCOMPARE(log.Count(), 3);
    window.Button("m_pUnderline")->click();
    QCOMPARE(log.Entries().mid(3), QStringList({"FontStyleChanged(7)", "ReturnFocus()"}));
}

void tst_NVTextToolbar::strayBitsAreToldAndLost()
{
    NVTextToolbar bar(nullptr);
    const SignalLog log(&bar);
    bar.SetFontStyle(8);
    QCOMPARE(log.Entries(), QStringList({"FontStyleChanged(8)"}));
    QCOMPARE(bar.GetFontStyle(), 0);
    bar.SetFontStyle(-1);
    QCOMPARE(bar.GetFontStyle(), 7);
}

void tst_NVTextToolbar::antialiasingHasNoSignal()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    window.bar->SetAntialiasing(true);
    QVERIFY(window.bar->IsAntialiasing());
    QCOMPARE(log.Entries(), QStringList());
    window.Click("m_pAliasing");
    QVERIFY(!window.bar->IsAntialiasing());
    QCOMPARE(log.Entries(), QStringList({"ReturnFocus()"}));
}

void tst_NVTextToolbar::setColorStoresShowsAndTells()
{
    const Window window;
    const SignalLog log(window.bar);
    window.bar->SetColor(QColor(10, 200, 30));
    QCOMPARE(window.bar->GetColor(), QColor(10, 200, 30));
    QCOMPARE(IconColor(window.Button("m_pColor")), QColor(10, 200, 30));
    QCOMPARE(log.Entries(), QStringList({"ColorChanged(#ff0ac81e)"}));
    window.bar->SetColor(QColor(255, 0, 0, 64));
    QCOMPARE(IconColor(window.Button("m_pColor")).alpha(), 64);
    QCOMPARE(window.bar->GetColor(), QColor(255, 0, 0, 64));
}

void tst_NVTextToolbar::sameColorIsShownAnewAndNotTold()
{
    const Window window;
    window.bar->SetColor(Qt::red);
    window.Button("m_pColor")->setIcon(QIcon());
    const SignalLog log(window.bar);
    window.bar->SetColor(Qt::red);
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(IconColor(window.Button("m_pColor")), QColor(Qt::red));
}

void tst_NVTextToolbar::colorDialogGivesTheColor()
{
    Window window;
    QVERIFY(window.Show());
    window.bar->SetColor(Qt::blue);
    const SignalLog log(window.bar);
    const ModalDriver driver(
        [&window](QWidget* dialog)
        {
            auto* colors = qobject_cast<KXColorDlg*>(dialog);
            QVERIFY(colors);
            QCOMPARE(colors->parentWidget(), KXMdiArea::MainWindow());
            QCOMPARE(colors->parentWidget(), &window.window);
            QCOMPARE(colors->windowTitle(), QString("Selecte a text color"));
            QVERIFY(colors->isModal());
            QCOMPARE(colors->CurrentColor(), QColor(Qt::blue));
            colors->GetColorDlg()->setCurrentColor(QColor(1, 2, 3, 128));
            ModalDriver::Press(dialog, "OK");
        });
    window.Click("m_pColor");
    QVERIFY(driver.Finished());
    QCOMPARE(window.bar->GetColor(), QColor(1, 2, 3, 128));
    QCOMPARE(log.Entries(), QStringList({"ColorChanged(#80010203)"}));
    QCOMPARE(IconColor(window.Button("m_pColor")).alpha(), 128);
}

void tst_NVTextToolbar::colorDialogWithTheSameColorTellsNothing()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    const ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "OK"); });
    window.Click("m_pColor");
    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(window.bar->GetColor(), QColor(Qt::black));
}

void tst_NVTextToolbar::leavingTheColorDialogChangesNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"cancel", "escape", "close"})
        QTest::newRow(way) << way;
}

void tst_NVTextToolbar::leavingTheColorDialogChangesNothing()
{
    QFETCH(QString, way);
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    const ModalDriver driver(
        [way](QWidget* dialog)
        {
            qobject_cast<KXColorDlg*>(dialog)->GetColorDlg()->setCurrentColor(Qt::red);
            Leave(dialog, way);
        });
    window.Click("m_pColor");
    QVERIFY(driver.Finished());
    QCOMPARE(window.bar->GetColor(), QColor(Qt::black));
    QCOMPARE(IconColor(window.Button("m_pColor")), QColor(Qt::black));
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVTextToolbar::barMayGoWhileTheColorDialogIsOpen()
{
    Window window;
    QVERIFY(window.Show());
    const ModalDriver driver(
        [&window](QWidget* dialog)
        {
            delete window.bar;
            ModalDriver::Press(dialog, "OK");
        });
    QMetaObject::invokeMethod(window.bar, "OnColor");
    QVERIFY(driver.Finished());
}

void tst_NVTextToolbar::setDeformationIsToldOnce()
{
    NVTextToolbar bar(nullptr);
    const SignalLog log(&bar);
    bar.SetDeformation(NVTextDeformation());
    QCOMPARE(log.Entries(), QStringList());
    bar.SetDeformation(Bent(5));
    bar.SetDeformation(Bent(5));
    QCOMPARE(log.Entries(), QStringList({"DeformationChanged()"}));
    QVERIFY(bar.GetDeformation() == Bent(5));
    bar.SetDeformation(Bent(std::nextafter(5.0, 6.0)));
    QCOMPARE(log.Count("DeformationChanged"), 2);
    NVTextDeformation wild;
    wild.SetBend(std::numeric_limits<double>::quiet_NaN());
    bar.SetDeformation(wild);
    bar.SetDeformation(wild);
    QCOMPARE(log.Count("DeformationChanged"), 4);
}

void tst_NVTextToolbar::dialogOpensOnTheValueAndTellsNothing()
{
    Window window;
    QVERIFY(window.Show());
    window.bar->SetDeformation(Bent(12.5));
    const SignalLog log(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            const auto* warp = qobject_cast<NVWarpTextDialog*>(dialog);
            QVERIFY(warp);
            QCOMPARE(warp->parentWidget(), &window.window);
            QVERIFY(warp->GetDeformation() == Bent(12.5));
            QCOMPARE(log.Entries(), QStringList());
            ModalDriver::PressKey(dialog, Qt::Key_Escape);
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVTextToolbar::liveChangesAreCorrections()
{
    Window window;
    QVERIFY(window.Show());
    Deformations seen(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            dialog->findChild<QSlider*>("m_pBendSldr")->setValue(2500);
            dialog->findChild<QRadioButton*>("m_pVertical")->click();
            QCOMPARE(window.bar->GetDeformation().GetOrientation(), NVTextDeformation::OrientationVertical);
            QCOMPARE(seen.entries, QStringList({"corrected 10", "corrected 25", "corrected 25"}));
            ModalDriver::PressKey(dialog, Qt::Key_Escape);
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
}

void tst_NVTextToolbar::cancelledDialogPutsTheValueBack_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"cancel", "escape", "close"})
        QTest::newRow(way) << way;
}

void tst_NVTextToolbar::cancelledDialogPutsTheValueBack()
{
    QFETCH(QString, way);
    Window window;
    QVERIFY(window.Show());
    window.bar->SetDeformation(Bent(3));
    Deformations seen(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            SetBend(dialog, 20);
            Leave(dialog, way);
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 10", "corrected 20", "corrected 3"}));
    QVERIFY(window.bar->GetDeformation() == Bent(3));
}

void tst_NVTextToolbar::cancelledUnchangedDialogTellsNothing_data()
{
    cancelledDialogPutsTheValueBack_data();
}

void tst_NVTextToolbar::cancelledUnchangedDialogTellsNothing()
{
    QFETCH(QString, way);
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    const ModalDriver driver([way](QWidget* dialog) { Leave(dialog, way); });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVTextToolbar::acceptedDialogTellsOneChange_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"ok", "enter"})
        QTest::newRow(way) << way;
}

void tst_NVTextToolbar::acceptedDialogTellsOneChange()
{
    QFETCH(QString, way);
    Window window;
    QVERIFY(window.Show());
    window.bar->SetDeformation(Bent(3));
    Deformations seen(window.bar);
    const SignalLog log(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            SetBend(dialog, 20);
            Leave(dialog, way);
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 10", "corrected 20", "corrected 3", "changed 20"}));
    QCOMPARE(log.Entries(),
             QStringList({"DeformationCorrected()", "DeformationCorrected()", "DeformationCorrected()",
                          "DeformationChanged()"}));
    QVERIFY(window.bar->GetDeformation() == Bent(20));
}

void tst_NVTextToolbar::acceptedUnchangedDialogTellsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"ok", "enter"})
        QTest::newRow(way) << way;
}

void tst_NVTextToolbar::acceptedUnchangedDialogTellsNothing()
{
    QFETCH(QString, way);
    Window window;
    QVERIFY(window.Show());
    window.bar->SetDeformation(Bent(0.29));
    const SignalLog log(window.bar);
    const ModalDriver driver([way](QWidget* dialog) { Leave(dialog, way); });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(window.bar->GetDeformation() == Bent(0.29));
}

void tst_NVTextToolbar::changeThatWasTakenBackIsNoChange()
{
    Window window;
    QVERIFY(window.Show());
    Deformations seen(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            SetBend(dialog, 0);
            Leave(dialog, "ok");
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 10", "corrected 0"}));
}

void tst_NVTextToolbar::cancelledAfterAChangeAndBackTellsNothingMore()
{
    Window window;
    QVERIFY(window.Show());
    Deformations seen(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            SetBend(dialog, 0);
            Leave(dialog, "cancel");
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 10", "corrected 0"}));
}

void tst_NVTextToolbar::acceptedMatrixIsLostAndCounts()
{
    Window window;
    QVERIFY(window.Show());
    NVTextDeformation turned = Bent(3);
    QMatrix4x4 matrix;
    matrix.rotate(90, 0, 0, 1);
    turned.SetMatrix(matrix);
    window.bar->SetDeformation(turned);
    Deformations seen(window.bar);
    const ModalDriver driver([](QWidget* dialog) { Leave(dialog, "ok"); });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 3", "changed 3"}));
    QVERIFY(window.bar->GetDeformation().GetMatrix().isIdentity());
}

void tst_NVTextToolbar::cancelledMatrixComesBack()
{
    Window window;
    QVERIFY(window.Show());
    NVTextDeformation turned = Bent(3);
    QMatrix4x4 matrix;
    matrix.rotate(90, 0, 0, 1);
    turned.SetMatrix(matrix);
    window.bar->SetDeformation(turned);
    Deformations seen(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 4);
            SetBend(dialog, 3);
            QVERIFY(window.bar->GetDeformation().GetMatrix().isIdentity());
            Leave(dialog, "cancel");
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList({"corrected 4", "corrected 3", "corrected 3"}));
    QVERIFY(window.bar->GetDeformation() == turned);
}

void tst_NVTextToolbar::notANumberCountsAsAChange_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("ok") << "ok" << QStringList({"corrected nan", "changed 4"});
    QTest::newRow("cancel") << "cancel" << QStringList({"corrected nan"});
}

// Unequal even to itself, so that each way out counts as a change.
void tst_NVTextToolbar::notANumberCountsAsAChange()
{
    QFETCH(QString, way);
    QFETCH(QStringList, told);
    Window window;
    QVERIFY(window.Show());
    window.bar->SetDeformation(Bent(std::numeric_limits<double>::quiet_NaN()));
    Deformations seen(window.bar);
    const ModalDriver driver(
        [way](QWidget* dialog)
        {
            SetBend(dialog, 4);
            Leave(dialog, way);
        });
    window.Click("m_pWarp");
    QVERIFY(driver.Finished());
    QCOMPARE(seen.entries, QStringList("corrected 4") + told);
}

void tst_NVTextToolbar::deformationChangedByAnythingElseIsACorrection()
{
    NVTextToolbar bar(nullptr);
    bar.SetDeformation(Bent(3));
    const SignalLog log(&bar);
    QVERIFY(QMetaObject::invokeMethod(&bar, "OnDeformationChanged"));
    QCOMPARE(log.Entries(), QStringList({"DeformationCorrected()"}));
    QVERIFY(bar.GetDeformation() == Bent(3));
}

void tst_NVTextToolbar::barMayGoWhileTheWarpDialogIsOpen()
{
    Window window;
    QVERIFY(window.Show());
    const ModalDriver driver(
        [&window](QWidget* dialog)
        {
            delete window.bar;
            SetBend(dialog, 10);
            Leave(dialog, "ok");
        });
    QMetaObject::invokeMethod(window.bar, "OnWarp");
    QVERIFY(driver.Finished());
}

void tst_NVTextToolbar::barMayGoWhenTheValueIsPutBack()
{
    Window window;
    QVERIFY(window.Show());
    QPointer<NVTextToolbar> bar(window.bar);
    const ModalDriver driver(
        [&](QWidget* dialog)
        {
            SetBend(dialog, 10);
            QObject::connect(window.bar, &NVTextToolbar::DeformationCorrected, window.canvas,
                             [&window] { delete window.bar; });
            Leave(dialog, "ok");
        });
    QMetaObject::invokeMethod(window.bar, "OnWarp");
    QVERIFY(driver.Finished());
    QVERIFY(!bar);
}

void tst_NVTextToolbar::windowMayGoWhileTheWarpDialogIsOpen()
{
    auto window = std::make_unique<Window>();
    QVERIFY(window->Show());
    const ModalDriver driver([&window](QWidget*) { window.reset(); });
    QMetaObject::invokeMethod(window->bar, "OnWarp");
    QVERIFY(!window);
}

void tst_NVTextToolbar::commitAndCancelAreTold()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    window.Click("m_pCommit");
    window.Click("m_pCancel");
    QCOMPARE(log.Entries(), QStringList({"Commit()", "Cancel()"}));
    QVERIFY(window.canvas->hasFocus());
}

void tst_NVTextToolbar::focusIsReturnedByTheseControls()
{
    Window window;
    QVERIFY(window.Show());
    const SignalLog log(window.bar);
    int returned = 0;
    for (const char* name : {"m_pAliasing", "m_pBold", "m_pItalic", "m_pUnderline"})
    {
        window.Click(name);
        QCOMPARE(log.Count("ReturnFocus"), ++returned);
    }
    window.ChooseBelow(window.Families());
    QCOMPARE(log.Count("ReturnFocus"), ++returned);
    window.ChooseBelow(window.Sizes());
    QCOMPARE(log.Count("ReturnFocus"), ++returned);
    window.Type("20");
    QCOMPARE(log.Count("ReturnFocus"), returned);
    window.canvas->setFocus();
    QCOMPARE(log.Count("ReturnFocus"), ++returned);
}

void tst_NVTextToolbar::focusIsNotReturnedByTheOthers()
{
    const Window window;
    const SignalLog log(window.bar);
    window.bar->SetFontSize(36);
    window.bar->SetFontSize(20);
    window.bar->SetFontFamily(window.Families()->itemText(window.Families()->count() - 1));
    window.bar->SetFontStyle(7);
    window.bar->SetAntialiasing(true);
    window.bar->SetColor(Qt::red);
    window.bar->SetDeformation(Bent(1));
    QCOMPARE(log.Count("ReturnFocus"), 0);
}

void tst_NVTextToolbar::canvasKeepsTheKeysAfterEachControl()
{
    Window window(Window::TakesFocusBack);
    QVERIFY(window.Show());
    for (const char* name : {"m_pAliasing", "m_pBold", "m_pItalic", "m_pUnderline", "m_pCommit", "m_pCancel"})
    {
        window.Click(name);
        QVERIFY(window.canvas->hasFocus());
    }
    window.Confirm("35");
    QVERIFY(window.canvas->hasFocus());
    window.Confirm("45");
    QVERIFY(window.canvas->hasFocus());
    QCOMPARE(window.Rows(), SizeRows + QStringList("45"));
    QCOMPARE(window.bar->GetFontSize(), 45);
    window.ChooseBelow(window.Sizes());
    QVERIFY(window.canvas->hasFocus());
}

NV_TEST_MAIN(tst_NVTextToolbar)
#include "tst_NVTextToolbar.moc"
