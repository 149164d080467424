#include "BrushSettingsForm_p.h"

#include <QCheckBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLinearGradient>
#include <QListView>
#include <QPainter>
#include <QPushButton>

#include "BrushPresetView_p.h"
#include "Brush_p.h"
#include "KXCommonComboBox.h"
#include "SliderBox_p.h"

namespace
{

const QSize PreviewSize(280, 76);

} // namespace

StrokePreview::StrokePreview(QWidget* parent) : QFrame(parent)
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(tr("Stroke preview"));
}

void StrokePreview::SetStroke(const BrushStroke& stroke, bool colored)
{
    m_stroke = stroke;
    m_colored = colored;
    update();
}

QSize StrokePreview::sizeHint() const
{
    return PreviewSize;
}

void StrokePreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));

    const double ratio = TargetPixelRatio(painter);
    BrushStroke stroke = m_stroke;
    stroke.diameter = qMin(stroke.diameter, height() * 0.62);
    const QImage& mask = m_picture.Get(stroke, size(), ratio);
    QBrush color = palette().brush(QPalette::Text);
    if (m_colored)
    {
        QLinearGradient gradient(0, 0, mask.width(), 0);
        gradient.setColorAt(0.0, palette().color(QPalette::Mid));
        gradient.setColorAt(0.5, palette().color(QPalette::Text));
        gradient.setColorAt(1.0, palette().color(QPalette::Mid));
        color = gradient;
    }
    DrawMask(painter, QPoint(0, 0), mask, ratio, color);
    drawFrame(&painter);
}

BrushSettingsForm::BrushSettingsForm(BrushPresetModel* presets, QWidget* parent) : QWidget(parent)
{
    QWidget* const presetSide = makePresets(presets);
    QWidget* const valueSide = makeValues();
    pDynamics = makeDynamics();

    QGridLayout* const layout = new QGridLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setHorizontalSpacing(12);
    layout->addWidget(presetSide, 0, 0, 2, 1);
    layout->addWidget(valueSide, 0, 1);
    layout->addWidget(pDynamics, 1, 1, Qt::AlignBottom);
    drawShapes();
}

QWidget* BrushSettingsForm::makePresets(BrushPresetModel* presets)
{
    QWidget* const side = new QWidget(this);
    pPresets = new QListView(side);
    pPresets->setModel(presets);
    pPresets->setItemDelegate(new BrushPresetDelegate(pPresets));
    pPresets->setUniformItemSizes(true);
    pPresets->setEditTriggers(QAbstractItemView::NoEditTriggers);
    pPresets->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pPresets->setAccessibleName(tr("Brush presets"));
    pSave = new QPushButton(tr("&Save preset..."), side);
    pRename = new QPushButton(tr("Re&name..."), side);
    pDelete = new QPushButton(tr("&Delete"), side);

    QGridLayout* const layout = new QGridLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(pPresets, 0, 0, 1, 2);
    layout->addWidget(pSave, 1, 0, 1, 2);
    layout->addWidget(pRename, 2, 0);
    layout->addWidget(pDelete, 2, 1);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    pPresets->setFixedWidth(pPresets->sizeHintForColumn(0) + scrollBar + 2 * pPresets->frameWidth());
    return side;
}

QWidget* BrushSettingsForm::makeValues()
{
    QWidget* const side = new QWidget(this);
    QGridLayout* const layout = new QGridLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    pPreview = new StrokePreview(side);
    layout->addWidget(pPreview, 0, 0, 1, 2);

    const auto addRow = [&](const QString& caption, QWidget* control, QWidget* buddy)
    {
        QLabel* const label = new QLabel(caption, side);
        label->setBuddy(buddy);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int row = layout->rowCount();
        layout->addWidget(label, row, 0);
        layout->addWidget(control, row, 1);
    };
    const auto addValue = [&](const QString& caption, const QString& name, int minimum, int maximum,
                              const QString& suffix, SliderBox::Course course)
    {
        SliderBox* const value = new SliderBox(name, minimum, maximum, suffix, course, side);
        addRow(caption, value, value->Box());
        return value;
    };
    const QString percent = tr("%");
    pSize = addValue(tr("Si&ze:"), tr("Size"), 1, 2500, tr(" px"), SliderBox::Growing);
    pSpacing = addValue(tr("S&pacing:"), tr("Spacing"), 1, 1000, percent, SliderBox::Growing);
    pOpacity = addValue(tr("&Opacity:"), tr("Opacity"), 0, 100, percent, SliderBox::Even);
    pShape = new KXCommonComboBox(side);
    pShape->addItems(BrushShapeNames());
    pShape->setAccessibleName(tr("Shape"));
    addRow(tr("Shap&e:"), pShape, pShape);
    pHardness = addValue(tr("&Hardness:"), tr("Hardness"), 0, 100, percent, SliderBox::Even);
    pRoundness = addValue(tr("&Roundness:"), tr("Roundness"), 5, 100, percent, SliderBox::Even);
    pAngle = addValue(tr("&Angle:"), tr("Angle"), -180, 180, tr("°"), SliderBox::Even);
    return side;
}

QWidget* BrushSettingsForm::makeDynamics()
{
    QGroupBox* const box = new QGroupBox(tr("Pen and stroke"), this);
    QGridLayout* const layout = new QGridLayout(box);
    const QVector<QPair<QString, QString>> texts = {
        {tr("Size"), tr("Pressure makes the stamp larger")},
        {tr("Hardness"), tr("Pressure makes the edge harder")},
        {tr("Color"), tr("Pressure leads from the background to the foreground color")},
        {tr("Angle"), tr("The tip turns with the direction of the stroke")},
        {tr("Opacity"), tr("Pressure makes the stamp more opaque")},
        {tr("Scatter"), tr("Stamps are strewn about the path")},
    };
    for (const QPair<QString, QString>& text : texts)
    {
        QCheckBox* const check = new QCheckBox(text.first, box);
        check->setToolTip(text.second);
        check->setAccessibleDescription(text.second);
        layout->addWidget(check, dynamics.size() / 3, dynamics.size() % 3);
        dynamics.append(check);
    }
    return box;
}

void BrushSettingsForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawShapes();
}

void BrushSettingsForm::drawShapes()
{
    for (int i = 0; i < pShape->count(); ++i)
    {
        BrushTip tip;
        tip.shape = static_cast<BrushTip::Shape>(i);
        pShape->setItemIcon(i, BrushTipIcon(tip, palette().color(QPalette::Text)));
    }
}
