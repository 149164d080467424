// Layers, composition, selection and resolution of a document.

#include "BlendMode.h"
#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"

#include <cmath>
#include <limits>
#include <memory>

namespace
{
using Layer = KXDocumentInterface::Layer;

QImage filled(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

Layer filledLayer(const QSize& size, const QColor& color, int blendMode = 0, int opacity = 100)
{
    Layer layer;
    layer.name = "Layer";
    layer.image = filled(size, color);
    layer.blendMode = blendMode;
    layer.opacity = opacity;
    return layer;
}

// The names of the layers from bottom to top.
QString names(const KXDocumentInterface& document)
{
    QStringList list;
    for (int i = 0; i < document.GetLayerCount(); ++i)
        list << document.GetLayer(i).name;
    return list.join("");
}

// Three layers "012" of 2 by 2 pixels.
std::unique_ptr<KXDocumentInterface> threeLayers()
{
    auto document = std::make_unique<KXDocumentInterface>(filled(QSize(2, 2), Qt::white));
    for (const char* name : {"1", "2"})
    {
        Layer layer = filledLayer(QSize(2, 2), QColor(255, 0, 0, 128));
        layer.name = name;
        document->InsertLayer(document->GetLayerCount(), layer);
    }
    Layer bottom = document->GetLayer(0);
    bottom.name = "0";
    document->InsertLayer(0, bottom);
    document->RemoveLayer(1);
    document->SetCurrentLayer(0);
    return document;
}

double softLight(double b, double s)
{
    if (s <= 0.5)
        return b - (1 - 2 * s) * b * (1 - b);
    const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    return b + (2 * s - 1) * (d - b);
}

double hardLight(double b, double s)
{
    return s <= 0.5 ? 2 * b * s : 1 - 2 * (1 - b) * (1 - s);
}

// What source over backdrop gives, channel by channel, both opaque, from 0 to 1.
double mixed(int mode, double b, double s)
{
    switch (mode)
    {
    case 1:
        return b * s;
    case 2:
        return b + s - b * s;
    case 3:
        return hardLight(s, b);
    case 4:
        return std::abs(b - s);
    case 5:
        return b + s - 2 * b * s;
    case 6:
        return std::max(b, s);
    case 7:
        return std::min(b, s);
    case 8:
        return softLight(b, s);
    case 9:
        return hardLight(b, s);
    case 10:
        return b <= 0 ? 0 : s >= 1 ? 1 : std::min(1.0, b / (1 - s));
    case 11:
        return b >= 1 ? 1 : s <= 0 ? 0 : 1 - std::min(1.0, (1 - b) / s);
    case 12:
        return std::min(1.0, b + s);
    default:
        return s;
    }
}

QColor mixed(int mode, const QColor& backdrop, const QColor& source, double opacity)
{
    const auto channel = [&](double b, double s)
    {
        const double value = b * (1 - opacity) + mixed(mode, b, s) * opacity;
        return qRound(value * 255);
    };
    return QColor(channel(backdrop.redF(), source.redF()), channel(backdrop.greenF(), source.greenF()),
                  channel(backdrop.blueF(), source.blueF()));
}

bool near(const QColor& one, const QColor& other, int tolerance)
{
    return qAbs(one.red() - other.red()) <= tolerance && qAbs(one.green() - other.green()) <= tolerance &&
        qAbs(one.blue() - other.blue()) <= tolerance && qAbs(one.alpha() - other.alpha()) <= tolerance;
}
} // namespace

class tst_KXDocumentInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Construction
    void newDocumentHasOneLayerWithTheImage();
    void everyFormatIsConverted_data();
    void everyFormatIsConverted();
    void nullImageGivesOneTransparentPixel();
    void imageOfAnyPixelRatioIsTakenPixelForPixel();
    void imageAboveTheLimitIsTakenAsItIs();
    void resolutionComesFromTheImage_data();
    void resolutionComesFromTheImage();
    void largestSideIsTenThousand();

    // Composition
    void compositionOfOneLayerIsItsPixels();
    void blendModesHaveTheirPainterModes_data();
    void blendModesHaveTheirPainterModes();
    void unknownBlendModeIsNormal();
    void layersMixAsTheirBlendModeSays_data();
    void layersMixAsTheirBlendModeSays();
    void hiddenAndEmptyLayersDoNotShow();
    void documentWithoutVisibleLayerIsTransparent();
    void bottomLayerOfHalfOpacityIsHalfTransparent();
    void bottomLayerThatBlendsIsDrawnOverNothing();
    void onlyStaleAreasAreComposed();
    void staleAreasOfSeveralChangesAreAllComposed();
    void manyScatteredChangesAreAllComposed();
    void smallChangeKeepsTheBuffer();
    void smallChangeOfALargeDocumentIsQuick();
    void compositionThatIsHeldStaysAsItWas();

    // Editing
    void editedLayerIsChangedInPlace();
    void notifiedAreaIsCutToTheDocument_data();
    void notifiedAreaIsCutToTheDocument();
    void changeNotifiedFromTheSignalIsComposedToo();
    void editsNestAndTellOnceMoreAtTheEnd();
    void endWithoutBeginIsIgnored();
    void changeInsideTheFinalSignalIsOutsideTheEdit();

