// The gates around test functions: what they let pass and what they fail. Runs the functions of bad_gates.

#include "TestMain.h"

#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QStyle>
#include <QTemporaryDir>

class tst_GuardedRun : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void gateJudges_data();
    void gateJudges();
    void failureNamesWidgetAndWarning_data();
    void failureNamesWidgetAndWarning();
    void everyRowIsJudgedByItself();
    void announcedWarningIsKeptFromTheOutput();
    void settingsGoToATemporaryFolder();
    void styleAndPlatformAreFixed();
    void cleanupBelongsToTheGuardedStretch();
    void emptyMainReportsSuccess();

private:
    struct Outcome
    {
        int ExitCode = -1;
        QString Output;
    };
    static Outcome runBad(const QString& function);

    QWidget* m_pWidget = nullptr;
};

// What init() makes and cleanup() deletes is not left over, and a warning in either is seen.
void tst_GuardedRun::init()
{
    m_pWidget = new QWidget;
    AnnounceWarning(QRegularExpression("from init"));
    qWarning("from init");
    AnnounceWarning(QRegularExpression("from cleanup"));
}

void tst_GuardedRun::cleanup()
{
    qWarning("from cleanup");
    delete m_pWidget;
}

tst_GuardedRun::Outcome tst_GuardedRun::runBad(const QString& function)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(BAD_GATES, {function});
    process.waitForFinished();
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

void tst_GuardedRun::gateJudges_data()
{
    QTest::addColumn<bool>("passes");
    QTest::newRow("plain") << true;
    QTest::newRow("warns") << false;
    QTest::newRow("warnsCritically") << false;
    QTest::newRow("warnsInAThread") << false;
    QTest::newRow("warnsAsAnnounced") << true;
    QTest::newRow("announcesInVain") << false;
    QTest::newRow("announcesOneOfTwo") << false;
    QTest::newRow("ignoresAsTheToolkitOffers") << true;
    QTest::newRow("ignoresInVain") << false;
    QTest::newRow("platformNoise") << true;
    QTest::newRow("debugOutput") << true;
    QTest::newRow("leavesAHiddenWindow") << false;
    QTest::newRow("leavesAShownWindow") << false;
    QTest::newRow("leavesAWindowToDeferredDeletion") << true;
}

void tst_GuardedRun::gateJudges()
{
    QFETCH(bool, passes);
    const Outcome outcome = runBad(QTest::currentDataTag());
    QVERIFY2((outcome.ExitCode == 0) == passes, qPrintable(outcome.Output));
}

void tst_GuardedRun::failureNamesWidgetAndWarning_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("leavesAHiddenWindow") << "window left over: QLabel \"forgotten\"";
    QTest::newRow("leavesAShownWindow") << "window left over: QLabel \"\", visible";
    QTest::newRow("warns") << "unannounced warning: something is odd";
    QTest::newRow("announcesInVain") << "announced message never came: never said";
    QTest::newRow("announcesOneOfTwo") << "unannounced warning: odd";
    QTest::newRow("ignoresInVain") << "announced message never came: exactly this";
}

void tst_GuardedRun::failureNamesWidgetAndWarning()
{
    QFETCH(QString, text);
    const Outcome outcome = runBad(QTest::currentDataTag());
    QVERIFY2(outcome.Output.contains(text), qPrintable(outcome.Output));
}

void tst_GuardedRun::everyRowIsJudgedByItself()
{
    const Outcome outcome = runBad("secondRowWarns");
    QCOMPARE(outcome.ExitCode, 1);
    QVERIFY(outcome.Output.contains("PASS   : BadGates::secondRowWarns(first)"));
    QVERIFY(outcome.Output.contains("FAIL!  : BadGates::secondRowWarns(second)"));
    QVERIFY(outcome.Output.contains("PASS   : BadGates::secondRowWarns(third)"));
}

void tst_GuardedRun::announcedWarningIsKeptFromTheOutput()
{
    const Outcome outcome = runBad("warnsAsAnnounced");
    QVERIFY2(!outcome.Output.contains("QWARN"), qPrintable(outcome.Output));
}

void tst_GuardedRun::settingsGoToATemporaryFolder()
{
    QSettings settings;
    settings.setValue("key", 1);
    settings.sync();
    QVERIFY2(settings.fileName().startsWith(QDir::tempPath()), qPrintable(settings.fileName()));
    QVERIFY(QFile::exists(settings.fileName()));
    QVERIFY(QStandardPaths::isTestModeEnabled());
}

void tst_GuardedRun::styleAndPlatformAreFixed()
{
    QCOMPARE(QApplication::style()->objectName().toLower(), QString("fusion"));
    QCOMPARE(QCoreApplication::organizationName(), QString("NorvaneTest"));
    QCOMPARE(QCoreApplication::applicationName(), QString("tst_GuardedRun"));
    QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
}

void tst_GuardedRun::cleanupBelongsToTheGuardedStretch()
{
    QVERIFY(m_pWidget);
    m_pWidget->show();
}

void tst_GuardedRun::emptyMainReportsSuccess()
{
    const Outcome outcome = runBad("-functions");
    QCOMPARE(outcome.ExitCode, 0);
    QVERIFY(outcome.Output.contains("plain()"));
}

NV_TEST_MAIN(tst_GuardedRun)

#include "tst_GuardedRun.moc"
