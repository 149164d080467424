// The picture of a text: its style, its lines, its place, and how it is found again in a layer.

#include "TextPicture.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPainter>
#include <QTextDocument>
#include <QtTest>

#include "TestMain.h"

namespace
{

const QRect Bounds(0, 0, 600, 300);
const QString Hebrew = QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d");

TextDescription Plain(const QString& text)
{
    TextDescription description;
    description.text = text;
    description.family = "DejaVu Sans";
    description.size = 40;
    description.anchor = QPoint(100, 100);
    return description;
}

TextPicture Draw(const TextDescription& description)
{
    return DrawText(description, Bounds);
}

QImage OnLayer(const TextPicture& picture)
{
    QImage layer(Bounds.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter painter(&layer);
    painter.drawImage(picture.corner, picture.image);
    return layer;
}

int CountVisible(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127;
    }
    return count;
}

bool HasHalves(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const int alpha = qAlpha(image.pixel(x, y));
            if (alpha > 0 && alpha < 255)
                return true;
        }
    }
    return false;
}

} // namespace

class tst_TextPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!QFontDatabase().families().contains("DejaVu Sans"))
            QSKIP("there is no DejaVu Sans: install fonts-dejavu-core");
    }

    void textStandsBelowItsAnchor()
    {
        const TextPicture picture = Draw(Plain("Hallo"));
        QCOMPARE(picture.image.format(), QImage::Format_ARGB32_Premultiplied);
        QVERIFY(picture.corner.x() >= 100 && picture.corner.x() < 110);
        QVERIFY(picture.corner.y() >= 100 && picture.corner.y() < 120);
        QVERIFY(picture.image.width() > 80 && picture.image.width() < 130);
        QVERIFY(picture.image.height() > 28 && picture.image.height() < 45);
        QCOMPARE(VisibleRect(picture.image), picture.image.rect());
    }

    void nothingToSeeGivesNoPicture()
    {
        QVERIFY(Draw(Plain("")).image.isNull());
        QVERIFY(Draw(Plain(" \n\t ")).image.isNull());
        TextDescription clear = Plain("Hallo");
        clear.color = Qt::transparent;
        QVERIFY(Draw(clear).image.isNull());
        TextDescription outside = Plain("Hallo");
        outside.anchor = QPoint(700, 100);
        QVERIFY(Draw(outside).image.isNull());
        QVERIFY(Draw(outside).GetRect().isEmpty());
    }

    void pictureIsCutToItsBounds()
    {
        TextDescription description = Plain("Hallo");
        description.anchor = QPoint(560, 290);
        const TextPicture picture = Draw(description);
        QVERIFY(!picture.image.isNull());
        QVERIFY(Bounds.contains(picture.GetRect()));
    }

    void styleShows()
    {
        const TextPicture plain = Draw(Plain("Hallo"));
        TextDescription bold = Plain("Hallo");
        bold.isBold = true;
        QVERIFY(CountVisible(Draw(bold).image) > CountVisible(plain.image) * 5 / 4);
        TextDescription italic = Plain("Hallo");
        italic.isItalic = true;
        QVERIFY(Draw(italic).image != plain.image);
        TextDescription large = Plain("Hallo");
        large.size = 80;
        const int width = Draw(large).image.width();
        QVERIFY(qAbs(width - 2 * plain.image.width()) <= 4);
    }

    // Below the letters, as wide as the line.
    void underlineRunsBelowTheWholeLine()
    {
        TextDescription underlined = Plain("a a\nb");
        const int height = Draw(Plain("a a")).image.height();
        underlined.isUnderlined = true;
        const TextPicture picture = Draw(underlined);
        const int below = Draw(Plain("a a")).GetRect().bottom() - picture.corner.y() + 4;
        QVERIFY(below > height / 2);
        int longest = 0;
        for (int y = below - 2; y <= below + 6; ++y)
        {
            int run = 0;
            for (int x = 0; x < picture.image.width(); ++x)
                run += qAlpha(picture.image.pixel(x, y)) > 40;
            longest = qMax(longest, run);
        }
        QVERIFY(longest >= Draw(Plain("a a")).image.width() - 4);
    }

    void colorIsThatOfTheDescription()
    {
        TextDescription red = Plain("I");
        red.size = 200;
        red.anchor = QPoint(100, 20);
        red.color = QColor(200, 30, 20, 128);
        const TextPicture picture = Draw(red);
        const QColor middle = picture.image.pixelColor(picture.image.rect().center());
        QVERIFY(qAbs(middle.red() - 200) <= 2 && qAbs(middle.alpha() - 128) <= 1);
    }

    void withoutSmoothingPixelsAreWholeOrClear()
    {
        QVERIFY(HasHalves(Draw(Plain("Sono")).image));
        TextDescription rough = Plain("Sono");
        rough.isSmooth = false;
        QVERIFY(!HasHalves(Draw(rough).image));
        rough.warp.bend = 50;
        QVERIFY(!HasHalves(Draw(rough).image));
    }

    void severalLinesStandBelowEachOther()
    {
        const QRect one = Draw(Plain("Hx")).GetRect();
        const QRect two = Draw(Plain("Hx\nHx")).GetRect();
        QCOMPARE(two.topLeft(), one.topLeft());
        QCOMPARE(two.width(), one.width());
        QVERIFY(two.height() > one.height() + 40);
    }

    void widthBreaksLines()
    {
        TextDescription narrow = Plain("Hallo Hallo Hallo");
        const QRect wide = Draw(narrow).GetRect();
        narrow.width = 130;
        const QRect broken = Draw(narrow).GetRect();
        QVERIFY(broken.width() <= 130 && broken.height() > 2 * wide.height());
    }

    // Its lines end at the anchor, and grow to the left.
    void rightToLeftTextEndsAtItsAnchor()
    {
        TextDescription description = Plain(Hebrew);
        description.anchor = QPoint(300, 100);
        const TextPicture picture = Draw(description);
        // DejaVu Sans has the letters.
        QVERIFY(!picture.image.isNull());
        QVERIFY(picture.GetRect().right() <= 302 && picture.GetRect().right() > 285);
        QVERIFY(picture.GetRect().left() < 280);
        description.text = Hebrew + ' ' + Hebrew + '\n' + Hebrew;
        const TextPicture lines = Draw(description);
        QVERIFY(qAbs(lines.GetRect().right() - picture.GetRect().right()) <= 1);
        QVERIFY(lines.GetRect().left() < picture.GetRect().left());
        // Both lines stand to the right.
        const QImage lower = lines.image.copy(0, lines.image.height() - 20, lines.image.width(), 20);
        QVERIFY(VisibleRect(lower).left() > lines.image.width() / 3);
    }

    void bentTextReachesHigherAndLower()
    {
        TextDescription description = Plain("Hallo Hallo");
        const QRect straight = Draw(description).GetRect();
        description.warp.bend = 100;
        const QRect bent = Draw(description).GetRect();
        QVERIFY(bent.top() < straight.top() - 10 && bent.bottom() > straight.bottom() + 10);
        QVERIFY(qAbs(bent.width() - straight.width()) < 6);
        description.warp.isFlag = false;
        QCOMPARE(Draw(description).GetRect(), straight);
    }

    void sameDescriptionGivesTheSamePixels()
    {
        TextDescription description = Plain("Hallo\nWelt");
        description.warp.bend = 33;
        QVERIFY(Draw(description).image == Draw(description).image);
    }

    // The toolkit's outlines are others by a hair then.
    void pixelsStayTheSameWhateverElseIsDrawn()
    {
        const QImage before = Draw(Plain("Hallo")).image;
        for (const char* text : {"Hallo", "xyz", "Quark 123"})
        {
            QLabel label(text);
            label.setFont(QFont("DejaVu Sans", 12));
            label.grab();
            QVERIFY(Draw(Plain("Hallo")).image == before);
        }
    }

    void visibleRectHoldsJustWhatIsVisible_data()
    {
        QTest::addColumn<QRect>("drawn");
        QTest::newRow("nothing") << QRect();
        QTest::newRow("a pixel") << QRect(7, 9, 1, 1);
        QTest::newRow("in the middle") << QRect(3, 4, 10, 5);
        QTest::newRow("at the corners") << QRect(0, 0, 20, 30);
        QTest::newRow("last row") << QRect(0, 29, 20, 1);
        QTest::newRow("last column") << QRect(19, 0, 1, 30);
    }

    void visibleRectHoldsJustWhatIsVisible()
    {
        QFETCH(QRect, drawn);
        QImage image(20, 30, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.fillRect(drawn, QColor(0, 0, 0, 1));
        painter.end();
        QCOMPARE(VisibleRect(image), drawn);
    }

    void visibleRectOfScatteredPixelsHoldsAll()
    {
        QImage image(20, 30, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        for (const QPoint& point : {QPoint(12, 3), QPoint(2, 8), QPoint(17, 15), QPoint(9, 26)})
            image.setPixel(point, 0xff000000);
        QCOMPARE(VisibleRect(image), QRect(QPoint(2, 3), QPoint(17, 26)));
        QCOMPARE(VisibleRect(QImage()), QRect());
    }

    void textIsFoundWhereItWasDrawn()
    {
        const TextDescription description = Plain("Hallo");
        QPoint way(9, 9);
        QVERIFY(FindText(OnLayer(Draw(description)), description, &way));
        QCOMPARE(way, QPoint());
    }

    void textIsFoundWhereItWasMoved()
    {
        const TextDescription description = Plain("Hallo");
        TextPicture picture = Draw(description);
        picture.corner += QPoint(-37, 90);
        QPoint way;
        QVERIFY(FindText(OnLayer(picture), description, &way));
        QCOMPARE(way, QPoint(-37, 90));
    }

    void textIsFoundWhereAnEdgeCutsIt_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::newRow("left") << QPoint(-150, 0);
        QTest::newRow("right") << QPoint(430, 0);
        QTest::newRow("above") << QPoint(10, -130);
        QTest::newRow("below") << QPoint(-10, 175);
        QTest::newRow("a corner") << QPoint(-160, -125);
        QTest::newRow("between two letters") << QPoint(-128, 0);
    }

    void textIsFoundWhereAnEdgeCutsIt()
    {
        QFETCH(const QPoint, way);
        const TextDescription description = Plain("Hallo");
        TextPicture picture = Draw(description);
        picture.corner += way;
        const QImage layer = OnLayer(picture);
        QVERIFY(VisibleRect(layer).size() != picture.image.size());
        QPoint found;
        QVERIFY(FindText(layer, description, &found));
        QCOMPARE(found, way);
    }

    // To the last bit, wherever a letter is cut.
    void edgesCutTheTextAndChangeNothing_data()
    {
        QTest::addColumn<bool>("isSmooth");
        QTest::addColumn<double>("bend");
        QTest::newRow("smooth") << true << 0.0;
        QTest::newRow("rough") << false << 0.0;
        QTest::newRow("bent") << true << 60.0;
        QTest::newRow("rough and bent") << false << -60.0;
    }

    void edgesCutTheTextAndChangeNothing()
    {
        QFETCH(const bool, isSmooth);
        QFETCH(const double, bend);
        TextDescription description = Plain("Hallo");
        description.isSmooth = isSmooth;
        description.warp.bend = bend;
        const QImage whole = OnLayer(Draw(description));
        int count = 0;
        for (int off = 90; off < 200; ++off)
        {
            TextDescription moved = description;
            moved.anchor -= QPoint(off, off / 2 + 20);
            const TextPicture cut = DrawText(moved, QRect(0, 0, 60 + off % 7, 30 + off % 20));
            if (cut.image.isNull())
                continue;
            ++count;
            const QRect place = cut.GetRect().translated(description.anchor - moved.anchor);
            QVERIFY2(cut.image == whole.copy(place), qPrintable(QString::number(off)));
        }
        QVERIFY(count > 80);
    }

    // Where letters repeat, several places fit.
    void ofSeveralPlacesTheNearestIsFound()
    {
        TextDescription description = Plain(QString(30, 'H'));
        // Four letters are 385 pixels wide.
        description.size = 128;
        description.anchor = QPoint(-1000, 100);
        description.shown = QRect(0, 0, 5000, 200);
        QPoint way(9, 9);
        QVERIFY(FindText(OnLayer(DrawText(description, Bounds)), description, &way));
        QCOMPARE(way, QPoint());
    }

    void onlyWhatWasShownIsLookedFor()
    {
        TextDescription description = Plain("Hallo");
        description.anchor = QPoint(560, 100);
        const TextPicture cut = Draw(description);
        TextPicture inside = cut;
        inside.corner -= QPoint(200, 20);
        QPoint way;
        description.shown = cut.GetRect().translated(-description.anchor);
        QVERIFY(FindText(OnLayer(inside), description, &way));
        QCOMPARE(way, QPoint(-200, -20));
        description.shown = QRect(0, 0, 400, 200);
        QVERIFY(!FindText(OnLayer(inside), description, &way));
        QVERIFY(FindText(OnLayer(cut), description, &way));
        QCOMPARE(way, QPoint());
    }

    void textOfWhichAPartIsMissingIsNone()
    {
        const TextDescription description = Plain("Hallo");
        const TextPicture picture = Draw(description);
        QImage layer = OnLayer(picture);
        QPainter painter(&layer);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(QRect(picture.GetRect().center().x(), 0, 300, 300), Qt::transparent);
        painter.end();
        QPoint way;
        QVERIFY(!FindText(layer, description, &way));
    }

    void paintedTextIsNoneAnyMore()
    {
        const TextDescription description = Plain("Hallo");
        QPoint way;
        QImage layer = OnLayer(Draw(description));
        const QImage before = layer;
        layer.setPixel(5, 5, 0x01000001);
        QVERIFY(!FindText(layer, description, &way));
        layer = before;
        const QPoint inside = Draw(description).GetRect().center();
        layer.setPixel(inside, layer.pixel(inside) ^ 0x010000);
        QVERIFY(!FindText(layer, description, &way));
        QVERIFY(FindText(before, description, &way));
        TextDescription other = description;
        other.text = "Hallq";
        QVERIFY(!FindText(before, other, &way));
        QVERIFY(!FindText(before, Plain(""), &way));
        QImage clear(Bounds.size(), QImage::Format_ARGB32_Premultiplied);
        clear.fill(Qt::transparent);
        QVERIFY(!FindText(clear, description, &way));
    }

    void descriptionsDifferInEachPart()
    {
        const TextDescription plain = Plain("Hallo");
        QVERIFY(plain == Plain("Hallo"));
        TextDescription other = plain;
        other.warp.isVertical = true;
        QVERIFY(!(other == plain));
        other = plain;
        other.anchor.rx() += 1;
        QVERIFY(!(other == plain));
        other = plain;
        other.isSmooth = false;
        QVERIFY(!(other == plain));
        other = plain;
        other.width = 5;
        QVERIFY(!(other == plain));
    }
};

NV_TEST_MAIN(tst_TextPicture)
#include "tst_TextPicture.moc"
