#include "BrushPresets_p.h"

#include <QDataStream>
#include <cmath>

namespace
{

const quint32 Magic = 0x4e564250; // "NVBP"
const quint16 Version = 1;
const quint32 MaxPresets = 1000;
const int MaxNameLength = 100;

struct BuiltIn
{
    const char* name;
    BrushTip tip;
    int spacing;
};

const BuiltIn BuiltIns[] = {
    {QT_TRANSLATE_NOOP("BrushPresets", "Hard round"), {BrushTip::Round, 1.0, 1.0, 0.0}, 5},
    {QT_TRANSLATE_NOOP("BrushPresets", "Medium round"), {BrushTip::Round, 0.6, 1.0, 0.0}, 6},
    {QT_TRANSLATE_NOOP("BrushPresets", "Soft round"), {BrushTip::Round, 0.0, 1.0, 0.0}, 8},
    {QT_TRANSLATE_NOOP("BrushPresets", "Halo"), {BrushTip::Round, 0.0, 1.0, 0.0}, 30},
    {QT_TRANSLATE_NOOP("BrushPresets", "Calligraphy"), {BrushTip::Round, 0.95, 0.18, 45.0}, 2},
    {QT_TRANSLATE_NOOP("BrushPresets", "Left-handed pen"), {BrushTip::Round, 0.95, 0.18, 135.0}, 2},
    {QT_TRANSLATE_NOOP("BrushPresets", "Flat"), {BrushTip::Square, 0.9, 0.3, 0.0}, 4},
    {QT_TRANSLATE_NOOP("BrushPresets", "Marker"), {BrushTip::Square, 0.85, 0.5, 60.0}, 3},
    {QT_TRANSLATE_NOOP("BrushPresets", "Square"), {BrushTip::Square, 1.0, 1.0, 0.0}, 5},
    {QT_TRANSLATE_NOOP("BrushPresets", "Diamond"), {BrushTip::Diamond, 1.0, 0.7, 0.0}, 5},
    {QT_TRANSLATE_NOOP("BrushPresets", "Chalk"), {BrushTip::Spray, 0.9, 0.7, 30.0}, 18},
    {QT_TRANSLATE_NOOP("BrushPresets", "Spray can"), {BrushTip::Spray, 0.2, 1.0, 0.0}, 30},
    {QT_TRANSLATE_NOOP("BrushPresets", "Dry bristle"), {BrushTip::Spray, 1.0, 0.2, 90.0}, 6},
    {QT_TRANSLATE_NOOP("BrushPresets", "Dotted line"), {BrushTip::Round, 1.0, 1.0, 0.0}, 160},
    {QT_TRANSLATE_NOOP("BrushPresets", "Dashes"), {BrushTip::Square, 1.0, 0.35, 0.0}, 150},
    {QT_TRANSLATE_NOOP("BrushPresets", "Stars"), {BrushTip::Star, 1.0, 1.0, 0.0}, 130},
};

bool within(double value, double low, double high)
{
    return std::isfinite(value) && value >= low && value <= high;
}

bool readPreset(QDataStream& stream, BrushPreset& preset)
{
    qint32 shape = 0;
    qint32 spacing = 0;
    BrushTip& tip = preset.tip;
    stream >> preset.name >> shape >> tip.hardness >> tip.roundness >> tip.angle >> spacing;
    tip.shape = static_cast<BrushTip::Shape>(qBound<int>(BrushTip::Round, shape, BrushTip::Spray));
    preset.spacing = spacing;
    return stream.status() == QDataStream::Ok && !preset.name.trimmed().isEmpty() &&
        preset.name.size() <= MaxNameLength && tip.shape == shape && within(tip.hardness, 0, 1) &&
        within(tip.roundness, 0.05, 1) && within(tip.angle, -360, 360) && spacing >= 1 && spacing <= 1000;
}

} // namespace

QVector<BrushPreset> BuiltInBrushPresets()
{
    QVector<BrushPreset> presets;
    for (const BuiltIn& builtIn : BuiltIns)
        presets.append(
            {QCoreApplication::translate("BrushPresets", builtIn.name), builtIn.tip, builtIn.spacing});
    return presets;
}

QByteArray WriteBrushPresets(const QVector<BrushPreset>& presets)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << Magic << Version << quint32(presets.size());
    for (const BrushPreset& preset : presets)
        stream << preset.name << qint32(preset.tip.shape) << preset.tip.hardness << preset.tip.roundness
               << preset.tip.angle << qint32(preset.spacing);
    return bytes;
}

bool ReadBrushPresets(const QByteArray& bytes, QVector<BrushPreset>& presets)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 magic = 0;
    quint16 version = 0;
    quint32 count = 0;
    stream >> magic >> version >> count;
    if (stream.status() != QDataStream::Ok || magic != Magic || version != Version || count > MaxPresets)
        return false;
    QVector<BrushPreset> read;
    for (quint32 i = 0; i < count; ++i)
    {
        BrushPreset preset;
        if (!readPreset(stream, preset))
            return false;
        read.append(preset);
    }
    if (!stream.atEnd())
        return false;
    presets = read;
    return true;
}
