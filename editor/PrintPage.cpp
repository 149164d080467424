#include "PrintPage.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <cmath>

#include "WatchedDevice.h"

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PrintPage)
};

const qint32 SettingsVersion = 1;
const int DefaultResolution = 300;
const int MostResolution = 9600;
const double DefaultMargin = 10.0;
// Of a page, in millimetres.
const double LeastSide = 1.0;
const double MostSide = 1000.0;
// What the dialog's boxes go down to, in millimetres.
const double LeastLength = -1000.0;

template <class T>
T Read(QDataStream& stream)
{
    T value{};
    stream >> value;
    return value;
}

// In the order of QPageLayout::Unit, as far as the dialog offers them.
QString UnitName(QPageLayout::Unit unit)
{
    const QString names[] = {Text::tr("mm"), Text::tr("point"), Text::tr("in"), Text::tr("pica")};
    return names[unit];
}

double FromInches(double length, QPageLayout::Unit unit)
{
    const double lengths[] = {25.4, 72.0, 1.0, 6.0};
    return length * lengths[unit];
}

bool IsSide(double length)
{
    return length >= LeastSide && length <= MostSide;
}

// A4 for what is none.
QPageSize ToPage(qint32 id, const QSizeF& custom, QPageLayout::Unit unit)
{
    const QPageSize page = id == QPageSize::Custom ? QPageSize(custom, QPageSize::Unit(unit))
        : id >= 0 && id <= QPageSize::LastPageSize ? QPageSize(QPageSize::PageSizeId(id))
                                                   : QPageSize();
    const QSizeF size = page.size(QPageSize::Millimeter);
    return IsSide(size.width()) && IsSide(size.height()) ? page : QPageSize(QPageSize::A4);
}

void SetPage(PrintLayout* layout, const QPageSize& page, QPageLayout::Orientation orientation)
{
    layout->page =
        QPageLayout(page, orientation, QMarginsF(), QPageLayout::Millimeter, QMarginsF(0, 0, 0, 0));
    layout->paper = layout->page.fullRectPixels(layout->resolution).size();
}

void SetUnit(PrintLayout* layout, qint32 unit)
{
    layout->unit = QPageLayout::Unit(unit >= 0 && unit <= QPageLayout::Pica ? unit : 0);
    const double least = ConvertLength(LeastLength, QPageLayout::Millimeter, layout->unit);
    layout->minimumMargins = QMarginsF(least, least, least, least);
    layout->minimumOffset = QPointF(least, least);
}

PrintLayout DefaultLayout()
{
    PrintLayout layout;
    layout.resolution = DefaultResolution;
    SetPage(&layout, QPageSize(QPageSize::A4), QPageLayout::Portrait);
    SetUnit(&layout, QPageLayout::Millimeter);
    layout.margins = QMarginsF(DefaultMargin, DefaultMargin, DefaultMargin, DefaultMargin);
    layout.rotation = PrintLayout::AutoRotated;
    layout.scaling = PrintLayout::FitToPage;
    return layout;
}

double ReadScale(QDataStream& stream)
{
    const auto percent = Read<double>(stream);
    return percent >= 0.01 && percent <= 10000 ? percent / 100 : 1.0;
}

void ReadScaling(QDataStream& stream, PrintLayout* layout)
{
    switch (Read<qint32>(stream))
    {
    case 0:
        layout->scaling = PrintLayout::Unscaled;
        break;
    case 1:
        layout->scaling = PrintLayout::FitToPage;
        layout->keepRatio = Read<bool>(stream);
        break;
    default:
        layout->scaling = PrintLayout::CustomScale;
        // That the two go together is a matter of the boxes alone.
        Read<bool>(stream);
        layout->scaleX = ReadScale(stream);
        layout->scaleY = ReadScale(stream);
    }
}

QString WhyNotPath(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return Text::tr("A folder has this name.");
    if (info.exists() && !info.isFile())
        return Text::tr("It is not a plain file, but a device, a pipe or a socket.");
    if (!info.dir().exists())
        return Text::tr("The folder %1 does not exist.").arg(QDir::toNativeSeparators(info.absolutePath()));
    return QString();
}

// False when the painter could not begin.
bool DrawPage(QIODevice* device, const QImage& picture, const PrintLayout& layout)
{
    QPdfWriter writer(device);
    writer.setCreator(QStringLiteral("Norvane"));
    writer.setResolution(layout.resolution);
    // Without margins the origin is the corner of the sheet, as that of the preview.
    writer.setPageLayout(layout.page);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    painter.setClipRect(ClipRect(layout));
    painter.setTransform(ImageTransform(layout, picture.size()), true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QPointF(), picture);
    return painter.end();
}

} // namespace

