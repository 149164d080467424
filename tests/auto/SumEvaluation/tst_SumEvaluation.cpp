// Sums as people type them into number boxes.

#include "SumEvaluation.h"

#include <climits>
#include <limits>

#include "TestMain.h"

class tst_SumEvaluation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sumHasThisValue_data();
    void sumHasThisValue();
    void nothingComesOutOf_data();
    void nothingComesOutOf();
    void localeGivesTheDecimalPoint();
    void tenThousandParenthesesAreNoDanger();
    void tenThousandSignsAndOperatorsAreNoDanger();
    void valueIsRoundedAndClamped_data();
    void valueIsRoundedAndClamped();
};

void tst_SumEvaluation::sumHasThisValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    QTest::newRow("number") << "25" << 25.0;
    QTest::newRow("decimals") << "2.75" << 2.75;
    QTest::newRow("point first") << ".5" << 0.5;
    QTest::newRow("point last") << "5." << 5.0;
    QTest::newRow("left to right") << "2*300/4" << 150.0;
    QTest::newRow("precedence") << "2+3*4" << 14.0;
    QTest::newRow("precedence backwards") << "2*3+4" << 10.0;
    QTest::newRow("subtraction from the left") << "10-3-2" << 5.0;
    QTest::newRow("division from the left") << "100/5/2" << 10.0;
    QTest::newRow("parentheses") << "(2+3)*4" << 20.0;
    QTest::newRow("nested parentheses") << "((1+2)*(3+(4)))" << 21.0;
    QTest::newRow("sign") << "-5+20" << 15.0;
    QTest::newRow("sign after operator") << "3*-2" << -6.0;
    QTest::newRow("two signs") << "1--2" << 3.0;
    QTest::newRow("signed parenthesis") << "-(2+3)" << -5.0;
    QTest::newRow("sign binds closer than times") << "-2*-3" << 6.0;
    QTest::newRow("plus sign") << "+7" << 7.0;
    QTest::newRow("blanks") << " 1 + 2 \t* 3 " << 7.0;
    QTest::newRow("typographic") << QStringLiteral("8\u00f72\u00d73\u22121") << 11.0;
    QTest::newRow("other digits") << QStringLiteral("\u0664\u0662+1") << 43.0;
}

void tst_SumEvaluation::sumHasThisValue()
{
    QFETCH(QString, text);
    QFETCH(double, expected);

    const auto result = EvaluateSum(text);

    QVERIFY(result.has_value());
    QCOMPARE(*result, expected);
}

void tst_SumEvaluation::nothingComesOutOf_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("operator") << "*";
    QTest::newRow("sign") << "-";
    QTest::newRow("point") << ".";
    QTest::newRow("two points") << "1.2.3";
    QTest::newRow("operator last") << "2*";
    QTest::newRow("operator first") << "/2";
    QTest::newRow("two operators") << "2*/3";
    QTest::newRow("two numbers") << "2 3";
    QTest::newRow("number before parenthesis") << "2(3)";
    QTest::newRow("number after parenthesis") << "(2)3";
    QTest::newRow("empty parentheses") << "()";
    QTest::newRow("open parenthesis") << "(2+3";
    QTest::newRow("closed parenthesis") << "2+3)";
    QTest::newRow("wrong way round") << ")2(";
    QTest::newRow("division by zero") << "5/0";
    QTest::newRow("division by a sum of zero") << "5/(2-2)";
    QTest::newRow("zero by zero") << "0/0";
    QTest::newRow("letters") << "abc";
    QTest::newRow("exponent") << "1e5";
    QTest::newRow("group separator") << "2,500";
    QTest::newRow("overflow") << QString(400, '9');
    QTest::newRow("product overflows") << "1" + QString(300, '0') + "*1" + QString(300, '0');
    QTest::newRow("infinite by infinite") << QString(400, '9') + "/" + QString(400, '9');
    QTest::newRow("tiny fraction of no end") << "." + QString(400, '9');
}

void tst_SumEvaluation::nothingComesOutOf()
{
    QFETCH(QString, text);

    QVERIFY(!EvaluateSum(text).has_value());
}

void tst_SumEvaluation::localeGivesTheDecimalPoint()
{
    const QLocale german(QLocale::German, QLocale::Germany);

    QCOMPARE(EvaluateSum("1,5*2", german).value_or(0.0), 3.0);
    QCOMPARE(EvaluateSum("1.5*2", german).value_or(0.0), 3.0);
    QVERIFY(!EvaluateSum("1,5*2", QLocale::c()).has_value());
}

void tst_SumEvaluation::tenThousandParenthesesAreNoDanger()
{
    const QString open(10000, '(');
    const QString close(10000, ')');

    QCOMPARE(EvaluateSum(open + "7" + close).value_or(0.0), 7.0);
    QVERIFY(!EvaluateSum(open).has_value());
    QVERIFY(!EvaluateSum(open + "7").has_value());
    QVERIFY(!EvaluateSum("7" + close).has_value());
}

void tst_SumEvaluation::tenThousandSignsAndOperatorsAreNoDanger()
{
    QCOMPARE(EvaluateSum(QString(10000, '-') + "7").value_or(0.0), 7.0);
    QCOMPARE(EvaluateSum(QString("1+").repeated(10000) + "0").value_or(0.0), 10000.0);
}

void tst_SumEvaluation::valueIsRoundedAndClamped_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("whole") << 42.0 << 42;
    QTest::newRow("down") << 42.49 << 42;
    QTest::newRow("half up") << 42.5 << 43;
    QTest::newRow("half below zero") << -42.5 << -43;
    QTest::newRow("over the maximum") << 100.6 << 100;
    QTest::newRow("under the minimum") << -100.6 << -100;
    QTest::newRow("far over") << 1e300 << 100;
    QTest::newRow("far under") << -1e300 << -100;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 100;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << -100;
}

void tst_SumEvaluation::valueIsRoundedAndClamped()
{
    QFETCH(double, value);
    QFETCH(int, expected);

    QCOMPARE(RoundIntoRange(value, -100, 100), expected);
    QCOMPARE(RoundIntoRange(1e18, INT_MIN, INT_MAX), INT_MAX);
    QCOMPARE(RoundIntoRange(-1e18, INT_MIN, INT_MAX), INT_MIN);
}

NV_TEST_MAIN(tst_SumEvaluation)
#include "tst_SumEvaluation.moc"
