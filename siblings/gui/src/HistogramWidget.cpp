#include "HistogramWidget.h"

#include <QAction>
#include <QFutureWatcher>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "HistogramCount_p.h"
#include "KXDocumentInterface.h"

namespace
{

const int LastLevel = 255;
const int NoLevel = -1;
// After the last change since one overtook a count.
const int RestartMs = 300;
// Of a curve beside others, which are seen through it, and of one alone.
const int SharedOpacity = 150;
const int SingleOpacity = 220;
const QSize PreferredSize(270, 130);
const QSize SmallestSize(80, 48);

LevelSource sourceOf(int channel)
{
    return channel == HistogramWidget::Luminance ? LevelSource::Luminance : LevelSource::Colors;
}

// One colour of those that are shown, with its counts.
struct Curve
{
    const LevelCounts::Table* counts;
    QColor color;
};

QVector<Curve> curvesOf(const LevelCounts& counts, int channel, const QColor& text)
{
    if (channel == HistogramWidget::Luminance)
        return {{&counts.luminance, text}};
    // Light text stands on a dark ground, where the full colours would be lost.
    const bool isDark = text.lightness() > 127;
    QVector<Curve> curves;
    if (channel & HistogramWidget::Red)
        curves.append({&counts.red, isDark ? QColor(255, 112, 112) : QColor(224, 48, 48)});
    if (channel & HistogramWidget::Green)
        curves.append({&counts.green, isDark ? QColor(96, 232, 112) : QColor(32, 160, 48)});
    if (channel & HistogramWidget::Blue)
        curves.append({&counts.blue, isDark ? QColor(128, 168, 255) : QColor(48, 96, 232)});
    return curves;
}

// How often the levels come up, as a mean of the curves.
int meanCount(const QVector<Curve>& curves, int from, int to)
{
    qint64 sum = 0;
    for (const Curve& curve : curves)
        for (int level = from; level <= to; ++level)
            sum += (*curve.counts)[size_t(level)];
    return int((sum + curves.size() / 2) / curves.size());
}

int highestCount(const QVector<Curve>& curves)
{
    int highest = 0;
    for (const Curve& curve : curves)
        highest = qMax(highest, *std::max_element(curve.counts->begin(), curve.counts->end()));
    return highest;
}

// Counts as heights between 0 and 1.
class Heights
{
public:
    Heights(int highest, bool isLogarithmic)
        : m_isLogarithmic(isLogarithmic), m_whole(isLogarithmic ? std::log1p(highest) : highest)
    {
    }
    double operator()(int count) const { return (m_isLogarithmic ? std::log1p(count) : count) / m_whole; }

private:
    bool m_isLogarithmic;
    double m_whole;
};

QPainterPath outlineOf(const LevelCounts::Table& counts, const QRectF& area, const Heights& heights)
{
    const double width = area.width() / (LastLevel + 1);
    QPainterPath path(area.bottomLeft());
    for (int level = 0; level <= LastLevel; ++level)
    {
        const double y = area.bottom() - area.height() * heights(counts[size_t(level)]);
        path.lineTo(area.left() + level * width, y);
        path.lineTo(area.left() + (level + 1) * width, y);
    }
    path.lineTo(area.bottomRight());
    path.closeSubpath();
    return path;
}

void drawCurves(QPainter& painter, const QVector<Curve>& curves, const QRectF& area, bool isLogarithmic)
{
    const int highest = highestCount(curves);
    if (highest == 0)
        return;
    const Heights heights(highest, isLogarithmic);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Curve& curve : curves)
    {
        QColor fill = curve.color;
        fill.setAlpha(curves.size() > 1 ? SharedOpacity : SingleOpacity);
        painter.fillPath(outlineOf(*curve.counts, area, heights), fill);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

// Where a key leads from a level, or from none; NoLevel for a key that leads nowhere.
int levelAfter(int key, int now)
{
    switch (key)
    {
    case Qt::Key_Left:
        return now == NoLevel ? LastLevel : qMax(0, now - 1);
    case Qt::Key_Right:
        return now == NoLevel ? 0 : qMin(LastLevel, now + 1);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return LastLevel;
    default:
        return NoLevel;
    }
}

} // namespace

struct HistogramWidget::Data
{
    QPointer<KXDocumentInterface> document;
    QAction* pLogarithmic = nullptr;
    // Makes one count of all that asked for it.
    QTimer rebuild;
    QFutureWatcher<LevelCounts> watcher;
    // What is counted; null when nothing is.
    std::shared_ptr<CountedImage> pImage;
    // Waits for the widget to be visible.
    bool isStale = false;
    bool isCounted = false;
    LevelCounts counts;
    int channel = RGB;
    // What the counts are shown as: another channel until its count has ended.
    int shown = RGB;
    int pointed = NoLevel;
    int from = 0;
    int to = LastLevel;
    // Where a selection began, by mouse or keys; NoLevel without one.
    int anchor = NoLevel;