    // Layers
    void insertedLayerBecomesCurrent();
    void sourceGoesWithItsLayerAndIsNotTold();
    void insertRefuses_data();
    void insertRefuses();
    void insertPutsOddLayersRight();
    void removingKeepsTheCurrentLayerSensible_data();
    void removingKeepsTheCurrentLayerSensible();
    void lastLayerStays();
    void hiddenLayerComesAndGoesWithoutChangeOfLook();
    void currentLayerIsSetOnce();
    void visibilityIsSetOnce();
    void opacityIsSetOnceAndClamped();
    void blendModeIsSetOnce();
    void hiddenLayerChangesWithoutChangeOfLook();
    void badIndexesAreIgnored_data();
    void badIndexesAreIgnored();

    // Selection and resolution
    void maskIsTakenOnce();
    void maskThatDoesNotFitIsRefused_data();
    void maskThatDoesNotFitIsRefused();
    void resolutionIsSetOnce();
    void badResolutionIsIgnored_data();
    void badResolutionIsIgnored();

    void allImagesAreReplacedAtOnce();
    void imagesOfTheSameSizeAreNoNewSize();
    void imagesThatDoNotFitAreRefused();
    void anotherSizeWithinAnEditEndsWithAllOfIt();
    void documentOfOnePixelDoesAll();
    void compositionOutlivesTheDocument();
};

void tst_KXDocumentInterface::newDocumentHasOneLayerWithTheImage()
{
    const QImage image = filled(QSize(5, 3), QColor(1, 2, 3));

    const KXDocumentInterface document(image);

    QCOMPARE(document.GetSize(), QSize(5, 3));
    QCOMPARE(document.GetRect(), QRect(0, 0, 5, 3));
    QCOMPARE(document.GetLayerCount(), 1);
    QCOMPARE(document.GetCurrentLayer(), 0);
    QCOMPARE(document.GetLayer(0).image, image);
    QVERIFY(!document.GetLayer(0).name.isEmpty());
    QVERIFY(document.GetLayer(0).visible);
    QCOMPARE(document.GetLayer(0).opacity, 100);
    QCOMPARE(document.GetLayer(0).blendMode, 0);
    QVERIFY(document.GetSelectionMask().isNull());
    QVERIFY(!document.IsBeingEdited());
}

void tst_KXDocumentInterface::everyFormatIsConverted_data()
{
    QTest::addColumn<int>("format");
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format)
        QTest::addRow("format %d", format) << format;
}

