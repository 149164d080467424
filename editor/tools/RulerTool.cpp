#include "RulerTool.h"

#include <QApplication>
#include <QLocale>
#include <QPainter>
#include <QUndoStack>

#include "CropContents.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "NVRulerToolbar.h"
#include "ResizeCommand.h"
#include "RulerLine.h"
#include "StraightenFrame.h"

namespace
{

// What is done by then is done before anybody notices.
const int PatienceMs = 150;
// Degrees; a line of less is straight.
const double LeastSlope = 0.005;

// In device-independent pixels.
const double Reach = 10;
const double Radius = 5.5;
const double HoverRadius = 7.5;
const double CrossLength = 4;

QString Number(double value)
{
    // No "-0.0".
    return QString::number(qRound(value * 10) == 0 ? 0.0 : value, 'f', 1);
}

QString AngleText(const QLineF& line)
{
    const double angle = line.angle();
    return RulerTool::tr("%1\u00b0").arg(Number(angle > 180 ? angle - 360 : angle));
}

void DrawEnd(QPainter& painter, const QPointF& place, const QColor* highlight)
{
    const double radius = highlight ? HoverRadius : Radius;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3));
    painter.drawEllipse(place, radius, radius);
    painter.setPen(QPen(highlight ? *highlight : QColor(Qt::white), 1.5));
    painter.drawEllipse(place, radius, radius);
    painter.drawLine(place - QPointF(CrossLength, 0), place + QPointF(CrossLength, 0));
    painter.drawLine(place - QPointF(0, CrossLength), place + QPointF(0, CrossLength));
}

} // namespace

RulerTool::RulerTool(QObject* parent) : Tool(parent)
{
    connect(&m_work, &BackgroundWork::Done, this, &RulerTool::OnDone);
    connect(&m_work, &BackgroundWork::Lasts, this, &RulerTool::OnLasts);
}

RulerTool::~RulerTool()
{
    RulerTool::Cancel();
}

NVRulerToolbar* RulerTool::GetRulerBar()
{
    return static_cast<NVRulerToolbar*>(GetBar());
}

bool RulerTool::IsStraightening() const
{
    return m_work.IsRunning();
}

QString RulerTool::GetName() const
{
    return tr("Ruler");
}

QString RulerTool::GetPictureName() const
{
    return QStringLiteral("tool-ruler");
}

QKeySequence RulerTool::GetKey() const
{
    return Qt::Key_U;
}

bool RulerTool::Cancel()
{
    if (m_work.IsRunning())
    {
        m_work.Cancel();
        EndWork();
        Q_EMIT Message(tr("Straightening was cancelled: the picture is as it was."));
        return true;
    }
    if (!m_isPressed)
        return false;
    m_isPressed = false;
    SetEscapeLive(false);
    if (m_pLine && m_isDragging)
        m_pLine->Set(m_before);
    return true;
}

void RulerTool::Finish()
{
    m_isPressed = false;
    if (!m_work.IsRunning())
    {
        SetEscapeLive(false);
        return;
    }
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

QWidget* RulerTool::CreateBar()
{
    auto* bar = new NVRulerToolbar(nullptr);
    connect(bar, &NVRulerToolbar::Straighten, this, &RulerTool::OnStraighten);
    connect(bar, &NVRulerToolbar::Clear, this, &RulerTool::OnClear);
    return bar;
}

void RulerTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("ruler"));
}

void RulerTool::CanvasChanged()
{
    if (m_pLine)
        disconnect(m_pLine, nullptr, this, nullptr);
    m_pLine = GetDocument() ? RulerLine::Of(GetDocument()) : nullptr;
    if (m_pLine)
        connect(m_pLine, &RulerLine::Changed, this, &RulerTool::OnLineChanged);
    m_hover = NoEnd;
    ShowLine();
}

void RulerTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
    view->SetOverlay([this](QPainter& painter) { DrawLine(painter); });
    m_drawn = m_pLine ? m_pLine->Get() : QLineF();
}

void RulerTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton || !m_pLine || m_work.IsRunning())
        return;
    m_isPressed = true;
    m_before = m_pLine->Get();
    m_dragged = EndAt(point.position);
    m_isDragging = m_dragged != NoEnd;
    m_press = point.position;
    SetEscapeLive(true);
}

void RulerTool::Moved(const CanvasPoint& point)
{
    if (!m_pLine)
        return;
    if (!m_isPressed)
    {
        SetHover(EndAt(point.position));
        return;
    }
    const NVDocumentView* view = GetView();
    const QLineF way(view->MapFromDocument(m_press), view->MapFromDocument(point.position));
    if (!m_isDragging && way.length() < QApplication::startDragDistance())
        return;
    m_isDragging = true;
    const bool isFirst = m_dragged == First;
    const QPointF fixed = m_dragged == NoEnd ? m_press : isFirst ? m_before.p2() : m_before.p1();
    const bool snaps = point.modifiers.testFlag(Qt::ShiftModifier);
    const QPointF end = snaps ? SnappedEnd(fixed, point.position) : point.position;
    m_pLine->Set(isFirst ? QLineF(end, fixed) : QLineF(fixed, end));
}

void RulerTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    m_isPressed = false;
    if (!m_work.IsRunning())
        SetEscapeLive(false);
}

