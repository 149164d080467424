// A program speaks the first language that a person likes and that there are texts in.

#include "Language.h"
#include "MainWindow.h"
#include "TestMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTemporaryDir>

namespace
{

QString editorsCancel()
{
    return QCoreApplication::translate("BatchWindow", "C&ancel").remove(QLatin1Char('&'));
}

QString librarysCancel()
{
    return QCoreApplication::translate("AddToBatchDialog", "Cancel");
}

// The letters that open the entries, in the order of the entries; a dash for one that has none.
QString keysOf(const QList<QAction*>& actions)
{
    QString keys;
    for (const QAction* action : actions)
    {
        if (action->isSeparator() || !action->isVisible())
            continue;
        const QKeySequence key = QKeySequence::mnemonic(action->text());
        keys += key.isEmpty() ? QStringLiteral("-") : key.toString().right(1);
    }
    return keys;
}

QString repeatedKey(const QList<QAction*>& actions)
{
    const QString keys = keysOf(actions);
    for (const QChar key : keys)
    {
        if (key != QLatin1Char('-') && keys.count(key) > 1)
            return keys;
    }
    return QString();
}

} // namespace

class tst_Language : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstOneThatThereIsCounts_data();
    void firstOneThatThereIsCounts();
    void editorLibraryAndToolkitAreTranslated();
    void englishComesBack();
    void noMenuHasAKeyTwice_data();
    void noMenuHasAKeyTwice();
};

void tst_Language::firstOneThatThereIsCounts_data()
{
    QTest::addColumn<QStringList>("preferred");
    QTest::addColumn<QString>("name");

    QTest::newRow("none") << QStringList() << "en";
    QTest::newRow("the country does not count") << QStringList{"de-AT"} << "de";
    QTest::newRow("as the C library spells it") << QStringList{"de_DE"} << "de";
    QTest::newRow("with its script") << QStringList{"de-Latn-DE", "de"} << "de";
    QTest::newRow("the next one if there are no texts") << QStringList{"tlh", "de"} << "de";
    QTest::newRow("English before German") << QStringList{"en-GB", "de-DE"} << "en";
    QTest::newRow("no language at all") << QStringList{"C"} << "en";
    QTest::newRow("empty names") << QStringList{"", "-", "_"} << "en";
}

void tst_Language::firstOneThatThereIsCounts()
{
    QFETCH(QStringList, preferred);
    QFETCH(QString, name);
    const Language language(preferred);
    QCOMPARE(language.GetName(), name);
    QVERIFY(Language::GetNames().contains(name));
}

void tst_Language::editorLibraryAndToolkitAreTranslated()
{
    const Language language({"de"});
    QCOMPARE(editorsCancel(), QStringLiteral("Abbrechen"));
    QCOMPARE(librarysCancel(), QStringLiteral("Abbrechen"));
    const QString toolkits = QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm";
    if (!QFile::exists(toolkits))
        QSKIP("The toolkit's own texts are in English. Install them: tools/install-packages.sh run");
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
}

void tst_Language::englishComesBack()
{
    {
        const Language language({"de"});
        QCOMPARE(librarysCancel(), QStringLiteral("Abbrechen"));
    }
    QCOMPARE(librarysCancel(), QStringLiteral("Cancel"));
    QCOMPARE(editorsCancel(), QStringLiteral("Cancel"));
}

void tst_Language::noMenuHasAKeyTwice_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = Language::GetNames();
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Language::noMenuHasAKeyTwice()
{
    QFETCH(QString, name);
    const Language language({name});
    const QTemporaryDir folder;
    QSettings settings(folder.filePath("settings"), QSettings::IniFormat);
    MainWindow window(&settings);
    QCOMPARE(repeatedKey(window.menuBar()->actions()), QString());
    const QList<QMenu*> menus = window.menuBar()->findChildren<QMenu*>();
    QVERIFY(menus.size() > 5);
    for (QMenu* menu : menus)
    {
        Q_EMIT menu->aboutToShow();
        const QString keys = repeatedKey(menu->actions());
        QVERIFY2(keys.isEmpty(), qPrintable(menu->title() + ": " + keys));
    }
}

NV_TEST_MAIN(tst_Language)
#include "tst_Language.moc"
