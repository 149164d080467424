#include "ColorSampleDock.h"

#include <QColor>
#include <QListView>
#include <QMenu>

#include "ColorReadOut.h"
#include "ColorSampleModel.h"
#include "ColorSamples.h"
#include "NVColorSamplePanel.h"
#include "SampleCommand.h"

namespace
{

const int RoomBeside = 120;

} // namespace

ColorSampleDock::ColorSampleDock(QWidget* parent)
    : QDockWidget(tr("Colour Samples"), parent),
      m_pModel(new ColorSampleModel(this)),
      m_pPanel(new NVColorSamplePanel(this))
{
    setObjectName(QStringLiteral("ColorSampleDock"));
    m_pPanel->SetModel(m_pModel);
    // Wide enough for the longest colour, beside number, swatch and scroll bar.
    m_pPanel->setMinimumWidth(fontMetrics().horizontalAdvance(ColorReadOut(Qt::white)) + RoomBeside);
    // Else it would be nobody's.
    m_pPanel->findChild<QListView*>()->itemDelegate()->setParent(this);
    setWidget(m_pPanel);
    connect(m_pPanel, &NVColorSamplePanel::MousePressed, this, &ColorSampleDock::OnMousePressed);
    connect(m_pPanel, &NVColorSamplePanel::MouseReleased, this, &ColorSampleDock::OnMouseReleased);
    connect(m_pModel, &QAbstractItemModel::modelReset, this, &ColorSampleDock::OnShowCurrent);
    hide();
}

ColorSampleDock::~ColorSampleDock() = default;

void ColorSampleDock::SetDocument(Document* document)
{
    if (ColorSamples* samples = m_pModel->GetSamples())
        disconnect(samples, nullptr, this, nullptr);
    m_pModel->SetDocument(document);
    if (ColorSamples* samples = m_pModel->GetSamples())
        connect(samples, &ColorSamples::CurrentChanged, this, &ColorSampleDock::OnShowCurrent);
    OnShowCurrent();
}

void ColorSampleDock::SetSide(int side)
{
    m_pModel->SetSide(side);
}

void ColorSampleDock::OnMousePressed(const QPoint& globalPos, int button)
{
    Q_UNUSED(button)
    if (ColorSamples* samples = m_pModel->GetSamples())
        samples->SetCurrent(m_pPanel->GetItemAt(globalPos));
}

void ColorSampleDock::OnMouseReleased(const QPoint& globalPos, int button)
{
    ColorSamples* samples = m_pModel->GetSamples();
    if (button != Qt::RightButton || !samples || samples->GetCurrent() < 0)
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&Delete Sample"), this, &ColorSampleDock::OnDelete);
    menu->addAction(tr("Delete &All Samples"), this, &ColorSampleDock::OnDeleteAll);
    menu->popup(globalPos);
}

void ColorSampleDock::OnShowCurrent()
{
    const ColorSamples* samples = m_pModel->GetSamples();
    const int current = samples ? samples->GetCurrent() : -1;
    m_pPanel->SelectRow(current);
    if (current >= 0)
        m_pPanel->ScrollTo(current);
}

void ColorSampleDock::OnDelete()
{
    ColorSamples* samples = m_pModel->GetSamples();
    if (!samples)
        return;
    const QVector<QPoint> before = samples->GetPixels();
    samples->Remove(samples->GetCurrent());
    PushSamples(samples, tr("Delete Colour Sample"), before);
}

void ColorSampleDock::OnDeleteAll()
{
    ColorSamples* samples = m_pModel->GetSamples();
    if (!samples)
        return;
    const QVector<QPoint> before = samples->GetPixels();
    samples->Clear();
    PushSamples(samples, tr("Delete All Colour Samples"), before);
}
