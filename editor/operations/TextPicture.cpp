#include "TextPicture.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QPainter>
#include <QRawFont>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

// Plain words fit a frame that is a hair too narrow, without it they would be broken.
const double Slack = 0.5;
const double PartsOfPixel = 64;
// Of letters that are remembered.
const int MostOutlines = 20000;

// To the places that the toolkit draws with. It rounds by itself, but not everywhere alike: a letter would be
// another where an edge cuts the picture.
QPainterPath Snapped(QPainterPath path)
{
    const auto snapped = [](double place) { return std::floor(place * PartsOfPixel + 0.5) / PartsOfPixel; };
    for (int i = 0; i < path.elementCount(); ++i)
        path.setElementPositionAt(i, snapped(path.elementAt(i).x), snapped(path.elementAt(i).y));
    return path;
}

// The same letter has the same outline each time. The toolkit's own differ by a hair, depending on what else
// it has drawn meanwhile, and a text would not be found again in its layer.
QPainterPath OutlineOf(const QRawFont& font, const QString& fontKey, quint32 letter)
{
    static QHash<QString, QHash<quint32, QPainterPath>> outlines;
    static int count = 0;
    if (count > MostOutlines)
    {
        outlines.clear();
        count = 0;
    }
    QHash<quint32, QPainterPath>& known = outlines[fontKey];
    auto outline = known.find(letter);
    if (outline == known.end())
    {
        outline = known.insert(letter, Snapped(font.pathForGlyph(letter)));
        ++count;
    }
    return *outline;
}

QString KeyOf(const QRawFont& font)
{
    return QStringLiteral("%1/%2/%3/%4/%5")
        .arg(font.familyName(), font.styleName())
        .arg(font.weight())
        .arg(int(font.style()))
        .arg(font.pixelSize());
}

void AddLetters(QVector<QPainterPath>& paths, const QTextBlock& block)
{
    const QTextLayout& layout = *block.layout();
    // The layout of a block does not know its length by itself.
    const QList<QGlyphRun> runs = layout.glyphRuns(0, block.length() + layout.preeditAreaText().size());
    for (const QGlyphRun& run : runs)
    {
        const QRawFont font = run.rawFont();
        const QString key = KeyOf(font);
        const QVector<quint32> letters = run.glyphIndexes();
        const QVector<QPointF> places = run.positions();
        for (int i = 0; i < letters.size(); ++i)
        {
            const QPainterPath outline = OutlineOf(font, key, letters.at(i));
            if (!outline.isEmpty())
                paths.append(outline.translated(layout.position() + places.at(i)));
        }
    }
}

void AddUnderline(QVector<QPainterPath>& paths, const QTextLine& line, double left, double right,
                  const QPointF& corner, const QFontMetricsF& metrics)
{
    const double top = line.y() + line.ascent() + metrics.underlinePos();
    QPainterPath path;
    path.addRect(QRectF(left, top, right - left, qMax(1.0, metrics.lineWidth())).translated(corner));
    paths.append(path);
}

void AddUnderlines(QVector<QPainterPath>& paths, const QTextLayout& layout, const QFontMetricsF& metrics)
{
    for (int i = 0; i < layout.lineCount(); ++i)
    {
        const QTextLine line = layout.lineAt(i);
        const QRectF natural = line.naturalTextRect();
        AddUnderline(paths, line, natural.left(), natural.right(), layout.position(), metrics);
    }
}

// Below the letters that an input method has not decided yet, as it asks for it.
void AddCompositionLines(QVector<QPainterPath>& paths, const QTextLayout& layout,
                         const QFontMetricsF& metrics)
{
    const QVector<QTextLayout::FormatRange> formats = layout.formats();
    for (const QTextLayout::FormatRange& range : formats)
    {
        if (range.format.underlineStyle() == QTextCharFormat::NoUnderline)
            continue;
        for (int i = 0; i < layout.lineCount(); ++i)
        {
            const QTextLine line = layout.lineAt(i);
            const int from = qMax(range.start, line.textStart());
            const int to = qMin(range.start + range.length, line.textStart() + line.textLength());
            const double start = line.cursorToX(from);
            const double end = line.cursorToX(to);
            if (from < to)
                AddUnderline(paths, line, qMin(start, end), qMax(start, end), layout.position(), metrics);
        }
    }
}

