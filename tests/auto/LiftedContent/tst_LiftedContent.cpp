// What is taken off a layer and laid back elsewhere, pixel by pixel against a plain calculation.

#include "LiftedContent.h"

#include <QPainter>
#include <QtTest>

#include "TestMain.h"

namespace
{

const QSize Size(300, 200);

QImage Clear(const QSize& size = Size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage Busy(int alpha = 255)
{
    QImage image(Size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < Size.height(); ++y)
    {
        for (int x = 0; x < Size.width(); ++x)
            image.setPixel(x, y,
                           qPremultiply(qRgba((x * 37 + y) % 256, (x + y * 91) % 256, (x * y) % 256, alpha)));
    }
    return image;
}

QImage Mask(const QRect& rect, int value = 255)
{
    QImage mask(Size, QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter(&mask).fillRect(rect, QColor(value, value, value));
    return mask;
}

QRgb Raw(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

// All of the layer: lifted, moved and laid down.
QVector<SavedTile> Move(QImage& layer, const LiftedContent& content, const QPoint& way)
{
    PlacedImage picture = content.picture;
    picture.corner += way;
    return PlaceContent(layer, content, picture, layer.rect());
}

bool IsNear(QRgb one, QRgb other, int reach)
{
    return qAbs(qRed(one) - qRed(other)) <= reach && qAbs(qGreen(one) - qGreen(other)) <= reach &&
        qAbs(qBlue(one) - qBlue(other)) <= reach && qAbs(qAlpha(one) - qAlpha(other)) <= reach;
}

} // namespace

class tst_LiftedContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boundsHoldAllThatIsNotClear_data();
    void boundsHoldAllThatIsNotClear();
    void boundsOfNothingAreEmpty();
    void aWholeLayerIsSharedAndNotCopied();
    void aPartOfALayerIsCutOut();
    void aSelectionTakesItsShare_data();
    void aSelectionTakesItsShare();
    void nothingIsLiftedWithoutBounds();
    void aMovedLayerLeavesNothingBehind();
    void aMovedSelectionLiesOverTheRest();
    void tilesTakeItBack();
    void onlyTheAreaIsLookedAt();
    void whatStaysTheSameGivesNoTiles();
    void aMovedSelectionIsCutAtTheEdges();
    void aTurnedSelectionIsTheTurnedShape();
    void aSelectionThatLeavesThePictureIsNone();
};

void tst_LiftedContent::boundsHoldAllThatIsNotClear_data()
{
    QTest::addColumn<QRect>("painted");
    QTest::addColumn<QRect>("selected");
    QTest::addColumn<QRect>("bounds");

    QTest::newRow("everything") << QRect(0, 0, 300, 200) << QRect() << QRect(0, 0, 300, 200);
    QTest::newRow("a part") << QRect(30, 70, 200, 90) << QRect() << QRect(30, 70, 200, 90);
    QTest::newRow("a pixel") << QRect(299, 199, 1, 1) << QRect() << QRect(299, 199, 1, 1);
    QTest::newRow("the first pixel") << QRect(0, 0, 1, 1) << QRect() << QRect(0, 0, 1, 1);
    QTest::newRow("a selected part") << QRect(0, 0, 300, 200) << QRect(9, 8, 7, 6) << QRect(9, 8, 7, 6);
    QTest::newRow("both") << QRect(50, 0, 100, 100) << QRect(100, 60, 100, 100) << QRect(100, 60, 50, 40);
    QTest::newRow("apart") << QRect(50, 0, 100, 100) << QRect(160, 60, 100, 100) << QRect();
}

void tst_LiftedContent::boundsHoldAllThatIsNotClear()
{
    QFETCH(const QRect, painted);
    QFETCH(const QRect, selected);
    QImage layer = Clear();
    QPainter(&layer).fillRect(painted, QColor(0, 0, 0, 1));

    QTEST(ContentBounds(layer, selected.isEmpty() ? QImage() : Mask(selected, 1)), "bounds");
}

void tst_LiftedContent::boundsOfNothingAreEmpty()
{
    QVERIFY(ContentBounds(Clear(), QImage()).isEmpty());
    QVERIFY(ContentBounds(Busy(), Mask(QRect())).isEmpty());
    QVERIFY(ContentBounds(QImage(), QImage()).isEmpty());
    QVERIFY(ContentBounds(Clear(QSize(10, 10)), Mask(QRect(0, 0, 5, 5))).isEmpty());
}

void tst_LiftedContent::aWholeLayerIsSharedAndNotCopied()
{
    const QImage layer = Busy();

    const LiftedContent content = LiftContent(layer, QImage(), layer.rect());

    QCOMPARE(content.picture.image.cacheKey(), layer.cacheKey());
    QCOMPARE(content.picture.corner, QPoint(0, 0));
    QVERIFY(content.rest.isNull() && content.selection.isNull());
}

void tst_LiftedContent::aPartOfALayerIsCutOut()
{
    const QImage layer = Busy();

    const LiftedContent content = LiftContent(layer, QImage(), QRect(30, 40, 50, 60));

    QCOMPARE(content.picture.corner, QPoint(30, 40));
    QCOMPARE(content.picture.image, layer.copy(30, 40, 50, 60));
}

void tst_LiftedContent::aSelectionTakesItsShare_data()
{
    QTest::addColumn<int>("value");
    for (int value : {255, 254, 128, 1})
        QTest::addRow("%d", value) << value;
}

void tst_LiftedContent::aSelectionTakesItsShare()
{
    QFETCH(const int, value);
    const QImage layer = Busy(200);
    const QRect rect(30, 40, 90, 100);

    const LiftedContent content = LiftContent(layer, Mask(rect, value), rect);

    QCOMPARE(content.picture.GetRect(), rect);
    for (int y = 0; y < 200; ++y)
    {
        for (int x = 0; x < 300; ++x)
        {
            const QRgb whole = Raw(layer, x, y);
            if (!rect.contains(x, y))
            {
                QCOMPARE(Raw(content.rest, x, y), whole);
                continue;
            }
            const auto share = [&](int channel) { return qRound(channel * value / 255.0); };
            const QRgb taken = Raw(content.picture.image, x - 30, y - 40);
            QVERIFY(IsNear(
                taken,
                qRgba(share(qRed(whole)), share(qGreen(whole)), share(qBlue(whole)), share(qAlpha(whole))),
                1));
            const QRgb left = Raw(content.rest, x, y);
            QVERIFY(qAbs(qRed(taken) + qRed(left) - qRed(whole)) <= 1);
            QVERIFY(qAbs(qAlpha(taken) + qAlpha(left) - qAlpha(whole)) <= 1);
            QVERIFY(qRed(left) <= qAlpha(left) && qBlue(taken) <= qAlpha(taken));
        }
    }
}

void tst_LiftedContent::nothingIsLiftedWithoutBounds()
{
    for (const QRect& bounds : {QRect(), QRect(290, 0, 20, 20)})
    {
        const LiftedContent content = LiftContent(Busy(), QImage(), bounds);
        QVERIFY(content.picture.image.isNull() && content.rest.isNull());
    }
}

void tst_LiftedContent::aMovedLayerLeavesNothingBehind()
{
    QImage layer = Busy(180);
    const QImage before = layer.copy();

    Move(layer, LiftContent(before, QImage(), before.rect()), QPoint(-40, 25));

    for (int y = 0; y < 200; ++y)
    {
        for (int x = 0; x < 300; ++x)
        {
            const bool isCovered = x < 260 && y >= 25;
            QCOMPARE(Raw(layer, x, y), isCovered ? Raw(before, x + 40, y - 25) : 0u);
        }
    }
}

void tst_LiftedContent::aMovedSelectionLiesOverTheRest()
{
    QImage layer = Busy(180);
    const QImage before = layer.copy();
    const QRect rect(100, 50, 60, 70);

    Move(layer, LiftContent(before, Mask(rect), rect), QPoint(33, -21));

    QImage expected = before.copy();
    QPainter painter(&expected);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(rect.topLeft() + QPoint(33, -21), before.copy(rect));
    painter.end();
    for (int y = 0; y < 200; ++y)
    {
        for (int x = 0; x < 300; ++x)
            QVERIFY(IsNear(Raw(layer, x, y), Raw(expected, x, y), 1));
    }
}

void tst_LiftedContent::tilesTakeItBack()
{
    QImage layer = Busy(180);
    const QImage before = layer.copy();
    const QRect rect(100, 50, 60, 70);

    QVector<SavedTile> tiles = Move(layer, LiftContent(before, Mask(rect, 77), rect), QPoint(33, -21));
    const QImage after = layer.copy();
    QVERIFY(!tiles.isEmpty());
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, before);
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, after);
}

