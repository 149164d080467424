#include "TestMain.h"

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace
{
void redirectSettings(const QString& folder)
{
    QStandardPaths::setTestModeEnabled(true);
    for (const QSettings::Format format : {QSettings::NativeFormat, QSettings::IniFormat})
    {
        QSettings::setPath(format, QSettings::UserScope, folder);
        QSettings::setPath(format, QSettings::SystemScope, folder);
    }
}
} // namespace

int RunGuardedTest(int argc, char** argv, const std::function<std::unique_ptr<QObject>()>& makeTest)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QTemporaryDir folder;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
    {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
    }
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QCoreApplication::setOrganizationName(QStringLiteral("NorvaneTest"));
    QCoreApplication::setApplicationName(QFileInfo(QString::fromLocal8Bit(argv[0])).completeBaseName());

    redirectSettings(folder.path());
    QDir::setCurrent(folder.path());
    const std::unique_ptr<QObject> test = makeTest();
    return QTest::qExec(test.get(), argc, argv);
}