QRect AreaOf(const QVector<QPainterPath>& paths)
{
    QRectF area;
    for (const QPainterPath& path : paths)
        area |= path.boundingRect();
    return area.toAlignedRect().adjusted(-1, -1, 1, 1);
}

// One by one, which takes a fraction of the time of all at once. They are opaque first, so that nobody sees
// where letters touch.
void FillPaths(QImage& image, const QPoint& corner, const QVector<QPainterPath>& paths,
               const TextDescription& description)
{
    QColor opaque = description.color;
    opaque.setAlpha(255);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, description.isSmooth);
    painter.translate(-corner);
    for (const QPainterPath& path : paths)
        painter.fillPath(path, opaque);
    if (description.color.alpha() == 255)
        return;
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, description.color.alpha()));
}

bool IsRightToLeft(const QTextDocument& document)
{
    return document.firstBlock().textDirection() == Qt::RightToLeft;
}

QPointF CornerOf(const QTextDocument& document, const TextDescription& description)
{
    QPointF corner(description.anchor);
    if (description.width <= 0 && IsRightToLeft(document))
        corner.rx() -= std::ceil(document.textWidth());
    return corner;
}

bool IsClear(const QRgb* row, int count)
{
    return std::all_of(row, row + count, [](QRgb pixel) { return pixel == 0; });
}

const QRgb* PixelAt(const QImage& image, const QPoint& place)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(place.y())) + place.x();
}

// Whether the layer shows the picture as far as it lies in it.
bool Shows(const QImage& layer, const TextPicture& picture)
{
    const QRect area = picture.GetRect() & layer.rect();
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        const QPoint place(area.left(), y);
        if (std::memcmp(PixelAt(layer, place), PixelAt(picture.image, place - picture.corner),
                        size_t(area.width()) * sizeof(QRgb)) != 0)
            return false;
    }
    return true;
}

// Some pixel that is not clear, in the first row of the area, which has one.
QPoint InkOf(const QImage& layer, const QRect& area)
{
    QPoint place = area.topLeft();
    while (*PixelAt(layer, place) == 0)
        ++place.rx();
    return place;
}

} // namespace

bool operator==(const TextDescription& one, const TextDescription& other)
{
    return one.text == other.text && one.family == other.family && one.size == other.size &&
        one.isBold == other.isBold && one.isItalic == other.isItalic &&
        one.isUnderlined == other.isUnderlined && one.color == other.color &&
        one.isSmooth == other.isSmooth && one.warp == other.warp && one.anchor == other.anchor &&
        one.width == other.width;
}

QRect TextPicture::GetRect() const
{
    return QRect(corner, image.size());
}

