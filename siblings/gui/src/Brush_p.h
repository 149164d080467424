#pragma once

#include <QColor>
#include <QStringList>

#include "IBrush.h"

// The brush that a settings popup hands out: a name and a tip, which change in place.
class Brush : public IBrush
{
public:
    Brush() = default;

    QIcon& GetColoredIcon(const QColor& color) override;
    QString GetName() const override;
    BrushTip GetTip() const override;

    void SetName(const QString& name);
    void SetTip(const BrushTip& tip);

private:
    QString m_name;
    BrushTip m_tip;
    // What the icon shows; an invalid colour stands for no icon yet.
    QColor m_iconColor;
    QIcon m_icon;
};

// The nearest tip that can be set and shown; what is no number stays as it is at present.
BrushTip BoundedBrushTip(const BrushTip& tip, const BrushTip& present);

// In the order of BrushTip::Shape.
QStringList BrushShapeNames();

// The tip as an icon of 16 and 24 device-independent pixels, sharp at device pixel ratios from 1 to 3.
QIcon BrushTipIcon(const BrushTip& tip, const QColor& color);
