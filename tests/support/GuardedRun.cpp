#include "GuardedRun.h"

#include <QApplication>
#include <QMutex>
#include <QtTest>

namespace
{
// A message that the running test function said would come.
struct Announced
{
    QtMsgType Type = QtWarningMsg;
    bool AnyOfBad = false; // a warning or a critical message, whichever
    QRegularExpression Pattern;
    QString Exact;
    QString Text() const { return Exact.isNull() ? Pattern.pattern() : Exact; }
    bool Matches(QtMsgType type, const QString& message) const
    {
        const bool typeFits = AnyOfBad ? type == QtWarningMsg || type == QtCriticalMsg : type == Type;
        return typeFits && (Exact.isNull() ? message.contains(Pattern) : message == Exact);
    }
};

// What one guarded stretch knows. Messages come from any thread.
struct Gates
{
    QMutex Mutex;
    QList<Announced> Expected;
    QStringList Unexpected;
    QWidgetList Known;
    QtMessageHandler Before = nullptr;
    bool Open = false;
};

Gates& gates()
{
    static Gates instance;
    return instance;
}

// What the offscreen platform says about things it cannot do and nobody needs of it.
bool isPlatformNoise(const QString& message)
{
    static const QRegularExpression noise(
        QStringLiteral("^This plugin does not support (propagateSizeHints\\(\\)|raise\\(\\)|grabbing the "
                       "keyboard|grabbing the mouse)$"));
    return message.contains(noise);
}

// True if somebody waited for this message; it is crossed off then.
bool takeExpected(QtMsgType type, const QString& message)
{
    QList<Announced>& expected = gates().Expected;
    for (int i = 0; i < expected.size(); ++i)
    {
        if (expected.at(i).Matches(type, message))
        {
            expected.removeAt(i);
            return true;
        }
    }
    return false;
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    {
        QMutexLocker lock(&gates().Mutex);
        if (takeExpected(type, message) || isPlatformNoise(message))
        {
            return;
        }
        if (type == QtWarningMsg || type == QtCriticalMsg)
        {
            gates().Unexpected.append(message);
        }
    }
    if (gates().Before)
    {
        gates().Before(type, context, message);
    }
}

QString describe(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"%3")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
             widget->isVisible() ? QStringLiteral(", visible") : QString());
}

// Top-level widgets that somebody made and owns. A tooltip goes away by itself after a while; the windows of
// a parent's popups are the parent's affair.
QWidgetList ownTopLevels()
{
    QWidgetList found;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* widget : all)
    {
        if (!widget->parentWidget() && !widget->inherits("QTipLabel"))
        {
            found.append(widget);
        }
    }
    return found;
}

// One failure is enough for a test function; what follows from it is told as a note.
void fail(const QString& text)
{
    if (QTest::currentTestFailed())
    {
        fprintf(stdout, "        note: %s\n", qPrintable(text));
        fflush(stdout);
        return;
    }
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

void judgeMessages()
{
    QStringList unexpected;
    QList<Announced> missing;
    {
        QMutexLocker lock(&gates().Mutex);
        unexpected.swap(gates().Unexpected);
        missing.swap(gates().Expected);
    }
    if (!unexpected.isEmpty())
    {
        fail(QStringLiteral("unannounced warning: %1\n   Mend its cause, or say AnnounceWarning() before it "
                            "if it is meant.")
                 .arg(unexpected.join(QStringLiteral("\n   and: "))));
    }
    for (const Announced& announced : qAsConst(missing))
    {
        fail(QStringLiteral("announced message never came: %1").arg(announced.Text()));
    }
}

void judgeWindows()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList left;
    const QWidgetList now = ownTopLevels();
    for (QWidget* widget : now)
    {
        if (!gates().Known.contains(widget))
        {
            left.append(describe(widget));
            widget->hide();
        }
    }
    if (!left.isEmpty())
    {
        fail(QStringLiteral("window left over: %1\n   Who makes a widget without a parent deletes it before "
                            "the test function ends.")
                 .arg(left.join(QStringLiteral("; "))));
    }
}

void announce(const Announced& announced)
{
    QMutexLocker lock(&gates().Mutex);
    gates().Expected.append(announced);
}
} // namespace

// These stand in for the toolkit's own: a message that they let pass must be known to the gates as well, and
// the toolkit's list cannot be asked.
namespace QTest
{
void ignoreMessage(QtMsgType type, const char* message)
{
    Announced announced;
    announced.Type = type;
    announced.Exact = QString::fromUtf8(message);
    announce(announced);
}

void ignoreMessage(QtMsgType type, const QRegularExpression& messagePattern)
{
    Announced announced;
    announced.Type = type;
    announced.Pattern = messagePattern;
    announce(announced);
}
} // namespace QTest

void AnnounceWarning(const QRegularExpression& pattern)
{
    Announced announced;
    announced.AnyOfBad = true;
    announced.Pattern = pattern;
    announce(announced);
}

void GuardedRun::Begin()
{
    if (!gates().Open)
    {
        gates().Before = qInstallMessageHandler(handleMessage);
        gates().Open = true;
    }
    QMutexLocker lock(&gates().Mutex);
    gates().Expected.clear();
    gates().Unexpected.clear();
    gates().Known = ownTopLevels();
}

void GuardedRun::End()
{
    if (!gates().Open)
    {
        return;
    }
    judgeWindows();
    judgeMessages();
    qInstallMessageHandler(gates().Before);
    gates().Open = false;
}

// QTest calls init(), the test function and cleanup() in this order, for each data row.
void GuardedRun::Call(const QByteArray& slot, bool hasInit, bool hasCleanup, const std::function<void()>& run)
{
    if (slot == "initTestCase" || slot == "cleanupTestCase" || slot.endsWith("_data"))
    {
        callPlain(run);
        return;
    }
    if (slot == "init" || (!hasInit && slot != "cleanup"))
    {
        Begin();
    }
    run();
    if (slot == "cleanup" || (!hasCleanup && slot != "init"))
    {
        End();
    }
}

// Around the functions that prepare for all others only the messages are watched: what they make is to stay.
void GuardedRun::callPlain(const std::function<void()>& run)
{
    Begin();
    run();
    gates().Known = ownTopLevels();
    End();
}
