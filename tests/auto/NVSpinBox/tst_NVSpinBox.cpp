// The number box: sums, clamping, where the keyboard goes, and that its text is never cut off.

#include "NVSpinBox.h"

#include <QDialog>
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QStyleOptionSpinBox>
#include <QVBoxLayout>

#include <memory>

#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QLineEdit* EditOf(const QSpinBox& box)
{
    return box.findChild<QLineEdit*>();
}

// A main window with a canvas and two boxes in a bar above it.
struct Host
{
    Host()
    {
        canvas = new QWidget;
        canvas->setFocusPolicy(Qt::StrongFocus);
        window.setCentralWidget(canvas);
        bar = new QWidget;
        QHBoxLayout* layout = new QHBoxLayout(bar);
        size = new NVSpinBox;
        size->setRange(1, 2500);
        size->setSuffix(" px");
        size->setValue(10);
        size->setFocusPolicy(Qt::ClickFocus);
        opacity = new NVSpinBox;
        opacity->setRange(0, 100);
        layout->addWidget(size);
        layout->addWidget(opacity);
        window.setMenuWidget(bar);
    }

    bool Show()
    {
        window.show();
        window.activateWindow();
        canvas->setFocus();
        return QTest::qWaitForWindowActive(&window) && canvas->hasFocus();
    }

    void ClickInto(NVSpinBox* box) const
    {
        QTest::mouseClick(EditOf(*box), Qt::LeftButton);
        box->selectAll();
    }

    QMainWindow window;
    QPointer<QWidget> canvas;
    QWidget* bar;
    NVSpinBox* size;
    NVSpinBox* opacity;
};

// The box the way bars fix it.
std::unique_ptr<NVSpinBox> FixedBox(int width, int points, int value)
{
    auto box = std::make_unique<NVSpinBox>();
    QFont font = box->font();
    font.setPointSize(points);
    box->setFont(font);
    box->setRange(1, 2500);
    box->setSuffix(" px");
    box->setValue(value);
    box->setFixedSize(width, 24);
    return box;
}

} // namespace

class tst_NVSpinBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void digitsAreToldAsTheyAreTyped();
    void withoutTrackingDigitsAreToldAtTheEnd();
    void settersTellOnceAndClamp();
    void typedTextGivesThisValue_data();
    void typedTextGivesThisValue();
    void sumIsToldOnceWhenItIsFinished();
    void sumIsWorkedOutWhenTheFocusLeaves();
    void numberAboveTheMaximumMayBeginASum();
    void rubbishBringsTheValueFromBeforeTypingBack();
    void lettersAreRefused();
    void hostileSumsAreSurvived_data();
    void hostileSumsAreSurvived();
    void decimalPointFollowsTheLocale();
    void hexadecimalBoxKnowsNoSums();
    void stepsAndSumsGoTogether();
    void escapeBringsTheOldValueBack_data();
    void escapeBringsTheOldValueBack();
    void escapeKeepsWhatTheHostSetMeanwhile();
    void escapeAfterASilentChangeKeepsThatChange();
    void escapeAfterEnterKeepsTheEnteredValue();
    void enterAndEscapeGiveTheFocusToTheCanvas_data();
    void enterAndEscapeGiveTheFocusToTheCanvas();
    void nextBoxKnowsTheCanvasOfTheFirst();
    void deadCanvasIsReplacedByTheCentralWidget();
    void withoutACanvasTheBoxKeepsTheFocus();
    void floatingDockGivesTheFocusToItsMainWindow();
    void dialogGetsEnterAndEscape();
    void dialogDoesNotGetAnEscapeThatRestoredTheValue();
    void shortcutsOfTheWindowSpareTheBox();
    void boxMayDieInItsOwnSignal();
    void textIsNeverCutOff_data();
    void textIsNeverCutOff();
    void roomyBoxLooksLikeAnyOther();
    void fontReturnsWhenTheBoxGrows();
    void suffixThatComesLaterIsFittedToo();
    void smallArrowsStepWherePressed_data();
    void smallArrowsStepWherePressed();
    void zeroIsAnOrdinaryNumber();
    void specialTextOfBlanksIsAnEmptyText();
    void ordinarySpecialTextIsShownAndKept();
};

