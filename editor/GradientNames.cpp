#include "GradientNames.h"

#include <QSet>

#include <algorithm>
#include <vector>

namespace
{

// Beyond this the gradients in the middle are taken one for one.
const qint64 MaxComparisons = 1'000'000;

struct Range
{
    int from;
    int to;

    int Size() const { return to - from; }
};

class Matcher
{
public:
    Matcher(const QVector<QGradientStops>& stops, const QVector<NamedGradient>& old)
        : m_stops(stops), m_old(old), m_match(size_t(stops.size()), -1)
    {
    }

    // For each gradient the one of the old list that it was, or -1.
    const std::vector<int>& Match()
    {
        Range fresh = {0, m_stops.size()};
        Range old = {0, m_old.size()};
        while (fresh.Size() > 0 && old.Size() > 0 && IsSame(fresh.from, old.from))
            m_match[size_t(fresh.from++)] = old.from++;
        while (fresh.Size() > 0 && old.Size() > 0 && IsSame(fresh.to - 1, old.to - 1))
            m_match[size_t(--fresh.to)] = --old.to;
        if (qint64(fresh.Size()) * old.Size() <= MaxComparisons)
            MatchLongest(fresh, old);
        else
            MatchPlaces(fresh, old);
        return m_match;
    }

private:
    bool IsSame(int fresh, int old) const { return m_stops.at(fresh) == m_old.at(old).stops; }

    void MatchPlaces(Range fresh, Range old)
    {
        for (; fresh.Size() > 0 && old.Size() > 0; ++fresh.from, ++old.from)
            m_match[size_t(fresh.from)] = old.from;
    }

    // The longest row of gradients that are in both lists; what lies between them is matched by place.
    void MatchLongest(const Range& fresh, const Range& old)
    {
        const size_t width = size_t(old.Size()) + 1;
        std::vector<int> lengths((size_t(fresh.Size()) + 1) * width, 0);
        const auto length = [&](int i, int j) -> int&
        { return lengths[size_t(i - fresh.from) * width + size_t(j - old.from)]; };
        for (int i = fresh.to - 1; i >= fresh.from; --i)
        {
            for (int j = old.to - 1; j >= old.from; --j)
                length(i, j) =
                    IsSame(i, j) ? length(i + 1, j + 1) + 1 : std::max(length(i + 1, j), length(i, j + 1));
        }
        Range gap = {fresh.from, fresh.from};
        Range oldGap = {old.from, old.from};
        while (gap.to < fresh.to && oldGap.to < old.to)
        {
            if (IsSame(gap.to, oldGap.to))
            {
                MatchPlaces(gap, oldGap);
                m_match[size_t(gap.to)] = oldGap.to;
                gap = {gap.to + 1, gap.to + 1};
                oldGap = {oldGap.to + 1, oldGap.to + 1};
            }
            else if (length(gap.to + 1, oldGap.to) >= length(gap.to, oldGap.to + 1))
                ++gap.to;
            else
                ++oldGap.to;
        }
        MatchPlaces({gap.from, fresh.to}, {oldGap.from, old.to});
    }

    const QVector<QGradientStops>& m_stops;
    const QVector<NamedGradient>& m_old;
    std::vector<int> m_match;
};

} // namespace

QVector<NamedGradient> WithNames(const QVector<QGradientStops>& stops, const QVector<NamedGradient>& old,
                                 const QString& pattern)
{
    Matcher matcher(stops, old);
    const std::vector<int>& match = matcher.Match();
    QVector<NamedGradient> named;
    QSet<QString> taken;
    for (int i = 0; i < stops.size(); ++i)
    {
        const int from = match[size_t(i)];
        named.append({from >= 0 ? old.at(from).name : QString(), stops.at(i)});
        taken += named.constLast().name;
    }
    int number = 1;
    for (NamedGradient& gradient : named)
    {
        while (gradient.name.isEmpty() && taken.contains(pattern.arg(number)))
            ++number;
        if (gradient.name.isEmpty())
            gradient.name = pattern.arg(number++);
    }
    return named;
}