void tst_KXDocumentInterface::everyFormatIsConverted()
{
    QFETCH(int, format);
    const QImage image = filled(QSize(4, 4), Qt::white).convertToFormat(QImage::Format(format));

    const KXDocumentInterface document(image);

    QCOMPARE(document.GetLayer(0).image.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(document.GetSize(), QSize(4, 4));
    QCOMPARE(document.GetComposition().format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(document.GetComposition().pixelColor(2, 2),
             image.convertToFormat(QImage::Format_ARGB32_Premultiplied).pixelColor(2, 2));
}

void tst_KXDocumentInterface::nullImageGivesOneTransparentPixel()
{
    const KXDocumentInterface document((QImage()));

    QCOMPARE(document.GetSize(), QSize(1, 1));
    QCOMPARE(document.GetComposition().size(), QSize(1, 1));
    QCOMPARE(document.GetComposition().pixelColor(0, 0).alpha(), 0);
    QCOMPARE(document.GetResolution(), 72.0);
}

void tst_KXDocumentInterface::imageOfAnyPixelRatioIsTakenPixelForPixel()
{
    QImage image = filled(QSize(8, 8), Qt::red);
    image.setDevicePixelRatio(2.0);
    KXDocumentInterface document(image);
    Layer layer = filledLayer(QSize(8, 8), QColor(0, 0, 255));
    layer.image.setDevicePixelRatio(3.0);

    QVERIFY(document.InsertLayer(1, layer));

    QCOMPARE(document.GetSize(), QSize(8, 8));
    QCOMPARE(document.GetComposition().devicePixelRatio(), 1.0);
    QCOMPARE(document.GetComposition(), filled(QSize(8, 8), Qt::blue));
    QCOMPARE(image.devicePixelRatio(), 2.0);
}

void tst_KXDocumentInterface::imageAboveTheLimitIsTakenAsItIs()
{
    const QSize size(KXDocumentInterface::MAX_DOC_DIMENSION + 1, 2);

    const KXDocumentInterface document(filled(size, Qt::green));

    QCOMPARE(document.GetSize(), size);
    QCOMPARE(document.GetComposition().pixelColor(size.width() - 1, 1), QColor(Qt::green));
}

void tst_KXDocumentInterface::resolutionComesFromTheImage_data()
{
    QTest::addColumn<int>("dotsPerMeter");
    QTest::addColumn<double>("expected");

    QTest::newRow("72 rounded") << 2835 << 72.0;
    QTest::newRow("72 cut off") << 2834 << 72.0;
    QTest::newRow("96 rounded") << 3780 << 96.0;
    QTest::newRow("96 cut off") << 3779 << 96.0;
    QTest::newRow("300") << 11811 << 300.0;
    QTest::newRow("600") << 23622 << 600.0;
    QTest::newRow("100 a centimetre") << 10000 << 254.0;
    QTest::newRow("no whole number") << 2860 << 2860 * 0.0254;
    QTest::newRow("one dot a metre") << 1 << 0.0254;
    QTest::newRow("negative") << -300 << 72.0;
}

void tst_KXDocumentInterface::resolutionComesFromTheImage()
{
    QFETCH(int, dotsPerMeter);
    QFETCH(double, expected);
    QImage image = filled(QSize(1, 1), Qt::white);
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(5000);

    QCOMPARE(KXDocumentInterface(image).GetResolution(), expected);
}

void tst_KXDocumentInterface::largestSideIsTenThousand()
{
    QCOMPARE(int(KXDocumentInterface::MAX_DOC_DIMENSION), 10000);
}

void tst_KXDocumentInterface::compositionOfOneLayerIsItsPixels()
{
    QImage image = filled(QSize(7, 5), QColor(200, 100, 50, 60));
    image.setPixelColor(6, 4, Qt::cyan);
    image.setPixelColor(0, 0, Qt::magenta);

    const KXDocumentInterface document(image);

    QCOMPARE(document.GetComposition(), document.GetLayer(0).image);
    QVERIFY(document.GetComposition().constBits() != document.GetLayer(0).image.constBits());
}

void tst_KXDocumentInterface::blendModesHaveTheirPainterModes_data()
{
    QTest::addColumn<int>("blendMode");
    QTest::addColumn<int>("expected");

    QTest::newRow("Normal") << 0 << int(QPainter::CompositionMode_SourceOver);
    QTest::newRow("Multiply") << 1 << int(QPainter::CompositionMode_Multiply);
    QTest::newRow("Screen") << 2 << int(QPainter::CompositionMode_Screen);
    QTest::newRow("Overlay") << 3 << int(QPainter::CompositionMode_Overlay);
    QTest::newRow("Difference") << 4 << int(QPainter::CompositionMode_Difference);
    QTest::newRow("Exclusion") << 5 << int(QPainter::CompositionMode_Exclusion);
    QTest::newRow("Lighten colors") << 6 << int(QPainter::CompositionMode_Lighten);
    QTest::newRow("Darken colors") << 7 << int(QPainter::CompositionMode_Darken);
    QTest::newRow("Soft light") << 8 << int(QPainter::CompositionMode_SoftLight);
    QTest::newRow("Hard light") << 9 << int(QPainter::CompositionMode_HardLight);
    QTest::newRow("Color dodge") << 10 << int(QPainter::CompositionMode_ColorDodge);
    QTest::newRow("Color burn") << 11 << int(QPainter::CompositionMode_ColorBurn);
    QTest::newRow("Addition") << 12 << int(QPainter::CompositionMode_Plus);
}

void tst_KXDocumentInterface::blendModesHaveTheirPainterModes()
{
    QFETCH(int, blendMode);
    QFETCH(int, expected);

    QCOMPARE(int(ToCompositionMode(blendMode)), expected);
}

void tst_KXDocumentInterface::unknownBlendModeIsNormal()
{
    for (const int mode : {-1, 13, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QCOMPARE(ToCompositionMode(mode), QPainter::CompositionMode_SourceOver);
}

void tst_KXDocumentInterface::layersMixAsTheirBlendModeSays_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("opacity");
    for (int mode = 0; mode < BLEND_MODE_COUNT; ++mode)
    {
        for (const int opacity : {100, 50})
            QTest::addRow("mode %d at %d percent", mode, opacity) << mode << opacity;
    }
}

void tst_KXDocumentInterface::layersMixAsTheirBlendModeSays()
{
    QFETCH(int, mode);
    QFETCH(int, opacity);
    const QList<QColor> colors = {QColor(200, 100, 50), QColor(20, 130, 240), QColor(255, 0, 128),
                                  QColor(90, 90, 200)};

    for (const QColor& backdrop : colors)
    {
        for (const QColor& source : colors)
        {
            KXDocumentInterface document(filled(QSize(2, 2), backdrop));
            document.InsertLayer(1, filledLayer(QSize(2, 2), source, mode, opacity));

            const QColor result = document.GetComposition().pixelColor(1, 1);

            const QColor expected = mixed(mode, backdrop, source, opacity / 100.0);
            QVERIFY2(near(result, expected, 3),
                     qPrintable(QString("%1 over %2 gives %3, not %4")
                                    .arg(source.name(), backdrop.name(), result.name(), expected.name())));
        }
    }
}

void tst_KXDocumentInterface::hiddenAndEmptyLayersDoNotShow()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    Layer hidden = filledLayer(QSize(2, 2), Qt::black);
    hidden.visible = false;
    document.InsertLayer(1, hidden);
    document.InsertLayer(2, filledLayer(QSize(2, 2), Qt::black, 0, 0));

    QCOMPARE(document.GetComposition(), filled(QSize(2, 2), Qt::white));
}

void tst_KXDocumentInterface::documentWithoutVisibleLayerIsTransparent()
{
    KXDocumentInterface document(filled(QSize(3, 3), Qt::white));
    document.GetComposition();

    document.SetLayerVisible(0, false);

    QCOMPARE(document.GetComposition(), filled(QSize(3, 3), Qt::transparent));
}

void tst_KXDocumentInterface::bottomLayerOfHalfOpacityIsHalfTransparent()
{
    KXDocumentInterface document(filled(QSize(3, 3), Qt::white));
    document.GetComposition();

    document.SetLayerOpacity(0, 50);

    const QColor color = document.GetComposition().pixelColor(1, 1);
    QVERIFY2(near(color, QColor(255, 255, 255, 128), 1), qPrintable(color.name(QColor::HexArgb)));
}

void tst_KXDocumentInterface::bottomLayerThatBlendsIsDrawnOverNothing()
{
    for (int mode = 0; mode < BLEND_MODE_COUNT; ++mode)
    {
        KXDocumentInterface document(filled(QSize(3, 3), QColor(10, 120, 230)));

        document.SetLayerBlendMode(0, mode);

        const QColor color = document.GetComposition().pixelColor(1, 1);
        QVERIFY2(near(color, QColor(10, 120, 230), 1),
                 qPrintable(QString("%1: %2").arg(mode).arg(color.name())));
    }
}

void tst_KXDocumentInterface::onlyStaleAreasAreComposed()
{
    for (const int opacity : {100, 60})
    {
        KXDocumentInterface document(filled(QSize(40, 40), Qt::white));
        document.InsertLayer(1, filledLayer(QSize(40, 40), QColor(255, 0, 0, 100), 1, opacity));
        const QColor before = document.GetComposition().pixelColor(0, 0);
        document.EditLayer(0).fill(Qt::black);

        document.NotifyChanged(QRect(10, 10, 5, 5));

        QRect changed;
        for (int y = 0; y < 40; ++y)
        {
            for (int x = 0; x < 40; ++x)
            {
                if (document.GetComposition().pixelColor(x, y) != before)
                    changed |= QRect(x, y, 1, 1);
            }
        }
        QCOMPARE(changed, QRect(10, 10, 5, 5));
    }
}

void tst_KXDocumentInterface::staleAreasOfSeveralChangesAreAllComposed()
{
    KXDocumentInterface document(filled(QSize(40, 40), Qt::white));
    document.GetComposition();
    document.EditLayer(0).fill(Qt::black);

    document.NotifyChanged(QRect(0, 0, 2, 2));
    document.NotifyChanged(QRect(38, 38, 2, 2));
    document.NotifyChanged(QRect(1, 1, 2, 2));

    const QImage& composition = document.GetComposition();
    QCOMPARE(composition.pixelColor(0, 0), QColor(Qt::black));
    QCOMPARE(composition.pixelColor(2, 2), QColor(Qt::black));
    QCOMPARE(composition.pixelColor(39, 39), QColor(Qt::black));
    QCOMPARE(composition.pixelColor(20, 20), QColor(Qt::white));
    QCOMPARE(composition.pixelColor(0, 2), QColor(Qt::white));
}

void tst_KXDocumentInterface::manyScatteredChangesAreAllComposed()
{
    KXDocumentInterface document(filled(QSize(100, 100), Qt::white));
    document.GetComposition();

    for (int i = 0; i < 2500; ++i)
    {
        const QPoint place(i % 50 * 2, i / 50 * 2);
        document.EditLayer(0).setPixelColor(place, Qt::black);
        document.NotifyChanged(QRect(place, QSize(1, 1)));
    }

    QCOMPARE(document.GetComposition(), document.GetLayer(0).image);
}

void tst_KXDocumentInterface::smallChangeKeepsTheBuffer()
{
    KXDocumentInterface document(filled(QSize(300, 200), Qt::white));
    document.InsertLayer(1, filledLayer(QSize(300, 200), QColor(0, 255, 0, 50), 3, 70));
    const QImage* image = &document.GetComposition();
    const uchar* bits = image->constBits();

    for (int i = 0; i < 10; ++i)
    {
        document.EditLayer(1).setPixelColor(i, i, Qt::red);
        document.NotifyChanged(QRect(i, i, 1, 1));
        QCOMPARE(&document.GetComposition(), image);
        QCOMPARE(document.GetComposition().constBits(), bits);
    }
}

void tst_KXDocumentInterface::smallChangeOfALargeDocumentIsQuick()
{
    KXDocumentInterface document(filled(QSize(6000, 4000), Qt::white));
    QElapsedTimer timer;
    timer.start();
    const uchar* bits = document.GetComposition().constBits();
    const qint64 whole = timer.nsecsElapsed();

    timer.restart();
    for (int i = 0; i < 100; ++i)
    {
        document.EditLayer(0).setPixelColor(3000 + i, 2000, Qt::black);
        document.NotifyChanged(QRect(3000 + i, 2000, 10, 10));
        document.GetComposition();
    }
    const qint64 hundredChanges = timer.nsecsElapsed();

    qInfo("24 megapixels whole: %.2f ms, a change of 100 pixels: %.4f ms", whole / 1e6, hundredChanges / 1e8);
    QCOMPARE(document.GetComposition().constBits(), bits);
    QVERIFY(hundredChanges < whole);
}

void tst_KXDocumentInterface::compositionThatIsHeldStaysAsItWas()
{
    KXDocumentInterface document(filled(QSize(4, 4), Qt::white));
    const QImage held = document.GetComposition();

    document.EditLayer(0).fill(Qt::black);
    document.NotifyChanged(document.GetRect());

    QCOMPARE(document.GetComposition(), filled(QSize(4, 4), Qt::black));
    QCOMPARE(held, filled(QSize(4, 4), Qt::white));
}

void tst_KXDocumentInterface::editedLayerIsChangedInPlace()
{
    KXDocumentInterface document(filled(QSize(20, 20), Qt::white));
    document.InsertLayer(1, filledLayer(QSize(20, 20), Qt::transparent));
    document.GetComposition();
    const uchar* bits = document.GetLayer(1).image.constBits();

    QImage& image = document.EditLayer(1);
    image.setPixelColor(3, 3, Qt::red);

    QVERIFY(image.isDetached());
    QCOMPARE(document.EditLayer(1).bits(), const_cast<uchar*>(bits));
    QCOMPARE(document.GetLayer(1).image.pixelColor(3, 3), QColor(Qt::red));
}

void tst_KXDocumentInterface::notifiedAreaIsCutToTheDocument_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QStringList>("expected");

    const int least = std::numeric_limits<int>::min();
    const int most = std::numeric_limits<int>::max();
    QTest::newRow("inside") << QRect(1, 2, 3, 4) << QStringList("CompositionChanged(1,2 3x4)");
    QTest::newRow("whole") << QRect(0, 0, 10, 10) << QStringList("CompositionChanged(0,0 10x10)");
    QTest::newRow("over the edges") << QRect(-5, -5, 8, 100) << QStringList("CompositionChanged(0,0 3x10)");
    QTest::newRow("over all edges") << QRect(-1, -1, 12, 12) << QStringList("CompositionChanged(0,0 10x10)");
    QTest::newRow("last pixel") << QRect(9, 9, 1, 1) << QStringList("CompositionChanged(9,9 1x1)");
    QTest::newRow("as far as numbers go") << QRect(QPoint(least / 2, least / 2), QPoint(most / 2, most / 2))
                                          << QStringList("CompositionChanged(0,0 10x10)");
    QTest::newRow("null") << QRect() << QStringList();
    QTest::newRow("no width") << QRect(3, 3, 0, 5) << QStringList();
    QTest::newRow("outside") << QRect(10, 0, 5, 5) << QStringList();
    QTest::newRow("before") << QRect(-5, 0, 5, 5) << QStringList();
}

void tst_KXDocumentInterface::notifiedAreaIsCutToTheDocument()
{
    QFETCH(QRect, area);
    QFETCH(QStringList, expected);
    KXDocumentInterface document(filled(QSize(10, 10), Qt::white));
    SignalLog log(&document);

    document.NotifyChanged(area);

    QCOMPARE(log.Entries(), expected);
}

void tst_KXDocumentInterface::changeNotifiedFromTheSignalIsComposedToo()
{
    KXDocumentInterface document(filled(QSize(10, 10), Qt::white));
    document.GetComposition();
    QList<QRect> areas;
    connect(&document, &KXDocumentInterface::CompositionChanged, this,
            [&](const QRect& area)
            {
                areas << area;
                document.GetComposition();
                if (areas.size() > 1)
                    return;
                document.EditLayer(0).setPixelColor(8, 8, Qt::black);
                document.NotifyChanged(QRect(8, 8, 1, 1));
            });
    document.EditLayer(0).setPixelColor(1, 1, Qt::black);

    document.NotifyChanged(QRect(1, 1, 1, 1));

    QCOMPARE(areas, QList<QRect>({QRect(1, 1, 1, 1), QRect(8, 8, 1, 1)}));
    QCOMPARE(document.GetComposition(), document.GetLayer(0).image);
}

void tst_KXDocumentInterface::editsNestAndTellOnceMoreAtTheEnd()
{
    KXDocumentInterface document(filled(QSize(10, 10), Qt::white));
    SignalLog log(&document);
    bool editedAtTheEnd = true;

    document.BeginEdit();
    document.NotifyChanged(QRect(1, 1, 2, 2));
    document.BeginEdit();
    QVERIFY(document.IsBeingEdited());
    document.NotifyChanged(QRect(5, 5, 1, 1));
    document.EndEdit();
    QVERIFY(document.IsBeingEdited());
    QCOMPARE(log.Count(), 2);
    connect(&document, &KXDocumentInterface::CompositionChanged, this,
            [&] { editedAtTheEnd = document.IsBeingEdited(); });
    document.EndEdit();

    QVERIFY(!document.IsBeingEdited());
    QVERIFY(!editedAtTheEnd);
    QCOMPARE(log.Entries(),
             QStringList({"CompositionChanged(1,1 2x2)", "CompositionChanged(5,5 1x1)",
                          "CompositionChanged(1,1 5x5)"}));

    document.BeginEdit();
    document.EndEdit();
    QCOMPARE(log.Count(), 3);
}

void tst_KXDocumentInterface::endWithoutBeginIsIgnored()
{
    KXDocumentInterface document(filled(QSize(10, 10), Qt::white));
    SignalLog log(&document);

    document.EndEdit();
    document.EndEdit();
    QVERIFY(!document.IsBeingEdited());
    document.BeginEdit();

    QVERIFY(document.IsBeingEdited());
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::changeInsideTheFinalSignalIsOutsideTheEdit()
{
    KXDocumentInterface document(filled(QSize(10, 10), Qt::white));
    SignalLog log(&document);
    document.BeginEdit();
    document.NotifyChanged(QRect(1, 1, 1, 1));
    bool again = true;
    connect(&document, &KXDocumentInterface::CompositionChanged, this,
            [&]
            {
                if (std::exchange(again, false))
                    document.NotifyChanged(QRect(2, 2, 1, 1));
            });

    document.EndEdit();
    document.BeginEdit();
    document.EndEdit();

    QCOMPARE(log.Entries(),
             QStringList({"CompositionChanged(1,1 1x1)", "CompositionChanged(1,1 1x1)",
                          "CompositionChanged(2,2 1x1)"}));
}

void tst_KXDocumentInterface::insertedLayerBecomesCurrent()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    SignalLog log(&document);
    Layer layer = filledLayer(QSize(2, 2), Qt::red, 4, 60);
    layer.name = "red";

    QVERIFY(document.InsertLayer(1, layer));
    QCOMPARE(document.GetCurrentLayer(), 1);
    QVERIFY(document.InsertLayer(0, layer));

    QCOMPARE(document.GetCurrentLayer(), 0);
    QCOMPARE(document.GetLayerCount(), 3);
    QCOMPARE(document.GetLayer(2).name, QString("red"));
    QCOMPARE(document.GetLayer(2).blendMode, 4);
    QCOMPARE(document.GetLayer(2).opacity, 60);
    QCOMPARE(log.Entries(),
             QStringList({"LayersChanged()", "CompositionChanged(0,0 2x2)", "LayersChanged()",
                          "CompositionChanged(0,0 2x2)"}));
}

void tst_KXDocumentInterface::sourceGoesWithItsLayerAndIsNotTold()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    Layer layer = filledLayer(QSize(2, 2), Qt::red);
    layer.source = QString("made of this");
    QVERIFY(document.InsertLayer(1, layer));
    const SignalLog log(&document);

    document.SetLayerSource(0, 7);
    document.SetLayerSource(-1, 8);
    document.SetLayerSource(2, 8);

    QCOMPARE(document.GetLayer(1).source.toString(), QString("made of this"));
    QCOMPARE(document.GetLayer(0).source.toInt(), 7);
    QCOMPARE(log.Count(), 0);
    QVERIFY(document.RemoveLayer(0));
    QCOMPARE(document.GetLayer(0).source.toString(), QString("made of this"));
}

