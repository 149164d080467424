// The canvas about the picture: where the picture comes to lie, what is cut and what is added.

#include "CanvasResize.h"

#include <QRandomGenerator>
#include <QTest>

#include <atomic>

#include "BusyThreads.h"
#include "TestMain.h"

namespace
{

QImage Numbered(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, 7));
    }
    return image;
}

QImage NumberedMask(const QSize& size)
{
    QImage mask(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            mask.scanLine(y)[x] = uchar(1 + (x + 3 * y) % 255);
    }
    return mask;
}

PictureContents Of(const QSize& size)
{
    PictureContents contents;
    contents.layers = {Numbered(size)};
    return contents;
}

} // namespace

class tst_CanvasResize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAnchorSaysWhereThePictureLies_data()
    {
        QTest::addColumn<QPoint>("anchor");
        QTest::addColumn<QPoint>("grown");
        QTest::addColumn<QPoint>("shrunk");
        const int grown[] = {0, 10, 20};
        const int shrunk[] = {0, -15, -30};
        for (int row = 0; row < 3; ++row)
        {
            for (int column = 0; column < 3; ++column)
                QTest::addRow("column %d, row %d", column, row)
                    << QPoint(column, row) << QPoint(grown[column], grown[row] / 2)
                    << QPoint(shrunk[column], shrunk[row] / 3);
        }
    }

    void theAnchorSaysWhereThePictureLies()
    {
        QFETCH(QPoint, anchor);
        QFETCH(QPoint, grown);
        QFETCH(QPoint, shrunk);

        QCOMPARE(CanvasOffset(QSize(100, 50), QSize(120, 60), anchor), grown);
        QCOMPARE(CanvasOffset(QSize(100, 50), QSize(70, 40), anchor), shrunk);
        QCOMPARE(CanvasOffset(QSize(100, 50), QSize(100, 50), anchor), QPoint(0, 0));
    }

    void anOddPixelComesBackToItsPlace()
    {
        for (int more = 1; more < 9; ++more)
        {
            const QPoint there = CanvasOffset(QSize(10, 10), QSize(10 + more, 10), QPoint(1, 1));
            const QPoint back = CanvasOffset(QSize(10 + more, 10), QSize(10, 10), QPoint(1, 1));
            QCOMPARE(there, QPoint(more / 2, 0));
            QCOMPARE(there + back, QPoint(0, 0));
        }
    }

    void whatIsAddedIsTransparentAndNotSelected()
    {
        PictureContents before = Of(QSize(20, 10));
        before.selection = NumberedMask(QSize(20, 10));

        const PictureContents after = CutContents(before, QRect(-5, -3, 30, 20));

        QCOMPARE(after.layers.constFirst().size(), QSize(30, 20));
        QCOMPARE(after.layers.constFirst().format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(after.layers.constFirst().copy(5, 3, 20, 10), before.layers.constFirst());
        QCOMPARE(after.selection.copy(5, 3, 20, 10), before.selection);
        for (const QPoint& outside :
             {QPoint(4, 5), QPoint(25, 5), QPoint(10, 2), QPoint(10, 13), QPoint(29, 19)})
        {
            QCOMPARE(after.layers.constFirst().pixel(outside), 0u);
            QCOMPARE(qRed(after.selection.pixel(outside)), 0);
        }
    }

    void aFrameAnywhereIsWhatACopyGives()
    {
        QRandomGenerator random(1);
        for (int i = 0; i < 300; ++i)
        {
            PictureContents before = Of(QSize(1 + random.bounded(60), 1 + random.bounded(400)));
            before.layers += before.layers.constFirst().rgbSwapped();
            before.selection = NumberedMask(before.layers.constFirst().size());
            const QRect frame(random.bounded(-90, 90), random.bounded(-90, 450), 1 + random.bounded(90),
                              1 + random.bounded(400));

            const PictureContents after = CutContents(before, frame);

            QCOMPARE(after.layers.size(), 2);
            QCOMPARE(after.layers.at(0), before.layers.at(0).copy(frame));
            QCOMPARE(after.layers.at(1), before.layers.at(1).copy(frame));
            const bool isSelected = frame.intersects(before.selection.rect());
            QCOMPARE(after.selection.isNull(), !isSelected);
            if (isSelected)
                QCOMPARE(after.selection, before.selection.copy(frame));
        }
    }

    void anEmptyFrameGivesNothing()
    {
        QVERIFY(CutContents(Of(QSize(5, 5)), QRect()).layers.isEmpty());
        QVERIFY(CutContents(Of(QSize(5, 5)), QRect(1, 1, 0, 4)).layers.isEmpty());
    }

    void cancelledItGivesNothing()
    {
        std::atomic<int> calls{0};

        const PictureContents contents =
            CutContents(Of(QSize(30, 3000)), QRect(0, 0, 20, 2000), [&calls](int) { return ++calls < 5; });

        QVERIFY(calls >= 5);
        QVERIFY(contents.layers.isEmpty());
    }

    void theNumberOfThreadsChangesNothing()
    {
        const QRect frame(-7, 5, 60, 900);
        const QImage one = CutContents(Of(QSize(40, 1000)), frame).layers.constFirst();
        const BusyThreads busy;

        QCOMPARE(CutContents(Of(QSize(40, 1000)), frame).layers.constFirst(), one);
    }
};

NV_TEST_MAIN(tst_CanvasResize)

#include "tst_CanvasResize.moc"
