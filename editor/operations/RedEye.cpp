#include "RedEye.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

#include "TileEdit.h"

namespace
{
const double LOWEST_LEVEL = 0.01;
const double HIGHEST_LEVEL = 10.0;
// How far from the point the pupil may begin.
const int CATCH_RADIUS = 12;
// How far around the point is looked at, at first and at most.
const int FIRST_REACH = 64;
const int LAST_REACH = 512;
// Red must stand out by this much in an opaque pixel: in the dark everything is red by chance.
const int LEAST_EXCESS = 12;

// How strong the other colours are. Blue counts less than green: the red of a pupil leans to pink, that of
// skin and of brown eyes to orange.
int OtherColors(QRgb pixel)
{
    return std::max(qGreen(pixel), (qGreen(pixel) + qBlue(pixel)) / 2);
}

// Which pixels are red enough; works on premultiplied pixels as it stands, since only shares are compared.
class Redness
{
public:
    // The part of a red pixel's red that stands out, at least.
    explicit Redness(double level) : m_least(1.0 / (1.0 + level)) { }

    bool IsRed(QRgb pixel) const
    {
        const int excess = qRed(pixel) - OtherColors(pixel);
        return excess * 255 >= LEAST_EXCESS * std::max(1, qAlpha(pixel)) && excess >= m_least * qRed(pixel);
    }

    // How much of its red a pixel within the pupil loses: all of what tends to red, but for the warm light of
    // the highlight.
    double DegreeInside(QRgb pixel) const { return degree(pixel, m_least / 8.0, m_least / 2.0); }

    // The same for one just outside, which the pupil covers in part. Where blue is no less than green that is
    // sure: neither skin nor a brown eye is like that.
    double DegreeAround(QRgb pixel) const
    {
        return qBlue(pixel) >= qGreen(pixel) ? 2.0 * degree(pixel, m_least / 8.0, m_least / 2.0)
                                             : degree(pixel, m_least / 2.0, m_least);
    }

private:
    static double degree(QRgb pixel, double none, double all)
    {
        const double share = double(qRed(pixel) - OtherColors(pixel)) / std::max(1, qRed(pixel));
        return std::clamp((share - none) / (all - none), 0.0, 1.0);
    }

