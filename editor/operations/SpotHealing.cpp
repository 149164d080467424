#include "SpotHealing.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

namespace
{
// The widest spot that is healed in one piece, and about how wide the pieces of larger ones are.
const int WHOLE_SIDE = 160;
const int PIECE_SIDE = 128;
// Pieces of what is narrower are as long as that many times its half width, but no shorter than this.
const double SIDE_BY_DEPTH = 8.0;
const int SHORT_SIDE = 24;
// How much of what borders on a piece decides what goes with it.
const int RING = 4;
// How far from a piece its like is looked for first, by its size.
const int REACH = 5;
// The search is done at a scale at which it covers about this many pixels by this many.
const double SEARCH_SIDE = 200.0;
// The side of the picture, at most, in which the surroundings flow together.
const double FLOW_SIDE = 192.0;
const double FLOW_RADIUS = 4.0;
// What the inside counts against the ring when pieces are compared: as it has flowed in, and as it has come
// out at half the scale.
const double FLOW_WEIGHT = 0.25;
const double DRAFT_WEIGHT = 1.0;
// How many times larger than its ring the inside of a large piece is.
const double INSIDE_OF_LARGE = 8.0;
// What a piece must be better by, in squared levels, for each width of a piece that it is farther away.
const double DISTANCE_COST = 3.0;
// How much of a pixel must be known when the picture is made smaller.
const double LEAST_SHARE = 0.25;
const int SMOOTHING_STEPS = 12;

const uchar KNOWN = 255;

cv::Mat MatOf(const QImage& image, int type)
{
    return cv::Mat(image.height(), image.width(), type, const_cast<uchar*>(image.constBits()),
                   size_t(image.bytesPerLine()));
}

cv::Rect Grown(const cv::Rect& rect, int margin, const cv::Size& bounds)
{
    const cv::Rect grown(rect.x - margin, rect.y - margin, rect.width + 2 * margin, rect.height + 2 * margin);
    return grown & cv::Rect(cv::Point(0, 0), bounds);
}

cv::Mat Repeated(const cv::Mat& channel, int count)
{
    cv::Mat repeated;
    cv::merge(std::vector<cv::Mat>(size_t(count), channel), repeated);
    return repeated;
}

// 0 to 1 where the mask is 0 to 255.
cv::Mat Share(const cv::Mat& mask)
{
    cv::Mat share;
    mask.convertTo(share, CV_32F, 1.0 / 255.0);
    return share;
}

// The values by their share of what remains once each has its weight; 0 where nothing weighs.
cv::Mat Normalized(const cv::Mat& weighed, const cv::Mat& weights)
{
    cv::Mat safe;
    cv::max(weights, 1e-6, safe);
    cv::Mat values;
    cv::divide(weighed, Repeated(safe, weighed.channels()), values);
    return values;
}

// Makes the picture smaller, with only the known pixels counting.
void Reduce(const cv::Mat& values, const cv::Mat& share, const cv::Size& size, cv::Mat& smallValues,
            cv::Mat& smallShare)
{
    cv::Mat weighed;
    cv::multiply(values, Repeated(share, values.channels()), weighed);
    cv::resize(weighed, weighed, size, 0.0, 0.0, cv::INTER_AREA);
    cv::resize(share, smallShare, size, 0.0, 0.0, cv::INTER_AREA);
    smallValues = Normalized(weighed, smallShare);
}

// The picture at a smaller scale, and where too little of it is known there.
struct Smaller
{
    Smaller(const cv::Mat& original, const cv::Mat& known, double scale)
    {
        const cv::Size size(std::max(1, cvRound(original.cols * scale)),
                            std::max(1, cvRound(original.rows * scale)));
        // Sixteen bits, since little of a pixel may be known.
        cv::Mat values;
        cv::Mat share = Share(known);
        original.convertTo(values, CV_16U, 257.0);
        values.setTo(cv::Scalar::all(0.0), known == 0);
        cv::resize(values, values, size, 0.0, 0.0, cv::INTER_AREA);
        cv::resize(share, share, size, 0.0, 0.0, cv::INTER_AREA);
        values.convertTo(values, CV_32F, 1.0 / 257.0);
        Normalized(values, share).convertTo(pixels, CV_8U);
        double most = 0.0;
        cv::minMaxLoc(share, nullptr, &most);
        hole = share < std::min(LEAST_SHARE, most);
    }

