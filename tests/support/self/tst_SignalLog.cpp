// What a signal log records, in which order and in which words.

#include "SignalLog.h"
#include "TestMain.h"

#include <QColor>
#include <QImage>
#include <QPushButton>
#include <QSpinBox>

struct Unknown
{
};

class Sender : public QObject
{
    Q_OBJECT
public:
    enum Mode
    {
        First,
        Second
    };
    Q_ENUM(Mode)

Q_SIGNALS:
    void Nothing();
    void Number(int value);
    void Two(bool on, double value);
    void Text(const QString& text);
    void Color(const QColor& color);
    void Geometry(const QPoint& point, const QSize& size, const QRect& rect);
    void Object(QObject* object);
    void Picture(const QImage& image);
    void Strange(const Unknown& unknown);
    void ModeChanged(Sender::Mode mode);
    void List(const QStringList& list);
    void Default(int value = 7);
};

class tst_SignalLog : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void recordsInOrderWithArguments();
    void namesValuesOfManyTypes();
    void countsOneSignalOrAll();
    void argumentsAreKept();
    void clearForgets();
    void housekeepingIsLeftOut();
    void destroyedIsWatchedOnRequest();
    void defaultArgumentIsRecordedOnce();
    void furtherObjectsHaveNames();
    void toolkitSignalsOfSubclassesAreSeen();
    void senderMayDieFirst();
};

void tst_SignalLog::recordsInOrderWithArguments()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Number(5);
    Q_EMIT sender.Nothing();
    Q_EMIT sender.Two(true, 0.5);
    Q_EMIT sender.Number(-3);
    QCOMPARE(log.Entries(), QStringList({"Number(5)", "Nothing()", "Two(true, 0.5)", "Number(-3)"}));
}

void tst_SignalLog::namesValuesOfManyTypes()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Text("a \"b\"");
    Q_EMIT sender.Color(QColor(1, 2, 3, 4));
    Q_EMIT sender.Color(QColor());
    Q_EMIT sender.Geometry(QPoint(1, 2), QSize(3, 4), QRect(5, 6, 7, 8));
    Q_EMIT sender.Object(nullptr);
    Q_EMIT sender.Object(&sender);
    Q_EMIT sender.Picture(QImage());
    Q_EMIT sender.Strange(Unknown());
    Q_EMIT sender.ModeChanged(Sender::Second);
    Q_EMIT sender.List({"a", "b"});
    const QStringList expected = {
        "Text(\"a \"b\"\")",           "Color(#04010203)",   "Color(<invalid colour>)",
        "Geometry(1,2, 3x4, 5,6 7x8)", "Object(null)",       "Object(object)",
        "Picture(<QImage>)",           "Strange(<Unknown>)", "ModeChanged(Second)",
        "List([\"a\", \"b\"])"};
    QCOMPARE(log.Entries(), expected);
}

void tst_SignalLog::countsOneSignalOrAll()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Number(1);
    Q_EMIT sender.Number(2);
    Q_EMIT sender.Nothing();
    QCOMPARE(log.Count("Number"), 2);
    QCOMPARE(log.Count("Numb"), 0);
    QCOMPARE(log.Count(), 3);
}

void tst_SignalLog::argumentsAreKept()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Two(false, 1.5);
    QCOMPARE(log.Arguments(0), QVariantList({false, 1.5}));
    QCOMPARE(log.Arguments(1), QVariantList());
}

void tst_SignalLog::clearForgets()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Nothing();
    log.Clear();
    QCOMPARE(log.Count(), 0);
    Q_EMIT sender.Nothing();
    QCOMPARE(log.Entries(), QStringList({"Nothing()"}));
}

void tst_SignalLog::housekeepingIsLeftOut()
{
    QPushButton button;
    SignalLog log(&button);
    button.setObjectName("name");
    button.setWindowTitle("title");
    QCOMPARE(log.Count(), 0);
    QVERIFY(log.Watched().contains("clicked"));
    QVERIFY(!log.Watched().contains("destroyed"));
    QVERIFY(!log.Watched().contains("windowTitleChanged"));
}

void tst_SignalLog::destroyedIsWatchedOnRequest()
{
    auto* sender = new Sender;
    SignalLog log(sender, SignalLog::WithDestroyed);
    Q_EMIT sender->Nothing();
    delete sender;
    QCOMPARE(log.Entries(), QStringList({"Nothing()", "destroyed()"}));
}

void tst_SignalLog::defaultArgumentIsRecordedOnce()
{
    Sender sender;
    SignalLog log(&sender);
    Q_EMIT sender.Default();
    QCOMPARE(log.Entries(), QStringList({"Default(7)"}));
}

void tst_SignalLog::furtherObjectsHaveNames()
{
    Sender one;
    Sender two;
    SignalLog log(&one);
    log.Watch(&two, "two");
    Q_EMIT two.Number(2);
    Q_EMIT one.Number(1);
    QCOMPARE(log.Entries(), QStringList({"two.Number(2)", "Number(1)"}));
    QCOMPARE(log.Count("two.Number"), 1);
    QCOMPARE(log.Count("Number"), 1);
}

void tst_SignalLog::toolkitSignalsOfSubclassesAreSeen()
{
    QSpinBox box;
    SignalLog log(&box);
    box.setValue(5);
    QCOMPARE(log.Count("valueChanged(int)"), 1);
    QCOMPARE(log.Count("valueChanged"), 2); // the text overload is still there
    QVERIFY(log.Entries().contains("valueChanged(5)"));
}

void tst_SignalLog::senderMayDieFirst()
{
    SignalLog log;
    {
        Sender sender;
        log.Watch(&sender);
        Q_EMIT sender.Number(1);
    }
    QCOMPARE(log.Entries(), QStringList({"Number(1)"}));
}

NV_TEST_MAIN(tst_SignalLog)

#include "tst_SignalLog.moc"
