// Test functions of which some break a gate, and must be failed by it. tst_GuardedRun runs them one by one.

#include "TestMain.h"

#include <QLabel>
#include <QSettings>
#include <QThread>

class BadGates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plain();
    void warns();
    void warnsCritically();
    void warnsInAThread();
    void warnsAsAnnounced();
    void announcesInVain();
    void announcesOneOfTwo();
    void ignoresAsTheToolkitOffers();
    void ignoresInVain();
    void platformNoise();
    void debugOutput();
    void leavesAHiddenWindow();
    void leavesAShownWindow();
    void leavesAWindowToDeferredDeletion();
    void secondRowWarns_data();
    void secondRowWarns();
};

void BadGates::plain()
{
    QVERIFY(true);
}

void BadGates::warns()
{
    qWarning("something is odd");
}

void BadGates::warnsCritically()
{
    qCritical("something is very odd");
}

void BadGates::warnsInAThread()
{
    const std::unique_ptr<QThread> thread(QThread::create([] { qWarning("odd in a thread"); }));
    thread->start();
    QVERIFY(thread->wait());
}

void BadGates::warnsAsAnnounced()
{
    AnnounceWarning(QRegularExpression("^odd \\d$"));
    qWarning("odd 1");
    AnnounceWarning(QRegularExpression("very"));
    qCritical("very odd");
}

void BadGates::announcesInVain()
{
    AnnounceWarning(QRegularExpression("never said"));
}

void BadGates::announcesOneOfTwo()
{
    AnnounceWarning(QRegularExpression("odd"));
    qWarning("odd");
    qWarning("odd");
}

void BadGates::ignoresAsTheToolkitOffers()
{
    QTest::ignoreMessage(QtWarningMsg, "exactly this");
    qWarning("exactly this");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("like"));
    qWarning("something like this");
    QTest::ignoreMessage(QtDebugMsg, "even this");
    qDebug("even this");
}

void BadGates::ignoresInVain()
{
    QTest::ignoreMessage(QtWarningMsg, "exactly this");
    qWarning("exactly this and more");
}

void BadGates::platformNoise()
{
    qWarning("This plugin does not support propagateSizeHints()");
    qWarning("This plugin does not support raise()");
    qWarning("This plugin does not support grabbing the keyboard");
    qWarning("This plugin does not support grabbing the mouse");
}

void BadGates::debugOutput()
{
    qDebug("a note");
    qInfo("an information");
}

void BadGates::leavesAHiddenWindow()
{
    auto* label = new QLabel;
    label->setObjectName("forgotten");
}

void BadGates::leavesAShownWindow()
{
    auto* label = new QLabel;
    label->show();
}

void BadGates::leavesAWindowToDeferredDeletion()
{
    auto* label = new QLabel;
    label->show();
    label->deleteLater();
}

void BadGates::secondRowWarns_data()
{
    QTest::addColumn<bool>("warn");
    QTest::newRow("first") << false;
    QTest::newRow("second") << true;
    QTest::newRow("third") << false;
}

void BadGates::secondRowWarns()
{
    QFETCH(bool, warn);
    if (warn)
    {
        qWarning("odd in a row");
    }
}

NV_TEST_MAIN(BadGates)

#include "bad_gates.moc"
