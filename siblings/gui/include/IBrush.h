#pragma once

#include <QIcon>
#include <QString>

#include "BrushTip.h"
#include "gui_export.h"

class QColor;

// A brush as the settings popup hands it out. It belongs to the popup; a pointer holds until the popup
// reports another brush or is destroyed. GUI thread only.
class GUI_EXPORT IBrush
{
public:
    virtual ~IBrush();

    // An icon of the brush in the colour; the reference holds until the next call.
    virtual QIcon& GetColoredIcon(const QColor& color) = 0;
    virtual QString GetName() const = 0;
    virtual BrushTip GetTip() const = 0;

protected:
    IBrush() = default;

private:
    Q_DISABLE_COPY(IBrush)
};