void tst_NVSpinBox::digitsAreToldAsTheyAreTyped()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(host.size);
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "123");

    QCOMPARE(log.Count("valueChanged"), 6);
    QCOMPARE(log.Count("textChanged"), 3);
    QStringList values;
    for (const QString& entry : log.Entries())
    {
        if (entry.startsWith("valueChanged(") && !entry.contains('"'))
        {
            values.append(entry);
        }
    }
    QCOMPARE(values, QStringList({"valueChanged(1)", "valueChanged(12)", "valueChanged(123)"}));
}

void tst_NVSpinBox::withoutTrackingDigitsAreToldAtTheEnd()
{
    Host host;
    QVERIFY(host.Show());
    host.size->setKeyboardTracking(false);
    QSignalSpy spy(host.size, qOverload<int>(&QSpinBox::valueChanged));
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "123");
    QCOMPARE(spy.count(), 0);
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(host.size->value(), 123);
}

void tst_NVSpinBox::settersTellOnceAndClamp()
{
    Host host;
    QSignalSpy spy(host.size, qOverload<int>(&QSpinBox::valueChanged));

    host.size->setValue(20);
    host.size->setValue(20);
    host.size->setValue(99999);
    host.size->setValue(-99999);

    QCOMPARE(spy, QList<QList<QVariant>>({{20}, {2500}, {1}}));
    QCOMPARE(host.size->text(), QString("1 px"));
}

void tst_NVSpinBox::typedTextGivesThisValue_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("expected");
    QTest::newRow("number") << "25" << 25;
    QTest::newRow("number and unit") << "25 px" << 25;
    QTest::newRow("unit without blank") << "25px" << 25;
    QTest::newRow("sum") << "2*300/4" << 150;
    QTest::newRow("sum with unit") << "2*300/4 px" << 150;
    QTest::newRow("parentheses") << "(10+5)*(3-1)" << 30;
    QTest::newRow("blanks") << " 7 + 8 " << 15;
    QTest::newRow("rounded up") << "5/2" << 3;
    QTest::newRow("rounded down") << "7/3" << 2;
    QTest::newRow("decimals") << "2.4*10" << 24;
    QTest::newRow("decimals alone") << "12.6" << 13;
    QTest::newRow("over the maximum") << "9999" << 2500;
    QTest::newRow("sum over the maximum") << "2500*2" << 2500;
    QTest::newRow("sum under the minimum") << "5-50" << 1;
    QTest::newRow("zero under the minimum") << "0" << 1;
    QTest::newRow("negative") << "-5" << 1;
    QTest::newRow("begins with a sign") << "-5+20" << 15;
    QTest::newRow("number of many digits") << "99999999999999999999" << 2500;
    QTest::newRow("division by zero") << "5/0" << 10;
    QTest::newRow("incomplete") << "5*" << 10;
    QTest::newRow("open parenthesis") << "(5" << 10;
    QTest::newRow("operators alone") << "*/" << 10;
    QTest::newRow("unit alone") << "px" << 10;
    QTest::newRow("half of the unit") << "25 p" << 10;
    QTest::newRow("sum of units") << "25px*2" << 10;
}

void tst_NVSpinBox::typedTextGivesThisValue()
{
    QFETCH(QString, typed);
    QFETCH(int, expected);
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    EditOf(*host.size)->selectAll();

    QTest::keyClicks(host.size, typed);
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(host.size->value(), expected);
    QCOMPARE(host.size->text(), QString("%1 px").arg(expected));
}

void tst_NVSpinBox::sumIsToldOnceWhenItIsFinished()
{
    Host host;
    QVERIFY(host.Show());
    QSignalSpy spy(host.size, qOverload<int>(&QSpinBox::valueChanged));
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "(20+30)*4");
    QCOMPARE(spy.count(), 0);
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(spy, QList<QList<QVariant>>({{200}}));
}