void tst_KXDocumentInterface::insertRefuses_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QSize>("size");

    QTest::newRow("negative index") << -1 << QSize(2, 2);
    QTest::newRow("index behind the end") << 2 << QSize(2, 2);
    QTest::newRow("larger") << 1 << QSize(3, 2);
    QTest::newRow("smaller") << 1 << QSize(2, 1);
    QTest::newRow("null image") << 1 << QSize(0, 0);
}

void tst_KXDocumentInterface::insertRefuses()
{
    QFETCH(int, index);
    QFETCH(QSize, size);
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    SignalLog log(&document);
    Layer layer;
    if (!size.isEmpty())
        layer = filledLayer(size, Qt::red);

    QVERIFY(!document.InsertLayer(index, layer));

    QCOMPARE(document.GetLayerCount(), 1);
    QCOMPARE(document.GetCurrentLayer(), 0);
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::insertPutsOddLayersRight()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    Layer layer = filledLayer(QSize(2, 2), Qt::red, 13, 101);
    layer.image = layer.image.convertToFormat(QImage::Format_RGB888);

    QVERIFY(document.InsertLayer(1, layer));
    layer.opacity = -1;
    layer.blendMode = -1;
    QVERIFY(document.InsertLayer(2, layer));

    QCOMPARE(document.GetLayer(1).image.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(document.GetLayer(1).opacity, 100);
    QCOMPARE(document.GetLayer(1).blendMode, 0);
    QCOMPARE(document.GetLayer(2).opacity, 0);
    QCOMPARE(document.GetLayer(2).blendMode, 0);
}

void tst_KXDocumentInterface::removingKeepsTheCurrentLayerSensible_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("removed");
    QTest::addColumn<QString>("left");
    QTest::addColumn<int>("expected");

    QTest::newRow("above the current") << 0 << 2 << "01" << 0;
    QTest::newRow("below the current") << 2 << 0 << "12" << 1;
    QTest::newRow("the current at the top") << 2 << 2 << "01" << 1;
    QTest::newRow("the current in the middle") << 1 << 1 << "02" << 0;
    QTest::newRow("the current at the bottom") << 0 << 0 << "12" << 0;
}