    cv::Mat pixels;
    cv::Mat hole;
};

// The library lets nothing flow in from the outermost pixels, and a long way takes it beyond the values that
// there are.
void FlowInto(cv::Mat& channel, const cv::Mat& hole)
{
    double least = 0.0;
    double most = 255.0;
    cv::minMaxLoc(channel, &least, &most, nullptr, nullptr, hole == 0);
    const int margin = cvCeil(FLOW_RADIUS);
    cv::Mat wide;
    cv::Mat wideHole;
    cv::copyMakeBorder(channel, wide, margin, margin, margin, margin, cv::BORDER_REPLICATE);
    cv::copyMakeBorder(hole, wideHole, margin, margin, margin, margin, cv::BORDER_REPLICATE);
    cv::inpaint(wide, wideHole, wide, FLOW_RADIUS, cv::INPAINT_TELEA);
    const cv::Mat flown = wide(cv::Rect(cv::Point(margin, margin), channel.size()));
    cv::max(flown, least, channel);
    cv::min(channel, most, channel);
}

// Lets each unknown value become the mean of its four neighbours, coarse scales first: the surface that a
// soap film would take across the hole.
void SpanFilm(cv::Mat& values, const cv::Mat& share)
{
    const cv::Mat hole = share < 0.5f;
    if (cv::countNonZero(hole) == 0)
        return;
    const cv::Size half((values.cols + 1) / 2, (values.rows + 1) / 2);
    if (half == values.size())
        return;
    cv::Mat coarse;
    cv::Mat coarseShare;
    Reduce(values, share, half, coarse, coarseShare);
    cv::Mat coarseKnown;
    cv::Mat(coarseShare > 1e-3f).convertTo(coarseKnown, CV_32F, 1.0 / 255.0);
    SpanFilm(coarse, coarseKnown);
    cv::Mat fine;
    cv::resize(coarse, fine, values.size(), 0.0, 0.0, cv::INTER_LINEAR);
    fine.copyTo(values, hole);
    const cv::Mat cross = (cv::Mat_<float>(3, 3) << 0, 0.25f, 0, 0.25f, 0, 0.25f, 0, 0.25f, 0);
    for (int i = 0; i < SMOOTHING_STEPS; ++i)
    {
        cv::filter2D(values, fine, -1, cross, cv::Point(-1, -1), 0.0, cv::BORDER_REPLICATE);
        fine.copyTo(values, hole);
    }
}

// How well a piece goes with each place of an area, and where it must not come from.
class Search
{
public:
    // The area and what of it is marked; the piece, and how much each of its pixels counts.
    Search(const cv::Mat& area, const cv::Mat& marked, const cv::Mat& piece, const cv::Mat& weights)
    {
        if (piece.cols > area.cols || piece.rows > area.rows)
            return;
        cv::matchTemplate(area, piece, m_cost, cv::TM_SQDIFF, weights);
        m_cost /= std::max(1e-6, cv::sum(weights)[0]);
        cv::Mat used;
        cv::Mat(weights > 0.0f).convertTo(used, CV_32F, 1.0 / 255.0);
        cv::matchTemplate(Share(marked), used, m_spoiled, cv::TM_CCORR);
    }

    // The best place, if any is clean; places far from the home are somewhat worse. A step is the cost of a
    // pixel.
    bool Best(const cv::Point& home, double step, cv::Point& best) const
    {
        double lowest = HUGE_VAL;
        for (int y = 0; y < m_cost.rows; ++y)
        {
            const float* cost = m_cost.ptr<float>(y);
            const float* spoiled = m_spoiled.ptr<float>(y);
            for (int x = 0; x < m_cost.cols; ++x)
            {
                const double sum = double(cost[x]) + step * std::hypot(x - home.x, y - home.y);
                if (spoiled[x] > 0.01f || sum >= lowest)
                    continue;
                lowest = sum;
                best = cv::Point(x, y);
            }
        }
        return lowest < HUGE_VAL;
    }

private:
    cv::Mat m_cost;
    // How many marked pixels the piece would get there.
    cv::Mat m_spoiled;
};

// A spot with its surroundings, on the way to being healed.
class Healer
{
public:
    // Four channels; what is marked is not 0 in the mask.
    Healer(const cv::Mat& pixels, const cv::Mat& mask)
        : m_original(pixels), m_marked(mask != 0), m_known(mask == 0)
    {
        m_pixels = pixels.clone();
    }

