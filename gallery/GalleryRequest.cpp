#include "GalleryRequest.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include "GalleryExhibits.h"
#include "KXResource.h"

namespace
{

const QLatin1String RenderOption("render");
const QLatin1String ThemeOption("theme");
const QLatin1String ScaleOption("scale");
const QLatin1String ListOption("list");
const int LargestScale = 4;

// In the order of KXResource::Theme.
QStringList ThemeNames()
{
    return {QStringLiteral("light"), QStringLiteral("dark"), QStringLiteral("contrast")};
}

} // namespace

void AddGalleryOptions(QCommandLineParser& parser)
{
    parser.addOption({RenderOption,
                      QCoreApplication::translate("Gallery", "Draws each widget into a PNG file in DIR."),
                      QStringLiteral("DIR")});
    parser.addOption({ThemeOption, QCoreApplication::translate("Gallery", "light, dark or contrast."),
                      QStringLiteral("THEME"), ThemeNames().constFirst()});
    parser.addOption(
        {ScaleOption,
         QCoreApplication::translate("Gallery", "The density of the screen or of the pictures, 1 to 4."),
         QStringLiteral("N"), QStringLiteral("1")});
    parser.addOption(
        {ListOption, QCoreApplication::translate("Gallery", "Prints the names of all widgets.")});
    parser.addPositionalArgument(QStringLiteral("NAME"),
                                 QCoreApplication::translate("Gallery", "The widget to begin with"),
                                 QStringLiteral("[NAME]"));
}

GalleryRequest ReadGalleryRequest(const QCommandLineParser& parser)
{
    GalleryRequest request;
    const QStringList names = parser.positionalArguments();
    request.folder = parser.value(RenderOption);
    request.name = names.value(0);
    request.list = parser.isSet(ListOption);
    request.theme = ThemeNames().indexOf(parser.value(ThemeOption));
    request.scale = parser.value(ScaleOption).toInt();
    if (parser.isSet(RenderOption) && request.folder.isEmpty())
        request.error = QCoreApplication::translate("Gallery", "--render needs a folder.");
    else if (request.theme < KXResource::LightTheme)
        request.error = QCoreApplication::translate("Gallery", "There is no theme \"%1\", only %2.")
                            .arg(parser.value(ThemeOption), ThemeNames().join(QStringLiteral(", ")));
    else if (request.scale < 1 || request.scale > LargestScale)
        request.error =
            QCoreApplication::translate("Gallery", "The scale is a number from 1 to %1, not \"%2\".")
                .arg(QString::number(LargestScale), parser.value(ScaleOption));
    else if (names.size() > 1)
        request.error = QCoreApplication::translate("Gallery", "One widget can be shown at a time.");
    else if (names.size() == 1 && !FindGalleryRow(request.name))
        request.error =
            QCoreApplication::translate("Gallery", "There is no widget \"%1\". --list prints all.")
                .arg(request.name);
    return request;
}
