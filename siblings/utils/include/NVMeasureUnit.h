#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

#include "utils_export.h"

// A unit of length: what a person calls it, and how many of it make one inch. A plain value, any thread.
//
// The pixel is a unit too, one that only a resolution can turn into the others. Its factor is PixelFactor.
class UTILS_EXPORT NVMeasureUnit
{
    Q_DECLARE_TR_FUNCTIONS(NVMeasureUnit)

public:
    static constexpr double PixelFactor = -1.0;

    // An inch without name and abbreviation.
    NVMeasureUnit();
    // `factor` as for SetFactor().
    NVMeasureUnit(const QString& name, const QString& abbreviation, double factor);
    NVMeasureUnit(const NVMeasureUnit& other) = default;
    NVMeasureUnit& operator=(const NVMeasureUnit& other) = default;
    // In the library, so that it may come to hold more without a new build of who uses it.
    ~NVMeasureUnit(); // NOLINT(performance-trivially-destructible)

    // What lists show, translated: "mm".
    QString GetAbbreviation() const;
    // Translated: "millimeters".
    QString GetName() const;
    // Number of these units in one inch: 25.4 for millimetres.
    double GetFactor() const;

    // Ignored unless `factor` is PixelFactor, or positive and finite.
    void SetFactor(double factor);

    // The physical units: inches, millimetres, centimetres, points and picas, in this order. The texts are
    // those of the language in force.
    static QList<NVMeasureUnit> StandardUnits();

private:
    QString m_name;
    QString m_abbreviation;
    double m_factor = 1.0;
};

Q_DECLARE_TYPEINFO(NVMeasureUnit, Q_MOVABLE_TYPE);
