#pragma once

#include <memory>

#include <QMatrix4x4>

#include "generaltoolsgui_export.h"

// How a text is bent: a value, copied with all that it holds. What the numbers do to the text is the host's.
// Nothing is checked: a value may hold any number, NaN among them.
class GENERALTOOLSGUI_EXPORT NVTextDeformation
{
public:
    // The index in the list of NVWarpTextDialog. That dialog gives -1 when nothing is selected there.
    enum Style : int
    {
        StyleNone,
        StyleFlag
    };
    enum Orientation : int
    {
        OrientationHorizontal,
        OrientationVertical
    };

    // StyleFlag, on purpose; horizontal, no amount, the identity.
    NVTextDeformation();
    NVTextDeformation(const NVTextDeformation& other);
    ~NVTextDeformation();
    NVTextDeformation& operator=(const NVTextDeformation& other);

    // Exact to the last bit, the sixteen elements of the matrix included; -0 equals 0. A NaN makes a value
    // differ from every other one, but not from itself.
    bool operator==(const NVTextDeformation& other) const;
    bool operator!=(const NVTextDeformation& other) const;

    Style GetStyle() const;
    Orientation GetOrientation() const;
    // Carried for the host; no dialog shows it.
    QMatrix4x4 GetMatrix() const;
    // The three amounts are percent, from -100 to 100 as the dialog has them.
    double GetBend() const;
    double GetHorizontalDistortion() const;
    double GetVerticalDistortion() const;

    void SetStyle(Style style);
    void SetOrientation(Orientation orientation);
    void SetMatrix(const QMatrix4x4& matrix);
    void SetBend(double percent);
    void SetHorizontalDistortion(double percent);
    void SetVerticalDistortion(double percent);

private:
    struct Data;

    std::unique_ptr<Data> m_pData;
};
