// The overview: what it draws of a document, and how its frame is moved.

#include <QKeyEvent>
#include <QMouseEvent>
#include <QtTest>

#include <memory>

#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "NavigatorWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// The left half red, the right half blue.
QImage Halves(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    for (int y = 0; y < height; ++y)
    {
        for (int x = width / 2; x < width; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }
    return image;
}

// Makes all green, and tells how many of it live.
class GreenFilter : public KXColorTransformBase
{
public:
    explicit GreenFilter(int& living) : m_living(living) { ++m_living; }
    ~GreenFilter() override { --m_living; }
    void Apply(QImage& image) const override { image.fill(Qt::green); }

private:
    int& m_living;
};

// As on a screen of twice as many pixels.
class FineNavigator : public NavigatorWidget
{
protected:
    int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDevicePixelRatio ? 2 : NavigatorWidget::metric(metric);
    }
};

// An overview at half the size of a document of 400 by 200, whose corner stands at 4, 4.
struct Host
{
    explicit Host(NavigatorWidget* made = new NavigatorWidget) : document(Halves(400, 200)), widget(made)
    {
        widget->resize(208, 108);
        widget->SetDocument(&document, nullptr);
        widget->SetViewRect(QRectF(100, 50, 100, 50));
        log.Watch(widget.get());
    }

    void Show() const
    {
        QCursor::setPos(0, 0);
        widget->move(100, 100);
        widget->show();
        widget->activateWindow();
        widget->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(widget.get()));
    }
    void Mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons) const
    {
        QMouseEvent event(type, place, widget->mapToGlobal(place), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(widget.get(), &event);
    }
    void Press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        Mouse(QEvent::MouseButtonPress, place, button, button);
    }
    void Drag(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        Mouse(QEvent::MouseMove, place, Qt::NoButton, button);
    }
    void Release(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        Mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
    }
    // Where the frame stood after each move by hand.
    QList<QRectF> Told() const
    {
        QList<QRectF> rects;
        for (int i = 0; i < log.Count(); ++i)
            rects.append(log.Arguments(i).first().toRectF());
        return rects;
    }

    KXDocumentInterface document;
    std::unique_ptr<NavigatorWidget> widget;
    SignalLog log;
};

} // namespace

