#include "Language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>

// In no namespace, as the toolkit wants it. Else a linker would leave out what nobody calls.
static void MakeCatalogsKnown()
{
    Q_INIT_RESOURCE(translations);
}

namespace
{

const QString English = QStringLiteral("en");

} // namespace

Language::Language(const QStringList& preferred) : m_name(English)
{
    const QStringList names = GetNames();
    for (const QString& one : preferred)
    {
        const QString name =
            QString(one).replace(QLatin1Char('_'), QLatin1Char('-')).section(QLatin1Char('-'), 0, 0);
        if (names.contains(name))
        {
            m_name = name;
            break;
        }
    }
    if (m_name == English)
        return;
    const QString own = QStringLiteral(":/translations");
    // Of the toolkit's texts there may be none on a machine.
    if (m_toolkit.load(QStringLiteral("qtbase_") + m_name,
                       QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkit);
    if (m_library.load(QStringLiteral("generaltoolsgui_") + m_name, own))
        QCoreApplication::installTranslator(&m_library);
    if (m_editor.load(QStringLiteral("norvane_") + m_name, own))
        QCoreApplication::installTranslator(&m_editor);
}

// Translators take themselves out.
Language::~Language() = default;

QStringList Language::GetNames()
{
    MakeCatalogsKnown();
    QStringList names{English};
    const QStringList catalogs =
        QDir(QStringLiteral(":/translations")).entryList({QStringLiteral("norvane_*.qm")});
    for (const QString& catalog : catalogs)
        names.append(catalog.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0));
    return names;
}
