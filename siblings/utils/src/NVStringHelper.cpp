#include "NVStringHelper.h"

#include <QFile>
#include <QGuiApplication>

#include <array>

namespace
{
// Where the suffix starts, its dot included; -1 for a name without one. A leading dot starts a hidden name.
int suffixPosition(const QString& name)
{
    const int nameStart = qMax(name.lastIndexOf(QLatin1Char('/')), name.lastIndexOf(QLatin1Char(':'))) + 1;
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot > nameStart && dot < name.size() - 1 ? dot : -1;
}

// Whether the part before the suffix ends in "@2x" or the like.
bool hasRatio(const QString& name, int suffix)
{
    return suffix >= 3 && name.at(suffix - 3) == QLatin1Char('@') && name.at(suffix - 2).isDigit() &&
        name.at(suffix - 1) == QLatin1Char('x');
}
} // namespace

QString NVStringHelper::DPIAdjustImageName(const QString& name)
{
    return ImageNameForRatio(name, qGuiApp ? qGuiApp->devicePixelRatio() : 1.0);
}

QString NVStringHelper::ImageNameForRatio(const QString& name, double ratio)
{
    const int suffix = suffixPosition(name);
    if (!(ratio > 1.0) || suffix < 0 || hasRatio(name, suffix))
        return name;

    std::array<QLatin1String, 2> marks = {QLatin1String("@2x"), QLatin1String("@3x")};
    if (ratio > 2.0)
        std::swap(marks[0], marks[1]);
    for (const QLatin1String mark : marks)
    {
        const QString candidate = QString(name).insert(suffix, mark);
        if (QFile::exists(candidate))
            return candidate;
    }
    return name;
}
