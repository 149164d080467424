#include "NVNavigatorPanel.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "ConnectionCut_p.h"
#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"
#include "ui_Navigator.h"

namespace
{

const std::array<double, 12> ZoomSteps = {5, 25, 50, 100, 200, 400, 600, 800, 1000, 1600, 3200, 4000};

// By the row of the channel list, but for the last row.
const std::array<HistogramWidget::ColorChannel, 7> Channels = {
    HistogramWidget::RGB,  HistogramWidget::Luminance, HistogramWidget::Red,    HistogramWidget::Green,
    HistogramWidget::Blue, HistogramWidget::RedGreen,  HistogramWidget::RedBlue};

// Null when the view shows none.
KXDocumentInterface* DocumentOf(const NVDocumentView* view)
{
    const KXDocumentModel* model = view->GetModel();
    return model ? model->GetDocument() : nullptr;
}

QString RangeText(int from, int to)
{
    return NVNavigatorPanel::tr("%1 to %2").arg(from).arg(to);
}

// The point that the view keeps in its middle.
QPoint Middle(const NVDocumentView* view)
{
    const QRect area = view->viewport()->rect();
    return {(area.width() - 1) / 2, (area.height() - 1) / 2};
}

} // namespace

NVNavigatorPanel::NVNavigatorPanel(QWidget* parent)
    : KXPanel(parent, TitleTop, Qt::WindowFlags()), m_pUi(new Ui_Navigator)
{
    m_pUi->setupUi(Content());
    // At least what the form says, and room for the longest range in whatever font there is.
    m_pUi->m_pRange->setMinimumWidth(
        qMax(m_pUi->m_pRange->minimumWidth(),
             m_pUi->m_pRange->fontMetrics().horizontalAdvance(RangeText(255, 255))));
    ConnectControls();
}

NVNavigatorPanel::~NVNavigatorPanel()
{
    // A child that loses the focus when the base hides it still tells of it, and nobody is here then to hear.
    const QList<QObject*> children = findChildren<QObject*>();
    for (const QObject* child : children)
        child->disconnect(this);
    delete m_pUi;
}

void NVNavigatorPanel::SetSourceView(NVDocumentView* view)
{
    if (m_pView == view)
        return;
    if (m_pView)
        DisconnectView();
    m_pView = view;
    if (!view)
    {
        m_pUi->m_pNavigator->SetDocument(nullptr, nullptr);
        m_pUi->m_pZoom->SetDocument(nullptr, 0);
        m_pUi->m_pHistogram->SetDocument(nullptr);
        return;
    }
    const KXDocumentModel* model = view->GetModel();
    KXDocumentInterface* document = DocumentOf(view);
    m_pUi->m_pNavigator->SetDocument(document, model ? model->CreateComplexFilter() : nullptr);
    UpdateNavigatorFrame();
    m_pUi->m_pZoom->SetDocument(document, 0);
    m_pUi->m_pHistogram->SetDocument(document);
    // The fraction is dropped on purpose: a view at 33.3 % is brought to 33 % at once.
    m_pUi->m_pZoomSpn->setValue(std::trunc(view->GetScale() * 100.0));
    ConnectView();
}

void NVNavigatorPanel::UpdateNavigatorFrame()
{
    if (!m_pView)
        return;
    const ConnectionCut cut(m_pUi->m_pNavigator, &NavigatorWidget::ViewRectPosChanged, this,
                            &NVNavigatorPanel::OnFrameChanged);
    m_pUi->m_pNavigator->SetViewRect(ViewRect());
}

void NVNavigatorPanel::SetLookAt(const QPoint& point)
{
    m_pUi->m_pZoom->SetLookPoint(point);
}

void NVNavigatorPanel::OnScaleChanged(double scale)
{
    {
        const ConnectionCut cut(m_pUi->m_pZoomSpn, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
                                qOverload<double>(&NVNavigatorPanel::OnZoomChanged));
        m_pUi->m_pZoomSldr->setValue(int(scale * 10000.0));
    }
    UpdateNavigatorFrame();
}

void NVNavigatorPanel::OnZoomChanged(double percent)
{
    // Truncated on purpose, and not blocked: 5.02 becomes 501 hundredths, which set the box back to 5.01.
    m_pUi->m_pZoomSldr->setValue(int(percent * 100.0));
    if (!m_pView)
        return;
    const QPoint middle = Middle(m_pView);
    const QPointF centre = m_pView->mapToScene(middle);
    const double factor = (percent / 100.0) / m_pView->GetScale();
    m_pView->Scale(factor, middle);
    m_pView->centerOn(centre);
}

void NVNavigatorPanel::OnZoomChanged(int value)
{
    const double percent = value / 100.0;
    // Set to what it holds, it would write its text anew under the hands of who types there.
    if (m_pUi->m_pZoomSpn->value() != percent)
        m_pUi->m_pZoomSpn->setValue(percent);
}

void NVNavigatorPanel::OnZoomIn()
{
    const auto* const next = std::upper_bound(ZoomSteps.begin(), ZoomSteps.end(), m_pUi->m_pZoomSpn->value());
    if (next != ZoomSteps.end())
        m_pUi->m_pZoomSpn->setValue(*next);
}

void NVNavigatorPanel::OnZoomOut()
{
    const auto* const notSmaller =
        std::lower_bound(ZoomSteps.begin(), ZoomSteps.end(), m_pUi->m_pZoomSpn->value());
    if (notSmaller != ZoomSteps.begin())
        m_pUi->m_pZoomSpn->setValue(*std::prev(notSmaller));
}

