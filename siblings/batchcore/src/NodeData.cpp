// The order of siblings. Nothing here makes a string: a scan of a large folder compares millions of times.

#include "KXBatchInputModel.h"
#include "NodeOrder_p.h"

namespace
{

using NodeData = KXBatchInputModel::NodeData;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// The name has the smallest number of all roles.
QStringView nameOf(const NodeData& data)
{
    const auto first = data.roles.constBegin();
    if (first == data.roles.constEnd() || first.key() != Qt::DisplayRole ||
        first->userType() != QMetaType::QString)
        return TextOf(data, Qt::DisplayRole);
    return *static_cast<const QString*>(first->constData());
}

// The folded character at `i`, which is moved behind it.
uint nextFolded(QStringView text, qsizetype& i)
{
    const QChar c = text[i++];
    if (c.unicode() < 0x80)
        return c >= QLatin1Char('A') && c <= QLatin1Char('Z') ? c.unicode() + 0x20u : c.unicode();
    if (c.isHighSurrogate() && i < text.size() && text[i].isLowSurrogate())
        return QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[i++]));
    return QChar::toCaseFolded(uint(c.unicode()));
}

// The run of digits at `i` without its leading zeros; `i` is moved behind it.
QStringView nextNumber(QStringView text, qsizetype& i)
{
    while (i < text.size() && text[i] == QLatin1Char('0'))
        ++i;
    const qsizetype from = i;
    while (i < text.size() && isDigit(text[i]))
        ++i;
    return text.mid(from, i - from);
}

// Numbers of any length: the longer is the greater one.
int compareNumbers(QStringView a, QStringView b)
{
    return a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a.compare(b);
}

// What both begin with says nothing, up to a number or a pair of surrogates that may go on differently.
qsizetype startOfDifference(QStringView a, QStringView b)
{
    const qsizetype size = qMin(a.size(), b.size());
    qsizetype i = 0;
    while (i < size && a[i] == b[i])
        ++i;
    while (i > 0 && isDigit(a[i - 1]))
        --i;
    return i > 0 && a[i - 1].isHighSurrogate() ? i - 1 : i;
}

int compareNatural(QStringView a, QStringView b)
{
    qsizetype i = startOfDifference(a, b);
    qsizetype j = i;
    while (i < a.size() && j < b.size())
    {
        // Digits of other scripts are characters like any: they do not lie in one range, and the order would
        // contradict itself.
        if (isDigit(a[i]) && isDigit(b[j]))
        {
            if (const int byNumber = compareNumbers(nextNumber(a, i), nextNumber(b, j)))
                return byNumber;
            continue;
        }
        const uint one = nextFolded(a, i);
        const uint other = nextFolded(b, j);
        if (one != other)
            return one < other ? -1 : 1;
    }
    return int(i < a.size()) - int(j < b.size());
}

int compareTexts(QStringView a, QStringView b)
{
    const int natural = compareNatural(a, b);
    return natural ? natural : a.compare(b);
}

} // namespace

QStringView TextOf(const NodeData& data, int role)
{
    const auto at = data.roles.constFind(role);
    if (at == data.roles.constEnd() || at->userType() != QMetaType::QString)
        return {};
    return *static_cast<const QString*>(at->constData());
}

bool IsFile(const NodeData& data)
{
    const auto at = data.roles.constFind(KXBatchInputModel::NodeIsFileRole);
    return at != data.roles.constEnd() && at->toInt() != 0;
}

int CompareNodes(const NodeData& a, const NodeData& b)
{
    return CompareNodes(a, IsFile(a), b);
}

int CompareNodes(const NodeData& a, bool isFile, const NodeData& b)
{
    if (const int byKind = int(isFile) - int(IsFile(b)))
        return byKind;
    if (const int byName = compareTexts(nameOf(a), nameOf(b)))
        return byName;
    return compareTexts(TextOf(a, KXBatchInputModel::NodePathRole),
                        TextOf(b, KXBatchInputModel::NodePathRole));
}

bool KXBatchInputModel::NodeData::operator<(const NodeData& other) const
{
    return CompareNodes(*this, other) < 0;
}

bool KXBatchInputModel::NodeData::operator<=(const NodeData& other) const
{
    return CompareNodes(*this, other) <= 0;
}

bool KXBatchInputModel::NodeData::operator>(const NodeData& other) const
{
    return CompareNodes(*this, other) > 0;
}

bool KXBatchInputModel::NodeData::operator!=(const NodeData& other) const
{
    return CompareNodes(*this, other) != 0;
}