void tst_NVSpinBox::sumIsWorkedOutWhenTheFocusLeaves()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "6*7");
    host.canvas->setFocus();

    QCOMPARE(host.size->value(), 42);
    QCOMPARE(host.size->text(), QString("42 px"));
}

void tst_NVSpinBox::numberAboveTheMaximumMayBeginASum()
{
    Host host;
    QVERIFY(host.Show());
    QSignalSpy spy(host.size, qOverload<int>(&QSpinBox::valueChanged));
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "5000/4");
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(host.size->value(), 1250);
    QCOMPARE(spy, QList<QList<QVariant>>({{5}, {50}, {500}, {1250}}));
}

void tst_NVSpinBox::rubbishBringsTheValueFromBeforeTypingBack()
{
    Host host;
    QVERIFY(host.Show());
    QSignalSpy spy(host.size, qOverload<int>(&QSpinBox::valueChanged));
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "5/0");
    QCOMPARE(spy, QList<QList<QVariant>>({{5}}));
    host.canvas->setFocus();

    QCOMPARE(spy, QList<QList<QVariant>>({{5}, {10}}));
    QCOMPARE(host.size->text(), QString("10 px"));
}

void tst_NVSpinBox::lettersAreRefused()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "1a2e3,");

    QCOMPARE(EditOf(*host.size)->text(), QString("123 px"));
}

void tst_NVSpinBox::hostileSumsAreSurvived_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    const QString huge = "1" + QString(300, '0');
    QTest::newRow("ten thousand parentheses") << QString(10000, '(') << 10;
    QTest::newRow("ten thousand pairs") << QString(10000, '(') + "7" + QString(10000, ')') << 7;
    QTest::newRow("ten thousand signs") << QString(10000, '-') + "7" << 7;
    QTest::newRow("infinite product") << huge + "*" + huge << 10;
    QTest::newRow("huge") << huge << 2500;
    QTest::newRow("huge and negative") << "-" + huge << 1;
    QTest::newRow("not a number") << "0/0" << 10;
}

void tst_NVSpinBox::hostileSumsAreSurvived()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    EditOf(*host.size)->selectAll();

    EditOf(*host.size)->insert(text);
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(host.size->value(), expected);
}

void tst_NVSpinBox::decimalPointFollowsTheLocale()
{
    Host host;
    QVERIFY(host.Show());
    host.size->setLocale(QLocale(QLocale::German, QLocale::Germany));
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "2,5*4");
    QTest::keyClick(host.size, Qt::Key_Return);

    QCOMPARE(host.size->value(), 10);
}

void tst_NVSpinBox::hexadecimalBoxKnowsNoSums()
{
    Host host;
    QVERIFY(host.Show());
    host.opacity->setDisplayIntegerBase(16);
    host.ClickInto(host.opacity);

    QTest::keyClicks(host.opacity, "1+f");
    QTest::keyClick(host.opacity, Qt::Key_Return);

    QCOMPARE(host.opacity->value(), 31);
}

void tst_NVSpinBox::stepsAndSumsGoTogether()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "2*10");
    QTest::keyClick(host.size, Qt::Key_Up);
    QCOMPARE(host.size->value(), 20);
    QTest::keyClick(host.size, Qt::Key_Up);

    QCOMPARE(host.size->value(), 21);
}

void tst_NVSpinBox::escapeBringsTheOldValueBack_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("digits") << "123";
    QTest::newRow("sum") << "3*4";
    QTest::newRow("number above the maximum") << "9999";
    QTest::newRow("rubbish") << "((";
    QTest::newRow("the same number") << "10";
}

void tst_NVSpinBox::escapeBringsTheOldValueBack()
{
    QFETCH(QString, typed);
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, typed);
    QTest::keyClick(host.size, Qt::Key_Escape);

    QCOMPARE(host.size->value(), 10);
    QCOMPARE(host.size->text(), QString("10 px"));
    QVERIFY(host.canvas->hasFocus());
}

