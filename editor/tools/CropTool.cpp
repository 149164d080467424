#include "CropTool.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLineF>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSignalBlocker>

#include <cmath>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "SelectionMask.h"
#include "Theme.h"

namespace
{

// A press that moves less, in device-independent pixels, is no drag.
const double DragDistance = 3;
const double SnapDegrees = 15;

const QLatin1String WidthKey("crop/width");
const QLatin1String HeightKey("crop/height");
const QLatin1String AnchorKey("crop/anchor");
const QLatin1String ShieldKey("crop/shield");
const QLatin1String ShieldColorKey("crop/shieldColor");
const QLatin1String ShieldOpacityKey("crop/shieldOpacity");
const QLatin1String DeleteKey("crop/deleteArea");
const QLatin1String GuidesKey("crop/guides");

const int CenterAnchor = 5;
const int AnchorCount = 9;

QPointF Within(const QPointF& point, const QSize& picture)
{
    return QPointF(qBound(0.0, point.x(), double(picture.width())),
                   qBound(0.0, point.y(), double(picture.height())));
}

// As exact as the bar shows it.
double InHundredths(double angle)
{
    return std::round(angle * 100) / 100;
}

bool IsEndKey(const QEvent* event)
{
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

} // namespace

CropTool::CropTool(const Host& host, QObject* parent) : Tool(parent), m_host(host) { }

CropTool::~CropTool()
{
    if (m_state != Idle && GetView())
        GetView()->SetOverlay(NVDocumentView::Overlay());
}

NVCropToolbarStart* CropTool::GetStartBar()
{
    if (!m_pStart)
        GetBar();
    return m_pStart;
}

NVCropToolbarMain* CropTool::GetMainBar()
{
    if (!m_pMain)
    {
        m_pMain = CreateMainBar();
        AddBar(m_pMain);
    }
    return m_pMain;
}

bool CropTool::HasFrame() const
{
    return m_state != Idle;
}

CropFrame CropTool::GetFrame() const
{
    return m_frame;
}

QSize CropTool::GetTargetSize()
{
    const QSizeF frame = m_frame.size;
    double width = GetStartBar()->GetWidth();
    double height = GetStartBar()->GetHeight();
    if (width < 1 && height < 1)
        return m_frame.size;
    if (width < 1)
        width = height * frame.width() / frame.height();
    else if (height < 1)
        height = width * frame.height() / frame.width();
    const double largest = KXDocumentInterface::MAX_DOC_DIMENSION;
    return QSize(qRound(qBound(1.0, width, largest)), qRound(qBound(1.0, height, largest)));
}

QString CropTool::GetName() const
{
    return tr("Crop");
}

QString CropTool::GetPictureName() const
{
    return QStringLiteral("tool-crop");
}

QKeySequence CropTool::GetKey() const
{
    return Qt::Key_C;
}

void CropTool::StoreValues()
{
    m_host.settings->setValue(WidthKey, GetStartBar()->GetWidth());
    m_host.settings->setValue(HeightKey, GetStartBar()->GetHeight());
    if (!m_pMain)
        return;
    m_host.settings->setValue(AnchorKey, m_pMain->GetAnchor());
    m_host.settings->setValue(ShieldKey, m_pMain->IsShieldEnabled());
    m_host.settings->setValue(ShieldColorKey, m_pMain->GetShieldColor().name(QColor::HexArgb));
    m_host.settings->setValue(ShieldOpacityKey, m_pMain->GetShieldOpacity());
    m_host.settings->setValue(DeleteKey, m_pMain->IsDeleteArea());
    m_host.settings->setValue(GuidesKey, m_pMain->GetGuideOverlayType());
}

bool CropTool::eventFilter(QObject* object, QEvent* event)
{
    auto* angle = qobject_cast<QDoubleSpinBox*>(object);
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!angle || !isKey || !IsEndKey(event))
        return Tool::eventFilter(object, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
    {
        angle->interpretText();
        if (GetView())
            GetView()->setFocus();
    }
    return true;
}

QWidget* CropTool::CreateBar()
{
    m_pStart = new NVCropToolbarStart(nullptr);
    m_pStart->SetWidth(m_host.settings->value(WidthKey, 0).toInt());
    m_pStart->SetHeight(m_host.settings->value(HeightKey, 0).toInt());
    m_pStart->EnableFromImage(GetDocument());
    connect(m_pStart, &NVCropToolbarStart::FromImage, this, &CropTool::OnFromImage);
    return m_pStart;
}

void CropTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, bar == m_pStart ? QStringLiteral("m_pPictureLabelMain") : QStringLiteral("m_pPicture"),
                  QStringLiteral("crop_tool"));
    const QPair<QString, QString> pictures[] = {
        {QStringLiteral("m_pSwap"), QStringLiteral("switch_arrows")},
        {QStringLiteral("m_pCommit"), QStringLiteral("commit_btn1")},
        {QStringLiteral("m_pCancel"), QStringLiteral("cancel_btn1")},
        {QStringLiteral("m_pToNewDocument"), QStringLiteral("top-menu-file")}};
    for (const auto& picture : pictures)
    {
        if (auto* button = bar->findChild<QPushButton*>(picture.first))
            button->setIcon(Theme::Icon(picture.second));
    }
}

