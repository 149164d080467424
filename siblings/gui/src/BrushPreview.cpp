#include "BrushPreview.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "BrushStroke_p.h"
#include "Brush_p.h"

namespace
{

const QSize SmallestSize(60, 30);
const int PictureHeight = 64;
const int HintWidth = 300;
const int Margin = 7;
// A picture does not grow without end with its widget.
const QSize LargestPicture(900, 200);
// How much of the height of the picture a stamp and the stroke take.
const double StampPart = 0.82;
const double StrokePart = 0.46;

// The diameter at which the tip, however it is turned, is no larger than the extent.
double fittedDiameter(const BrushTip& tip, double extent)
{
    return extent * extent / qMax(extent, double(RenderBrushTip(tip, extent).width()));
}

// Percent of the diameter at which the tip makes a line, and still can be told from others.
double spacingOf(const BrushTip& tip)
{
    return tip.shape == BrushTip::Spray ? 18.0 : 6.0 * qMax(0.3, tip.roundness);
}

// Where the parts of the face lie. The stamp is null where there is no room for it.
struct Face
{
    QRect stamp;
    QRect stroke;
    QRect name;
};

Face layOut(const QRect& area, int lineHeight)
{
    Face face;
    QRect picture = area;
    if (area.height() >= 3 * lineHeight)
    {
        face.name = QRect(area.left(), area.bottom() - lineHeight + 1, area.width(), lineHeight);
        picture.setBottom(face.name.top() - 2);
    }
    const QPoint centre = picture.center();
    picture.setSize(picture.size().boundedTo(LargestPicture));
    picture.moveCenter(centre);
    face.stroke = picture;
    if (picture.width() >= 3 * picture.height())
    {
        face.stamp = QRect(picture.topLeft(), QSize(picture.height(), picture.height()));
        face.stroke.setLeft(face.stamp.right() + Margin);
    }
    return face;
}

} // namespace

struct BrushPreview::Data
{
    bool hasBrush = false;
    QString name;
    BrushTip tip;
    StrokePicture picture;
};

BrushPreview::BrushPreview(QWidget* parent) : QFrame(parent), d(std::make_unique<Data>())
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    describe();
}

BrushPreview::~BrushPreview() = default;

QSize BrushPreview::sizeHint() const
{
    const int frame = 2 * (frameWidth() + Margin);
    return QSize(HintWidth, PictureHeight + fontMetrics().height() + frame);
}

QSize BrushPreview::minimumSizeHint() const
{
    return SmallestSize;
}

void BrushPreview::SetBrush(const IBrush* brush)
{
    const QString name = brush ? brush->GetName() : QString();
    const BrushTip tip = brush ? BoundedBrushTip(brush->GetTip(), BrushTip()) : BrushTip();
    if (d->hasBrush == bool(brush) && d->name == name && d->tip == tip)
        return;
    d->hasBrush = brush;
    d->name = name;
    d->tip = tip;
    describe();
    update();
}

void BrushPreview::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        describe();
}

void BrushPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    drawFrame(&painter);
    if (!d->hasBrush)
        return;

    const QRect area = contentsRect().adjusted(Margin, Margin, -Margin, -Margin);
    const Face face = layOut(area, fontMetrics().height());
    const auto placed = [&](const QRect& part) { return QStyle::visualRect(layoutDirection(), area, part); };
    if (!face.stroke.isEmpty())
        drawStroke(painter, placed(face.stroke));
    if (!face.stamp.isEmpty())
        drawStamp(painter, placed(face.stamp));
    if (!face.name.isEmpty())
    {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(face.name, Qt::AlignCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(d->name, Qt::ElideRight, face.name.width()));
    }
}

void BrushPreview::drawStroke(QPainter& painter, const QRect& place)
{
    const double ratio = TargetPixelRatio(painter);
    BrushStroke stroke;
    stroke.tip = d->tip;
    stroke.diameter = fittedDiameter(d->tip, place.height() * StrokePart);
    stroke.spacing = spacingOf(d->tip);
    stroke.dynamicSize = true;
    const QImage& mask = d->picture.Get(stroke, place.size(), ratio);
    DrawMask(painter, place.topLeft(), mask, ratio, palette().brush(QPalette::Text));
}

void BrushPreview::drawStamp(QPainter& painter, const QRect& place)
{
    const double ratio = TargetPixelRatio(painter);
    const QImage mask = RenderBrushTip(d->tip, fittedDiameter(d->tip, place.height() * StampPart * ratio));
    QRect covered(QPoint(), mask.size() / ratio);
    covered.moveCenter(place.center());
    DrawMask(painter, covered.topLeft(), mask, ratio, palette().brush(QPalette::Text));
}

// What a screen reader says in place of the picture.
void BrushPreview::describe()
{
    setAccessibleName(tr("Brush preview"));
    if (!d->hasBrush)
    {
        setAccessibleDescription(tr("No brush"));
        return;
    }
    const auto number = [](double value) { return QString::number(qRound(value)); };
    setAccessibleDescription(tr("%1: %2, hardness %3%, roundness %4%, angle %5°")
                                 .arg(d->name, BrushShapeNames().at(d->tip.shape),
                                      number(d->tip.hardness * 100), number(d->tip.roundness * 100),
                                      number(d->tip.angle)));
}