void tst_KXDocumentInterface::removingKeepsTheCurrentLayerSensible()
{
    QFETCH(int, current);
    QFETCH(int, removed);
    QFETCH(QString, left);
    QFETCH(int, expected);
    const auto document = threeLayers();
    QCOMPARE(names(*document), QString("012"));
    document->SetCurrentLayer(current);
    SignalLog log(document.get());

    QVERIFY(document->RemoveLayer(removed));

    QCOMPARE(names(*document), left);
    QCOMPARE(document->GetCurrentLayer(), expected);
    QCOMPARE(log.Entries(), QStringList({"LayersChanged()", "CompositionChanged(0,0 2x2)"}));
}

void tst_KXDocumentInterface::lastLayerStays()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    SignalLog log(&document);

    QVERIFY(!document.RemoveLayer(0));

    QCOMPARE(document.GetLayerCount(), 1);
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::hiddenLayerComesAndGoesWithoutChangeOfLook()
{
    KXDocumentInterface document(filled(QSize(2, 2), Qt::white));
    SignalLog log(&document);
    Layer layer = filledLayer(QSize(2, 2), Qt::red);
    layer.visible = false;

    document.InsertLayer(1, layer);
    document.RemoveLayer(1);

    QCOMPARE(log.Entries(), QStringList({"LayersChanged()", "LayersChanged()"}));
}