void CropTool::CanvasChanged()
{
    if (m_pStart)
        m_pStart->EnableFromImage(GetDocument());
}

void CropTool::CreateShortcuts()
{
    m_pReturn = new KXShortcut(GetBar(), QKeySequence());
    m_pEnter = new KXShortcut(GetBar(), QKeySequence());
    connect(m_pReturn, &KXShortcut::Activated, this, &CropTool::Commit);
    connect(m_pEnter, &KXShortcut::Activated, this, &CropTool::Commit);
}

void CropTool::ReleaseShortcuts()
{
    delete m_pReturn;
    delete m_pEnter;
    m_pReturn = nullptr;
    m_pEnter = nullptr;
}

void CropTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
    const QRect selected = MaskBounds(GetPixels()->GetSelectionMask());
    if (selected.isEmpty())
        return;
    const CropFrame frame = CropFrameOf(selected);
    BeginFrame(GetProportion() > 0 ? InProportion(frame, GetProportion()) : frame);
}

void CropTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton || m_state == Working)
        return;
    m_isDoubleClick = IsDoubleClick(point);
    m_press = point.position;
    m_pressTime = point.timestamp;
    m_pressFrame = m_frame;
    if (m_state == Idle)
    {
        m_press = Within(point.position, GetPixels()->GetSize());
        m_pressHit = CropHit();
        m_drag = Press;
        return;
    }
    m_pressHit = CropHitAt(GetView(), m_frame, point.position);
    const Drag drags[] = {Turn, Move, Pull};
    m_drag = drags[m_pressHit.part];
}

void CropTool::Moved(const CanvasPoint& point)
{
    const double way = QLineF(m_press, point.position).length() * GetView()->GetScale();
    if (m_drag != NoDrag && way >= DragDistance)
        m_isDoubleClick = false;
    if (m_drag == Press && way >= DragDistance)
        m_drag = Draw;
    if (m_drag == Press || m_state == Working)
        return;
    if (m_drag != NoDrag)
        DragTo(point);
    else if (m_state == Framed)
        UpdateHover(CropHitAt(GetView(), m_frame, point.position));
}

void CropTool::Released(const CanvasPoint& point)
{
    m_drag = NoDrag;
    if (m_state == Framed)
        UpdateHover(CropHitAt(GetView(), m_frame, point.position));
    if (m_isDoubleClick)
    {
        m_isDoubleClick = false;
        Commit();
    }
}

