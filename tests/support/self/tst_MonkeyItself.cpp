// The monkey: it reaches everything, repeats itself, survives what it causes, and names its seed.

#include "Monkey.h"
#include "TestMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>

namespace
{
class Opaque;

// Notes all that happens to it.
class Victim : public QWidget
{
    Q_OBJECT
public:
    Victim()
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QPushButton("push"));
        layout->addWidget(new QSpinBox);
        layout->addWidget(new QLineEdit);
        auto* combo = new QComboBox;
        combo->addItems({"a", "b", "c"});
        layout->addWidget(combo);
    }

    QStringList Log;
    QSet<int> Events;

public Q_SLOTS:
    void TakeInt(int value) { Log.append(QString("int %1").arg(value)); }
    void TakeDouble(double value)
    {
        Log.append(std::isnan(value) ? "nan" : std::isinf(value) ? "inf" : "double");
    }
    void TakeText(const QString& text) { Log.append(QString("text %1").arg(text.size())); }
    void TakePointer(QObject* object) { Log.append(object ? "object" : "null"); }
    void TakeOther(Opaque*) { Log.append("forbidden"); }
    void Excluded() { Log.append("excluded"); }

protected Q_SLOTS:
    void Hidden() { Log.append("not public"); }

protected:
    bool event(QEvent* event) override
    {
        Events.insert(event->type());
        return QWidget::event(event);
    }
};

// Opens one modal dialog after another.
class Nesting : public QWidget
{
    Q_OBJECT
public:
    int Deepest = 0;

public Q_SLOTS:
    void Open()
    {
        Deepest = qMax(Deepest, ++m_depth);
        QDialog dialog(this);
        dialog.exec();
        --m_depth;
    }

private:
    int m_depth = 0;
};

class Mortal : public QWidget
{
    Q_OBJECT
public Q_SLOTS:
    void Die() { deleteLater(); }
};
} // namespace

class tst_MonkeyItself : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void deliversAsManyEventsAsAsked();
    void reachesEveryKindOfEvent();
    void callsPublicSlotsWithExtremes();
    void sameSeedGivesTheSameCalls();
    void anotherSeedGivesOtherCalls();
    void modalDialogsAreDrivenOnAndClosed();
    void menusAreClosedInTheEnd();
    void survivesTheDeathOfItsWidget();
    void crashNamesTheSeed();
    void verboseNamesTheSeedAtTheStart();

private:
    static QStringList calls(quint32 seed);
    static QString runBad(const QProcessEnvironment& environment);
};

QStringList tst_MonkeyItself::calls(quint32 seed)
{
    Victim victim;
    victim.show();
    Monkey(&victim, seed).Run(300);
    return victim.Log;
}

QString tst_MonkeyItself::runBad(const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(BAD_MONKEY, QStringList());
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardError());
}

void tst_MonkeyItself::deliversAsManyEventsAsAsked()
{
    Victim victim;
    victim.show();
    Monkey monkey(&victim, 1);
    QCOMPARE(monkey.Run(200), 200);
    QCOMPARE(monkey.Run(10), 10);
    QCOMPARE(monkey.Run(0), 0);
}

void tst_MonkeyItself::reachesEveryKindOfEvent()
{
    Victim victim;
    victim.show();
    Monkey(&victim, 2).Run(3000);
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
          QEvent::MouseMove, QEvent::Wheel, QEvent::KeyPress, QEvent::KeyRelease, QEvent::Resize,
          QEvent::Show, QEvent::Hide, QEvent::EnabledChange, QEvent::LanguageChange})
    {
        QVERIFY2(victim.Events.contains(type), qPrintable(QString("event %1").arg(type)));
    }
}

void tst_MonkeyItself::callsPublicSlotsWithExtremes()
{
    Victim victim;
    victim.show();
    Monkey monkey(&victim, 3);
    monkey.AllowNull("QObject*");
    monkey.ExcludeSlot("Excluded");
    monkey.Run(4000);
    const QStringList expected = {"int -2147483648", "int 2147483647", "int 0", "int -1", "nan", "inf",
                                  "text 0",          "text 20000",     "null"};
    for (const QString& entry : expected)
    {
        QVERIFY2(victim.Log.contains(entry), qPrintable(entry));
    }
    const QStringList forbidden = {"forbidden", "excluded", "not public", "object"};
    for (const QString& entry : forbidden)
    {
        QVERIFY2(!victim.Log.contains(entry), qPrintable(entry));
    }
}

void tst_MonkeyItself::sameSeedGivesTheSameCalls()
{
    const QStringList first = calls(7);
    QVERIFY(first.size() > 5);
    QCOMPARE(calls(7), first);
}

void tst_MonkeyItself::anotherSeedGivesOtherCalls()
{
    QVERIFY(calls(7) != calls(8));
}

void tst_MonkeyItself::modalDialogsAreDrivenOnAndClosed()
{
    Nesting widget;
    widget.show();
    Monkey monkey(&widget, 5);
    QCOMPARE(monkey.Run(2000), 2000);
    QVERIFY(widget.Deepest > 1);
    QVERIFY2(widget.Deepest <= 8, qPrintable(QString::number(widget.Deepest)));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_MonkeyItself::menusAreClosedInTheEnd()
{
    QPushButton button("menu");
    QMenu menu;
    menu.addAction("one");
    menu.addMenu("more")->addAction("two");
    button.setMenu(&menu);
    button.show();
    QCOMPARE(Monkey(&button, 6).Run(500), 500);
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_MonkeyItself::survivesTheDeathOfItsWidget()
{
    const QPointer<QWidget> widget = new Mortal;
    widget->show();
    Monkey monkey(widget, 7);
    QVERIFY(monkey.Run(5000) < 5000);
    QVERIFY(!widget);
}

void tst_MonkeyItself::crashNamesTheSeed()
{
    const QString output = runBad(QProcessEnvironment::systemEnvironment());
    QVERIFY2(output.contains("crash with seed 4711 on Fragile"), qPrintable(output));
}

void tst_MonkeyItself::verboseNamesTheSeedAtTheStart()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("NORVANE_MONKEY_VERBOSE", "1");
    const QString output = runBad(environment);
    QVERIFY2(output.contains("monkey: seed 4711 on Fragile"), qPrintable(output));
}

NV_TEST_MAIN(tst_MonkeyItself)

#include "tst_MonkeyItself.moc"
