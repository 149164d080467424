#include "LoupeDock.h"

#include <QSettings>

#include "Document.h"
#include "LayerSample.h"
#include "NVZoomPanel.h"

namespace
{

const QLatin1String ScaleKey("loupe/scale");
const QLatin1String GridKey("loupe/grid");

const int FirstScale = 8;
const int GridTypes = 4;

} // namespace

LoupeDock::LoupeDock(QSettings* settings, QWidget* parent)
    : QDockWidget(tr("Loupe"), parent), m_pSettings(settings), m_pPanel(new NVZoomPanel(this))
{
    setObjectName(QStringLiteral("LoupeDock"));
    const int grid = m_pSettings->value(GridKey, 0).toInt();
    m_pPanel->SetZoomValue(m_pSettings->value(ScaleKey, FirstScale).toInt());
    m_pPanel->SetGridType(grid >= 0 && grid < GridTypes ? grid : 0);
    setWidget(m_pPanel);
    hide();
}

void LoupeDock::SetCanvas(NVDocumentView* view, Document* document)
{
    if (m_pView)
        disconnect(m_pView, nullptr, this, nullptr);
    m_pView = view;
    m_pPanel->SetDocument(document ? document->GetPixels() : nullptr);
    if (view)
        connect(view, &NVDocumentView::Moved, this, &LoupeDock::OnPointerMoved);
}

void LoupeDock::StoreValues()
{
    m_pSettings->setValue(ScaleKey, m_pPanel->GetZoomValue());
    m_pSettings->setValue(GridKey, m_pPanel->GetGridType());
}

void LoupeDock::OnPointerMoved(const CanvasPoint& point)
{
    m_pPanel->SetLookPosition(PixelAt(point.position));
}
