// The histogram: what it counts, how levels are pointed at and selected, and what becomes of a count that is
// overtaken by events.

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QThreadPool>
#include <QtTest>

#include <array>
#include <memory>
#include <numeric>

#include "BarForm.h"
#include "BusyThreads.h"
#include "HistogramWidget.h"
#include "KXDocumentInterface.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QStringList ClearedEntries = {"CurrentLevelRangeChanged(0, 255)", "CountChanged(0)", "StatsNoInfo()"};

QImage Filled(int width, int height, const QColor& color)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

// Many levels in each channel, the alpha by the column.
QImage Mixed(const QVector<int>& alphas, const QSize& size = QSize(97, 61))
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            image.setPixel(x, y,
                           qRgba(x * 7 % 256, y * 11 % 256, (x + y) * 5 % 256, alphas.at(x % alphas.size())));
        }
    }
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The counts of one channel set, each pixel by itself.
std::array<int, 256> PlainCount(const QImage& image, int channel)
{
    std::array<qint64, 256> sums = {};
    const int channels = qMax(1, (channel & 1) + (channel >> 1 & 1) + (channel >> 2 & 1));
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const QRgb pixel = image.pixel(x, y);
            const int alpha = qAlpha(pixel);
            if (alpha == 0)
                continue;
            const auto whole = [alpha](int part) { return (part * 255 + alpha / 2) / alpha; };
            const QRgb color = qRgb(whole(qRed(pixel)), whole(qGreen(pixel)), whole(qBlue(pixel)));
            if (channel == 0)
                ++sums[size_t((qRed(color) * 11 + qGreen(color) * 16 + qBlue(color) * 5) / 32)];
            if (channel & 1)
                ++sums[size_t(qRed(color))];
            if (channel & 2)
                ++sums[size_t(qGreen(color))];
            if (channel & 4)
                ++sums[size_t(qBlue(color))];
        }
    }
    std::array<int, 256> means = {};
    for (size_t level = 0; level < 256; ++level)
        means[level] = int((sums[level] + channels / 2) / channels);
    return means;
}

QString Told(const char* signal, int one, int other)
{
    return QString("%1(%2, %3)").arg(signal).arg(one).arg(other);
}

QString Told(const char* signal, int value)
{
    return QString("%1(%2)").arg(signal).arg(value);
}

// A widget whose levels are one pixel wide: level n stands at n + 1.
struct Host
{
    Host() : widget(std::make_unique<HistogramWidget>())
    {
        widget->resize(258, 100);
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
    // Until the count of the document has arrived, and forgets what was told so far.
    void Count(KXDocumentInterface* document)
    {
        widget->SetDocument(document);
        log.Clear();
        QTRY_COMPARE(log.Count("CountChanged"), 1);
        log.Clear();
    }
    void Press(int level) const { Mouse(QEvent::MouseButtonPress, level, Qt::LeftButton, Qt::LeftButton); }
    void Drag(int level) const { Mouse(QEvent::MouseMove, level, Qt::NoButton, Qt::LeftButton); }
    void Hover(int level) const { Mouse(QEvent::MouseMove, level, Qt::NoButton, Qt::NoButton); }
    void Release(int level) const { Mouse(QEvent::MouseButtonRelease, level, Qt::LeftButton, Qt::NoButton); }
    void Mouse(QEvent::Type type, int level, Qt::MouseButton button, Qt::MouseButtons buttons) const
    {
        const QPoint place(level + 1, 50);
        QMouseEvent event(type, place, widget->mapToGlobal(place), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(widget.get(), &event);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(widget.get(), key, modifiers);
    }
    QStringList Take()
    {
        const QStringList entries = log.Entries();
        log.Clear();
        return entries;
    }

    std::unique_ptr<HistogramWidget> widget;
    SignalLog log;
};

// All that was given to other threads is done, and all that came of it.
void FinishWork()
{
    QCoreApplication::processEvents();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

} // namespace

class tst_HistogramWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QCursor::setPos(0, 0); }

