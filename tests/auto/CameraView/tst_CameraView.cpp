// The loupe: which pixels it shows where, its grid, its factor.

#include <QKeyEvent>
#include <QWheelEvent>
#include <QtTest>

#include <limits>
#include <memory>

#include "CameraView.h"
#include "KXDocumentInterface.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// Each pixel of another colour, so that it is known when seen.
QImage Numbered(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 10 % 256, y * 10 % 256, 128));
    }
    return image;
}

QImage Filled(const QColor& color)
{
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

struct Host
{
    explicit Host(const QImage& image = Numbered(20, 20)) : document(image)
    {
        view.resize(160, 160);
        view.SetDocument(&document, 0);
        view.SetLookPoint(QPoint(10, 10));
        log.Watch(&view);
    }

    void Show()
    {
        QCursor::setPos(0, 0);
        view.move(100, 100);
        view.show();
        view.activateWindow();
        view.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&view));
    }
    void Wheel(int turn)
    {
        QWheelEvent event(QPointF(50, 50), view.mapToGlobal(QPoint(50, 50)), QPoint(), QPoint(0, turn),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
        QVERIFY(event.isAccepted());
    }
    ProbeImage Probe(double ratio = 1.0) { return ProbeImage(&view, ratio); }
    QColor Ground() const { return QColor(view.palette().color(QPalette::Dark).rgb()); }

    KXDocumentInterface document;
    CameraView view;
    SignalLog log;
};

} // namespace

