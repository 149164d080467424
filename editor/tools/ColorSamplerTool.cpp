#include "ColorSamplerTool.h"

#include <QLineF>
#include <QPainter>
#include <QSettings>

#include "ColorSamples.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "NVColorSamplerToolbar.h"
#include "SampleCommand.h"

namespace
{

const QLatin1String SizeKey("sampler/size");
const int Sizes = 4;

// In device-independent pixels.
const double Radius = 7;
const double Reach = 10;
// Of the label with the number, beside the mark.
const QRectF LabelPlace(8, -22, 20, 16);

void DrawCross(QPainter& painter, const QPointF& place)
{
    painter.drawEllipse(place, Radius, Radius);
    for (const QPointF& way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
        painter.drawLine(place + 3 * way, place + (Radius + 4) * way);
}

void DrawMark(QPainter& painter, const QPointF& place, int number, const QPalette* highlight)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3));
    DrawCross(painter, place);
    painter.setPen(QPen(Qt::white, 1.2));
    DrawCross(painter, place);
    const QRectF label = LabelPlace.translated(place);
    painter.setPen(QPen(highlight ? Qt::white : QColor(0, 0, 0, 200), 1));
    painter.setBrush(highlight ? highlight->color(QPalette::Highlight) : QColor(255, 255, 255, 230));
    painter.drawRoundedRect(label, 4, 4);
    painter.setPen(highlight ? highlight->color(QPalette::HighlightedText) : QColor(Qt::black));
    painter.drawText(label, Qt::AlignCenter, QString::number(number));
}

QRect AreaOfMark(const QPointF& place)
{
    const QRectF cross(place - QPointF(Radius + 5, Radius + 5), place + QPointF(Radius + 5, Radius + 5));
    return (cross | LabelPlace.translated(place)).adjusted(-2, -2, 2, 2).toAlignedRect();
}

} // namespace

ColorSamplerTool::ColorSamplerTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings)
{
}

NVColorSamplerToolbar* ColorSamplerTool::GetSamplerBar()
{
    return static_cast<NVColorSamplerToolbar*>(GetBar());
}

int ColorSamplerTool::GetSide() const
{
    return 2 * qBound(0, m_pSettings->value(SizeKey, 0).toInt(), Sizes - 1) + 1;
}

QString ColorSamplerTool::GetName() const
{
    return tr("Colour Sampler");
}

QString ColorSamplerTool::GetPictureName() const
{
    return QStringLiteral("tool-sampler");
}

QKeySequence ColorSamplerTool::GetKey() const
{
    return Qt::SHIFT + Qt::Key_I;
}

void ColorSamplerTool::StoreValues()
{
    m_pSettings->setValue(SizeKey, GetSamplerBar()->GetSize());
}

bool ColorSamplerTool::Cancel()
{
    if (m_dragged < 0)
        return false;
    // What is as it was makes no step.
    if (m_pSamples)
        m_pSamples->Set(m_before);
    Finish();
    return true;
}

void ColorSamplerTool::Finish()
{
    const bool isDragged = m_dragged >= 0;
    m_dragged = -1;
    SetEscapeLive(false);
    if (isDragged && m_pSamples)
        PushSamples(m_pSamples, m_isNew ? tr("Add Colour Sample") : tr("Move Colour Sample"), m_before);
}

QWidget* ColorSamplerTool::CreateBar()
{
    auto* bar = new NVColorSamplerToolbar(nullptr);
    bar->SetSize(GetSide() / 2);
    bar->SetClearEnabled(m_pSamples && m_pSamples->Count() > 0);
    connect(bar, &NVColorSamplerToolbar::SizeChanged, this, &ColorSamplerTool::OnSizeChosen);
    connect(bar, &NVColorSamplerToolbar::Clear, this, &ColorSamplerTool::OnClear);
    return bar;
}

void ColorSamplerTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("sampler"));
}

void ColorSamplerTool::CanvasChanged()
{
    if (m_pSamples)
        disconnect(m_pSamples, nullptr, this, nullptr);
    m_pSamples = GetDocument() ? ColorSamples::Of(GetDocument()) : nullptr;
    if (m_pSamples)
    {
        connect(m_pSamples, &ColorSamples::Changed, this, &ColorSamplerTool::OnSamplesChanged);
        connect(m_pSamples, &ColorSamples::CurrentChanged, this, &ColorSamplerTool::OnSamplesChanged);
    }
    GetSamplerBar()->SetClearEnabled(m_pSamples && m_pSamples->Count() > 0);
}

void ColorSamplerTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
    view->SetOverlay([this](QPainter& painter) { DrawMarks(painter); });
    m_drawn = m_pSamples ? m_pSamples->GetPixels() : QVector<QPoint>();
}

void ColorSamplerTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton || !m_pSamples)
        return;
    const QVector<QPoint> before = m_pSamples->GetPixels();
    const int found = SampleAt(point.position);
    if (point.modifiers.testFlag(Qt::AltModifier))
    {
        m_pSamples->Remove(found);
        PushSamples(m_pSamples, tr("Delete Colour Sample"), before);
        return;
    }
    const QPoint pixel = PixelAt(point.position);
    m_isNew = found < 0;
    if (m_isNew && !GetDocument()->GetPixels()->GetRect().contains(pixel))
        return;
    if (m_isNew && m_pSamples->IsFull())
    {
        Q_EMIT Message(tr("There are %1 samples, as many as there can be: delete one first.")
                           .arg(ColorSamples::MAX_SAMPLES));
        return;
    }
    m_before = before;
    m_dragged = m_isNew ? m_pSamples->Add(pixel) : found;
    m_pSamples->SetCurrent(m_dragged);
    SetEscapeLive(true);
}

void ColorSamplerTool::Moved(const CanvasPoint& point)
{
    if (m_dragged < 0)
    {
        const bool isOver = SampleAt(point.position) >= 0;
        GetView()->SetToolCursor(isOver ? Qt::SizeAllCursor : Qt::CrossCursor);
        return;
    }
    const QRect rect = GetDocument()->GetPixels()->GetRect();
    const QPoint pixel = PixelAt(point.position);
    m_pSamples->Move(
        m_dragged,
        QPoint(qBound(rect.left(), pixel.x(), rect.right()), qBound(rect.top(), pixel.y(), rect.bottom())));
}

void ColorSamplerTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    Finish();
}

void ColorSamplerTool::OnSizeChosen(int index)
{
    m_pSettings->setValue(SizeKey, index);
    Q_EMIT SideChanged(GetSide());
}

void ColorSamplerTool::OnClear()
{
    if (!m_pSamples)
        return;
    const QVector<QPoint> before = m_pSamples->GetPixels();
    m_pSamples->Clear();
    PushSamples(m_pSamples, tr("Delete All Colour Samples"), before);
}

void ColorSamplerTool::OnSamplesChanged()
{
    // They have gone in another way.
    if (m_dragged >= m_pSamples->Count())
    {
        m_dragged = -1;
        SetEscapeLive(false);
    }
    GetSamplerBar()->SetClearEnabled(m_pSamples->Count() > 0);
    if (!IsActive() || !GetView())
        return;
    UpdateMarks();
    m_drawn = m_pSamples->GetPixels();
    UpdateMarks();
}

int ColorSamplerTool::SampleAt(const QPointF& position) const
{
    const QPointF place = GetView()->MapFromDocument(position);
    const QRect rect = GetDocument()->GetPixels()->GetRect();
    for (int i = m_pSamples->Count() - 1; i >= 0; --i)
    {
        if (rect.contains(m_pSamples->GetPixel(i)) &&
            QLineF(place, PlaceOf(m_pSamples->GetPixel(i))).length() <= Reach)
            return i;
    }
    return -1;
}

QPointF ColorSamplerTool::PlaceOf(const QPoint& pixel) const
{
    return GetView()->MapFromDocument(QPointF(pixel) + QPointF(0.5, 0.5));
}

void ColorSamplerTool::UpdateMarks() const
{
    for (const QPoint& pixel : m_drawn)
        GetView()->UpdateOverlay(AreaOfMark(PlaceOf(pixel)));
}

void ColorSamplerTool::DrawMarks(QPainter& painter) const
{
    if (!m_pSamples)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette palette = GetView()->palette();
    const QRect rect = GetDocument()->GetPixels()->GetRect();
    for (int i = 0; i < m_pSamples->Count(); ++i)
    {
        if (rect.contains(m_pSamples->GetPixel(i)))
            DrawMark(painter, PlaceOf(m_pSamples->GetPixel(i)), i + 1,
                     i == m_pSamples->GetCurrent() ? &palette : nullptr);
    }
}