    void startsWithAllChannelsAndNoDocument()
    {
        Host host;

        QCOMPARE(host.widget->GetChannel(), HistogramWidget::RGB);
        QVERIFY(!host.widget->IsLogarithmic());
        QCOMPARE(host.widget->focusPolicy(), Qt::StrongFocus);
        host.Show();
        host.Hover(10);
        host.Key(Qt::Key_Right);
        QCOMPARE(host.log.Count("StatsChanged"), 0);
        QCOMPARE(host.log.Count("CountChanged"), 0);
    }

    void countsAsOneByOne_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<int>("channel");
        QVector<int> mostlyOpaque(1303, 255);
        mostlyOpaque[1024] = 0;
        mostlyOpaque[1301] = 77;
        const QVector<QPair<const char*, QImage>> images = {
            {"opaque", Mixed({255})},
            {"of many opacities", Mixed({0, 1, 7, 64, 128, 201, 253, 255})},
            {"transparent", Filled(20, 30, Qt::transparent)},
            {"of one colour", Filled(40, 20, QColor(10, 200, 255))},
            {"one pixel", Filled(1, 1, QColor(0, 1, 2, 255))},
            {"long", Filled(10000, 60, QColor(9, 9, 9))},
            {"wide and opaque", Mixed({255}, QSize(1303, 5))},
            {"wide, opaque but for its end", Mixed(mostlyOpaque, QSize(1303, 5))},
        };
        for (const auto& image : images)
        {
            for (int channel = 0; channel < 8; ++channel)
                QTest::addRow("%s, %d", image.first, channel) << image.second << channel;
        }
    }
    void countsAsOneByOne()
    {
        QFETCH(QImage, image);
        QFETCH(int, channel);
        const std::array<int, 256> expected = PlainCount(image, channel);
        KXDocumentInterface document(image);
        Host host;
        host.Show();
        host.widget->SetChannel(HistogramWidget::ColorChannel(channel));

        host.widget->SetDocument(&document);
        host.log.Clear();
        QTRY_COMPARE(host.log.Count("CountChanged"), 1);
        const int sum = std::accumulate(expected.begin(), expected.end(), 0);
        // Each mean is rounded, their sum is not the mean of the sums.
        QVERIFY(qAbs(host.log.Arguments(0).first().toInt() - sum) <= 128);
        host.log.Clear();

        host.Key(Qt::Key_Home);
        QStringList entries = {Told("StatsChanged", 0, expected[0])};
        for (int level = 1; level < 256; ++level)
        {
            host.Key(Qt::Key_Right);
            entries.append(Told("StatsChanged", level, expected[size_t(level)]));
        }
        QCOMPARE(host.log.Entries(), entries);
    }

    void countOfAllIsThePixelsThatAreSeen()
    {
        QImage image = Filled(10, 10, QColor(200, 100, 50));
        for (int x = 0; x < 10; ++x)
            image.setPixelColor(x, 0, Qt::transparent);
        KXDocumentInterface document(image);
        Host host;
        host.Show();

        host.widget->SetDocument(&document);

        QTRY_COMPARE(host.log.Entries(), ClearedEntries + QStringList({"CountChanged(90)", "StatsNoInfo()"}));
    }

    void halfTransparentCountsByItsColor()
    {
        KXDocumentInterface document(Filled(4, 4, QColor(255, 0, 0, 128)));
        Host host;
        host.Show();
        host.widget->SetChannel(HistogramWidget::Red);
        host.Count(&document);

        host.Key(Qt::Key_End);

        QCOMPARE(host.Take(), QStringList("StatsChanged(255, 16)"));
    }

    void sameChannelAgainTellsNothing()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::red));
        Host host;
        host.Show();
        host.Count(&document);

        host.widget->SetChannel(HistogramWidget::RGB);
        host.widget->SetChannel(HistogramWidget::ColorChannel(15));
        FinishWork();

        QCOMPARE(host.log.Entries(), QStringList());
        QCOMPARE(host.widget->GetChannel(), HistogramWidget::RGB);
    }

    void anotherColorIsToldAtOnce()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::red));
        Host host;
        host.Show();
        host.Count(&document);
        host.Key(Qt::Key_End);
        host.log.Clear();

        host.widget->SetChannel(HistogramWidget::Red);
        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsChanged(255, 16)"}));
        host.widget->SetChannel(HistogramWidget::RedGreen);
        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsChanged(255, 8)"}));
    }

    void luminanceIsToldWhenItIsCounted()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);
        host.Key(Qt::Key_End);
        host.log.Clear();
        BusyThreads busy;

        host.widget->SetChannel(HistogramWidget::Luminance);
        QCoreApplication::processEvents();
        QCOMPARE(host.Take(), QStringList());
        host.Key(Qt::Key_Left);
        host.Key(Qt::Key_Right);
        QCOMPARE(host.Take(), QStringList({"StatsChanged(254, 0)", "StatsChanged(255, 16)"}));
        busy.Open();

        QTRY_COMPARE(host.log.Entries(), QStringList({"CountChanged(16)", "StatsChanged(255, 16)"}));
    }

    void backToTheColorsBeforeTheLuminanceIsCounted()
    {
        KXDocumentInterface document(Filled(4, 4, QColor(255, 0, 0)));
        Host host;
        host.Show();
        host.Count(&document);
        host.Key(Qt::Key_End);
        host.log.Clear();
        BusyThreads busy;
        host.widget->SetChannel(HistogramWidget::Luminance);
        QCoreApplication::processEvents();

        host.widget->SetChannel(HistogramWidget::Red);
        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsChanged(255, 16)"}));
        busy.Open();
        FinishWork();

        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsChanged(255, 16)"}));
    }

    void pointingTellsEachLevelOnce()
    {
        KXDocumentInterface document(Filled(3, 3, QColor(7, 7, 7)));
        Host host;
        host.Show();
        host.Count(&document);

        host.Hover(7);
        host.Hover(7);
        host.Hover(8);
        host.Hover(-40);
        host.Hover(4000);
        QCOMPARE(host.Take(),
                 QStringList({"StatsChanged(7, 9)", "StatsChanged(8, 0)", "StatsChanged(0, 0)",
                              "StatsChanged(255, 0)"}));

        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(host.widget.get(), &leave);
        QCoreApplication::sendEvent(host.widget.get(), &leave);
        QCOMPARE(host.Take(), QStringList("StatsNoInfo()"));
    }

    void dragSelectsARange()
    {
        KXDocumentInterface document(Mixed({255}));
        const std::array<int, 256> counts = PlainCount(document.GetComposition(), HistogramWidget::Red);
        Host host;
        host.Show();
        host.widget->SetChannel(HistogramWidget::Red);
        host.Count(&document);
        const auto sum = [&counts](int from, int to)
        { return std::accumulate(counts.begin() + from, counts.begin() + to + 1, 0); };

        host.Press(20);
        QCOMPARE(host.Take(), QStringList(Told("StatsChanged", 20, counts[20])));
        host.Drag(20);
        QCOMPARE(host.Take(), QStringList());
        host.Drag(10);
        QCOMPARE(host.Take(),
                 QStringList({Told("StatsChanged", 10, counts[10]), Told("CurrentLevelRangeChanged", 10, 20),
                              Told("CountChanged", sum(10, 20))}));
        host.Drag(300);
        QCOMPARE(
            host.Take(),
            QStringList({Told("StatsChanged", 255, counts[255]), Told("CurrentLevelRangeChanged", 20, 255),
                         Told("CountChanged", sum(20, 255))}));
        host.Drag(20);
        QCOMPARE(host.Take(),
                 QStringList({Told("StatsChanged", 20, counts[20]), Told("CurrentLevelRangeChanged", 20, 20),
                              Told("CountChanged", sum(20, 20))}));
        host.Release(20);
        host.Hover(20);
        QCOMPARE(host.Take(), QStringList());
    }

    void clickSelectsAllAgain()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);
        host.Press(10);
        host.Drag(20);
        host.Release(20);
        host.log.Clear();

        host.Press(20);
        host.Release(20);
        QCOMPARE(host.Take(), QStringList({"CurrentLevelRangeChanged(0, 255)", "CountChanged(16)"}));
        host.Press(20);
        host.Release(20);
        QCOMPARE(host.Take(), QStringList());
    }

    void rightButtonSelectsNothing()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);

        host.Mouse(QEvent::MouseButtonPress, 10, Qt::RightButton, Qt::RightButton);
        host.Mouse(QEvent::MouseMove, 30, Qt::NoButton, Qt::RightButton);
        host.Mouse(QEvent::MouseButtonRelease, 30, Qt::RightButton, Qt::NoButton);

        QCOMPARE(host.log.Count("CurrentLevelRangeChanged"), 0);
    }

    void shiftAndArrowsSelect()
    {
        KXDocumentInterface document(Filled(4, 4, QColor(2, 2, 2)));
        Host host;
        host.Show();
        host.Count(&document);

        host.Key(Qt::Key_Right);
        host.Key(Qt::Key_Right);
        QCOMPARE(host.Take(), QStringList({"StatsChanged(0, 0)", "StatsChanged(1, 0)"}));
        host.Key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(host.Take(),
                 QStringList({"StatsChanged(2, 16)", "CurrentLevelRangeChanged(1, 2)", "CountChanged(16)"}));
        host.Key(Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(host.Take(),
                 QStringList({"StatsChanged(0, 0)", "CurrentLevelRangeChanged(0, 1)", "CountChanged(0)"}));
        host.Key(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(host.Take(), QStringList());
        host.Key(Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(
            host.Take(),
            QStringList({"StatsChanged(255, 0)", "CurrentLevelRangeChanged(1, 255)", "CountChanged(16)"}));
        host.Key(Qt::Key_Left);
        QCOMPARE(host.Take(), QStringList("StatsChanged(254, 0)"));
        host.Key(Qt::Key_Escape);
        QCOMPARE(host.Take(), QStringList({"CurrentLevelRangeChanged(0, 255)", "CountChanged(16)"}));
        host.Key(Qt::Key_Escape);
        QCOMPARE(host.Take(), QStringList());
    }

    void firstArrowBeginsAtTheEndThatItComesFrom()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);

        host.Key(Qt::Key_Left, Qt::ShiftModifier);

        QCOMPARE(
            host.Take(),
            QStringList({"StatsChanged(255, 16)", "CurrentLevelRangeChanged(255, 255)", "CountChanged(16)"}));
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

    void logarithmIsSwitchedByKeyMenuAndProperty()
    {
        QImage image = Filled(100, 100, QColor(40, 40, 40));
        image.setPixelColor(0, 0, QColor(200, 200, 200));
        KXDocumentInterface document(image);
        Host host;
        host.Show();
        host.Count(&document);
        const ProbeImage linear(host.widget.get());

        host.Key(Qt::Key_L);
        QVERIFY(host.widget->IsLogarithmic());
        const ProbeImage logarithmic(host.widget.get());
        QVERIFY(linear.Differs(logarithmic, 8));
        host.widget->actions().first()->trigger();
        QVERIFY(!host.widget->IsLogarithmic());
        host.widget->setProperty("logarithmic", true);
        QVERIFY(host.widget->IsLogarithmic());
        host.widget->SetLogarithmic(true);
        QVERIFY(host.widget->IsLogarithmic());
        QCOMPARE(host.widget->contextMenuPolicy(), Qt::ActionsContextMenu);
        QCOMPARE(host.log.Entries(), QStringList());
    }

    void drawsTheHighestLevelToTheTop()
    {
        QImage image = Filled(10, 10, QColor(50, 0, 0));
        for (int x = 0; x < 10; ++x)
            image.setPixelColor(x, 0, QColor(200, 0, 0));
        KXDocumentInterface document(image);
        Host host;
        host.Show();
        host.widget->clearFocus();
        host.widget->SetChannel(HistogramWidget::Red);
        host.Count(&document);
        const QColor ground = host.widget->palette().color(QPalette::Base);
        const ProbeImage probe(host.widget.get());

        QVERIFY(!ProbeImage::Similar(probe.At(51, 3), ground, 40));
        QVERIFY(!ProbeImage::Similar(probe.At(201, 94), ground, 40));
        NV_VERIFY_NEAR(probe, 201, 60, ground, 2);
        NV_VERIFY_NEAR(probe, 120, 94, ground, 2);
    }

    // Levels half a logical pixel wide are told apart, and the mouse selects by logical ones.
    void onADenseScreenEachLevelHasItsPixel()
    {
        if (!IsOnDenseScreen())
            return;
        KXDocumentInterface document(Filled(10, 10, QColor(50, 0, 0)));
        Host host;
        host.widget->resize(130, 100);
        host.Show();
        host.widget->clearFocus();
        host.widget->SetChannel(HistogramWidget::Red);
        host.Count(&document);
        const QColor ground = host.widget->palette().color(QPalette::Base);
        const QImage drawn = host.widget->grab().toImage();
        QCOMPARE(drawn.size(), QSize(260, 200));
        QVERIFY(!ProbeImage::Similar(drawn.pixelColor(2 + 50, 100), ground, 40));
        QCOMPARE(drawn.pixelColor(2 + 49, 100), ground);
        QCOMPARE(drawn.pixelColor(2 + 51, 100), ground);

        host.Press(10);
        host.Drag(20);
        host.Release(20);
        QVERIFY(host.log.Entries().contains("CurrentLevelRangeChanged(20, 40)"));
    }

    void severalCallsCountOnce()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);

        for (int i = 0; i < 5; ++i)
            host.widget->RebuildHistogramm();
        FinishWork();

        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsNoInfo()"}));
    }

    void changeWhileCountingStartsAnew()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.widget->SetChannel(HistogramWidget::Red);
        BusyThreads busy;
        host.widget->SetDocument(&document);
        QCoreApplication::processEvents();
        host.log.Clear();

        document.EditLayer(0).fill(QColor(33, 0, 0));
        document.NotifyChanged(document.GetRect());
        host.widget->RebuildHistogramm();
        QCoreApplication::processEvents();
        busy.Open();
        FinishWork();
        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsNoInfo()"}));

        host.Hover(33);
        QCOMPARE(host.Take(), QStringList("StatsChanged(33, 16)"));
    }

    void changeWhileCountingCopiesNothing()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.widget->SetChannel(HistogramWidget::Red);
        BusyThreads busy;
        host.widget->SetDocument(&document);
        QCoreApplication::processEvents();
        host.log.Clear();
        const uchar* pixels = document.GetComposition().constBits();

        document.EditLayer(0).setPixelColor(1, 1, Qt::black);
        document.NotifyChanged(QRect(1, 1, 1, 1));
        QCOMPARE(document.GetComposition().constBits(), pixels);
        busy.Open();
        FinishWork();
        QCOMPARE(host.Take(), QStringList());

        // Nobody asks for it, and it is counted all the same.
        QTRY_COMPARE(host.log.Entries(), QStringList({"CountChanged(16)", "StatsNoInfo()"}));
        host.log.Clear();
        host.Hover(0);
        QCOMPARE(host.Take(), QStringList("StatsChanged(0, 1)"));
    }

    void changeAfterTheCountIsLeftToTheHost()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);
        const uchar* pixels = document.GetComposition().constBits();

        document.EditLayer(0).fill(Qt::black);
        document.NotifyChanged(document.GetRect());
        QCOMPARE(document.GetComposition().constBits(), pixels);
        FinishWork();

        QCOMPARE(host.Take(), QStringList());
    }

    void endedCountOfALetGoDocumentIsNotTold()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.widget->SetDocument(&document);
        {
            BusyThreads busy;
            QCoreApplication::processEvents();
        }
        host.log.Clear();

        host.widget->SetDocument(nullptr);
        FinishWork();

        QCOMPARE(host.Take(), ClearedEntries);
        host.Hover(255);
        QCOMPARE(host.Take(), QStringList("StatsNoInfo()"));
    }

    void documentDiesWhileItIsCounted()
    {
        auto document = std::make_unique<KXDocumentInterface>(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        BusyThreads busy;
        host.widget->SetDocument(document.get());
        QCoreApplication::processEvents();
        host.log.Clear();

        document.reset();
        QCOMPARE(host.Take(), ClearedEntries);
        busy.Open();
        FinishWork();
        host.widget->RebuildHistogramm();
        FinishWork();

        QCOMPARE(host.Take(), QStringList());
    }

    void diesWhileItCounts()
    {
        KXDocumentInterface document(Filled(600, 600, Qt::white));
        Host host;
        host.Show();
        BusyThreads busy;
        host.widget->SetDocument(&document);
        QCoreApplication::processEvents();

        host.widget.reset();
        busy.Open();
        FinishWork();

        QCOMPARE(host.log.Count("CountChanged"), 1);
    }

    void hiddenCountsWhenItIsShown()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;

        host.widget->SetDocument(&document);
        FinishWork();
        QCOMPARE(host.Take(), ClearedEntries);
        host.Show();
        QTRY_COMPARE(host.log.Count("CountChanged"), 1);
        QCOMPARE(host.Take(), QStringList({"CountChanged(16)", "StatsNoInfo()"}));

        host.widget->hide();
        host.widget->RebuildHistogramm();
        FinishWork();
        QCOMPARE(host.Take(), QStringList());
        host.widget->show();
        QTRY_COMPARE(host.log.Count("CountChanged"), 1);
    }

    void hiddenBeforeTheCountBegins()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.widget->SetDocument(&document);
        host.log.Clear();

        host.widget->hide();
        FinishWork();
        QCOMPARE(host.Take(), QStringList());
        host.widget->show();

        QTRY_COMPARE(host.log.Count("CountChanged"), 1);
    }

    void anotherDocumentSelectsAllLevels()
    {
        KXDocumentInterface first(Filled(4, 4, Qt::white));
        KXDocumentInterface second(Filled(5, 5, Qt::black));
        Host host;
        host.Show();
        host.Count(&first);
        host.Press(10);
        host.Drag(20);
        host.Release(20);
        host.log.Clear();

        host.widget->SetDocument(&second);
        QTRY_COMPARE(host.log.Count("CountChanged"), 2);
        QCOMPARE(host.Take(), ClearedEntries + QStringList({"CountChanged(25)", "StatsChanged(20, 0)"}));
        first.NotifyChanged(first.GetRect());
        FinishWork();

        QCOMPARE(host.Take(), QStringList());
    }

    void everyLevelIsPointedAt()
    {
        KXDocumentInterface document(Filled(5, 5, Qt::red));
        Host host;
        host.Show();
        host.Count(&document);

        for (int level = 0; level < 256; ++level)
        {
            host.Hover(level);
            QCOMPARE(host.log.Arguments(host.log.Count() - 1).first().toInt(), level);
        }
    }

    void losingTheFocusKeepsTheLevelUnderThePointer()
    {
        KXDocumentInterface document(Filled(5, 5, Qt::red));
        Host host;
        host.Show();
        host.Count(&document);
        host.Hover(17);
        host.log.Clear();
        host.widget->setAttribute(Qt::WA_UnderMouse, true);

        host.widget->clearFocus();

        QCOMPARE(host.log.Count("StatsNoInfo"), 0);
    }

    void losingTheFocusForgetsTheLevel()
    {
        KXDocumentInterface document(Filled(4, 4, Qt::white));
        Host host;
        host.Show();
        host.Count(&document);
        host.Key(Qt::Key_Home);
        host.log.Clear();

        host.widget->clearFocus();

        QCOMPARE(host.Take(), QStringList("StatsNoInfo()"));
    }
};

NV_TEST_MAIN(tst_HistogramWidget)
#include "tst_HistogramWidget.moc"