    double m_least;
};

const QRgb* RowOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// The red pixels of an area.
cv::Mat FindRed(const QImage& layer, const QRect& area, const Redness& redness, const QImage& selection)
{
    cv::Mat red = cv::Mat::zeros(area.height(), area.width(), CV_8U);
    for (int y = 0; y < area.height(); ++y)
    {
        const QRgb* row = RowOf(layer, area.top() + y) + area.left();
        const uchar* selected =
            selection.isNull() ? nullptr : selection.constScanLine(area.top() + y) + area.left();
        uchar* marks = red.ptr<uchar>(y);
        for (int x = 0; x < area.width(); ++x)
            marks[x] = (selected == nullptr || selected[x] != 0) && redness.IsRed(row[x]) ? 255 : 0;
    }
    return red;
}

// The marked pixel nearest to the point; false when none is near.
bool FindNearest(const cv::Mat& marks, const cv::Point& point, cv::Point& nearest)
{
    int least = CATCH_RADIUS * CATCH_RADIUS + 1;
    for (int y = std::max(0, point.y - CATCH_RADIUS); y < std::min(marks.rows, point.y + CATCH_RADIUS + 1);
         ++y)
    {
        for (int x = std::max(0, point.x - CATCH_RADIUS);
             x < std::min(marks.cols, point.x + CATCH_RADIUS + 1); ++x)
        {
            const int distance = (x - point.x) * (x - point.x) + (y - point.y) * (y - point.y);
            if (marks.at<uchar>(y, x) == 0 || distance >= least)
                continue;
            least = distance;
            nearest = cv::Point(x, y);
        }
    }
    return least <= CATCH_RADIUS * CATCH_RADIUS;
}

// How far each pixel of an area belongs to the pupil, 0 to 255; no marks when there is no pupil.
struct Pupil
{
    QRect area;
    cv::Mat marks;
};

// What the pupil encloses belongs to it: the highlight has a rim that is red as well.
cv::Mat WithoutHoles(const cv::Mat& marks)
{
    cv::Mat outside;
    cv::copyMakeBorder(marks, outside, 1, 1, 1, 1, cv::BORDER_CONSTANT, cv::Scalar(0));
    cv::floodFill(outside, cv::Point(0, 0), cv::Scalar(128), nullptr, 0, 0, 4);
    cv::Mat filled;
    cv::compare(outside(cv::Rect(1, 1, marks.cols, marks.rows)), 128, filled, cv::CMP_NE);
    return filled;
}

bool GoesOnBeyond(const QRect& red, const QRect& area, const QRect& layer)
{
    const bool left = red.left() == area.left();
    const bool right = red.right() == area.right();
    const bool top = red.top() == area.top();
    const bool bottom = red.bottom() == area.bottom();
    return (left && area.left() > layer.left()) || (right && area.right() < layer.right()) ||
        (top && area.top() > layer.top()) || (bottom && area.bottom() < layer.bottom()) || (left && right) ||
        (top && bottom);
}

// Looks for the pupil within the area. True when that settles it, false when the red goes on beyond it.
bool FindWithin(const QImage& layer, const QPoint& point, const Redness& redness, const QImage& selection,
                Pupil& pupil)
{
    const QRect& area = pupil.area;
    const cv::Mat red = FindRed(layer, area, redness, selection);
    cv::Point seed;
    if (!FindNearest(red, cv::Point(point.x() - area.left(), point.y() - area.top()), seed))
        return true;
    // Grain must not take a pupil apart.
    cv::Mat joined;
    cv::morphologyEx(red, joined, cv::MORPH_CLOSE, cv::Mat::ones(3, 3, CV_8U));
    cv::Rect box;
    cv::floodFill(joined, seed, cv::Scalar(128), &box, 0, 0, 8);
    if (GoesOnBeyond(QRect(area.left() + box.x, area.top() + box.y, box.width, box.height), area,
                     layer.rect()))
        return false;
    pupil.marks = WithoutHoles(joined == 128);
    return true;
}

Pupil FindPupil(const QImage& layer, const QPoint& point, const Redness& redness, const QImage& selection)
{
    Pupil pupil;
    for (int reach = FIRST_REACH; reach <= LAST_REACH; reach *= 2)
    {
        pupil.area = QRect(point - QPoint(reach, reach), point + QPoint(reach, reach)) & layer.rect();
        if (FindWithin(layer, point, redness, selection, pupil) || pupil.area == layer.rect())
            break;
    }
    return pupil;
}

// The pixels along the edge are a mixture of the pupil and what is around it.
void AddRim(Pupil& pupil)
{
    cv::Mat soft;
    cv::GaussianBlur(pupil.marks, soft, cv::Size(5, 5), 0.0, 0.0, cv::BORDER_CONSTANT);
    cv::max(pupil.marks, soft, pupil.marks);
}

int Mixed(int from, int to, double part)
{
    return from + int(std::lround((to - from) * part));
}

// The pixel with the gray of its green and blue in place of its colour; in part, and just outside the pupil
// in place of its red alone. The mark tells how far it belongs to the pupil, 255 inside.
QRgb WithoutRed(QRgb pixel, uchar mark, const Redness& redness, double selected)
{
    const int gray = (qGreen(pixel) + qBlue(pixel)) / 2;
    if (mark < 255)
    {
        const double part = std::min(1.0, mark / 255.0 * redness.DegreeAround(pixel)) * selected;
        return qRgba(Mixed(qRed(pixel), gray, part), qGreen(pixel), qBlue(pixel), qAlpha(pixel));
    }
    const double part = redness.DegreeInside(pixel) * selected;
    return qRgba(Mixed(qRed(pixel), gray, part), Mixed(qGreen(pixel), gray, part),
                 Mixed(qBlue(pixel), gray, part), qAlpha(pixel));
}

bool FitsAsSelection(const QImage& selection, const QSize& size)
{
    return selection.isNull() ||
        (selection.size() == size && selection.format() == QImage::Format_Grayscale8);
}
} // namespace

QVector<SavedTile> RemoveRedEye(QImage& layer, const QPoint& point, double level, const QImage& selection)
{
    // Also false for a level that is no number.
    const bool isLevel = level >= LOWEST_LEVEL && level <= HIGHEST_LEVEL;
    if (!isLevel || layer.isNull() || layer.format() != QImage::Format_ARGB32_Premultiplied ||
        !layer.rect().contains(point) || !FitsAsSelection(selection, layer.size()))
        return {};
    const Redness redness(level);
    Pupil pupil = FindPupil(layer, point, redness, selection);
    if (pupil.marks.empty())
        return {};
    AddRim(pupil);
    const auto edit = [&](const QPoint& start, const QRgb* before, QRgb* after, int count)
    {
        const uchar* marks =
            pupil.marks.ptr<uchar>(start.y() - pupil.area.top()) + start.x() - pupil.area.left();
        const uchar* selected = selection.isNull() ? nullptr : selection.constScanLine(start.y()) + start.x();
        for (int i = 0; i < count; ++i)
            after[i] =
                WithoutRed(before[i], marks[i], redness, selected == nullptr ? 1.0 : selected[i] / 255.0);
        return true;
    };
    return EditTiles(layer, pupil.area, edit);
}
