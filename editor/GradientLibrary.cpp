#include "GradientLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include "GradientNames.h"
#include "GradientStops.h"

namespace
{

const int MaxAside = 1000;
// Between two stops.
const double Hair = 1e-6;

struct ShippedStop
{
    double position;
    // Not premultiplied.
    QRgb color;
};

struct ShippedGradient
{
    const char* name;
    QVector<ShippedStop> stops;
};

QRgb Opaque(uint color)
{
    return 0xff000000 | color;
}

const QVector<ShippedGradient>& ShippedTable()
{
    static const QVector<ShippedGradient> table = {
        {QT_TRANSLATE_NOOP("GradientLibrary", "Ink to Paper"),
         {{0.0, Opaque(0x101216)}, {1.0, Opaque(0xfdfcf8)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Shade"), {{0.0, 0xff000000}, {1.0, 0x00000000}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Glow"), {{0.0, 0xffffffff}, {1.0, 0x00ffffff}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Daybreak"),
         {{0.0, Opaque(0x1b2450)},
          {0.35, Opaque(0x7a3f78)},
          {0.62, Opaque(0xe8735a)},
          {0.85, Opaque(0xf9c46b)},
          {1.0, Opaque(0xfff3cf)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Deep Lagoon"),
         {{0.0, Opaque(0x04222f)},
          {0.45, Opaque(0x0b6d7d)},
          {0.8, Opaque(0x4fc9bd)},
          {1.0, Opaque(0xdaf7e6)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Embers"),
         {{0.0, Opaque(0x140406)},
          {0.3, Opaque(0x7c1109)},
          {0.6, Opaque(0xe5540f)},
          {0.85, Opaque(0xffc43a)},
          {1.0, Opaque(0xfffbe0)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Pine Ridge"),
         {{0.0, Opaque(0x0d1f14)}, {0.5, Opaque(0x3b6b3a)}, {1.0, Opaque(0xc9d79a)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Orchard"),
         {{0.0, Opaque(0xb4162c)}, {0.5, Opaque(0xf2a33a)}, {1.0, Opaque(0x7fa834)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Violet Hour"),
         {{0.0, Opaque(0x2a1247)}, {0.55, Opaque(0x8146b5)}, {1.0, Opaque(0xf3c9e8)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Frost"),
         {{0.0, Opaque(0x2f6fb0)}, {0.4, Opaque(0x9fd2ee)}, {1.0, Opaque(0xf6fcff)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Full Circle"),
         {{0.0, Opaque(0xe3342f)},
          {0.17, Opaque(0xe8c22e)},
          {0.33, Opaque(0x4bb543)},
          {0.5, Opaque(0x2cb5b0)},
          {0.67, Opaque(0x3155c6)},
          {0.83, Opaque(0xb03fb8)},
          {1.0, Opaque(0xe3342f)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Rain Arch"),
         {{0.2, 0x00e0302c},
          {0.3, 0xb0e0302c},
          {0.4, 0xb0f0b429},
          {0.5, 0xb04caf50},
          {0.6, 0xb02f80ed},
          {0.7, 0xb07b3fb5},
          {0.8, 0x007b3fb5}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Brass Tube"),
         {{0.0, Opaque(0x4a3310)},
          {0.25, Opaque(0xc79a3b)},
          {0.4, Opaque(0xfff2c0)},
          {0.6, Opaque(0xb5832a)},
          {0.85, Opaque(0x5e4114)},
          {1.0, Opaque(0x8f6a25)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Steel Tube"),
         {{0.0, Opaque(0x3c444c)},
          {0.3, Opaque(0xaab4bd)},
          {0.42, Opaque(0xf7fafc)},
          {0.6, Opaque(0x8d98a3)},
          {1.0, Opaque(0x4a545e)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Horizon"),
         {{0.0, Opaque(0x1e62b4)},
          {0.5, Opaque(0xcfe8f7)},
          {0.5, Opaque(0x6b4a2c)},
          {1.0, Opaque(0xd9b884)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Two Halves"),
         {{0.0, Opaque(0x1d3557)},
          {0.5, Opaque(0x1d3557)},
          {0.5, Opaque(0xf1e9da)},
          {1.0, Opaque(0xf1e9da)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Awning"),
         {{0.0, Opaque(0xc0392b)},
          {0.25, Opaque(0xc0392b)},
          {0.25, Opaque(0xf8f4ec)},
          {0.5, Opaque(0xf8f4ec)},
          {0.5, Opaque(0xc0392b)},
          {0.75, Opaque(0xc0392b)},
          {0.75, Opaque(0xf8f4ec)},
          {1.0, Opaque(0xf8f4ec)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Venetian Blind"),
         {{0.0, 0xff20242a},
          {0.3, 0xff20242a},
          {0.3, 0x0020242a},
          {0.65, 0x0020242a},
          {0.65, 0xff20242a},
          {1.0, 0xff20242a}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Bull's Eye"),
         {{0.0, Opaque(0xf3c623)},
          {0.2, Opaque(0xf3c623)},
          {0.2, Opaque(0xd63031)},
          {0.4, Opaque(0xd63031)},
          {0.4, Opaque(0x2d7dd2)},
          {0.6, Opaque(0x2d7dd2)},
          {0.6, Opaque(0x1e1e24)},
          {0.8, Opaque(0x1e1e24)},
          {0.8, Opaque(0xfafafa)},
          {1.0, Opaque(0xfafafa)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Soap Film"),
         {{0.0, 0x60ffc3e1}, {0.25, 0x909fe3ff}, {0.5, 0x60fff2a8}, {0.75, 0x90b6ffcf}, {1.0, 0x60dcc0ff}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Spotlight"),
         {{0.0, 0xe6fff6d8}, {0.35, 0x99ffe9a8}, {1.0, 0x00ffd98a}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Vignette"),
         {{0.0, 0x000a0608}, {0.55, 0x000a0608}, {1.0, 0xd90a0608}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Sepia Wash"),
         {{0.0, Opaque(0x2b1a0e)}, {0.5, Opaque(0x9c7146)}, {1.0, Opaque(0xf6e7cb)}}},
        {QT_TRANSLATE_NOOP("GradientLibrary", "Neon Edge"),
         {{0.0, Opaque(0x0b0b1e)},
          {0.48, Opaque(0x161640)},
          {0.5, Opaque(0xff2fd0)},
          {0.52, Opaque(0x0e3a66)},
          {1.0, Opaque(0x18e0ff)}}}};
    return table;
}

// Lists and bars show of several stops at one place the last one alone: so they stand a hair apart, which no
// picture is large enough to show.
QGradientStops Separated(QGradientStops stops)
{
    for (int i = 1; i < stops.size(); ++i)
        stops[i].first = std::max(stops.at(i).first, stops.at(i - 1).first + Hair);
    double limit = 1;
    for (int i = stops.size() - 1; i >= 0 && stops.at(i).first > limit; --i, limit -= Hair)
        stops[i].first = limit;
    return stops;
}

QVector<NamedGradient> Separated(QVector<NamedGradient> gradients)
{
    for (NamedGradient& gradient : gradients)
        gradient.stops = Separated(gradient.stops);
    return gradients;
}

} // namespace

GradientLibrary::GradientLibrary(const QString& path, QObject* parent) : QObject(parent), m_path(path)
{
    Restore();
}

GradientLibrary::~GradientLibrary() = default;

QVector<NamedGradient> GradientLibrary::Shipped()
{
    QVector<NamedGradient> all;
    for (const ShippedGradient& shipped : ShippedTable())
    {
        NamedGradient gradient = {tr(shipped.name), {}};
        for (const ShippedStop& stop : shipped.stops)
            gradient.stops.append({stop.position, QColor::fromRgba(stop.color)});
        all.append(gradient);
    }
    return Separated(all);
}

const QVector<NamedGradient>& GradientLibrary::GetGradients() const
{
    return m_gradients;
}

QList<QList<NVGradientStop>> GradientLibrary::GetList() const
{
    QList<QList<NVGradientStop>> list;
    for (const NamedGradient& gradient : m_gradients)
        list.append(FromGradientStops(gradient.stops));
    return list;
}

QString GradientLibrary::GetProblem() const
{
    return m_problem;
}

bool GradientLibrary::Update(const QList<QList<NVGradientStop>>& list, QString* error)
{
    QVector<QGradientStops> stops;
    for (const QList<NVGradientStop>& gradient : list)
        stops.append(ToGradientStops(gradient));
    m_gradients = WithNames(stops, m_gradients, tr("Gradient %1"));
    return Store(error);
}

bool GradientLibrary::Add(const QVector<NamedGradient>& gradients, QString* error)
{
    m_gradients += Separated(gradients);
    return Store(error);
}

void GradientLibrary::Restore()
{
    m_gradients = Shipped();
    if (!QFileInfo::exists(m_path))
        return;
    QString error;
    const QVector<NamedGradient> read = GradientFile::Read(m_path, &error);
    if (!read.isEmpty())
        m_gradients = Separated(read);
    else if (!PutAside())
    {
        m_isLocked = true;
        m_problem =
            tr("%1\n\nThe gradients are those of the program, and changes of them are not kept.").arg(error);
    }
}

// Nothing is lost, whatever is wrong with it.
bool GradientLibrary::PutAside()
{
    const QFileInfo file(m_path);
    for (int i = 1; i <= MaxAside; ++i)
    {
        const QString aside = file.dir().filePath(
            QStringLiteral("%1-damaged-%2.%3").arg(file.completeBaseName()).arg(i).arg(file.suffix()));
        if (QFileInfo::exists(aside))
            continue;
        if (!QFile::rename(m_path, aside))
            return false;
        m_problem =
            tr("The stored gradients could not be read. The gradients are those of the program; what was "
               "stored is kept in \"%1\".")
                .arg(QDir::toNativeSeparators(aside));
        return true;
    }
    return false;
}

bool GradientLibrary::Store(QString* error)
{
    error->clear();
    if (m_isLocked)
        *error = m_problem;
    else if (m_gradients.isEmpty())
        QFile::remove(m_path);
    else if (QDir().mkpath(QFileInfo(m_path).path()))
        return GradientFile::Write(m_path, m_gradients, error);
    else
        *error = tr("The folder of \"%1\" could not be made.").arg(QDir::toNativeSeparators(m_path));
    return error->isEmpty();
}
