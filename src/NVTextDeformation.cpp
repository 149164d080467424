#include "NVTextDeformation.h"

#include <algorithm>

struct NVTextDeformation::Data
{
    double m_verticalDistortion = 0.0;
    double m_horizontalDistortion = 0.0;
    double m_bend = 0.0;
    QMatrix4x4 m_matrix;
    Style m_style = StyleFlag;
    Orientation m_orientation = OrientationHorizontal;
};

namespace
{

const int MatrixElements = 16;

// Not the matrix's own comparison, which may look at the kind of the matrix too.
bool HaveSameElements(const QMatrix4x4& one, const QMatrix4x4& other)
{
    return std::equal(one.constData(), one.constData() + MatrixElements, other.constData());
}

} // namespace

NVTextDeformation::NVTextDeformation() : m_pData(std::make_unique<Data>()) { }

NVTextDeformation::NVTextDeformation(const NVTextDeformation& other)
    : m_pData(std::make_unique<Data>(*other.m_pData))
{
}

NVTextDeformation::~NVTextDeformation() = default;

NVTextDeformation& NVTextDeformation::operator=(const NVTextDeformation& other)
{
    if (this != &other)
        *m_pData = *other.m_pData;
    return *this;
}

bool NVTextDeformation::operator==(const NVTextDeformation& other) const
{
    if (this == &other)
        return true;
    const Data& one = *m_pData;
    const Data& two = *other.m_pData;
    return one.m_verticalDistortion == two.m_verticalDistortion &&
        one.m_horizontalDistortion == two.m_horizontalDistortion && one.m_bend == two.m_bend &&
        HaveSameElements(one.m_matrix, two.m_matrix) && one.m_style == two.m_style &&
        one.m_orientation == two.m_orientation;
}

bool NVTextDeformation::operator!=(const NVTextDeformation& other) const
{
    return !(*this == other);
}

NVTextDeformation::Style NVTextDeformation::GetStyle() const
{
    return m_pData->m_style;
}

NVTextDeformation::Orientation NVTextDeformation::GetOrientation() const
{
    return m_pData->m_orientation;
}

QMatrix4x4 NVTextDeformation::GetMatrix() const
{
    return m_pData->m_matrix;
}

double NVTextDeformation::GetBend() const
{
    return m_pData->m_bend;
}

double NVTextDeformation::GetHorizontalDistortion() const
{
    return m_pData->m_horizontalDistortion;
}

double NVTextDeformation::GetVerticalDistortion() const
{
    return m_pData->m_verticalDistortion;
}

void NVTextDeformation::SetStyle(Style style)
{
    m_pData->m_style = style;
}

void NVTextDeformation::SetOrientation(Orientation orientation)
{
    m_pData->m_orientation = orientation;
}

void NVTextDeformation::SetMatrix(const QMatrix4x4& matrix)
{
    m_pData->m_matrix = matrix;
}

void NVTextDeformation::SetBend(double percent)
{
    m_pData->m_bend = percent;
}

void NVTextDeformation::SetHorizontalDistortion(double percent)
{
    m_pData->m_horizontalDistortion = percent;
}

void NVTextDeformation::SetVerticalDistortion(double percent)
{
    m_pData->m_verticalDistortion = percent;
}
