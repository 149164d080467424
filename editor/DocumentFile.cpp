#include "DocumentFile.h"

#include <QColorSpace>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

#include <new>

#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "WatchedDevice.h"

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DocumentFile)
};

bool IsCancelled(const FileProgress* progress)
{
    return progress && progress->cancelled;
}

QByteArray SuffixOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower().toLatin1();
}

// Why the path cannot be read as a picture whatever its content; empty if it can. Opens nothing.
QString WhyNotReadable(const QFileInfo& info)
{
    if (!info.exists())
        return Text::tr("The file does not exist.");
    if (info.isDir())
        return Text::tr("It is a folder.");
    if (!info.isFile())
        return Text::tr("It is not a plain file, but a device, a pipe or a socket.");
    if (!info.isReadable())
        return Text::tr("Permission to read it is missing.");
    if (info.size() == 0)
        return Text::tr("The file is empty.");
    return QString();
}

// Why a document of this size cannot be held; empty if it can.
QString WhyTooLarge(const QSize& size)
{
    const int limit = KXDocumentInterface::MAX_DOC_DIMENSION;
    if (size.width() > limit || size.height() > limit)
        return Text::tr("It is %1 by %2 pixels large, and no side may be longer than %3 pixels.")
            .arg(size.width())
            .arg(size.height())
            .arg(limit);
    return WhyNotInMemory(size, 1);
}

// Whether the plugin met the end of the file too early and said nothing.
bool WasCutShort(const QByteArray& format, const WatchedDevice& device)
{
    if (format == "jpeg" || format == "jpg")
        return device.EmptyReads() > 0;
    if (format == "bmp" || format == "dib" || format == "tga")
        return device.ShortReads() > 0;
    // The text of an XBM is read line by line up to its end, which is met once.
    if (format == "xbm")
        return device.EmptyReads() > 1;
    return false;
}

// The suffix decides where the content has no mark of its own; a wrong suffix does no harm.
void ChooseFormat(QImageReader& reader, WatchedDevice& device, const QByteArray& suffix)
{
    reader.setDevice(&device);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead())
    {
        reader.setDecideFormatFromContent(false);
        reader.setFormat(suffix);
    }
    reader.setAutoTransform(true);
}

LoadResult Decode(QImageReader& reader, WatchedDevice& device, const FileProgress* progress)
{
    const bool isPicture = reader.canRead();
    if (IsCancelled(progress))
        return {};
    if (!isPicture)
        return {QImage(), Text::tr("It is not a picture in any of the known formats.")};
    const QByteArray format = reader.format();
    const QString tooLarge = reader.size().isValid() ? WhyTooLarge(reader.size()) : QString();
    if (!tooLarge.isEmpty())
        return {QImage(), tooLarge};
    device.ResetCounts();
    QImage image;
    const bool ok = reader.read(&image) && !image.isNull();
    if (IsCancelled(progress))
        return {};
    if (!ok)
        return {QImage(), Text::tr("The picture is damaged or was cut short.")};
    if (WasCutShort(format, device))
        return {QImage(), Text::tr("The picture was cut short: the file ends before its last pixel.")};
    const QString tooLargeNow = WhyTooLarge(image.size());
    if (!tooLargeNow.isEmpty())
        return {QImage(), tooLargeNow};
    const QSize size = image.size();
    image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {QImage(), NoMemoryForPicture(size, 1)};
    return {image, QString()};
}

bool HoldsTransparency(const QByteArray& suffix)
{
    static const QList<QByteArray> opaque = {"jpg", "jpeg", "bmp", "dib", "ppm",  "pgm",  "pbm",
                                             "xbm", "wbmp", "pcx", "eps", "epsf", "epsi", "pic"};
    return !opaque.contains(suffix);
}