void tst_NVSpinBox::escapeKeepsWhatTheHostSetMeanwhile()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    QTest::keyClicks(host.size, "123");
    host.size->setValue(77);

    QTest::keyClick(host.size, Qt::Key_Escape);

    QCOMPARE(host.size->value(), 77);
}

void tst_NVSpinBox::escapeAfterASilentChangeKeepsThatChange()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    {
        const QSignalBlocker blocker(host.size);
        host.size->setValue(77);
    }
    host.size->selectAll();
    QTest::keyClicks(host.size, "5");

    QTest::keyClick(host.size, Qt::Key_Escape);

    QCOMPARE(host.size->value(), 77);
}

void tst_NVSpinBox::escapeAfterEnterKeepsTheEnteredValue()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    QTest::keyClicks(host.size, "123");
    QTest::keyClick(host.size, Qt::Key_Return);
    host.ClickInto(host.size);

    QTest::keyClick(host.size, Qt::Key_Escape);

    QCOMPARE(host.size->value(), 123);
}

void tst_NVSpinBox::enterAndEscapeGiveTheFocusToTheCanvas_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Escape") << Qt::Key_Escape;
}

void tst_NVSpinBox::enterAndEscapeGiveTheFocusToTheCanvas()
{
    QFETCH(Qt::Key, key);
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    QVERIFY(host.size->hasFocus());

    QTest::keyClick(host.size, key);

    QVERIFY(host.canvas->hasFocus());
    QCOMPARE(host.size->value(), 10);
}

void tst_NVSpinBox::nextBoxKnowsTheCanvasOfTheFirst()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    host.ClickInto(host.opacity);
    QVERIFY(host.opacity->hasFocus());

    QTest::keyClick(host.opacity, Qt::Key_Return);

    QVERIFY(host.canvas->hasFocus());
}

void tst_NVSpinBox::deadCanvasIsReplacedByTheCentralWidget()
{
    Host host;
    QVERIFY(host.Show());
    host.ClickInto(host.size);
    delete host.canvas;
    QWidget* next = new QWidget;
    next->setFocusPolicy(Qt::StrongFocus);
    host.window.setCentralWidget(next);
    next->show();

    QTest::keyClick(host.size, Qt::Key_Return);

    QVERIFY(next->hasFocus());
}

void tst_NVSpinBox::withoutACanvasTheBoxKeepsTheFocus()
{
    NVSpinBox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.setFocus();

    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Escape);

    QVERIFY(box.hasFocus());
}

void tst_NVSpinBox::floatingDockGivesTheFocusToItsMainWindow()
{
    Host host;
    QVERIFY(host.Show());
    QDockWidget* dock = new QDockWidget(&host.window);
    NVSpinBox* box = new NVSpinBox;
    dock->setWidget(box);
    host.window.addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->setFloating(true);
    dock->show();
    dock->activateWindow();
    QTRY_VERIFY(dock->isActiveWindow());
    host.ClickInto(box);
    QVERIFY(box->hasFocus());

    QTest::keyClick(box, Qt::Key_Return);

    QTRY_VERIFY(host.canvas->hasFocus());
}

void tst_NVSpinBox::dialogGetsEnterAndEscape()
{
    QDialog dialog;
    QVBoxLayout layout(&dialog);
    NVSpinBox box;
    QPushButton button("OK");
    layout.addWidget(&box);
    layout.addWidget(&button);
    button.setDefault(true);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    button.setFocus();
    box.setFocus();
    box.selectAll();

    QTest::keyClicks(&box, "4*5");
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(box.value(), 20);
    QVERIFY(box.hasFocus());
    QTest::keyClick(&box, Qt::Key_Escape);

    QCOMPARE(rejected.count(), 1);
}

