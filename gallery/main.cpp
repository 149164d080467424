// Shows any one widget of the library with a log of its signals: gallery [NAME]

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>

#include "Gallery.h"
#include "GalleryRequest.h"
#include "Language.h"

namespace
{

// What counts only before there is an application: the density, and that only the window needs a display.
void PrepareEnvironment(const QStringList& arguments)
{
    QCommandLineParser parser;
    AddGalleryOptions(parser);
    parser.parse(arguments);
    const GalleryRequest request = ReadGalleryRequest(parser);
    if (request.scale > 1)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(request.scale));
    const bool isSeen = request.error.isEmpty() && request.folder.isEmpty() && !request.list;
    if (!isSeen && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    PrepareEnvironment(arguments);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("gallery"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NORVANE_VERSION));

    const Language language(QLocale::system().uiLanguages());
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("Gallery", "Shows a widget of the library with a log of its signals"));
    parser.addHelpOption();
    parser.addVersionOption();
    AddGalleryOptions(parser);
    parser.process(application);
    return RunGallery(ReadGalleryRequest(parser));
}
