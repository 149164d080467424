#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QVector>

#include "BrushTip.h"

struct BrushPreset
{
    // As a person sees it.
    QString name;
    BrushTip tip;
    // Percent of the size, 1 to 1000.
    int spacing = 1;
};

// The brushes that come with the program, in the language of the program.
QVector<BrushPreset> BuiltInBrushPresets();

// Presets as bytes to store, and back. Bytes of another kind or version, cut short, or with values out of
// range are refused, and the presets stay as they were.
QByteArray WriteBrushPresets(const QVector<BrushPreset>& presets);
bool ReadBrushPresets(const QByteArray& bytes, QVector<BrushPreset>& presets);
