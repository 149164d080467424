// Norvane, a small image editor: norvane [IMAGE...]

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QSettings>
#include <QTimer>

#include <memory>

#include "Language.h"
#include "MainWindow.h"
#include "Tour.h"

namespace
{

void OpenArguments(MainWindow& window, const QStringList& paths)
{
    if (paths.isEmpty())
        window.OpenSample();
    else
        window.OpenFiles(paths);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    // A fast stroke keeps each of its points.
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QCoreApplication::setOrganizationName(QStringLiteral("Norvane"));
    QCoreApplication::setApplicationName(QStringLiteral("norvane"));
    // under which a desktop finds the icon of the window
    QGuiApplication::setDesktopFileName(QStringLiteral("norvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NORVANE_VERSION));

    auto language = std::make_unique<Language>(QLocale::system().uiLanguages());
    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate("main", "A small image editor"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QCoreApplication::translate(
            "main", "Plays a tour of the program by itself and writes its pictures into DIR."),
        QStringLiteral("DIR"));
    parser.addOption(tour);
    parser.addPositionalArgument(QStringLiteral("IMAGE"),
                                 QCoreApplication::translate("main", "The pictures to open"),
                                 QStringLiteral("[IMAGE...]"));
    parser.process(application);
    if (parser.isSet(tour))
    {
        // It finds what it works by the English texts.
        language.reset();
        return RunTour(parser.value(tour), parser.positionalArguments().value(0));
    }

    QSettings settings;
    MainWindow window(&settings);
    window.show();
    // A file that can't be opened is told in the window, which must be there for it.
    QTimer::singleShot(0, &window, [&] { OpenArguments(window, parser.positionalArguments()); });
    return QApplication::exec();
}
