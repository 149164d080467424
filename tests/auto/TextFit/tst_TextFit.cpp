// Numbers and labels whose place is fixed and narrow: their text is never cut off.

#include "TextFit.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include <memory>

#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

QLineEdit* EditOf(const QDoubleSpinBox& box)
{
    return box.findChild<QLineEdit*>();
}

std::unique_ptr<QDoubleSpinBox> Box(int width, int points)
{
    auto box = std::make_unique<QDoubleSpinBox>();
    QFont font = box->font();
    font.setPointSize(points);
    box->setFont(font);
    box->setRange(0.01, 100000.0);
    box->setFixedSize(width, 26);
    return box;
}

// Where text is drawn in a picture of the palette's colours.
QRect InkOf(const QImage& image, const QPalette& palette)
{
    return ProbeImage(image).BoundsOf(palette.color(QPalette::Text), 120);
}

} // namespace

class tst_TextFit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberIsNeverCutOff_data();
    void numberIsNeverCutOff();
    void roomyBoxLooksLikeAnyOther();
    void fontReturnsWithRoom();
    void whatComesWithoutASignalIsFittedToo_data();
    void whatComesWithoutASignalIsFittedToo();
    void smallLettersLeaveTheHeight();
    void specialTextIsFitted();
    void typingLeavesTheLettersAlone();
    void smallArrowsStepWherePressed_data();
    void smallArrowsStepWherePressed();
    void boxWithoutArrowsTakesTheirRoom();
    void labelGetsSmallerLettersAndTheOldOnesBack();
    void fittingFontKeepsWhatFits();
};

void tst_TextFit::numberIsNeverCutOff_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("points");
    QTest::addColumn<double>("value");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const int width : {50, 70, 100})
        for (const int points : {7, 9, 12, 16})
            for (const double value : {1.0, 150.0, 3527.78, 100000.0})
                QTest::addRow("%d wide, %d pt, %g", width, points, value)
                    << width << points << value << Qt::LeftToRight;
    QTest::newRow("right to left") << 70 << 12 << 100000.0 << Qt::RightToLeft;
}

void tst_TextFit::numberIsNeverCutOff()
{
    QFETCH(int, width);
    QFETCH(int, points);
    QFETCH(double, value);
    QFETCH(Qt::LayoutDirection, direction);
    const auto box = Box(width, points);
    FitText(box.get());
    box->setValue(value);
    box->setLayoutDirection(direction);
    box->show();
    const QLineEdit* edit = EditOf(*box);

    // Painted alone and with a free field around it, the text must be as wide as it is in the box.
    QImage wide(200, 26, QImage::Format_RGB32);
    wide.fill(box->palette().color(QPalette::Base));
    QPainter painter(&wide);
    painter.setFont(edit->font());
    painter.setPen(box->palette().color(QPalette::Text));
    painter.drawText(QRect(20, 0, 180, 26), Qt::AlignVCenter, edit->text());
    painter.end();
    const QRect expected = InkOf(wide, box->palette());
    const QRect seen = InkOf(ProbeImage(box.get()).Image().copy(edit->geometry()), box->palette());

    QVERIFY2(qAbs(seen.width() - expected.width()) <= 1,
             qPrintable(QString("%1 of %2").arg(seen.width()).arg(expected.width())));
    QVERIFY(box->rect().contains(edit->geometry()));
    QCOMPARE(box->width(), width);
}

void tst_TextFit::roomyBoxLooksLikeAnyOther()
{
    const auto fitted = Box(120, 9);
    const auto plain = Box(120, 9);
    FitText(fitted.get());
    for (QDoubleSpinBox* box : {fitted.get(), plain.get()})
        box->setValue(150.0);

    const ProbeImage one(fitted.get());

    QVERIFY(!one.Differs(ProbeImage(plain.get())));
    QCOMPARE(EditOf(*fitted)->font(), fitted->font());
}

void tst_TextFit::fontReturnsWithRoom()
{
    const auto box = Box(60, 9);
    FitText(box.get());
    box->setValue(100000.0);
    box->show();
    QVERIFY(EditOf(*box)->font().pointSizeF() < 9.0);

    box->setFixedWidth(120);
    QCOMPARE(EditOf(*box)->font().pointSizeF(), 9.0);
    box->setFixedWidth(60);
    QVERIFY(EditOf(*box)->font().pointSizeF() < 9.0);
    box->setValue(1.0);

    QCOMPARE(EditOf(*box)->font().pointSizeF(), 9.0);
}

void tst_TextFit::whatComesWithoutASignalIsFittedToo_data()
{
    QTest::addColumn<bool>("suffix");
    QTest::newRow("a suffix") << true;
    QTest::newRow("decimals") << false;
}