QImage PrintablePicture(const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y)
    {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        QRgb alpha = 0xff000000;
        for (int x = 0; x < picture.width(); ++x)
            alpha &= line[x];
        if (alpha != 0xff000000)
            return picture;
    }
    return picture.convertToFormat(QImage::Format_RGB32);
}

PrintLayout ReadPrintSettings(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    if (Read<qint32>(stream) != SettingsVersion)
        return DefaultLayout();
    const auto page = Read<qint32>(stream);
    QSizeF custom;
    if (page == QPageSize::Custom)
    {
        custom.setWidth(Read<double>(stream));
        custom.setHeight(Read<double>(stream));
    }
    PrintLayout layout = DefaultLayout();
    SetUnit(&layout, Read<qint32>(stream));
    const auto resolution = Read<qint32>(stream);
    layout.resolution = resolution >= 1 && resolution <= MostResolution ? resolution : DefaultResolution;
    const bool isPortrait = Read<qint32>(stream) == 0;
    SetPage(&layout, ToPage(page, custom, layout.unit),
            isPortrait ? QPageLayout::Portrait : QPageLayout::Landscape);
    layout.margins.setLeft(Read<double>(stream));
    layout.margins.setRight(Read<double>(stream));
    layout.margins.setTop(Read<double>(stream));
    layout.margins.setBottom(Read<double>(stream));
    ReadScaling(stream, &layout);
    layout.place = Read<qint32>(stream);
    layout.offset.setX(Read<double>(stream));
    layout.offset.setY(Read<double>(stream));
    const auto rotation = Read<qint32>(stream);
    layout.rotation = rotation >= 0 && rotation <= PrintLayout::UpsideDown ? PrintLayout::Rotation(rotation)
                                                                           : PrintLayout::NotRotated;
    // A record that was cut off says nothing whole.
    return stream.status() == QDataStream::Ok ? layout : DefaultLayout();
}

QString PrintSummary(const PrintedPicture& printed)
{
    const QLocale locale;
    const QTransform& t = printed.transform;
    const double scales[] = {std::hypot(t.m11(), t.m12()), std::hypot(t.m21(), t.m22())};
    const QSizeF size = t.mapRect(QRectF(QPointF(), printed.picture)).size() / qMax(1, printed.resolution);
    const int decimals = printed.unit == QPageLayout::Inch ? 2 : 1;
    const auto length = [&](double inches)
    { return locale.toString(FromInches(inches, printed.unit), 'f', decimals); };
    const auto effective = [&](double scale)
    { return locale.toString(scale > 0 ? printed.resolution / scale : 0.0, 'f', 0); };
    const QString across = effective(scales[0]);
    const QString down = effective(scales[1]);
    return Text::tr("%1, picture %2 x %3 %4, %5 pixels an inch")
        .arg(printed.paper, length(size.width()), length(size.height()), UnitName(printed.unit),
             across == down ? across : Text::tr("%1 x %2").arg(across, down));
}

QString PdfSummary(const PrintLayout& layout, const QSize& picture)
{
    return PrintSummary({layout.page.pageSize().name(), ImageTransform(layout, picture), picture,
                         layout.resolution, layout.unit});
}

QString WritePdf(const QImage& picture, const PrintLayout& layout, const QString& path,
                 FileProgress* progress)
{
    const QString reason = WhyNotPath(path);
    if (!reason.isEmpty())
        return reason;
    if (picture.isNull())
        return Text::tr("There is not enough memory for it.");
    if (ClipRect(layout).isEmpty())
        return Text::tr("The margins leave no room on the page.");
    QSaveFile file(path);
    // A buffer would lose the reason of a write that fails.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    WatchedDevice device(&file, progress);
    const bool isDrawn = DrawPage(&device, picture, layout);
    QString error = device.WriteError();
    // A write that got through in part leaves no reason; the next byte finds it.
    if (!error.isEmpty() && file.write("\n", 1) != 1)
        error = file.errorString();
    if (!isDrawn && error.isEmpty())
        error = Text::tr("The page could not be drawn.");
    const bool isCancelled = progress && progress->cancelled;
    if (isCancelled || !error.isEmpty())
        file.cancelWriting();
    else if (!file.commit())
        error = file.errorString();
    return isCancelled ? QString() : error;
}