void tst_KXDocumentInterface::currentLayerIsSetOnce()
{
    const auto document = threeLayers();
    SignalLog log(document.get());

    document->SetCurrentLayer(0);
    document->SetCurrentLayer(2);
    document->SetCurrentLayer(2);

    QCOMPARE(document->GetCurrentLayer(), 2);
    QCOMPARE(log.Entries(), QStringList("LayersChanged()"));
}

void tst_KXDocumentInterface::visibilityIsSetOnce()
{
    const auto document = threeLayers();
    SignalLog log(document.get());

    document->SetLayerVisible(1, true);
    document->SetLayerVisible(1, false);
    document->SetLayerVisible(1, false);

    QVERIFY(!document->GetLayer(1).visible);
    QCOMPARE(log.Entries(), QStringList({"LayersChanged()", "CompositionChanged(0,0 2x2)"}));
}

void tst_KXDocumentInterface::opacityIsSetOnceAndClamped()
{
    const auto document = threeLayers();
    SignalLog log(document.get());

    document->SetLayerOpacity(1, 100);
    document->SetLayerOpacity(1, std::numeric_limits<int>::max());
    document->SetLayerOpacity(1, 40);
    document->SetLayerOpacity(1, 40);
    QCOMPARE(document->GetLayer(1).opacity, 40);
    document->SetLayerOpacity(1, -5);
    document->SetLayerOpacity(1, std::numeric_limits<int>::min());

    QCOMPARE(document->GetLayer(1).opacity, 0);
    QCOMPARE(log.Entries(),
             QStringList({"LayersChanged()", "CompositionChanged(0,0 2x2)", "LayersChanged()",
                          "CompositionChanged(0,0 2x2)"}));
}

