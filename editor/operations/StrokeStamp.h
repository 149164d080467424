#pragma once

#include <array>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include <QPoint>
#include <QPointF>

#include "BrushTip.h"

// The coverage of one stamp, 0 to 65535, row by row: what lies beside the longest fully covered run of a row
// is kept value by value, the run itself only by its ends. A hard stamp of any size is thus small.
struct StrokeStamp
{
    struct Row
    {
        // Columns: covered at all from left up to right, fully from solidLeft up to solidRight.
        int left = 0;
        int solidLeft = 0;
        int solidRight = 0;
        int right = 0;
        // Where the values of [left, solidLeft) start; those of [solidRight, right) follow.
        size_t values = 0;
    };

    int width = 0;
    std::vector<Row> rows;
    std::vector<quint16> values;

    qint64 Bytes() const;
};

// The stamps of a stroke, made from the tip when they are first needed and kept while there is room. A stamp
// lies on a grid of quarter pixels, or of whole pixels where it is so large and soft that nobody sees the
// difference.
class StampCache
{
public:
    struct Placed
    {
        std::shared_ptr<const StrokeStamp> stamp;
        // Of the stamp's first row and column.
        QPoint origin;
    };

    // The stamp of the tip with its centre at the position, which must be less than 10^8 from the origin.
    Placed Get(const BrushTip& tip, double diameter, const QPointF& center);
    qint64 Bytes() const;

private:
    static const int STEPS = 4;

    struct Family
    {
        int side = 0;
        // By quarters of a pixel down and to the right; the first one is there always.
        std::array<std::shared_ptr<const StrokeStamp>, STEPS * STEPS> stamps;
        bool coarse = false;
        qint64 bytes = 0;
        quint64 lastUse = 0;
    };
    // Diameter, hardness, angle: what changes within a stroke.
    using Key = std::tuple<double, double, double>;

    Family& find(const BrushTip& tip, double diameter);
    void trim(const Family& keep);

    std::map<Key, Family> m_families;
    Family* m_pLast = nullptr;
    Key m_lastKey;
    qint64 m_bytes = 0;
    quint64 m_uses = 0;
};
