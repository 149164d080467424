// Shift and Alt while they are held, by keys and by what pointer events say.

#include "HeldKeys.h"

#include <QLineEdit>
#include <QtTest>

#include <memory>

#include "SignalLog.h"
#include "TestMain.h"

namespace
{
struct Window
{
    Window()
    {
        keys.SetOn(true);
        QObject::connect(&keys, &HeldKeys::Changed, &keys,
                         [this](Qt::KeyboardModifiers held) { told << held; });
    }
    bool Show()
    {
        line.show();
        return QTest::qWaitForWindowActive(&line);
    }

    QList<Qt::KeyboardModifiers> told;
    HeldKeys keys;
    QLineEdit line;
};

const Qt::KeyboardModifiers None = Qt::NoModifier;
const Qt::KeyboardModifiers Shift = Qt::ShiftModifier;
const Qt::KeyboardModifiers Alt = Qt::AltModifier;
} // namespace

class tst_HeldKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pressAndReleaseAreTold()
    {
        Window window;
        QVERIFY(window.Show());

        QTest::keyPress(&window.line, Qt::Key_Shift);
        QCOMPARE(window.keys.Get(), Shift);
        QTest::keyRelease(&window.line, Qt::Key_Shift);

        QCOMPARE(window.keys.Get(), None);
        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Shift, None}));
    }

    void bothKeysAreHeldInAnyOrder()
    {
        Window window;
        QVERIFY(window.Show());

        QTest::keyPress(&window.line, Qt::Key_Alt);
        QTest::keyPress(&window.line, Qt::Key_Shift);
        QTest::keyRelease(&window.line, Qt::Key_Alt);
        QTest::keyRelease(&window.line, Qt::Key_Shift);

        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Alt, Alt | Shift, Shift, None}));
    }

    void otherKeysAreNotTold()
    {
        Window window;
        QVERIFY(window.Show());

        QTest::keyClick(&window.line, Qt::Key_A);
        QTest::keyPress(&window.line, Qt::Key_Control);
        QTest::keyRelease(&window.line, Qt::Key_Control);

        QVERIFY(window.told.isEmpty());
        QCOMPARE(window.line.text(), QString("a"));
    }

    void aPointerEventMakesUpForALostRelease()
    {
        Window window;
        QVERIFY(window.Show());
        QTest::keyPress(&window.line, Qt::Key_Shift);

        window.keys.Take(Qt::NoModifier);
        window.keys.Take(Qt::NoModifier);
        window.keys.Take(Qt::AltModifier | Qt::ControlModifier);

        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Shift, None, Alt}));
    }

    void theMouseSaysWhatIsHeld()
    {
        Window window;
        QVERIFY(window.Show());

        QTest::mouseClick(&window.line, Qt::LeftButton, Qt::ShiftModifier);
        QTest::mouseClick(&window.line, Qt::LeftButton);
        QTest::mouseClick(&window.line, Qt::LeftButton);

        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Shift, None}));
    }

    void nothingIsHeldWhenTheWindowIsLeft()
    {
        Window window;
        QVERIFY(window.Show());
        QTest::keyPress(&window.line, Qt::Key_Alt);
        QLineEdit other;

        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));

        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Alt, None}));
    }

    void nothingIsHeldWhileItIsOff()
    {
        Window window;
        QVERIFY(window.Show());
        QTest::keyPress(&window.line, Qt::Key_Shift);

        window.keys.SetOn(false);
        window.keys.SetOn(false);
        QTest::keyPress(&window.line, Qt::Key_Alt);
        window.keys.Take(Qt::ShiftModifier);

        QCOMPARE(window.keys.Get(), None);
        QCOMPARE(window.told, QList<Qt::KeyboardModifiers>({Shift, None}));
    }

    void itMayGoWhileAKeyIsHeld()
    {
        QLineEdit line;
        line.show();
        QVERIFY(QTest::qWaitForWindowActive(&line));
        auto keys = std::make_unique<HeldKeys>();
        keys->SetOn(true);
        SignalLog log(keys.get());
        QTest::keyPress(&line, Qt::Key_Shift);

        keys.reset();
        QTest::keyRelease(&line, Qt::Key_Shift);

        QCOMPARE(log.Count("Changed"), 1);
    }
};

NV_TEST_MAIN(tst_HeldKeys)
#include "tst_HeldKeys.moc"