QFont TextFont(const TextDescription& description)
{
    QFont font(description.family);
    font.setPixelSize(qMax(1, description.size));
    font.setBold(description.isBold);
    font.setItalic(description.isItalic);
    // So that letters stand alike, bent or not.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void LayOutText(QTextDocument& document, const TextDescription& description)
{
    document.setDocumentMargin(0);
    document.setDefaultFont(TextFont(description));
    QTextOption option = document.defaultTextOption();
    option.setWrapMode(description.width > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                             : QTextOption::NoWrap);
    document.setDefaultTextOption(option);
    if (description.width > 0)
    {
        document.setTextWidth(description.width);
        return;
    }
    // Right-to-left lines are laid to the right of a width, so there has to be one.
    document.setTextWidth(-1);
    document.setTextWidth(document.idealWidth() + Slack);
}

QRectF TextFrame(const QTextDocument& document, const TextDescription& description)
{
    return QRectF(CornerOf(document, description), QSizeF(document.textWidth(), document.size().height()));
}

QVector<QPainterPath> TextOutlines(const QTextDocument& document, const TextDescription& description)
{
    // Asked for first: it sees to it that all lines are laid out.
    const QRectF frame = TextFrame(document, description);
    QVector<QPainterPath> paths;
    const QFontMetricsF metrics(document.defaultFont());
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    {
        AddLetters(paths, block);
        if (description.isUnderlined)
            AddUnderlines(paths, *block.layout(), metrics);
        else
            AddCompositionLines(paths, *block.layout(), metrics);
    }
    for (QPainterPath& path : paths)
    {
        path.setFillRule(Qt::WindingFill);
        path = Snapped(WarpPath(path.translated(frame.topLeft()), frame, description.warp));
    }
    return paths;
}

TextPicture DrawText(const QTextDocument& document, const TextDescription& description, const QRect& bounds)
{
    const QVector<QPainterPath> paths = TextOutlines(document, description);
    const QRect area = AreaOf(paths) & bounds;
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (area.isEmpty() || image.isNull())
        return {};
    image.fill(Qt::transparent);
    FillPaths(image, area.topLeft(), paths, description);
    const QRect visible = VisibleRect(image);
    if (visible.isEmpty())
        return {};
    return {image.copy(visible), area.topLeft() + visible.topLeft()};
}

TextPicture DrawText(const TextDescription& description, const QRect& bounds)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setPlainText(description.text);
    LayOutText(document, description);
    return DrawText(document, description, bounds);
}

QRect VisibleRect(const QImage& image)
{
    const auto row = [&image](int y) { return reinterpret_cast<const QRgb*>(image.constScanLine(y)); };
    int top = 0;
    int bottom = image.height() - 1;
    while (top <= bottom && IsClear(row(top), image.width()))
        ++top;
    while (bottom > top && IsClear(row(bottom), image.width()))
        --bottom;
    int left = image.width();
    int right = -1;
    for (int y = top; y <= bottom; ++y)
    {
        const QRgb* pixels = row(y);
        for (int x = 0; x < left; ++x)
        {
            if (pixels[x] != 0)
                left = x;
        }
        for (int x = image.width() - 1; x > right; --x)
        {
            if (pixels[x] != 0)
                right = x;
        }
    }
    return right < left ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

// What the layer shows may be any part of the text. All that lies in the layer has to fit, though, so that
// only its edges can have cut it. Where several places fit, it is the nearest one.
bool FindText(const QImage& layer, const TextDescription& description, QPoint* way)
{
    const QRect shown = description.shown.translated(description.anchor);
    TextPicture picture = DrawText(description, shown.isNull() ? layer.rect() : shown);
    const QRect visible = VisibleRect(layer);
    if (picture.image.isNull() || visible.isEmpty())
        return false;
    const QPoint corner = picture.corner;
    const QPoint ink = InkOf(layer, visible);
    const QRgb color = *PixelAt(layer, ink);
    QVector<QPoint> ways;
    for (int y = 0; y <= picture.image.height() - visible.height(); ++y)
    {
        for (int x = 0; x <= picture.image.width() - visible.width(); ++x)
        {
            const QPoint there = visible.topLeft() - QPoint(x, y);
            if (*PixelAt(picture.image, ink - there) == color)
                ways.append(there - corner);
        }
    }
    const auto isNearer = [](const QPoint& one, const QPoint& other)
    { return one.manhattanLength() < other.manhattanLength(); };
    std::stable_sort(ways.begin(), ways.end(), isNearer);
    const auto shows = [&](const QPoint& there)
    {
        picture.corner = corner + there;
        return Shows(layer, picture);
    };
    const auto found = std::find_if(ways.cbegin(), ways.cend(), shows);
    if (found != ways.cend())
        *way = *found;
    return found != ways.cend();
}
