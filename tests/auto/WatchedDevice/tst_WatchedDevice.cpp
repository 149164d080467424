// The device between plugin and file: what it counts, tells, and breaks off.

#include "WatchedDevice.h"

#include <QBuffer>

#include "TestMain.h"

namespace
{

// Takes nothing.
class FullDevice : public QIODevice
{
public:
    int Tries = 0;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64) override
    {
        ++Tries;
        setErrorString("No room");
        return -1;
    }
};

} // namespace

class tst_WatchedDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAtTheEndAreCounted()
    {
        QBuffer buffer;
        buffer.setData(QByteArray(100, 'x'));
        buffer.open(QIODevice::ReadOnly);
        WatchedDevice device(&buffer, nullptr);

        QCOMPARE(device.read(60).size(), 60);
        QCOMPARE(device.ShortReads() + device.EmptyReads(), 0);
        QCOMPARE(device.read(60).size(), 40);
        QCOMPARE(device.ShortReads(), 1);
        QCOMPARE(device.read(10).size(), 0);
        QCOMPARE(device.EmptyReads(), 1);
        device.ResetCounts();
        QCOMPARE(device.ShortReads() + device.EmptyReads(), 0);
    }

    void progressFollowsTheReads()
    {
        QBuffer buffer;
        buffer.setData(QByteArray(200, 'x'));
        buffer.open(QIODevice::ReadOnly);
        FileProgress progress;
        WatchedDevice device(&buffer, &progress);
        QCOMPARE(progress.percent.load(), -1);

        device.read(50);
        QCOMPARE(progress.percent.load(), 25);
        QVERIFY(device.seek(190));
        device.read(10);
        QCOMPARE(progress.percent.load(), 100);
        QVERIFY(device.atEnd());
    }

    void cancelBreaksOffReadingAndWriting()
    {
        QBuffer buffer;
        buffer.setData(QByteArray(200, 'x'));
        buffer.open(QIODevice::ReadWrite);
        FileProgress progress;
        WatchedDevice device(&buffer, &progress);
        progress.cancelled = true;

        char data[10];
        QCOMPARE(device.read(data, 10), qint64(-1));
        QCOMPARE(device.write("abc"), qint64(-1));
        QCOMPARE(buffer.data(), QByteArray(200, 'x'));
    }

    void aFailedWriteIsRememberedAndTheRestLeftOut()
    {
        FullDevice full;
        full.open(QIODevice::WriteOnly);
        WatchedDevice device(&full, nullptr);

        QCOMPARE(device.write("abc"), qint64(3));
        QCOMPARE(device.write("def"), qint64(3));

        QCOMPARE(device.WriteError(), QString("No room"));
        QCOMPARE(full.Tries, 1);
    }

    void writesGoThroughAtTheirPlace()
    {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        WatchedDevice device(&buffer, nullptr);

        device.write("abcdef");
        QVERIFY(device.seek(2));
        device.write("XY");

        QCOMPARE(buffer.data(), QByteArray("abXYef"));
        QCOMPARE(device.WriteError(), QString());
        QCOMPARE(device.size(), qint64(6));
        QVERIFY(!device.isSequential());
    }
};

NV_TEST_MAIN(tst_WatchedDevice)
#include "tst_WatchedDevice.moc"
