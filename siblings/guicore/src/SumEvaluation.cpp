#include "SumEvaluation.h"

#include <QVector>

#include <cmath>

namespace
{

enum class Operator
{
    Open,
    Add,
    Subtract,
    Multiply,
    Divide,
    Negate,
    Plus
};

int Precedence(Operator op)
{
    switch (op)
    {
    case Operator::Open:
        return 0;
    case Operator::Add:
    case Operator::Subtract:
        return 1;
    case Operator::Multiply:
    case Operator::Divide:
        return 2;
    case Operator::Negate:
    case Operator::Plus:
        return 3;
    }
    return 0;
}

// Operands and operators on two stacks of their own instead of the call stack, which ten thousand parentheses
// would use up.
class Evaluator
{
public:
    explicit Evaluator(const QLocale& locale) : m_decimalPoint(locale.decimalPoint()) { }

    std::optional<double> Run(const QString& text)
    {
        int i = 0;
        while (i < text.size())
        {
            const QChar c = text.at(i);
            if (c.isSpace())
            {
                ++i;
            }
            else if (c.isDigit() || IsPoint(c))
            {
                if (!m_operandExpected || !ReadNumber(text, i))
                {
                    return std::nullopt;
                }
            }
            else if (!TakeSymbol(c))
            {
                return std::nullopt;
            }
            else
            {
                ++i;
            }
        }
        return Finish();
    }

private:
    bool IsPoint(QChar c) const { return c == QLatin1Char('.') || c == m_decimalPoint; }

    bool ReadNumber(const QString& text, int& i)
    {
        double digits = 0.0;
        double scale = 1.0;
        bool any = false;
        bool fraction = false;
        for (; i < text.size() && (text.at(i).isDigit() || IsPoint(text.at(i))); ++i)
        {
            if (IsPoint(text.at(i)))
            {
                if (fraction)
                {
                    return false;
                }
                fraction = true;
                continue;
            }
            digits = digits * 10.0 + text.at(i).digitValue();
            scale *= fraction ? 10.0 : 1.0;
            any = true;
        }
        m_values.append(digits / scale);
        m_operandExpected = false;
        return any;
    }

    bool TakeSymbol(QChar c)
    {
        switch (c.unicode())
        {
        case u'(':
            m_operators.append(Operator::Open);
            return m_operandExpected;
        case u')':
            return !m_operandExpected && CloseParenthesis();
        case u'+':
            return m_operandExpected ? TakeSign(Operator::Plus) : TakeBinary(Operator::Add);
        case u'-':
        case u'\u2212':
            return m_operandExpected ? TakeSign(Operator::Negate) : TakeBinary(Operator::Subtract);
        case u'*':
        case u'\u00d7':
            return TakeBinary(Operator::Multiply);
        case u'/':
        case u'\u00f7':
            return TakeBinary(Operator::Divide);
        default:
            return false;
        }
    }

    bool TakeSign(Operator op)
    {
        m_operators.append(op);
        return true;
    }

    bool TakeBinary(Operator op)
    {
        if (m_operandExpected)
        {
            return false;
        }
        while (!m_operators.isEmpty() && Precedence(m_operators.last()) >= Precedence(op))
        {
            if (!Apply(m_operators.takeLast()))
            {
                return false;
            }
        }
        m_operators.append(op);
        m_operandExpected = true;
        return true;
    }

    bool CloseParenthesis()
    {
        while (!m_operators.isEmpty())
        {
            const Operator op = m_operators.takeLast();
            if (op == Operator::Open)
            {
                return true;
            }
            if (!Apply(op))
            {
                return false;
            }
        }
        return false;
    }

    bool Apply(Operator op)
    {
        const double right = m_values.takeLast();
        if (op == Operator::Negate || op == Operator::Plus)
        {
            m_values.append(op == Operator::Negate ? -right : right);
            return true;
        }
        const double left = m_values.takeLast();
        switch (op)
        {
        case Operator::Add:
            m_values.append(left + right);
            return true;
        case Operator::Subtract:
            m_values.append(left - right);
            return true;
        case Operator::Multiply:
            m_values.append(left * right);
            return true;
        default:
            m_values.append(right == 0.0 ? 0.0 : left / right);
            return right != 0.0;
        }
    }

    std::optional<double> Finish()
    {
        if (m_operandExpected)
        {
            return std::nullopt;
        }
        while (!m_operators.isEmpty())
        {
            const Operator op = m_operators.takeLast();
            if (op == Operator::Open || !Apply(op))
            {
                return std::nullopt;
            }
        }
        if (m_values.size() != 1 || !std::isfinite(m_values.first()))
        {
            return std::nullopt;
        }
        return m_values.first();
    }

    QChar m_decimalPoint;
    QVector<double> m_values;
    QVector<Operator> m_operators;
    bool m_operandExpected = true;
};

} // namespace

std::optional<double> EvaluateSum(const QString& text, const QLocale& locale)
{
    return Evaluator(locale).Run(text);
}

int RoundIntoRange(double value, int minimum, int maximum)
{
    const double rounded = std::round(value);
    if (!(rounded > minimum))
    {
        return minimum;
    }
    return rounded < maximum ? static_cast<int>(rounded) : maximum;
}