    QVector<Curve> Curves(const QColor& text = QColor()) const { return curvesOf(counts, shown, text); }
};

HistogramWidget::HistogramWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Data>())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    d->pLogarithmic = new QAction(tr("&Logarithmic scale"), this);
    d->pLogarithmic->setCheckable(true);
    addAction(d->pLogarithmic);
    d->rebuild.setSingleShot(true);
    connect(d->pLogarithmic, &QAction::toggled, this, qOverload<>(&HistogramWidget::update));
    connect(&d->rebuild, &QTimer::timeout, this, &HistogramWidget::OnRebuild);
    connect(&d->watcher, &QFutureWatcherBase::finished, this, &HistogramWidget::OnCounted);
}

HistogramWidget::~HistogramWidget()
{
    cancelCount();
}

HistogramWidget::ColorChannel HistogramWidget::GetChannel() const
{
    return ColorChannel(d->channel);
}

bool HistogramWidget::IsLogarithmic() const
{
    return d->pLogarithmic->isChecked();
}

void HistogramWidget::SetDocument(KXDocumentInterface* document)
{
    if (d->document)
        d->document->disconnect(this);
    d->document = document;
    clear();
    if (!document)
        return;
    connect(document, &QObject::destroyed, this, &HistogramWidget::OnDocumentDestroyed);
    connect(document, &KXDocumentInterface::CompositionChanged, this, &HistogramWidget::OnCompositionChanged);
    RebuildHistogramm();
}

QSize HistogramWidget::sizeHint() const
{
    return PreferredSize;
}

QSize HistogramWidget::minimumSizeHint() const
{
    return SmallestSize;
}

void HistogramWidget::SetChannel(HistogramWidget::ColorChannel channel)
{
    const int known = channel & RGB;
    if (d->channel == known)
        return;
    const bool isOtherSource = sourceOf(d->channel) != sourceOf(known);
    d->channel = known;
    if (isOtherSource)
        RebuildHistogramm();
    if (d->isCounted && sourceOf(d->shown) != sourceOf(known))
        return;
    d->shown = known;
    update();
    tellCount();
    tellLevel();
}

void HistogramWidget::SetLogarithmic(bool on)
{
    d->pLogarithmic->setChecked(on);
}

void HistogramWidget::RebuildHistogramm()
{
    if (!d->document)
        return;
    cancelCount();
    d->isStale = true;
    if (isVisible())
        d->rebuild.start(0);
}

void HistogramWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    if (d->isCounted)
        drawLevels(painter);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (hasFocus())
    {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void HistogramWidget::drawLevels(QPainter& painter) const
{
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    const double width = area.width() / (LastLevel + 1);
    if (d->from > 0 || d->to < LastLevel)
    {
        QColor selected = palette().color(QPalette::Highlight);
        selected.setAlpha(70);
        painter.fillRect(
            QRectF(area.left() + d->from * width, area.top(), (d->to - d->from + 1) * width, area.height()),
            selected);
    }
    const QColor text = palette().color(QPalette::Text);
    drawCurves(painter, d->Curves(text), area, IsLogarithmic());
    if (d->pointed != NoLevel)
    {
        const double x = area.left() + (d->pointed + 0.5) * width;
        painter.setPen(text);
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
}

void HistogramWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
    {
        QWidget::mousePressEvent(event);
        return;
    }
    d->anchor = levelAt(event->x());
    pointAt(d->anchor);
    selectLevels(0, LastLevel);
}

void HistogramWidget::mouseMoveEvent(QMouseEvent* event)
{
    const int level = levelAt(event->x());
    pointAt(level);
    const bool isDragged = event->buttons() & Qt::LeftButton && d->anchor != NoLevel;
    if (isDragged && (level != d->anchor || d->from > 0 || d->to < LastLevel))
        selectLevels(qMin(level, d->anchor), qMax(level, d->anchor));
}

void HistogramWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        d->anchor = NoLevel;
    QWidget::mouseReleaseEvent(event);
}