void tst_NVSpinBox::dialogDoesNotGetAnEscapeThatRestoredTheValue()
{
    QDialog dialog;
    NVSpinBox box(&dialog);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    box.setFocus();
    QTest::keyClicks(&box, "5");

    QTest::keyClick(&box, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QCOMPARE(box.value(), 0);
    QTest::keyClick(&box, Qt::Key_Escape);

    QVERIFY(!dialog.isVisible());
}

void tst_NVSpinBox::shortcutsOfTheWindowSpareTheBox()
{
    Host host;
    QVERIFY(host.Show());
    const QList<QKeySequence> keys = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_5, QKeySequence("+"),
                                      QKeySequence("/")};
    int activations = 0;
    for (const QKeySequence& key : keys)
    {
        QShortcut* shortcut = new QShortcut(key, &host.window);
        connect(shortcut, &QShortcut::activated, this, [&activations] { ++activations; });
    }
    host.ClickInto(host.size);

    QTest::keyClicks(host.size, "5+5/5");
    QTest::keyClick(host.size, Qt::Key_Return);
    host.ClickInto(host.size);
    QTest::keyClick(host.size, Qt::Key_Escape);
    QCOMPARE(activations, 0);
    QCOMPARE(host.size->value(), 6);
    QTest::keyClick(host.canvas, Qt::Key_5);

    QCOMPARE(activations, 1);
}

void tst_NVSpinBox::boxMayDieInItsOwnSignal()
{
    Host host;
    QVERIFY(host.Show());
    QPointer<NVSpinBox> box = host.size;
    connect(host.size, &QSpinBox::editingFinished, box, &QObject::deleteLater);
    host.ClickInto(host.size);

    QTest::keyClicks(box, "3*3");
    QTest::keyClick(box, Qt::Key_Return);

    QTRY_VERIFY(!box);
    QVERIFY(host.canvas->hasFocus());
}

void tst_NVSpinBox::textIsNeverCutOff_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("value");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const int width : {40, 50, 60, 80})
    {
        for (const int points : {7, 9, 12, 16})
        {
            for (const int value : {1, 99, 300, 2500})
            {
                QTest::addRow("%d wide, %d pt, %d px", width, points, value)
                    << width << points << value << Qt::LeftToRight;
            }
        }
    }
    QTest::newRow("right to left") << 50 << 9 << 2500 << Qt::RightToLeft;
}

void tst_NVSpinBox::textIsNeverCutOff()
{
    QFETCH(int, width);
    QFETCH(int, points);
    QFETCH(int, value);
    QFETCH(Qt::LayoutDirection, direction);
    const auto box = FixedBox(width, points, value);
    box->setLayoutDirection(direction);
    box->show();
    const QLineEdit* edit = EditOf(*box);

    // Painted alone and with a free field around it, the text must be as wide as it is in the box.
    ProbeImage probe(box.get());
    QImage wide(200, 24, QImage::Format_RGB32);
    wide.fill(box->palette().color(QPalette::Base));
    QPainter painter(&wide);
    painter.setFont(edit->font());
    painter.setPen(box->palette().color(QPalette::Text));
    painter.drawText(QRect(20, 0, 180, 24), Qt::AlignVCenter, edit->text());
    painter.end();

    const QRect expected = ProbeImage(wide).BoundsOf(box->palette().color(QPalette::Text), 120);
    const ProbeImage inside(probe.Image().copy(edit->geometry()));
    const QRect seen = inside.BoundsOf(box->palette().color(QPalette::Text), 120);
    QVERIFY(edit->font().pointSizeF() >= 4.0);
    QVERIFY2(qAbs(seen.width() - expected.width()) <= 1,
             qPrintable(QString("%1 of %2").arg(seen.width()).arg(expected.width())));
    QVERIFY(box->rect().contains(edit->geometry()));
}

void tst_NVSpinBox::roomyBoxLooksLikeAnyOther()
{
    const auto box = FixedBox(120, 9, 2500);
    QSpinBox plain;
    plain.setFont(box->font());
    plain.setRange(1, 2500);
    plain.setSuffix(" px");
    plain.setValue(2500);
    plain.setFixedSize(120, 24);

    const ProbeImage one(box.get());

    QVERIFY(!one.Differs(ProbeImage(&plain)));
    QCOMPARE(EditOf(*box)->font(), box->font());
}