void RulerTool::PointerLeft()
{
    if (!m_isPressed)
        SetHover(NoEnd);
}

void RulerTool::OnStraighten()
{
    if (!m_pLine || m_pLine->IsNull() || m_work.IsRunning())
        return;
    const double slope = SlopeOf(m_pLine->Get().p1(), m_pLine->Get().p2());
    if (qAbs(slope) < LeastSlope)
    {
        Q_EMIT Message(tr("The line is straight already."));
        return;
    }
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const QString reason = WhyNotInMemory(pixels->GetSize(), pixels->GetLayerCount());
    if (!reason.isEmpty())
    {
        Q_EMIT Message(reason);
        return;
    }
    StartWork(slope);
    m_work.Wait(PatienceMs);
}

void RulerTool::OnClear()
{
    if (m_pLine && !m_work.IsRunning())
        m_pLine->Clear();
}

void RulerTool::OnLineChanged()
{
    ShowLine();
    if (!IsActive() || !GetView())
        return;
    GetView()->UpdateOverlay(AreaOf(m_drawn));
    m_drawn = m_pLine->Get();
    GetView()->UpdateOverlay(AreaOf(m_drawn));
}

void RulerTool::OnDone()
{
    const PictureContents contents = std::move(*m_pContents);
    EndWork();
    if (!GetDocument())
        return;
    if (contents.layers.isEmpty())
        Q_EMIT Message(tr("There was not enough memory to straighten the picture. It stays as it is."));
    else
        GetDocument()->GetUndoStack()->push(new ResizeCommand(tr("Straighten"), GetDocument(), contents,
                                                              GetDocument()->GetPixels()->GetResolution()));
    Q_EMIT Straightened();
}

void RulerTool::OnLasts()
{
    Q_EMIT Message(tr("The picture is being straightened. Escape takes it back."));
}

void RulerTool::ShowLine()
{
    NVRulerToolbar* bar = GetRulerBar();
    const bool isThere = m_pLine && !m_pLine->IsNull();
    const QLineF line = isThere ? m_pLine->Get() : QLineF();
    bar->SetX1(isThere ? Number(line.x1()) : QString());
    bar->SetY1(isThere ? Number(line.y1()) : QString());
    bar->SetX2(isThere ? Number(line.x2()) : QString());
    bar->SetY2(isThere ? Number(line.y2()) : QString());
    bar->SetLength(isThere ? Number(line.length()) : QString());
    bar->SetAngle(isThere ? AngleText(line) : QString());
    bar->SetStraightenEnabled(isThere && !m_work.IsRunning());
    bar->SetClearEnabled(isThere && !m_work.IsRunning());
}

RulerTool::End RulerTool::EndAt(const QPointF& position) const
{
    if (m_pLine->IsNull())
        return NoEnd;
    const NVDocumentView* view = GetView();
    const QPointF place = view->MapFromDocument(position);
    if (QLineF(place, view->MapFromDocument(m_pLine->Get().p2())).length() <= Reach)
        return Second;
    return QLineF(place, view->MapFromDocument(m_pLine->Get().p1())).length() <= Reach ? First : NoEnd;
}

void RulerTool::SetHover(End end)
{
    if (end == m_hover)
        return;
    m_hover = end;
    GetView()->SetToolCursor(end == NoEnd ? Qt::CrossCursor : Qt::SizeAllCursor);
    GetView()->UpdateOverlay(AreaOf(m_drawn));
}

void RulerTool::StartWork(double slope)
{
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const CropFrame frame = StraightenFrame(pixels->GetSize(), slope);
    m_pContents = std::make_shared<PictureContents>();
    pixels->BeginEdit();
    SetEscapeLive(true);
    GetView()->SetToolCursor(Qt::BusyCursor);
    m_work.Start(
        [before = ContentsOf(pixels), frame, contents = m_pContents](const std::atomic<bool>& cancelled)
        { *contents = CropContents(before, frame, frame.size, [&cancelled](int) { return !cancelled; }); });
    ShowLine();
}

void RulerTool::EndWork()
{
    m_pContents.reset();
    SetEscapeLive(false);
    if (GetView())
        GetView()->SetToolCursor(Qt::CrossCursor);
    if (GetDocument())
        GetDocument()->GetPixels()->EndEdit();
    ShowLine();
}

QRect RulerTool::AreaOf(const QLineF& line) const
{
    if (line.isNull())
        return QRect();
    const double margin = HoverRadius + 3;
    return QRectF(GetView()->MapFromDocument(line.p1()), GetView()->MapFromDocument(line.p2()))
        .normalized()
        .adjusted(-margin, -margin, margin, margin)
        .toAlignedRect();
}

void RulerTool::DrawLine(QPainter& painter) const
{
    if (!m_pLine || m_pLine->IsNull())
        return;
    const NVDocumentView* view = GetView();
    const QLineF line(view->MapFromDocument(m_pLine->Get().p1()), view->MapFromDocument(m_pLine->Get().p2()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
    painter.drawLine(line);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawLine(line);
    const QColor highlight = view->palette().color(QPalette::Highlight);
    DrawEnd(painter, line.p1(), m_hover == First ? &highlight : nullptr);
    DrawEnd(painter, line.p2(), m_hover == Second ? &highlight : nullptr);
}