void HistogramWidget::leaveEvent(QEvent* event)
{
    pointAt(NoLevel);
    QWidget::leaveEvent(event);
}

void HistogramWidget::focusOutEvent(QFocusEvent* event)
{
    if (!underMouse())
        pointAt(NoLevel);
    QWidget::focusOutEvent(event);
}

void HistogramWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
    {
        selectLevels(0, LastLevel);
        return;
    }
    if (event->key() == Qt::Key_L)
    {
        d->pLogarithmic->toggle();
        return;
    }
    const int now = d->pointed;
    const int level = levelAfter(event->key(), now);
    if (level == NoLevel)
    {
        QWidget::keyPressEvent(event);
        return;
    }
    if (!(event->modifiers() & Qt::ShiftModifier))
        d->anchor = NoLevel;
    else if (d->anchor == NoLevel)
        d->anchor = now == NoLevel ? level : now;
    pointAt(level);
    if (d->anchor != NoLevel)
        selectLevels(qMin(level, d->anchor), qMax(level, d->anchor));
}

void HistogramWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (d->isStale)
        d->rebuild.start(0);
}

void HistogramWidget::OnDocumentDestroyed()
{
    SetDocument(nullptr);
}

void HistogramWidget::OnCompositionChanged()
{
    const bool isPutOff = d->rebuild.isActive() && d->rebuild.interval() == RestartMs;
    if (!d->pImage && !isPutOff)
        return;
    RebuildHistogramm();
    if (d->rebuild.isActive())
        d->rebuild.start(RestartMs);
}

void HistogramWidget::OnRebuild()
{
    if (!d->isStale || !d->document || !isVisible())
        return;
    d->isStale = false;
    d->pImage = std::make_shared<CountedImage>(d->document->GetComposition());
    d->watcher.setFuture(CountLevelsAside(d->pImage, sourceOf(d->channel)));
}

void HistogramWidget::OnCounted()
{
    if (d->watcher.isCanceled())
        return;
    LevelCounts sum;
    const QFuture<LevelCounts> bands = d->watcher.future();
    for (const LevelCounts& band : bands)
        sum += band;
    // Lets go of image and results.
    cancelCount();
    d->counts = sum;
    d->shown = d->channel;
    d->isCounted = true;
    update();
    tellCount();
    tellLevel();
}

void HistogramWidget::clear()
{
    cancelCount();
    d->rebuild.stop();
    d->isStale = false;
    d->isCounted = false;
    d->counts = LevelCounts();
    d->shown = d->channel;
    d->anchor = NoLevel;
    d->from = 0;
    d->to = LastLevel;
    update();
    Q_EMIT CurrentLevelRangeChanged(d->from, d->to);
    Q_EMIT CountChanged(0);
    Q_EMIT StatsNoInfo();
}

void HistogramWidget::cancelCount()
{
    // One that has ended may have its end still to be told.
    d->watcher.cancel();
    d->watcher.setFuture(QFuture<LevelCounts>());
    if (d->pImage)
        d->pImage->Drop();
    d->pImage.reset();
}

void HistogramWidget::pointAt(int level)
{
    if (d->pointed == level)
        return;
    d->pointed = level;
    update();
    tellLevel();
}

void HistogramWidget::selectLevels(int from, int to)
{
    if (d->from == from && d->to == to)
        return;
    d->from = from;
    d->to = to;
    update();
    Q_EMIT CurrentLevelRangeChanged(from, to);
    tellCount();
}

void HistogramWidget::tellLevel()
{
    if (!d->isCounted || d->pointed == NoLevel)
    {
        Q_EMIT StatsNoInfo();
        return;
    }
    Q_EMIT StatsChanged(d->pointed, meanCount(d->Curves(), d->pointed, d->pointed));
}

void HistogramWidget::tellCount()
{
    if (d->isCounted)
        Q_EMIT CountChanged(meanCount(d->Curves(), d->from, d->to));
}

int HistogramWidget::levelAt(int x) const
{
    return qBound(0, (x - 1) * (LastLevel + 1) / qMax(1, width() - 2), LastLevel);
}