class tst_NavigatorWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dragMovesTheFrame()
    {
        Host host;
        host.Show();

        host.Press(QPoint(60, 35));
        QCOMPARE(host.log.Count(), 0);
        host.Drag(QPoint(70, 45));
        host.Drag(QPoint(70, 45));
        host.Drag(QPoint(71, 45));
        host.Release(QPoint(71, 45));
        host.Drag(QPoint(100, 80), Qt::NoButton);

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(120, 70, 100, 50), QRectF(122, 70, 100, 50)}));
        QCOMPARE(host.widget->GetViewRect(), QRectF(122, 70, 100, 50));
    }

    void pressBesideBringsTheMiddleThere()
    {
        Host host;
        host.Show();

        host.Press(QPoint(154, 79));
        QCOMPARE(host.Told(), QList<QRectF>({QRectF(250, 125, 100, 50)}));
        host.Drag(QPoint(144, 79));

        QCOMPARE(host.Told().last(), QRectF(230, 125, 100, 50));
    }

    void otherButtonsMoveNothing()
    {
        Host host;
        host.Show();

        host.Press(QPoint(154, 79), Qt::RightButton);
        host.Drag(QPoint(20, 20), Qt::RightButton);
        host.Release(QPoint(20, 20), Qt::RightButton);

        QCOMPARE(host.log.Count(), 0);
    }

    void arrowsMoveTheFrame_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("shift");
        QTest::addColumn<QPointF>("corner");
        QTest::newRow("left") << int(Qt::Key_Left) << false << QPointF(90, 50);
        QTest::newRow("right") << int(Qt::Key_Right) << false << QPointF(110, 50);
        QTest::newRow("up") << int(Qt::Key_Up) << false << QPointF(100, 45);
        QTest::newRow("down") << int(Qt::Key_Down) << false << QPointF(100, 55);
        QTest::newRow("right, a little") << int(Qt::Key_Right) << true << QPointF(101, 50);
        // Not less than one pixel.
        QTest::newRow("down, a little") << int(Qt::Key_Down) << true << QPointF(100, 51);
    }
    void arrowsMoveTheFrame()
    {
        QFETCH(int, key);
        QFETCH(bool, shift);
        QFETCH(QPointF, corner);
        Host host;
        host.Show();

        QTest::keyClick(host.widget.get(), Qt::Key(key), shift ? Qt::ShiftModifier : Qt::NoModifier);

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(corner, QSizeF(100, 50))}));
    }

    void arrowsMoveATinyFrameByAWholePixel()
    {
        Host host;
        host.Show();
        host.widget->SetViewRect(QRectF(100, 50, 3, 2));

        QTest::keyClick(host.widget.get(), Qt::Key_Right);
        QTest::keyClick(host.widget.get(), Qt::Key_Up, Qt::ShiftModifier);

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(101, 50, 3, 2), QRectF(101, 49, 3, 2)}));
    }

    void otherKeysAreLeftToTheWindow()
    {
        Host host;
        host.Show();
        QKeyEvent event(QEvent::KeyPress, Qt::Key_B, Qt::NoModifier);
        event.accept();

        QCoreApplication::sendEvent(host.widget.get(), &event);

        QVERIFY(!event.isAccepted());
    }

    void frameStaysWithinTheDocument()
    {
        Host host;
        host.Show();

        host.Press(QPoint(60, 35));
        host.Drag(QPoint(4000, 4000));
        host.Drag(QPoint(5000, 5000));
        host.Drag(QPoint(-4000, -4000));
        host.Release(QPoint(-4000, -4000));
        QTest::keyClick(host.widget.get(), Qt::Key_Left);
        QTest::keyClick(host.widget.get(), Qt::Key_Up);

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(300, 150, 100, 50), QRectF(0, 0, 100, 50)}));
    }

    void frameAroundAllOfTheDocumentDoesNotMove()
    {
        Host host;
        host.Show();
        host.widget->SetViewRect(QRectF(-50, -50, 500, 300));

        host.Press(QPoint(60, 35));
        host.Drag(QPoint(90, 75));
        host.Release(QPoint(90, 75));
        QTest::keyClick(host.widget.get(), Qt::Key_Right);

        QCOMPARE(host.log.Count(), 0);
        QCOMPARE(host.widget->GetViewRect(), QRectF(-50, -50, 500, 300));
    }

    void wideFrameMovesUpAndDownOnly()
    {
        Host host;
        host.Show();
        host.widget->SetViewRect(QRectF(-50, 0, 500, 100));

        host.Press(QPoint(60, 10));
        host.Drag(QPoint(90, 20));

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(-50, 20, 500, 100)}));
    }

    void hostMovesTheFrameWithoutASignal()
    {
        Host host;
        host.Show();
        const ProbeImage before(host.widget.get());

        host.widget->SetViewRect(QRectF(0, 0, 100, 50));

        QCOMPARE(host.log.Count(), 0);
        QVERIFY(before.Differs(ProbeImage(host.widget.get())));
    }

    void smallFrameCanBeTakenHoldOf()
    {
        Host host;
        host.Show();
        host.widget->SetViewRect(QRectF(200, 100, 1, 1));

        host.Press(QPoint(106, 56));
        host.Drag(QPoint(116, 56));

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(220, 100, 1, 1)}));
    }

    void cornerIsToldInPixelsOfTheScreen()
    {
        Host host(new FineNavigator);
        host.Show();

        QTest::keyClick(host.widget.get(), Qt::Key_Right);

        QCOMPARE(host.Told(), QList<QRectF>({QRectF(220, 100, 100, 50)}));
        QCOMPARE(host.widget->GetViewRect(), QRectF(110, 50, 100, 50));
    }

    void drawsTheDocumentAndItsFrame_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::newRow("1") << 1.0;
        QTest::newRow("2") << 2.0;
    }
    void drawsTheDocumentAndItsFrame()
    {
        QFETCH(double, ratio);
        Host host;
        const ProbeImage probe(host.widget.get(), ratio);

        // In the frame as they are, beside it darker.
        NV_VERIFY_NEAR(probe, 80, 40, QColor(Qt::red), 4);
        NV_VERIFY_NEAR(probe, 20, 20, QColor(165, 0, 0), 6);
        NV_VERIFY_NEAR(probe, 180, 90, QColor(0, 0, 165), 6);
        NV_VERIFY_NEAR(probe, 54, 40, QColor(Qt::white), 60);
        host.widget->SetViewRect(QRectF());
        const ProbeImage plain(host.widget.get(), ratio);
        NV_VERIFY_NEAR(plain, 20, 20, QColor(Qt::red), 4);
        NV_VERIFY_NEAR(plain, 180, 90, QColor(Qt::blue), 4);
    }

    void drawsWhatWasRebuilt()
    {
        Host host;
        host.widget->SetViewRect(QRectF());
        QCOMPARE(ProbeImage(host.widget.get()).At(50, 50), QColor(Qt::red));

        host.document.EditLayer(0).fill(Qt::yellow);
        host.document.NotifyChanged(host.document.GetRect());
        QCOMPARE(ProbeImage(host.widget.get()).At(50, 50), QColor(Qt::red));
        host.widget->RebuildView();

        QCOMPARE(ProbeImage(host.widget.get()).At(50, 50), QColor(Qt::yellow));
    }

    void drawsThroughTheTransformAndOwnsIt()
    {
        int living = 0;
        Host host;
        host.widget->SetDocument(&host.document, new GreenFilter(living));
        QCOMPARE(ProbeImage(host.widget.get()).At(50, 50), QColor(Qt::green));

        host.widget->SetDocument(&host.document, new GreenFilter(living));
        QCOMPARE(living, 1);
        host.widget.reset();
        QCOMPARE(living, 0);
    }

    void overviewIsMadeAnewForAnotherSize()
    {
        // Grey from far, columns of one pixel from near.
        QImage stripes(208, 108, QImage::Format_ARGB32_Premultiplied);
        stripes.fill(Qt::white);
        for (int y = 0; y < stripes.height(); ++y)
        {
            for (int x = 0; x < stripes.width(); x += 2)
                stripes.setPixelColor(x, y, Qt::black);
        }
        KXDocumentInterface document(stripes);
        NavigatorWidget widget;
        widget.SetDocument(&document, nullptr);
        widget.resize(60, 35);
        QCOMPARE(ProbeImage(&widget).CountOf(Qt::black, 0), 0);

        widget.resize(216, 116);

        QVERIFY(ProbeImage(&widget).CountOf(Qt::black, 0) > 10000);
    }

    void transparentDocumentShowsSquares()
    {
        QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        KXDocumentInterface document(image);
        Host host;

        host.widget->SetDocument(&document, nullptr);

        const ProbeImage probe(host.widget.get());
        QVERIFY(probe.CountOf(Qt::white) > 5000);
        QVERIFY(probe.CountOf(QColor(204, 204, 204)) > 5000);
    }

    void documentOfAnyShapeIsDrawn_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("one pixel") << QSize(1, 1);
        QTest::newRow("a line") << QSize(10000, 1);
        QTest::newRow("a column") << QSize(1, 10000);
        QTest::newRow("smaller than the widget") << QSize(30, 20);
    }
    void documentOfAnyShapeIsDrawn()
    {
        QFETCH(QSize, size);
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        KXDocumentInterface document(image);
        Host host;

        host.widget->SetDocument(&document, nullptr);
        const QRect drawn = ProbeImage(host.widget.get()).BoundsOf(Qt::magenta);

        QVERIFY(!drawn.isEmpty());
        QVERIFY(drawn.width() == 200 || drawn.height() == 100);
    }

    void sizeOfTheDocumentMayChange()
    {
        Host host;
        host.widget->SetViewRect(QRectF());
        ProbeImage(host.widget.get());

        QVERIFY(host.document.ReplaceImages({Halves(100, 100)}, QImage()));
        host.widget->RebuildView();

        const ProbeImage probe(host.widget.get());
        QCOMPARE(probe.BoundsOf(Qt::red) | probe.BoundsOf(Qt::blue), QRect(54, 4, 100, 100));
    }

    void documentDies()
    {
        int living = 0;
        Host host;
        host.Show();
        auto document = std::make_unique<KXDocumentInterface>(Halves(400, 200));
        host.widget->SetDocument(document.get(), new GreenFilter(living));
        host.widget->SetViewRect(QRectF(100, 50, 100, 50));
        host.Press(QPoint(60, 35));

        document.reset();
        host.Drag(QPoint(80, 45));
        host.Press(QPoint(10, 10));
        QTest::keyClick(host.widget.get(), Qt::Key_Right);

        QCOMPARE(living, 0);
        QCOMPARE(host.log.Count(), 0);
        QCOMPARE(ProbeImage(host.widget.get()).CountOf(Qt::green), 0);
    }

    void focusIsSeen()
    {
        Host host;
        host.Show();
        QTRY_VERIFY(host.widget->hasFocus());
        const ProbeImage focused(host.widget.get());

        host.widget->clearFocus();

        QVERIFY(focused.Differs(ProbeImage(host.widget.get()), 16));
    }
};

NV_TEST_MAIN(tst_NavigatorWidget)
#include "tst_NavigatorWidget.moc"