void tst_TextFit::whatComesWithoutASignalIsFittedToo()
{
    QFETCH(bool, suffix);
    const auto box = Box(70, 12);
    FitText(box.get());
    box->setDecimals(0);
    box->setValue(1000.0);
    box->show();
    QTRY_COMPARE(EditOf(*box)->font().pointSizeF(), 12.0);

    if (suffix)
        box->setSuffix(" pixels");
    else
        box->setDecimals(4);

    QTRY_VERIFY(EditOf(*box)->font().pointSizeF() < 12.0);
    QVERIFY(EditOf(*box)->fontMetrics().horizontalAdvance(box->text()) <= EditOf(*box)->width());
}

void tst_TextFit::smallLettersLeaveTheHeight()
{
    QWidget window;
    QFont font = window.font();
    font.setPointSize(12);
    window.setFont(font);
    QVBoxLayout layout(&window);
    QDoubleSpinBox boxes[2];
    for (QDoubleSpinBox& box : boxes)
    {
        box.setRange(0.01, 100000.0);
        box.setFixedWidth(70);
        layout.addWidget(&box);
        FitText(&box);
    }
    window.show();

    boxes[0].setValue(100000.0);
    // Asks for the size anew.
    for (QDoubleSpinBox& box : boxes)
        box.setDecimals(3);

    QTRY_VERIFY(EditOf(boxes[0])->font().pointSizeF() < 9.0);
    QTRY_COMPARE(boxes[0].sizeHint().height(), boxes[1].sizeHint().height());
    QCOMPARE(boxes[0].height(), boxes[1].height());
}

void tst_TextFit::specialTextIsFitted()
{
    const auto box = Box(70, 12);
    box->setSpecialValueText("nothing at all");
    box->setValue(0.01);
    box->show();

    FitText(box.get());

    QVERIFY(EditOf(*box)->fontMetrics().horizontalAdvance("nothing at all") <= EditOf(*box)->width());
}

// The letters are those of the value, not of half a number.
void tst_TextFit::typingLeavesTheLettersAlone()
{
    const auto box = Box(70, 12);
    FitText(box.get());
    box->show();
    QVERIFY(QTest::qWaitForWindowActive(box.get()));
    box->setFocus();
    box->selectAll();

    QTest::keyClicks(box.get(), "3527.7");

    QCOMPARE(box->value(), 3527.7);
    QVERIFY(EditOf(*box)->fontMetrics().horizontalAdvance("3527.70") <= EditOf(*box)->width());
}

void tst_TextFit::smallArrowsStepWherePressed_data()
{
    QTest::addColumn<bool>("up");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("up") << true << Qt::LeftToRight;
    QTest::newRow("down") << false << Qt::LeftToRight;
    QTest::newRow("up, right to left") << true << Qt::RightToLeft;
    QTest::newRow("down, right to left") << false << Qt::RightToLeft;
}

void tst_TextFit::smallArrowsStepWherePressed()
{
    QFETCH(bool, up);
    QFETCH(Qt::LayoutDirection, direction);
    const auto box = Box(70, 12);
    box->setLayoutDirection(direction);
    box->setValue(3527.78);
    FitText(box.get());
    box->show();
    QVERIFY(QTest::qWaitForWindowActive(box.get()));
    const int x = direction == Qt::LeftToRight ? 64 : 5;
    QVERIFY(!EditOf(*box)->geometry().contains(x, 13));

    QTest::mouseClick(box.get(), Qt::LeftButton, Qt::NoModifier, QPoint(x, up ? 7 : 19));

    QCOMPARE(box->value(), up ? 3528.78 : 3526.78);
}

void tst_TextFit::boxWithoutArrowsTakesTheirRoom()
{
    const auto box = Box(70, 12);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setValue(100000.0);
    FitText(box.get());
    box->show();

    QCOMPARE(EditOf(*box)->width(), 66);
}

void tst_TextFit::labelGetsSmallerLettersAndTheOldOnesBack()
{
    QWidget window;
    QFont font = window.font();
    font.setPointSize(12);
    window.setFont(font);
    QLabel label(&window);
    label.setFixedWidth(70);
    label.setText("1000000000");

    FitText(&label);
    QVERIFY(label.fontMetrics().horizontalAdvance(label.text()) <= 70);
    QVERIFY(label.font().pointSizeF() >= 6.0);
    label.setText("1000");
    FitText(&label);

    QCOMPARE(label.font(), font);
}

void tst_TextFit::fittingFontKeepsWhatFits()
{
    QFont font;
    font.setPixelSize(14);

    QCOMPARE(FittingFont(font, "100", 100), font);
    const QFont small = FittingFont(font, "1000000", 30);
    QVERIFY(QFontMetrics(small).horizontalAdvance("1000000") <= 30);
    QVERIFY(small.pixelSize() < 14);
    // Nothing is too narrow to come to an end.
    QCOMPARE(FittingFont(font, "1000000", 0).pixelSize(), 1);
}

NV_TEST_MAIN(tst_TextFit)
#include "tst_TextFit.moc"