void CropTool::PointerLeft()
{
    if (m_state == Framed && m_drag == NoDrag)
        UpdateHover(CropHit());
}

void CropTool::OnFromImage()
{
    if (!GetDocument())
        return;
    m_pStart->SetWidth(GetPixels()->GetSize().width());
    m_pStart->SetHeight(GetPixels()->GetSize().height());
}

void CropTool::OnAngle(double angle)
{
    if (m_state == Framed && angle != m_frame.angle)
        SetFrame(Turned(m_frame, angle, GetReference()));
}

void CropTool::OnWidth(int width)
{
    if (m_state != Framed || width == m_frame.size.width())
        return;
    const double proportion = GetProportion();
    const double height = proportion > 0 ? width / proportion : m_frame.size.height();
    SetFrame(Resized(m_frame, QSizeF(width, height), GetReference()));
}

void CropTool::OnHeight(int height)
{
    if (m_state != Framed || height == m_frame.size.height())
        return;
    const double proportion = GetProportion();
    const double width = proportion > 0 ? height * proportion : m_frame.size.width();
    SetFrame(Resized(m_frame, QSizeF(width, height), GetReference()));
}

NVCropToolbarMain* CropTool::CreateMainBar()
{
    auto* bar = new NVCropToolbarMain(nullptr);
    bar->findChild<QRadioButton*>(QStringLiteral("m_pDeleteArea"))
        ->setToolTip(tr("Cut off what lies outside of the frame"));
    bar->findChild<QRadioButton*>(QStringLiteral("m_pHideArea"))
        ->setToolTip(tr("Keep the size of the picture, make what lies outside of the frame transparent, and "
                        "keep each layer as it was in a hidden layer below it"));
    bar->findChild<QDoubleSpinBox*>(QStringLiteral("m_pAngle"))->installEventFilter(this);
    // Rather scrolled than with its texts cut off.
    bar->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
    RestoreValues(bar);
    ConnectBar(bar);
    return bar;
}

void CropTool::RestoreValues(NVCropToolbarMain* bar)
{
    const QSettings* settings = m_host.settings;
    bar->SetAnchor(qBound(1, settings->value(AnchorKey, CenterAnchor).toInt(), AnchorCount));
    bar->SetShieldEnabled(settings->value(ShieldKey, true).toBool());
    const QColor color(settings->value(ShieldColorKey).toString());
    // Its button shows nothing until the color is another.
    bar->SetShieldColor(Qt::white);
    bar->SetShieldColor(color.isValid() ? color : QColor(Qt::black));
    bar->SetShieldOpacity(settings->value(ShieldOpacityKey, bar->GetShieldOpacity()).toInt());
    bar->SetDeleteArea(settings->value(DeleteKey, true).toBool());
    bar->SetGuideOverlayType(
        qBound(int(CropLook::NoGuides), settings->value(GuidesKey).toInt(), int(CropLook::Grid)));
}

void CropTool::ConnectBar(NVCropToolbarMain* bar)
{
    connect(bar, &NVCropToolbarMain::AngleChanged, this, &CropTool::OnAngle);
    connect(bar, &NVCropToolbarMain::WidthChanged, this, &CropTool::OnWidth);
    connect(bar, &NVCropToolbarMain::HeightChanged, this, &CropTool::OnHeight);
    connect(bar, &NVCropToolbarMain::AnchorChanged, this, &CropTool::OnLookChanged);
    connect(bar, &NVCropToolbarMain::ShieldEnabled, this, &CropTool::OnLookChanged);
    connect(bar, &NVCropToolbarMain::ShieldColorChanged, this, &CropTool::OnLookChanged);
    connect(bar, &NVCropToolbarMain::ShieldOpacityChanged, this, &CropTool::OnLookChanged);
    connect(bar, &NVCropToolbarMain::GuideOverlayChanged, this, &CropTool::OnLookChanged);
    connect(bar, &NVCropToolbarMain::Commit, this, &CropTool::Commit);
    connect(bar, &NVCropToolbarMain::Cancel, this, &CropTool::OnCancel);
    connect(bar, &NVCropToolbarMain::NewDocument, this, &CropTool::CommitToNewDocument);
}