void tst_NVSpinBox::fontReturnsWhenTheBoxGrows()
{
    const auto box = FixedBox(50, 9, 2500);
    box->show();
    QVERIFY(EditOf(*box)->font().pointSizeF() < 9.0);

    box->setFixedWidth(120);
    QCOMPARE(EditOf(*box)->font().pointSizeF(), 9.0);
    box->setFixedWidth(50);
    box->setValue(1);

    QCOMPARE(EditOf(*box)->font().pointSizeF(), 9.0);
}

void tst_NVSpinBox::suffixThatComesLaterIsFittedToo()
{
    const auto box = FixedBox(50, 9, 250);
    box->setSuffix(QString());
    box->show();
    QTRY_COMPARE(EditOf(*box)->font().pointSizeF(), 9.0);

    box->setSuffix(" pixels");

    QTRY_VERIFY(EditOf(*box)->font().pointSizeF() < 9.0);
    QVERIFY(EditOf(*box)->fontMetrics().horizontalAdvance("250 pixels") <= EditOf(*box)->width());
}

void tst_NVSpinBox::smallArrowsStepWherePressed_data()
{
    QTest::addColumn<bool>("up");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("up") << true << Qt::LeftToRight;
    QTest::newRow("down") << false << Qt::LeftToRight;
    QTest::newRow("up, right to left") << true << Qt::RightToLeft;
    QTest::newRow("down, right to left") << false << Qt::RightToLeft;
}

void tst_NVSpinBox::smallArrowsStepWherePressed()
{
    QFETCH(bool, up);
    QFETCH(Qt::LayoutDirection, direction);
    const auto box = FixedBox(50, 9, 2000);
    box->setLayoutDirection(direction);
    box->show();
    QVERIFY(QTest::qWaitForWindowActive(box.get()));
    const int x = direction == Qt::LeftToRight ? 44 : 5;
    QVERIFY(!EditOf(*box)->geometry().contains(x, 12));

    QTest::mouseClick(box.get(), Qt::LeftButton, Qt::NoModifier, QPoint(x, up ? 7 : 17));

    QCOMPARE(box->value(), up ? 2001 : 1999);
}

void tst_NVSpinBox::zeroIsAnOrdinaryNumber()
{
    Host host;
    QVERIFY(host.Show());
    host.opacity->setValue(0);
    QCOMPARE(host.opacity->text(), QString("0"));
    host.opacity->setValue(50);
    host.ClickInto(host.opacity);

    QTest::keyClick(host.opacity, Qt::Key_Delete);
    QTest::keyClick(host.opacity, Qt::Key_Return);

    QCOMPARE(host.opacity->value(), 50);
    QCOMPARE(host.opacity->text(), QString("50"));
}

void tst_NVSpinBox::specialTextOfBlanksIsAnEmptyText()
{
    Host host;
    QVERIFY(host.Show());
    NVSpinBox* box = host.opacity;
    box->setSuffix(" px");
    box->setSpecialValueText(" ");
    QCOMPARE(box->text(), QString());
    QCOMPARE(box->property("text").toString(), QString());
    QSignalSpy spy(box, qOverload<int>(&QSpinBox::valueChanged));

    host.ClickInto(box);
    QTest::keyClicks(box, "25");
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(box->text(), QString("25 px"));
    host.ClickInto(box);
    EditOf(*box)->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClick(box, Qt::Key_Return);

    QCOMPARE(box->value(), 0);
    QCOMPARE(box->text(), QString());
    QCOMPARE(spy.last(), QList<QVariant>({0}));
}

void tst_NVSpinBox::ordinarySpecialTextIsShownAndKept()
{
    Host host;
    QVERIFY(host.Show());
    host.opacity->setSpecialValueText("auto");
    QCOMPARE(host.opacity->text(), QString("auto"));
    host.ClickInto(host.opacity);

    QTest::keyClick(host.opacity, Qt::Key_Return);

    QCOMPARE(host.opacity->text(), QString("auto"));
    QCOMPARE(host.opacity->value(), 0);
}

NV_TEST_MAIN(tst_NVSpinBox)
#include "tst_NVSpinBox.moc"