void tst_KXDocumentInterface::blendModeIsSetOnce()
{
    const auto document = threeLayers();
    SignalLog log(document.get());

    document->SetLayerBlendMode(1, 0);
    document->SetLayerBlendMode(1, 12);
    document->SetLayerBlendMode(1, 12);
    document->SetLayerBlendMode(1, 13);
    document->SetLayerBlendMode(1, -1);

    QCOMPARE(document->GetLayer(1).blendMode, 12);
    QCOMPARE(log.Entries(), QStringList({"LayersChanged()", "CompositionChanged(0,0 2x2)"}));
}

void tst_KXDocumentInterface::hiddenLayerChangesWithoutChangeOfLook()
{
    const auto document = threeLayers();
    document->SetLayerVisible(1, false);
    SignalLog log(document.get());

    document->SetLayerOpacity(1, 30);
    document->SetLayerBlendMode(1, 5);
    document->SetLayerOpacity(1, 0);
    document->SetLayerVisible(1, true);

    QCOMPARE(log.Count("LayersChanged"), 4);
    QCOMPARE(log.Count("CompositionChanged"), 0);
}

void tst_KXDocumentInterface::badIndexesAreIgnored_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("negative") << -1;
    QTest::newRow("behind the end") << 3;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_KXDocumentInterface::badIndexesAreIgnored()
{
    QFETCH(int, index);
    const auto document = threeLayers();
    SignalLog log(document.get());

    document->SetCurrentLayer(index);
    document->SetLayerVisible(index, false);
    document->SetLayerOpacity(index, 10);
    document->SetLayerBlendMode(index, 3);

    QVERIFY(!document->RemoveLayer(index));
    QCOMPARE(document->GetLayerCount(), 3);
    QCOMPARE(document->GetCurrentLayer(), 0);
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::maskIsTakenOnce()
{
    KXDocumentInterface document(filled(QSize(4, 4), Qt::white));
    SignalLog log(&document);
    QImage mask(4, 4, QImage::Format_Grayscale8);
    mask.fill(255);

    QVERIFY(document.SetSelectionMask(QImage()));
    QVERIFY(document.SetSelectionMask(mask));
    QVERIFY(document.SetSelectionMask(mask.copy()));
    QCOMPARE(document.GetSelectionMask(), mask);
    QVERIFY(document.SetSelectionMask(QImage()));
    QVERIFY(document.SetSelectionMask(QImage()));

    QVERIFY(document.GetSelectionMask().isNull());
    QCOMPARE(log.Entries(), QStringList({"SelectionChanged()", "SelectionChanged()"}));
}

void tst_KXDocumentInterface::maskThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("format");
    QTest::newRow("larger") << QSize(5, 4) << int(QImage::Format_Grayscale8);
    QTest::newRow("turned") << QSize(2, 8) << int(QImage::Format_Grayscale8);
    QTest::newRow("alpha mask") << QSize(4, 4) << int(QImage::Format_Alpha8);
    QTest::newRow("colours") << QSize(4, 4) << int(QImage::Format_ARGB32);
}