QImage OnWhite(const QImage& image)
{
    QImage flat(image.size(), QImage::Format_RGB32);
    if (flat.isNull())
        return flat;
    flat.setDotsPerMeterX(image.dotsPerMeterX());
    flat.setDotsPerMeterY(image.dotsPerMeterY());
    // That of a grey picture says nothing of colours.
    if (image.colorSpace().iccProfile().mid(16, 4) == "RGB ")
        flat.setColorSpace(image.colorSpace());
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

// Why nothing can be written under this name; empty if it can.
QString WhyNotWritable(const QString& path)
{
    const QFileInfo info(path);
    if (!HasWritableSuffix(path))
        return info.suffix().isEmpty()
            ? Text::tr("The name needs an ending that tells the format, such as .png.")
            : Text::tr("No plugin writes files that end in \".%1\".").arg(info.suffix());
    if (info.isDir())
        return Text::tr("A folder has this name.");
    if (info.exists() && !info.isFile())
        return Text::tr("It is not a plain file, but a device, a pipe or a socket.");
    if (!info.dir().exists())
        return Text::tr("The folder %1 does not exist.").arg(QDir::toNativeSeparators(info.absolutePath()));
    return QString();
}

SaveResult Encode(const QImage& image, QSaveFile& file, const QByteArray& suffix, FileProgress* progress)
{
    WatchedDevice device(&file, progress);
    QImageWriter writer(&device, suffix);
    if (suffix == "jpg" || suffix == "jpeg" || suffix == "webp")
        writer.setQuality(suffix == "webp" ? 100 : 94);
    const bool ok = writer.write(image);
    if (IsCancelled(progress))
        return {};
    if (!device.WriteError().isEmpty())
        return {false, device.WriteError()};
    if (!ok)
        return {false,
                Text::tr("The picture could not be put into this format: %1").arg(writer.errorString())};
    return {true, QString()};
}

QStringList ToSuffixes(const QList<QByteArray>& formats)
{
    QStringList suffixes;
    for (const QByteArray& format : formats)
        suffixes += QString::fromLatin1(format).toLower();
    suffixes.removeDuplicates();
    suffixes.sort();
    return suffixes;
}

QString ToPatterns(const QStringList& suffixes)
{
    QStringList patterns;
    for (const QString& suffix : suffixes)
        patterns += QStringLiteral("*.") + suffix;
    return patterns.join(QLatin1Char(' '));
}

} // namespace

LoadResult LoadDocumentFile(const QString& path, FileProgress* progress)
{
    const QString reason = WhyNotReadable(QFileInfo(path));
    if (!reason.isEmpty())
        return {QImage(), reason};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {QImage(), file.errorString()};
    WatchedDevice device(&file, progress);
    try
    {
        QImageReader reader;
        ChooseFormat(reader, device, SuffixOf(path));
        return Decode(reader, device, progress);
    }
    catch (const std::bad_alloc&)
    {
        return {QImage(), Text::tr("There is not enough memory for it.")};
    }
}

SaveResult SaveDocumentFile(const QImage& image, const QString& path, FileProgress* progress)
{
    const QString reason = WhyNotWritable(path);
    if (!reason.isEmpty())
        return {false, reason};
    const QByteArray suffix = SuffixOf(path);
    const QImage written = HoldsTransparency(suffix) ? image : OnWhite(image);
    if (written.isNull())
        return {false,
                Text::tr("There is not enough memory to write its %1 by %2 pixels.")
                    .arg(image.width())
                    .arg(image.height())};
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {false, file.errorString()};
    const SaveResult encoded = Encode(written, file, suffix, progress);
    if (!encoded.ok)
    {
        file.cancelWriting();
        return encoded;
    }
    if (!file.commit())
        return {false, file.errorString()};
    return {true, QString()};
}

QStringList ReadableSuffixes()
{
    return ToSuffixes(QImageReader::supportedImageFormats());
}

QStringList WritableSuffixes()
{
    // To ask all plugins takes a while, and a batch asks for each image.
    static const QStringList suffixes = ToSuffixes(QImageWriter::supportedImageFormats());
    return suffixes;
}

bool HasWritableSuffix(const QString& path)
{
    return WritableSuffixes().contains(QFileInfo(path).suffix().toLower());
}

QString OpenNameFilters()
{
    return Text::tr("Pictures (%1);;All files (*)").arg(ToPatterns(ReadableSuffixes()));
}

QString SaveNameFilters()
{
    QStringList filters = {Text::tr("PNG picture (*.png)"), Text::tr("JPEG picture (*.jpg *.jpeg)")};
    const QStringList suffixes = WritableSuffixes();
    for (const QString& suffix : suffixes)
    {
        if (suffix != QLatin1String("png") && suffix != QLatin1String("jpg") &&
            suffix != QLatin1String("jpeg"))
            filters += Text::tr("%1 picture (*.%2)").arg(suffix.toUpper(), suffix);
    }
    return filters.join(QStringLiteral(";;"));
}