    bool Run(const std::atomic<bool>& cancelled)
    {
        const cv::Rect box = cv::boundingRect(m_marked);
        if (box.empty() || cancelled)
            return !cancelled;
        if (std::max(box.width, box.height) <= WHOLE_SIDE)
            letFlow();
        else if (!draft(cancelled))
            return false;
        for (const cv::Rect& piece : pieces())
        {
            if (cancelled)
                return false;
            heal(piece, cancelled);
        }
        return !cancelled;
    }

    const cv::Mat& Pixels() const { return m_pixels; }

private:
    void letFlow();
    void takeInside(const cv::Mat& small);
    bool draft(const std::atomic<bool>& cancelled);
    std::vector<cv::Rect> cells(const cv::Mat& depth) const;
    std::vector<cv::Rect> pieces() const;
    void heal(const cv::Rect& cell, const std::atomic<bool>& cancelled);
    cv::Mat weightsOf(const cv::Rect& part, const cv::Mat& hole) const;
    bool findSource(const cv::Rect& part, const cv::Mat& weights, const cv::Rect& area,
                    cv::Point& source) const;
    bool refine(const cv::Rect& part, const cv::Mat& weights, int margin, cv::Point& source) const;
    void transfer(const cv::Rect& part, const cv::Mat& hole, const cv::Mat& source);

