// The gates that stand around every test function: no unannounced warning, no window left over.

#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QRegularExpression>
#include <QWidget>

#include <functional>

// Says that the running test function will cause one warning or critical message that `pattern` matches.
// Each call stands for one message. The message is swallowed; if it has not come when the test function ends,
// that is a failure. QTest::ignoreMessage works beside it.
void AnnounceWarning(const QRegularExpression& pattern);

// The gates themselves. NV_TEST_MAIN puts them around each slot that QTest runs, once a data row.
class GuardedRun
{
public:
    // Opens the gates: from here on messages are watched, and windows that exist are taken as known.
    static void Begin();
    // Judges what happened since Begin() and fails the running test function for it. Windows left over are
    // hidden, not deleted, since somebody may still own them.
    static void End();
    // Runs one slot of the test object between the gates. `hasInit` and `hasCleanup` say whether QTest calls
    // the object's own init() and cleanup(), which then belong to the guarded stretch.
    static void Call(const QByteArray& slot, bool hasInit, bool hasCleanup, const std::function<void()>& run);

private:
    static void callPlain(const std::function<void()>& run);
};

// A test object of class Test whose slots run between the gates. It is Test for all the world but for the
// function that its meta-object names for calls.
template <class Test>
class Guarded : public Test
{
public:
    const QMetaObject* metaObject() const override { return &guardedMetaObject(); }

private:
    static const QMetaObject& guardedMetaObject()
    {
        static const QMetaObject meta = []
        {
            QMetaObject copy = Test::staticMetaObject;
            copy.d.static_metacall = &Guarded::guardedCall;
            return copy;
        }();
        return meta;
    }

    static void guardedCall(QObject* object, QMetaObject::Call call, int id, void** arguments)
    {
        const QMetaObject& plain = Test::staticMetaObject;
        const auto run = [&] { plain.d.static_metacall(object, call, id, arguments); };
        if (call != QMetaObject::InvokeMetaMethod)
        {
            run();
            return;
        }
        GuardedRun::Call(plain.method(plain.methodOffset() + id).name(), plain.indexOfMethod("init()") >= 0,
                         plain.indexOfMethod("cleanup()") >= 0, run);
    }
};