KXDocumentInterface* CropTool::GetPixels() const
{
    return GetDocument()->GetPixels();
}

QPointF CropTool::GetReference()
{
    const int cell = qBound(0, GetMainBar()->GetAnchor() - 1, AnchorCount - 1);
    return QPointF((cell % 3) / 2.0, (cell / 3) / 2.0);
}

double CropTool::GetProportion()
{
    const int width = GetStartBar()->GetWidth();
    const int height = GetStartBar()->GetHeight();
    return width > 0 && height > 0 ? double(width) / height : 0;
}

void CropTool::ShowFrameInBar()
{
    NVCropToolbarMain* bar = GetMainBar();
    const QSignalBlocker quiet(bar);
    // Values that are set anew would disturb a person who types them.
    if (bar->GetAngle() != m_frame.angle)
        bar->SetAngle(m_frame.angle);
    if (bar->GetWidth() != m_frame.size.width())
        bar->SetWidth(m_frame.size.width());
    if (bar->GetHight() != m_frame.size.height())
        bar->SetHeight(m_frame.size.height());
}

void CropTool::SetEnterLive(bool live)
{
    if (!m_pReturn)
        return;
    m_pReturn->SetKey(live ? QKeySequence(Qt::Key_Return) : QKeySequence());
    m_pEnter->SetKey(live ? QKeySequence(Qt::Key_Enter) : QKeySequence());
}

void CropTool::DragTo(const CanvasPoint& point)
{
    const bool isKept = point.modifiers.testFlag(Qt::ShiftModifier);
    const bool aboutMiddle = point.modifiers.testFlag(Qt::AltModifier);
    double proportion = GetProportion();
    if (m_drag == Draw)
    {
        if (isKept && proportion <= 0)
            proportion = 1;
        const QPointF end = Within(point.position, GetPixels()->GetSize());
        const CropFrame frame = CropFrameBetween(m_press, end, proportion);
        if (m_state == Idle)
            BeginFrame(frame);
        SetFrame(frame);
    }
    else if (m_drag == Move)
        SetFrame(::Moved(m_pressFrame, point.position - m_press));
    else if (m_drag == Turn)
        SetFrame(Turned(m_pressFrame, TurnedAngle(point), GetReference()));
    else
    {
        if (isKept && proportion <= 0)
            proportion = double(m_pressFrame.size.width()) / m_pressFrame.size.height();
        // The handle goes with the pointer as it was taken.
        const QPointF grip = m_pressFrame.PointAt(m_pressHit.share) - m_press;
        SetFrame(Pulled(m_pressFrame, m_pressHit.share, point.position + grip, proportion, aboutMiddle));
    }
}

double CropTool::TurnedAngle(const CanvasPoint& point)
{
    const QPointF about = m_pressFrame.PointAt(GetReference());
    // Counterclockwise, as lines have it.
    const double way = QLineF(about, point.position).angleTo(QLineF(about, m_press));
    const double angle = m_pressFrame.angle + way;
    if (point.modifiers.testFlag(Qt::ShiftModifier))
        return std::round(angle / SnapDegrees) * SnapDegrees;
    return InHundredths(angle);
}

bool CropTool::IsDoubleClick(const CanvasPoint& point)
{
    if (m_state != Framed || CropHitAt(GetView(), m_frame, point.position).part != CropHit::Inside)
        return false;
    const ulong between = point.timestamp - m_pressTime;
    const double way = QLineF(m_press, point.position).length() * GetView()->GetScale();
    return m_pressHit.part == CropHit::Inside && way < DragDistance &&
        between <= ulong(QApplication::doubleClickInterval());
}
