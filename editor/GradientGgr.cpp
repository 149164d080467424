// Gradients as GGR text: a head line, a name, the number of segments, and a line for each.

#include <QList>

#include <algorithm>
#include <cmath>

#include "GradientSegments.h"
#include "GradientText.h"

namespace
{

const int NumberCount = 11;
// Rounded numbers of neighbours may be off by this.
const double Slack = 1e-4;

enum ColorSource
{
    Fixed,
    Foreground,
    ForegroundTransparent,
    Background,
    BackgroundTransparent
};

// A colour of the program's own stands as black or white, which those are at first.
GradientSegment::Color SourceColor(int source, const GradientSegment::Color& fixed)
{
    switch (source)
    {
    case Foreground:
        return {0, 0, 0, 1};
    case ForegroundTransparent:
        return {0, 0, 0, 0};
    case Background:
        return {1, 1, 1, 1};
    case BackgroundTransparent:
        return {1, 1, 1, 0};
    default:
        return fixed;
    }
}

// The numbers of a line; empty when there is anything else in it.
QVector<double> Numbers(const QByteArray& line)
{
    QVector<double> numbers;
    const QList<QByteArray> words = line.simplified().split(' ');
    for (const QByteArray& word : words)
    {
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number))
            return {};
        numbers += number;
    }
    return numbers;
}

int Whole(const QVector<double>& numbers, int index, int largest)
{
    const double number = numbers.value(index, 0);
    return number >= 0 && number <= largest ? int(number) : 0;
}

double Channel(double value)
{
    return std::clamp(value, 0.0, 1.0);
}

bool ToSegment(const QVector<double>& numbers, double left, GradientSegment* segment)
{
    if (numbers.size() < NumberCount || std::abs(numbers.at(0) - left) > Slack || numbers.at(2) > 1 + Slack ||
        numbers.at(1) < numbers.at(0) - Slack || numbers.at(2) < numbers.at(1) - Slack)
        return false;
    segment->left = left;
    segment->right = std::clamp(numbers.at(2), left, 1.0);
    segment->middle = std::clamp(numbers.at(1), segment->left, segment->right);
    const auto color = [&numbers](int first) -> GradientSegment::Color
    {
        return {Channel(numbers.at(first)), Channel(numbers.at(first + 1)), Channel(numbers.at(first + 2)),
                Channel(numbers.at(first + 3))};
    };
    segment->leftColor = SourceColor(Whole(numbers, 13, BackgroundTransparent), color(3));
    segment->rightColor = SourceColor(Whole(numbers, 14, BackgroundTransparent), color(7));
    segment->blending = Whole(numbers, 11, GradientSegment::Step);
    segment->coloring = Whole(numbers, 12, GradientSegment::HueDown);
    return true;
}

QByteArray NumberText(double value)
{
    return QByteArray::number(value, 'f', 6);
}

QByteArray SegmentText(const GradientSegment& segment)
{
    QByteArray text;
    for (const double place : {segment.left, segment.middle, segment.right})
        text += NumberText(place) + ' ';
    for (const GradientSegment::Color& color : {segment.leftColor, segment.rightColor})
    {
        for (const double channel : {color.red, color.green, color.blue, color.alpha})
            text += NumberText(channel) + ' ';
    }
    return text + QByteArray::number(segment.blending) + ' ' + QByteArray::number(segment.coloring) +
        " 0 0\n";
}

} // namespace

QVector<NamedGradient> GradientText::ParseGgr(const QByteArray& text, const QString& name, QString* reason)
{
    NamedGradient gradient = {name, {}};
    const QList<QByteArray> lines = text.split('\n');
    int line = 1;
    if (lines.value(line).startsWith("Name:"))
        gradient.name = CleanName(QString::fromUtf8(lines.value(line++).mid(5)));
    if (gradient.name.isEmpty())
        gradient.name = name;
    bool isNumber = false;
    const int count = lines.value(line++).trimmed().toInt(&isNumber);
    if (!isNumber || count < 1)
        *reason = tr("It does not say how many segments there are.");
    else if (count > MaxStops)
        *reason = tr("It has too many segments: %1.").arg(count);
    else if (lines.size() - line < count)
        *reason = tr("It ends too early.");
    double left = 0;
    for (int i = 0; i < count && reason->isEmpty(); ++i)
    {
        const QByteArray& words = lines.at(line + i);
        GradientSegment segment;
        if (ToSegment(Numbers(words), left, &segment))
        {
            AddStopsOf(segment, gradient.stops);
            left = segment.right;
        }
        else if (words.trimmed().isEmpty())
            *reason = tr("It ends too early.");
        else
            *reason = tr("Line %1 is not a segment.").arg(line + i + 1);
        if (gradient.stops.size() > MaxStops)
            *reason = tr("It has too many segments: %1.").arg(count);
    }
    if (reason->isEmpty() && left < 1 - Slack)
        *reason = tr("It ends before the end of the gradient.");
    return reason->isEmpty() ? QVector<NamedGradient>{gradient} : QVector<NamedGradient>();
}

QByteArray GradientText::ToGgr(const NamedGradient& gradient)
{
    const QVector<GradientSegment> segments = ToSegments(gradient.stops);
    QByteArray text = "GIMP Gradient\nName: " + CleanName(gradient.name).toUtf8() + '\n';
    text += QByteArray::number(segments.size()) + '\n';
    for (const GradientSegment& segment : segments)
        text += SegmentText(segment);
    return text;
}