void tst_KXDocumentInterface::maskThatDoesNotFitIsRefused()
{
    QFETCH(QSize, size);
    QFETCH(int, format);
    KXDocumentInterface document(filled(QSize(4, 4), Qt::white));
    SignalLog log(&document);
    QImage mask(size, QImage::Format(format));
    mask.fill(0);

    QVERIFY(!document.SetSelectionMask(mask));

    QVERIFY(document.GetSelectionMask().isNull());
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::resolutionIsSetOnce()
{
    QImage image = filled(QSize(1, 1), Qt::white);
    image.setDotsPerMeterX(2835);
    KXDocumentInterface document(image);
    SignalLog log(&document);

    document.SetResolution(72.0);
    document.SetResolution(300.0);
    document.SetResolution(300.0);
    document.SetResolution(0.5);

    QCOMPARE(document.GetResolution(), 0.5);
    QCOMPARE(log.Entries(), QStringList({"ResolutionChanged(300)", "ResolutionChanged(0.5)"}));
}

void tst_KXDocumentInterface::badResolutionIsIgnored_data()
{
    QTest::addColumn<double>("resolution");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("negative zero") << -0.0;
    QTest::newRow("negative") << -72.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
}

void tst_KXDocumentInterface::badResolutionIsIgnored()
{
    QFETCH(double, resolution);
    KXDocumentInterface document(filled(QSize(1, 1), Qt::white));
    const double before = document.GetResolution();
    SignalLog log(&document);

    document.SetResolution(resolution);

    QCOMPARE(document.GetResolution(), before);
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::allImagesAreReplacedAtOnce()
{
    const auto document = threeLayers();
    document->SetLayerOpacity(1, 40);
    document->SetCurrentLayer(2);
    (void)document->GetComposition();
    SignalLog log(document.get());
    const QVector<QImage> images = {filled(QSize(7, 5), Qt::red), filled(QSize(7, 5), Qt::green),
                                    filled(QSize(7, 5), Qt::blue)};

    QVERIFY(document->ReplaceImages(images, QImage()));

    QCOMPARE(document->GetSize(), QSize(7, 5));
    QCOMPARE(document->GetCurrentLayer(), 2);
    QCOMPARE(document->GetLayer(1).opacity, 40);
    QCOMPARE(document->GetLayer(1).image, images.at(1));
    QCOMPARE(document->GetComposition(), images.at(2));
    QCOMPARE(log.Entries(), QStringList({"SizeChanged(7x5)", "CompositionChanged(0,0 7x5)"}));
}

void tst_KXDocumentInterface::imagesOfTheSameSizeAreNoNewSize()
{
    KXDocumentInterface document(filled(QSize(4, 4), Qt::white));
    QImage mask(4, 4, QImage::Format_Grayscale8);
    mask.fill(9);
    SignalLog log(&document);

    QVERIFY(document.ReplaceImages({filled(QSize(4, 4), Qt::black)}, mask));

    QCOMPARE(document.GetComposition().pixelColor(2, 2), QColor(Qt::black));
    QCOMPARE(document.GetSelectionMask(), mask);
    QCOMPARE(log.Entries(), QStringList({"SelectionChanged()", "CompositionChanged(0,0 4x4)"}));
}

void tst_KXDocumentInterface::imagesThatDoNotFitAreRefused()
{
    KXDocumentInterface document(filled(QSize(4, 4), Qt::white));
    document.InsertLayer(1, filledLayer(QSize(4, 4), Qt::red, 1));
    SignalLog log(&document);
    const QImage one = filled(QSize(3, 3), Qt::blue);
    QImage wrongMask(4, 4, QImage::Format_Grayscale8);
    wrongMask.fill(1);

    QVERIFY(!document.ReplaceImages({}, QImage()));
    QVERIFY(!document.ReplaceImages({one}, QImage()));
    QVERIFY(!document.ReplaceImages({one, one, one}, QImage()));
    QVERIFY(!document.ReplaceImages({one, filled(QSize(3, 4), Qt::blue)}, QImage()));
    QVERIFY(!document.ReplaceImages({one, QImage()}, QImage()));
    QVERIFY(!document.ReplaceImages({QImage(), QImage()}, QImage()));
    QVERIFY(!document.ReplaceImages({one, one.convertToFormat(QImage::Format_RGB32)}, QImage()));
    QVERIFY(!document.ReplaceImages({one, one}, wrongMask));
    QVERIFY(!document.ReplaceImages({one, one}, one));

    QCOMPARE(document.GetSize(), QSize(4, 4));
    QCOMPARE(log.Count(), 0);
}

void tst_KXDocumentInterface::anotherSizeWithinAnEditEndsWithAllOfIt()
{
    KXDocumentInterface document(filled(QSize(40, 40), Qt::white));
    document.BeginEdit();
    document.NotifyChanged(QRect(30, 30, 5, 5));
    QVERIFY(document.ReplaceImages({filled(QSize(8, 6), Qt::black)}, QImage()));
    SignalLog log(&document);

    document.EndEdit();

    QCOMPARE(log.Entries(), QStringList({"CompositionChanged(0,0 8x6)"}));
}

void tst_KXDocumentInterface::documentOfOnePixelDoesAll()
{
    KXDocumentInterface document(filled(QSize(1, 1), Qt::white));
    document.InsertLayer(1, filledLayer(QSize(1, 1), Qt::red, 1));
    QCOMPARE(document.GetComposition().pixelColor(0, 0), QColor(Qt::red));

    document.EditLayer(1).fill(Qt::green);
    document.NotifyChanged(QRect(-3, -3, 7, 7));
    QCOMPARE(document.GetComposition().pixelColor(0, 0), QColor(Qt::green));

    QVERIFY(document.RemoveLayer(1));
    QCOMPARE(document.GetComposition().pixelColor(0, 0), QColor(Qt::white));
}

void tst_KXDocumentInterface::compositionOutlivesTheDocument()
{
    auto document = std::make_unique<KXDocumentInterface>(filled(QSize(4, 4), Qt::blue));
    const QImage composition = document->GetComposition();

    document.reset();

    QCOMPARE(composition, filled(QSize(4, 4), Qt::blue));
}

NV_TEST_MAIN(tst_KXDocumentInterface)

#include "tst_KXDocumentInterface.moc"