void NVNavigatorPanel::OnSceneAreaChanged()
{
    UpdateNavigatorFrame();
}

void NVNavigatorPanel::OnFrameChanged(const QRectF& frame)
{
    if (!m_pView)
        return;
    const int ratio = devicePixelRatio();
    QRectF rect = ViewRect();
    rect.moveTopLeft(QPointF(frame.x() / ratio, frame.y() / ratio));
    const ConnectionCut cut(m_pView, &NVDocumentView::SceneAreaChanged, this,
                            &NVNavigatorPanel::OnSceneAreaChanged);
    m_pView->ensureVisible(rect, 0, 0);
}

void NVNavigatorPanel::OnCompositionChanged(QRect)
{
    // When the edit ends, the document tells once more.
    if (!DocumentOf(m_pView)->IsBeingEdited())
        Rebuild();
}

void NVNavigatorPanel::OnStyleStateChanged(bool)
{
    Rebuild();
}

void NVNavigatorPanel::OnHistogrammChanngel(int index)
{
    // Behind the end of the table, and for no row at all, stands the last row's value.
    const bool isListed = unsigned(index) < Channels.size();
    m_pUi->m_pHistogram->SetChannel(isListed ? Channels[unsigned(index)] : HistogramWidget::GreenBlue);
}

void NVNavigatorPanel::OnHistogramRangeChanged(int from, int to)
{
    m_pUi->m_pRange->setText(RangeText(from, to));
}

void NVNavigatorPanel::OnHistogramCount(int count)
{
    m_pUi->m_pPixels->setText(QString::number(count));
}

void NVNavigatorPanel::OnHistogramStatus(int level, int count)
{
    m_pUi->m_pCount->setText(QString::number(count));
    m_pUi->m_pLevel->setText(QString::number(level));
}

void NVNavigatorPanel::OnHistogramNoInfo()
{
    m_pUi->m_pCount->setText(QString());
    m_pUi->m_pLevel->setText(QString());
}

void NVNavigatorPanel::ConnectControls()
{
    connect(m_pUi->m_pZoomSldr, &QSlider::valueChanged, this,
            qOverload<int>(&NVNavigatorPanel::OnZoomChanged));
    connect(m_pUi->m_pZoomSpn, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            qOverload<double>(&NVNavigatorPanel::OnZoomChanged));
    connect(m_pUi->m_pZoomIn, &QToolButton::clicked, this, &NVNavigatorPanel::OnZoomIn);
    connect(m_pUi->m_pZoomOut, &QToolButton::clicked, this, &NVNavigatorPanel::OnZoomOut);
    connect(m_pUi->m_pNavigator, &NavigatorWidget::ViewRectPosChanged, this,
            &NVNavigatorPanel::OnFrameChanged);
    connect(m_pUi->m_pChannel, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVNavigatorPanel::OnHistogrammChanngel);
    connect(m_pUi->m_pHistogram, &HistogramWidget::CurrentLevelRangeChanged, this,
            &NVNavigatorPanel::OnHistogramRangeChanged);
    connect(m_pUi->m_pHistogram, &HistogramWidget::StatsChanged, this, &NVNavigatorPanel::OnHistogramStatus);
    connect(m_pUi->m_pHistogram, &HistogramWidget::CountChanged, this, &NVNavigatorPanel::OnHistogramCount);
    connect(m_pUi->m_pHistogram, &HistogramWidget::StatsNoInfo, this, &NVNavigatorPanel::OnHistogramNoInfo);
    connect(m_pUi->m_pGridType, qOverload<int>(&QComboBox::currentIndexChanged), m_pUi->m_pZoom,
            &CameraView::SetGridType);
}

void NVNavigatorPanel::ConnectView()
{
    connect(m_pView, &NVDocumentView::ScaleChanged, this, &NVNavigatorPanel::OnScaleChanged);
    connect(m_pView, &NVDocumentView::SceneAreaChanged, this, &NVNavigatorPanel::OnSceneAreaChanged);
    const KXDocumentInterface* document = DocumentOf(m_pView);
    if (!document)
        return;
    connect(document, &KXDocumentInterface::CompositionChanged, this,
            &NVNavigatorPanel::OnCompositionChanged);
    connect(document, &KXDocumentInterface::StyleStateChanged, this, &NVNavigatorPanel::OnStyleStateChanged);
}

void NVNavigatorPanel::DisconnectView()
{
    disconnect(m_pView, &NVDocumentView::ScaleChanged, this, &NVNavigatorPanel::OnScaleChanged);
    disconnect(m_pView, &NVDocumentView::SceneAreaChanged, this, &NVNavigatorPanel::OnSceneAreaChanged);
    const KXDocumentInterface* document = DocumentOf(m_pView);
    if (!document)
        return;
    disconnect(document, &KXDocumentInterface::CompositionChanged, this,
               &NVNavigatorPanel::OnCompositionChanged);
    disconnect(document, &KXDocumentInterface::StyleStateChanged, this,
               &NVNavigatorPanel::OnStyleStateChanged);
}

QRectF NVNavigatorPanel::ViewRect() const
{
    return m_pView->mapToScene(m_pView->viewport()->rect()).boundingRect();
}

void NVNavigatorPanel::Rebuild()
{
    m_pUi->m_pNavigator->RebuildView();
    m_pUi->m_pHistogram->RebuildHistogramm();
    m_pUi->m_pZoom->RebuildView();
}
