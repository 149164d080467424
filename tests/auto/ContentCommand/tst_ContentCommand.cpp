// The undo step of a layer and the selection together.

#include "ContentCommand.h"

#include <QUndoStack>
#include <QtTest>

#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QRect Area(10, 20, 64, 48);

QImage MaskOf(const QRect& rect)
{
    QImage mask(300, 200, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        memset(mask.scanLine(y) + rect.left(), 200, size_t(rect.width()));
    return mask;
}

// A document in which an area is red and the selection is another one; both were changed before the push.
struct Host
{
    Host(const QImage& maskBefore, const QImage& maskAfter) : before(maskBefore), after(maskAfter)
    {
        QVector<SavedTile> tiles = {{Area, pixels.GetLayer(0).image.copy(Area)}};
        QImage red(Area.size(), QImage::Format_ARGB32_Premultiplied);
        red.fill(Qt::red);
        QVector<SavedTile> change = {{Area, red}};
        ExchangeTiles(pixels.EditLayer(0), change);
        pixels.SetSelectionMask(maskAfter);
        command = new ContentCommand("Move", &pixels, 0, tiles, maskBefore);
        stack.push(command);
    }
    bool isBefore() const
    {
        return pixels.GetLayer(0).image == BusyPicture() && pixels.GetSelectionMask() == before;
    }
    bool isAfter() const
    {
        return pixels.GetLayer(0).image.pixelColor(Area.center()) == QColor(Qt::red) &&
            pixels.GetSelectionMask() == after;
    }

    KXDocumentInterface pixels{BusyPicture()};
    QImage before;
    QImage after;
    QUndoStack stack;
    ContentCommand* command;
};

} // namespace

class tst_ContentCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void swapsBothBackAndForth_data();
    void swapsBothBackAndForth();
    void tellsWhatChanges();
    void goesToDiskAndBack();
};

void tst_ContentCommand::swapsBothBackAndForth_data()
{
    QTest::addColumn<QImage>("before");
    QTest::addColumn<QImage>("after");

    const QImage one = MaskOf(QRect(5, 5, 50, 50));
    const QImage other = MaskOf(QRect(105, 85, 50, 50));
    QTest::newRow("moved") << one << other;
    QTest::newRow("gone") << one << QImage();
    QTest::newRow("come") << QImage() << other;
    QTest::newRow("none") << QImage() << QImage();
}

void tst_ContentCommand::swapsBothBackAndForth()
{
    QFETCH(const QImage, before);
    QFETCH(const QImage, after);
    Host host(before, after);

    QVERIFY(host.isAfter());
    for (int i = 0; i < 3; ++i)
    {
        host.stack.undo();
        QVERIFY(host.isBefore());
        host.stack.redo();
        QVERIFY(host.isAfter());
    }
    QCOMPARE(host.stack.undoText(), QString("Move"));
}

void tst_ContentCommand::tellsWhatChanges()
{
    Host host(MaskOf(QRect(5, 5, 50, 50)), MaskOf(QRect(105, 85, 50, 50)));
    SignalLog log(&host.pixels);

    host.stack.undo();

    QCOMPARE(log.Entries(), QStringList({"CompositionChanged(10,20 64x48)", "SelectionChanged()"}));
}

void tst_ContentCommand::goesToDiskAndBack()
{
    Host host(MaskOf(QRect(5, 5, 50, 50)), QImage());
    const qint64 bytes = host.command->GetBytes();
    QVERIFY(host.command->GetMemoryBytes() >= Area.width() * Area.height() * 4);

    host.command->MoveToDisk();

    QCOMPARE(host.command->GetMemoryBytes(), 0);
    QCOMPARE(host.command->GetBytes(), bytes);
    host.stack.undo();
    QVERIFY(host.isBefore());
    host.stack.redo();
    QVERIFY(host.isAfter());
}

NV_TEST_MAIN(tst_ContentCommand)
#include "tst_ContentCommand.moc"