class tst_CameraView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtOneWithoutAGrid()
    {
        CameraView view;

        QCOMPARE(view.GetScaleFactor(), 1);
        QCOMPARE(view.GetGridType(), int(CameraView::GridNone));
        QCOMPARE(view.GetLookPoint(), QPoint());
        view.resize(100, 100);
        const ProbeImage probe(&view);
        QCOMPARE(probe.ColorCount(), 1);
    }

    void pixelsStandAroundTheLookPoint_data()
    {
        QTest::addColumn<int>("factor");
        QTest::addColumn<double>("ratio");
        for (const int factor : {1, 4, 7, 32})
        {
            QTest::addRow("%d", factor) << factor << 1.0;
            QTest::addRow("%d, on a fine screen", factor) << factor << 2.0;
        }
    }
    void pixelsStandAroundTheLookPoint()
    {
        QFETCH(int, factor);
        QFETCH(double, ratio);
        Host host;
        host.view.SetScaleFactor(factor);
        const ProbeImage probe = host.Probe(ratio);
        const QImage& picture = host.document.GetComposition();

        for (int y = 0; y < 20; ++y)
        {
            for (int x = 0; x < 20; ++x)
            {
                const QRect pixel((160 - factor) / 2 + (x - 10) * factor,
                                  (160 - factor) / 2 + (y - 10) * factor, factor, factor);
                const bool isFramed =
                    qAbs(x - 10) * factor <= factor + 1 && qAbs(y - 10) * factor <= factor + 1;
                if (!host.view.rect().contains(pixel) || (isFramed && QPoint(x, y) != QPoint(10, 10)))
                    continue;
                NV_VERIFY_NEAR(probe, pixel.left(), pixel.top(), picture.pixelColor(x, y), 0);
                NV_VERIFY_NEAR(probe, pixel.right(), pixel.bottom(), picture.pixelColor(x, y), 0);
            }
        }
    }

    void middlePixelIsFramed()
    {
        Host host(Filled(Qt::red));
        host.view.SetScaleFactor(32);
        const ProbeImage probe = host.Probe();

        QCOMPARE(probe.At(64, 64), QColor(Qt::red));
        QCOMPARE(probe.At(95, 95), QColor(Qt::red));
        QCOMPARE(probe.At(63, 80), QColor(Qt::black));
        QCOMPARE(probe.At(96, 80), QColor(Qt::black));
        QCOMPARE(probe.At(62, 80), QColor(Qt::white));
        QCOMPARE(probe.At(97, 80), QColor(Qt::white));
    }

    void outsideOfTheDocumentIsGround()
    {
        Host host;
        host.view.SetScaleFactor(4);
        host.view.SetLookPoint(QPoint(0, 0));
        const ProbeImage probe = host.Probe();

        QCOMPARE(probe.At(70, 90), host.Ground());
        QVERIFY(probe.At(90, 90) != host.Ground());
    }

    void farAwayThereIsNothing_data()
    {
        QTest::addColumn<QPoint>("point");
        const int largest = std::numeric_limits<int>::max();
        const int smallest = std::numeric_limits<int>::min();
        QTest::newRow("a little") << QPoint(-500, 900);
        QTest::newRow("largest") << QPoint(largest, largest);
        QTest::newRow("smallest") << QPoint(smallest, smallest);
        QTest::newRow("mixed") << QPoint(smallest, largest);
    }
    void farAwayThereIsNothing()
    {
        QFETCH(QPoint, point);
        Host host;

        for (const int factor : {1, 32})
        {
            host.view.SetScaleFactor(factor);
            host.view.SetLookPoint(point);
            const ProbeImage probe = host.Probe();
            QCOMPARE(probe.At(10, 10), host.Ground());
            // Ground, and the two lines of the frame.
            QCOMPARE(probe.ColorCount(), 3);
        }
    }

    void gridStandsBetweenThePixels_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("line");
        QTest::newRow("none") << 0 << 100;
        QTest::newRow("standard") << 1 << 128;
        QTest::newRow("lighten") << 2 << 168;
        QTest::newRow("darken") << 3 << 56;
        QTest::newRow("above the list") << 4 << 100;
        QTest::newRow("below the list") << -1 << 100;
    }
    void gridStandsBetweenThePixels()
    {
        QFETCH(int, type);
        QFETCH(int, line);
        Host host(Filled(QColor(100, 100, 100)));
        host.view.SetScaleFactor(16);

        host.view.SetGridType(type);

        const ProbeImage probe = host.Probe();
        QCOMPARE(host.view.GetGridType(), type >= 0 && type <= 3 ? type : 0);
        // The pixel two beside the middle begins at 40.
        NV_VERIFY_NEAR(probe, 40, 30, QColor(line, line, line), 3);
        NV_VERIFY_NEAR(probe, 30, 40, QColor(line, line, line), 3);
        NV_VERIFY_NEAR(probe, 40, 40, QColor(line, line, line), 3);
        NV_VERIFY_NEAR(probe, 45, 45, QColor(100, 100, 100), 0);
    }

    void noGridBelowFour()
    {
        Host host(Filled(QColor(100, 100, 100)));
        host.view.SetGridType(CameraView::GridStandard);

        host.view.SetScaleFactor(3);
        QCOMPARE(host.Probe().CountOf(QColor(128, 128, 128), 0), 0);
        host.view.SetScaleFactor(4);
        QVERIFY(host.Probe().CountOf(QColor(128, 128, 128), 0) > 500);
    }

    void gridClosesBehindTheLastPixels()
    {
        Host host(Filled(QColor(100, 100, 100)));
        host.view.resize(300, 300);
        host.view.SetScaleFactor(8);
        const QRect pixels = host.Probe().BoundsOf(QColor(100, 100, 100), 0);
        host.view.SetGridType(CameraView::GridStandard);

        const QRect lines = host.Probe().BoundsOf(QColor(128, 128, 128), 0);

        QCOMPARE(pixels.size(), QSize(160, 160));
        QCOMPARE(lines, pixels.adjusted(0, 0, 1, 1));
    }

    void factorIsCutAndToldOnce()
    {
        Host host;

        host.view.SetScaleFactor(40);
        host.view.SetScaleFactor(32);
        host.view.SetScaleFactor(-3);
        host.view.SetScaleFactor(1);
        host.view.SetScaleFactor(8);
        host.view.SetScaleFactor(8);

        QCOMPARE(host.log.Entries(), QStringList({"ScaleChanged(32)", "ScaleChanged(1)", "ScaleChanged(8)"}));
    }

    void wheelStepsTheFactor()
    {
        Host host;
        host.Show();
        host.view.SetScaleFactor(5);
        host.log.Clear();

        host.Wheel(120);
        host.Wheel(60);
        host.Wheel(60);
        host.Wheel(-360);
        host.Wheel(12000);
        host.Wheel(120);

        QCOMPARE(host.log.Entries(),
                 QStringList({"ScaleChanged(6)", "ScaleChanged(7)", "ScaleChanged(4)", "ScaleChanged(32)"}));
    }

    void keysStepTheFactor()
    {
        Host host;
        host.Show();

        QTest::keyClick(&host.view, Qt::Key_Plus);
        QTest::keyClick(&host.view, Qt::Key_Equal);
        QTest::keyClick(&host.view, Qt::Key_Minus);
        QTest::keyClick(&host.view, Qt::Key_Minus);
        QTest::keyClick(&host.view, Qt::Key_Minus);

        QCOMPARE(host.log.Entries(),
                 QStringList({"ScaleChanged(2)", "ScaleChanged(3)", "ScaleChanged(2)", "ScaleChanged(1)"}));
        QKeyEvent event(QEvent::KeyPress, Qt::Key_B, Qt::NoModifier);
        event.accept();
        QCoreApplication::sendEvent(&host.view, &event);
        QVERIFY(!event.isAccepted());
    }

    void showsALayerOrTheComposition()
    {
        Host host(Filled(Qt::red));
        KXDocumentInterface::Layer layer;
        layer.image = Filled(Qt::blue);
        QVERIFY(host.document.InsertLayer(1, layer));
        host.document.SetLayerVisible(0, false);
        const auto seen = [&host](unsigned int which)
        {
            host.view.SetDocument(&host.document, which);
            host.view.SetScaleFactor(8);
            return host.Probe().At(40, 40);
        };

        QCOMPARE(seen(0), QColor(Qt::blue));
        QCOMPARE(seen(1), QColor(Qt::red));
        QCOMPARE(seen(2), QColor(Qt::blue));
        QCOMPARE(seen(3), host.Ground());
        QCOMPARE(seen(std::numeric_limits<unsigned int>::max()), host.Ground());
    }

    void transparentPixelsShowSquares()
    {
        Host host(Filled(Qt::transparent));
        host.view.SetScaleFactor(32);

        const ProbeImage probe = host.Probe();

        QVERIFY(probe.CountOf(Qt::white) > 5000);
        QVERIFY(probe.CountOf(QColor(204, 204, 204)) > 5000);
    }

    void followsTheDocument()
    {
        Host host(Filled(Qt::red));
        host.Show();
        host.view.SetScaleFactor(8);
        QCoreApplication::processEvents();

        host.document.EditLayer(0).fill(Qt::green);
        host.document.NotifyChanged(host.document.GetRect());

        QCOMPARE(host.Probe().At(40, 40), QColor(Qt::green));
    }

    void documentDies()
    {
        Host host;
        host.Show();
        auto document = std::make_unique<KXDocumentInterface>(Filled(Qt::red));
        host.view.SetDocument(document.get(), 0);
        host.view.clearFocus();

        document.reset();
        QCoreApplication::processEvents();
        host.view.RebuildView();

        QCOMPARE(host.Probe().ColorCount(), 1);
    }
};

NV_TEST_MAIN(tst_CameraView)
#include "tst_CameraView.moc"