    cv::Mat m_original;
    cv::Mat m_marked;
    // What is not marked, and what has been healed since.
    cv::Mat m_known;
    cv::Mat m_pixels;
    // What stands in where there is no source: the picture, enlarged from a smaller one without the spot.
    cv::Mat m_smooth;
    double m_insideWeight = FLOW_WEIGHT;
};

// The surroundings flow into the spot, at a scale that keeps it quick: this shows where the light and the
// larger forms go, and stands in where nothing better is found.
void Healer::letFlow()
{
    const double scale = std::min(1.0, FLOW_SIDE / std::max(m_pixels.cols, m_pixels.rows));
    const Smaller smaller(m_original, m_known, scale);
    std::vector<cv::Mat> channels;
    cv::split(smaller.pixels, channels);
    if (cv::countNonZero(smaller.hole) > 0)
    {
        for (cv::Mat& channel : channels)
            FlowInto(channel, smaller.hole);
    }
    cv::Mat flown;
    cv::merge(channels, flown);
    takeInside(flown);
}

// A large spot is healed at half the scale first, so that its pieces are parts of one picture.
bool Healer::draft(const std::atomic<bool>& cancelled)
{
    const Smaller smaller(m_original, m_known, 0.5);
    Healer half(smaller.pixels, smaller.hole);
    if (!half.Run(cancelled))
        return false;
    takeInside(half.Pixels());
    m_insideWeight = DRAFT_WEIGHT;
    return true;
}

void Healer::takeInside(const cv::Mat& small)
{
    cv::resize(small, m_smooth, m_pixels.size(), 0.0, 0.0, cv::INTER_LINEAR);
    m_smooth.copyTo(m_pixels, m_marked);
}

// Cuts the box into cells of about that side.
void Cut(const cv::Rect& box, int side, std::vector<cv::Rect>& cells)
{
    const int columns = (box.width + side - 1) / side;
    const int rows = (box.height + side - 1) / side;
    for (int i = 0; i < columns * rows; ++i)
    {
        const int column = i % columns;
        const int row = i / columns;
        const cv::Point first(box.width * column / columns, box.height * row / rows);
        const cv::Point last(box.width * (column + 1) / columns, box.height * (row + 1) / rows);
        cells.emplace_back(box.tl() + first, box.tl() + last);
    }
}

// What lies close together is cut as one: a compact spot not at all, a large one into large pieces, and a
// scratch into short ones, which find their like more easily than the whole.
std::vector<cv::Rect> Healer::cells(const cv::Mat& depth) const
{
    cv::Mat joined;
    cv::dilate(m_marked, joined, cv::Mat::ones(2 * RING + 1, 2 * RING + 1, CV_8U));
    cv::Mat labels;
    cv::Mat boxes;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(joined, labels, boxes, centers);
    std::vector<cv::Rect> cells;
    for (int i = 1; i < count; ++i)
    {
        const int* stats = boxes.ptr<int>(i);
        const cv::Rect box(stats[cv::CC_STAT_LEFT], stats[cv::CC_STAT_TOP], stats[cv::CC_STAT_WIDTH],
                           stats[cv::CC_STAT_HEIGHT]);
        double thickest = 0.0;
        cv::minMaxLoc(depth(box), nullptr, &thickest, nullptr, nullptr, labels(box) == i);
        const int side = std::clamp(cvRound(SIDE_BY_DEPTH * thickest), SHORT_SIDE, PIECE_SIDE);
        const bool isCompact = side == PIECE_SIDE ? std::max(box.width, box.height) <= WHOLE_SIDE
                                                  : std::max(box.width, box.height) <= 2 * side;
        Cut(box, isCompact ? WHOLE_SIDE : side, cells);
    }
    return cells;
}

// The rim of the spot comes first, so that what borders on a piece is known on one side at least.
std::vector<cv::Rect> Healer::pieces() const
{
    cv::Mat depth;
    cv::distanceTransform(m_marked, depth, cv::DIST_L2, 3);
    std::vector<std::pair<double, cv::Rect>> order;
    for (const cv::Rect& cell : cells(depth))
    {
        if (cv::countNonZero(m_marked(cell)) > 0)
            order.emplace_back(cv::mean(depth(cell), m_marked(cell))[0], cell);
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<cv::Rect> sorted;
    sorted.reserve(order.size());
    for (const auto& item : order)
        sorted.push_back(item.second);
    return sorted;
}

void Healer::heal(const cv::Rect& cell, const std::atomic<bool>& cancelled)
{
    cv::Rect spot = cv::boundingRect(m_known(cell) == 0);
    if (spot.empty())
        return;
    spot += cell.tl();
    const cv::Rect part = Grown(spot, RING, m_pixels.size());
    cv::Mat hole = cv::Mat::zeros(part.size(), CV_8U);
    cv::Mat(m_known(spot) == 0).copyTo(hole(spot - part.tl()));
    const cv::Mat weights = weightsOf(part, hole);
    const cv::Rect near = Grown(part, REACH * std::max(part.width, part.height), m_pixels.size());
    const cv::Rect everywhere(cv::Point(0, 0), m_pixels.size());
    cv::Point source;
    bool found = findSource(part, weights, near, source);
    if (!found && near != everywhere && !cancelled)
        found = findSource(part, weights, everywhere, source);
    transfer(part, hole, found ? m_original(cv::Rect(source, part.size())) : m_smooth(part));
    m_known(part).setTo(KNOWN, hole);
}

// The ring counts fully. What the inside is to be like is only a guess, which is of use where the inside is
// far from the ring, as in a large piece.
cv::Mat Healer::weightsOf(const cv::Rect& part, const cv::Mat& hole) const
{
    cv::Mat weights = Share(m_known(part));
    const double ring = std::max(1.0, cv::sum(weights)[0]);
    const double inside = std::max(1, cv::countNonZero(hole));
    const double use = std::min(1.0, inside / (INSIDE_OF_LARGE * ring));
    weights.setTo(m_insideWeight * use * ring / inside, hole);
    return weights;
}

// The place in the area whose pixels go best with the part, first at a scale that keeps it quick.
bool Healer::findSource(const cv::Rect& part, const cv::Mat& weights, const cv::Rect& area,
                        cv::Point& source) const
{
    const int step = std::max(1, cvCeil(std::sqrt(double(area.area())) / SEARCH_SIDE));
    const int steps = std::min(step, std::min(part.width, part.height));
    const cv::Size coarseArea(area.width / steps, area.height / steps);
    const cv::Size coarsePart(part.width / steps, part.height / steps);
    cv::Mat pixels;
    cv::Mat marked;
    cv::Mat piece;
    cv::Mat coarseWeights;
    cv::resize(m_original(area), pixels, coarseArea, 0.0, 0.0, cv::INTER_AREA);
    cv::resize(m_marked(area), marked, coarseArea, 0.0, 0.0, cv::INTER_AREA);
    cv::resize(m_pixels(part), piece, coarsePart, 0.0, 0.0, cv::INTER_AREA);
    cv::resize(weights, coarseWeights, coarsePart, 0.0, 0.0, cv::INTER_AREA);
    const cv::Point home((part.x - area.x) / steps, (part.y - area.y) / steps);
    const Search search(pixels, marked, piece, coarseWeights);
    if (!search.Best(home, DISTANCE_COST * steps / PIECE_SIDE, source))
        return false;
    source = area.tl() + source * steps;
    return steps == 1 || refine(part, weights, 2 * steps, source);
}

bool Healer::refine(const cv::Rect& part, const cv::Mat& weights, int margin, cv::Point& source) const
{
    const cv::Rect area = Grown(cv::Rect(source, part.size()), margin, m_pixels.size());
    const Search search(m_original(area), m_marked(area), m_pixels(part), weights);
    cv::Point best;
    if (!search.Best(source - area.tl(), 0.0, best))
        return false;
    source = area.tl() + best;
    return true;
}

// The source, with what it differs by around the hole spread over the hole. That difference is taken from
// some pixels at a time: the grain of one pixel is not to run into the hole.
void Healer::transfer(const cv::Rect& part, const cv::Mat& hole, const cv::Mat& source)
{
    cv::Mat target;
    cv::Mat shift;
    cv::Mat healed;
    m_pixels(part).convertTo(target, CV_32F);
    source.convertTo(healed, CV_32F);
    cv::subtract(target, healed, shift);
    const cv::Mat share = Share(m_known(part));
    const int channels = shift.channels();
    cv::multiply(shift, Repeated(share, channels), shift);
    cv::Mat spread;
    cv::GaussianBlur(shift, shift, cv::Size(7, 7), 1.5);
    cv::GaussianBlur(share, spread, cv::Size(7, 7), 1.5);
    shift = Normalized(shift, spread);
    SpanFilm(shift, share);
    healed += shift;
    cv::Mat pixels;
    healed.convertTo(pixels, CV_8U);
    std::vector<cv::Mat> planes;
    cv::split(pixels, planes);
    for (size_t i = 0; i < 3; ++i)
        cv::min(planes[i], planes[3], planes[i]);
    cv::merge(planes, pixels);
    pixels.copyTo(m_pixels(part), hole);
}

// Premultiplied colours mix channel by channel.
void Mix(const cv::Mat& healed, const cv::Mat& mask, cv::Mat picture)
{
    for (int y = 0; y < picture.rows; ++y)
    {
        const uchar* from = healed.ptr<uchar>(y);
        const uchar* part = mask.ptr<uchar>(y);
        uchar* to = picture.ptr<uchar>(y);
        for (int i = 0; i < picture.cols * 4; ++i)
            to[i] = uchar((from[i] * part[i / 4] + to[i] * (255 - part[i / 4]) + 127) / 255);
    }
}
} // namespace

int HealingMargin(const QSize& spot)
{
    return std::clamp(2 * std::min(std::max(spot.width(), spot.height()), 400), 32, 400);
}

QImage HealSpot(const QImage& picture, const QImage& mask, const std::atomic<bool>& cancelled)
{
    if (picture.isNull() || picture.format() != QImage::Format_ARGB32_Premultiplied || cancelled ||
        mask.format() != QImage::Format_Grayscale8 || mask.size() != picture.size())
        return QImage();
    const cv::Mat marks = MatOf(mask, CV_8UC1);
    const cv::Rect spot = cv::boundingRect(marks);
    if (spot.empty())
        return picture;
    if (cv::countNonZero(marks) == picture.width() * picture.height())
        return QImage();
    const cv::Rect area = Grown(spot, HealingMargin(QSize(spot.width, spot.height)), marks.size());
    Healer healer(MatOf(picture, CV_8UC4)(area), marks(area));
    if (!healer.Run(cancelled))
        return QImage();
    QImage result = picture.copy();
    Mix(healer.Pixels(), marks(area), MatOf(result, CV_8UC4)(area));
    return result;
}
