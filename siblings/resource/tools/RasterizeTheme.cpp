// Makes the pictures and style sheets of the themes: reads the drawings and sheets listed in a text file and
// gives each the colours of each theme. A drawing is written as PNG in three sizes, a sheet as text, with a
// resource collection file beside them.
//
//   rasterize_theme LIST FOLDER

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <array>

namespace
{
// The colours as they stand in drawings and sheets, which are those of the light theme.
const char* const DrawnColors[] = {"#303a46", "#1f78d1", "#d3e4f7", "#ffffff",
                                   "#c8312b", "#e8a317", "#5f656d"};

struct Theme
{
    const char* name;
    // In the order of DrawnColors: ink, accent, soft fill, paper, danger, caution, pale text.
    std::array<const char*, 7> colors;
};

const Theme Themes[] = {
    {"light", {"#303a46", "#1f78d1", "#d3e4f7", "#ffffff", "#c8312b", "#e8a317", "#5f656d"}},
    {"dark", {"#e3e7ec", "#5db0ff", "#3a4f66", "#20252b", "#ff7a70", "#ffc552", "#aeb3ba"}},
    {"contrast", {"#000000", "#0000c0", "#ffffff", "#ffffff", "#a00000", "#ffd000", "#5a5a5a"}},
};

const int Scales[] = {1, 2, 3};

[[noreturn]] void fail(const QString& text)
{
    QTextStream(stderr) << text << '\n';
    std::exit(1);
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(path + QLatin1String(": ") + file.errorString());
    return file.readAll();
}

QByteArray recolored(QByteArray drawing, const Theme& theme)
{
    // Through marks that are no colour, so that a colour of the theme that equals a drawn one is not replaced
    // again.
    for (std::size_t i = 0; i < theme.colors.size(); ++i)
        drawing.replace(DrawnColors[i], QByteArray("@color") + char('0' + i));
    for (std::size_t i = 0; i < theme.colors.size(); ++i)
        drawing.replace(QByteArray("@color") + char('0' + i), theme.colors[i]);
    return drawing;
}

QImage rasterized(QSvgRenderer& renderer, int scale)
{
    QImage image(renderer.defaultSize() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    return image;
}

// Writes one drawing in all sizes for one theme and adds the files to the collection.
void writePictures(const QString& path, const Theme& theme, const QDir& folder, QTextStream& collection)
{
    QSvgRenderer renderer;
    if (!renderer.load(recolored(contents(path), theme)) || renderer.defaultSize().isEmpty())
        fail(path + QLatin1String(": no drawing with a size"));
    for (const int scale : Scales)
    {
        const QString ratio = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
        const QString name = QStringLiteral("%1/%2%3.png")
                                 .arg(QLatin1String(theme.name), QFileInfo(path).completeBaseName(), ratio);
        if (!rasterized(renderer, scale).save(folder.filePath(name)))
            fail(folder.filePath(name) + QLatin1String(": cannot be written"));
        collection << "    <file>" << name << "</file>\n";
    }
}

void writeSheet(const QString& path, const Theme& theme, const QDir& folder, QTextStream& collection)
{
    const QString name = QStringLiteral("%1/%2").arg(QLatin1String(theme.name), QFileInfo(path).fileName());
    const QByteArray text = recolored(contents(path), theme);
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        fail(file.fileName() + QLatin1String(": ") + file.errorString());
    collection << "    <file>" << name << "</file>\n";
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3)
        fail(QStringLiteral("usage: rasterize_theme LIST FOLDER"));

    const QDir folder(QString::fromLocal8Bit(argv[2]));
    QByteArray collectionText;
    QTextStream collection(&collectionText);
    collection << "<RCC>\n  <qresource prefix=\"/theme\">\n";
    for (const Theme& theme : Themes)
    {
        folder.mkpath(QLatin1String(theme.name));
        const QList<QByteArray> lines = contents(QString::fromLocal8Bit(argv[1])).split('\n');
        for (const QByteArray& line : lines)
        {
            if (line.endsWith(".qss"))
                writeSheet(QString::fromLocal8Bit(line), theme, folder, collection);
            else if (!line.isEmpty())
                writePictures(QString::fromLocal8Bit(line), theme, folder, collection);
        }
    }
    collection << "  </qresource>\n</RCC>\n";
    collection.flush();

    QFile file(folder.filePath(QStringLiteral("theme.qrc")));
    if (!file.open(QIODevice::WriteOnly) || file.write(collectionText) != collectionText.size())
        fail(file.fileName() + QLatin1String(": ") + file.errorString());
    return 0;
}