void tst_LiftedContent::onlyTheAreaIsLookedAt()
{
    QImage layer = Busy();
    const QImage before = layer.copy();
    const LiftedContent content = LiftContent(before, QImage(), before.rect());

    PlaceContent(layer, content, {}, QRect(10, 10, 20, 20));

    QCOMPARE(Raw(layer, 10, 10), 0u);
    QCOMPARE(Raw(layer, 29, 29), 0u);
    QCOMPARE(Raw(layer, 9, 10), Raw(before, 9, 10));
    QCOMPARE(Raw(layer, 30, 29), Raw(before, 30, 29));
}

void tst_LiftedContent::whatStaysTheSameGivesNoTiles()
{
    QImage layer = Busy();
    const QRect rect(100, 50, 60, 70);

    QVERIFY(Move(layer, LiftContent(layer.copy(), QImage(), layer.rect()), QPoint()).isEmpty());
    QVERIFY(Move(layer, LiftContent(layer.copy(), Mask(rect), rect), QPoint()).isEmpty());
}

void tst_LiftedContent::aMovedSelectionIsCutAtTheEdges()
{
    const QImage mask = Mask(QRect(200, 100, 50, 50), 99);

    QCOMPARE(TransformSelection(mask, QTransform::fromTranslate(80, -120), WorkProgress()),
             Mask(QRect(280, 0, 20, 30), 99));
    QVERIFY(TransformSelection(QImage(), QTransform::fromTranslate(5, 5), WorkProgress()).isNull());
}

void tst_LiftedContent::aTurnedSelectionIsTheTurnedShape()
{
    const QImage mask = Mask(QRect(100, 80, 100, 40));
    const QTransform turn = QTransform().translate(150, 100).rotate(90).translate(-150, -100);

    const QImage turned = TransformSelection(mask, turn, WorkProgress());

    QCOMPARE(turned, Mask(QRect(130, 50, 40, 100)));
}

void tst_LiftedContent::aSelectionThatLeavesThePictureIsNone()
{
    const QImage mask = Mask(QRect(200, 100, 50, 50));

    QVERIFY(TransformSelection(mask, QTransform::fromTranslate(500, 0), WorkProgress()).isNull());
    QVERIFY(TransformSelection(mask, QTransform().rotate(180), WorkProgress()).isNull());
    QVERIFY(TransformSelection(Mask(QRect()), QTransform::fromScale(2, 2), WorkProgress()).isNull());
}

NV_TEST_MAIN(tst_LiftedContent)
#include "tst_LiftedContent.moc"
