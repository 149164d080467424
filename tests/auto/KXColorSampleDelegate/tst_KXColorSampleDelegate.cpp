// The row of a colour sample, by the pixels that it paints, and its size.

#include "KXColorSampleDelegate.h"

#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>

#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QRect Row(0, 0, 240, 46);
const QColor Ground(255, 0, 255);

// One row with a colour and its texts.
class Painted
{
public:
    explicit Painted(const QVariant& color, const QString& first = QString(),
                     const QString& second = QString())
    {
        m_model.setColumnCount(1);
        m_model.setRowCount(12);
        m_model.setData(Index(), color, Qt::DecorationRole);
        m_model.setData(Index(), first, Qt::DisplayRole);
        m_model.setData(Index(), second, KXColorSampleDelegate::DetailRole);
        Option.rect = Row;
        Option.palette = QApplication::palette();
        Option.font = QApplication::font();
        Option.fontMetrics = QFontMetrics(Option.font);
        Option.state = QStyle::State_Enabled | QStyle::State_Active;
    }

    QModelIndex Index() const { return m_model.index(m_row, 0); }
    void UseRow(int row)
    {
        const QModelIndex from = Index();
        m_row = row;
        for (const int role :
             {int(Qt::DecorationRole), int(Qt::DisplayRole), int(KXColorSampleDelegate::DetailRole)})
            m_model.setData(Index(), from.data(role), role);
    }
    ProbeImage Probe(qreal ratio = 1.0) const
    {
        QImage image(QSize(260, 66) * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Ground);
        QPainter painter(&image);
        Delegate.paint(&painter, Option, Index());
        // What it changed in the painter shows here.
        painter.fillRect(250, 60, 1, 1, Qt::cyan);
        painter.end();
        return ProbeImage(image);
    }
    QSize Size() const { return Delegate.sizeHint(Option, Index()); }

    QStyleOptionViewItem Option;
    KXColorSampleDelegate Delegate{nullptr};

private:
    QStandardItemModel m_model;
    int m_row = 0;
};

QPalette darkPalette()
{
    QPalette palette(QColor(58, 63, 69), QColor(43, 47, 52));
    palette.setColor(QPalette::Text, QColor(230, 232, 235));
    palette.setColor(QPalette::Highlight, QColor(61, 143, 224));
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    return palette;
}

} // namespace

class tst_KXColorSampleDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void swatchShowsTheColorInAFrame_data();
    void swatchShowsTheColorInAFrame();
    void colorWithAlphaLiesOverAChecker();
    void checkerBeginsAtTheCornerOfTheSwatch_data();
    void checkerBeginsAtTheCornerOfTheSwatch();
    void rowWithoutAColorIsCrossedOut_data();
    void rowWithoutAColorIsCrossedOut();
    void numberIsThatOfTheRow();
    void bothLinesAreDrawn();
    void longTextsEndInsideOfTheRow();
    void inkIsThatOfThePalette_data();
    void inkIsThatOfThePalette();
    void selectionFillsTheGround();
    void rowIsMirroredRightToLeft();
    void nothingIsPaintedOutsideOfTheRow();
    void tinyRowsStayInTheirPlace_data();
    void tinyRowsStayInTheirPlace();
    void widthIsWhatWasSet_data();
    void widthIsWhatWasSet();
    void widthIsThatOfTheTextsAtFirst();
    void heightHoldsTwoLines();
    void newWidthIsToldOnce();
    void listLaysItsRowsOutAnew();
    void belongsToItsParent();
};

void tst_KXColorSampleDelegate::swatchShowsTheColorInAFrame_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("plain") << 1.0;
    QTest::newRow("fine screen") << 2.0;
}

void tst_KXColorSampleDelegate::swatchShowsTheColorInAFrame()
{
    QFETCH(const qreal, ratio);
    const QColor color(10, 200, 30);
    const Painted row(color);

    const ProbeImage probe = row.Probe(ratio);

    const QRect swatch = probe.BoundsOf(color, 0);
    QCOMPARE(swatch.size(), QSize(34, Row.height() - 12));
    QCOMPARE(swatch.top(), 6);
    QCOMPARE(probe.CountOf(color, 0), int(swatch.width() * swatch.height() * ratio * ratio));
    const QColor ink = row.Option.palette.color(QPalette::Text);
    for (const QPoint& edge : {swatch.topLeft() - QPoint(1, 1), swatch.bottomRight() + QPoint(1, 1)})
        QCOMPARE(probe.At(edge.x(), edge.y()), ink);
}

void tst_KXColorSampleDelegate::colorWithAlphaLiesOverAChecker()
{
    const Painted row(QColor(Qt::transparent));
    const ProbeImage probe = row.Probe();

    const QRect checker = probe.BoundsOf(QColor(204, 204, 204), 0);
    QCOMPARE(checker.width(), 34);
    QCOMPARE(probe.At(checker.left(), checker.top()), QColor(204, 204, 204));
    QCOMPARE(probe.At(checker.left() + 5, checker.top()), QColor(Qt::white));
    QCOMPARE(Painted(QColor(0, 0, 255, 128)).Probe().CountOf(QColor(204, 204, 204), 0), 0);
    QVERIFY(Painted(QColor(0, 0, 255, 128)).Probe().CountOf(QColor(127, 127, 255), 2) > 300);
    QVERIFY(Painted(QColor(0, 0, 255, 128)).Probe().CountOf(QColor(102, 102, 230), 2) > 300);
}

void tst_KXColorSampleDelegate::checkerBeginsAtTheCornerOfTheSwatch_data()
{
    QTest::addColumn<QPoint>("corner");
    QTest::newRow("first row") << QPoint(0, 0);
    QTest::newRow("further down") << QPoint(0, 7);
    QTest::newRow("scrolled") << QPoint(3, 4);
}

void tst_KXColorSampleDelegate::checkerBeginsAtTheCornerOfTheSwatch()
{
    QFETCH(const QPoint, corner);
    Painted opaque(QColor(Qt::green));
    Painted clear(QColor(Qt::transparent));
    opaque.Option.rect.moveTopLeft(corner);
    clear.Option.rect.moveTopLeft(corner);
    const QRect swatch = opaque.Probe().BoundsOf(Qt::green, 0);

    const ProbeImage probe = clear.Probe();

    for (int i = 0; i < 15; ++i)
    {
        const QColor cell = i / 5 % 2 == 0 ? QColor(204, 204, 204) : QColor(Qt::white);
        QCOMPARE(probe.At(swatch.left() + i, swatch.top()), cell);
        QCOMPARE(probe.At(swatch.left(), swatch.top() + i), cell);
    }
}

void tst_KXColorSampleDelegate::rowWithoutAColorIsCrossedOut_data()
{
    QTest::addColumn<QVariant>("datum");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("invalid colour") << QVariant(QColor());
    QTest::newRow("something else") << QVariant(QRect(1, 2, 3, 4));
}

void tst_KXColorSampleDelegate::rowWithoutAColorIsCrossedOut()
{
    QFETCH(const QVariant, datum);
    const Painted row(datum);
    const ProbeImage crossed = row.Probe();
    const QRect swatch = Painted(QColor(Qt::green)).Probe().BoundsOf(Qt::green, 0);
    const QColor ink = row.Option.palette.color(QPalette::Text);

    QCOMPARE(crossed.At(swatch.left(), swatch.top()), ink);
    QCOMPARE(crossed.At(swatch.right(), swatch.bottom()), ink);
    QCOMPARE(crossed.At(swatch.right(), swatch.top()), ink);
    QVERIFY(crossed.At(swatch.center().x(), swatch.top() + 1) != ink);
}

void tst_KXColorSampleDelegate::numberIsThatOfTheRow()
{
    Painted row(QColor(Qt::green));
    const ProbeImage first = row.Probe();
    row.UseRow(9);
    const ProbeImage tenth = row.Probe();
    const int left = first.BoundsOf(Qt::green, 0).left() - 2;

    const auto inked = [&](const ProbeImage& probe)
    {
        int count = 0;
        for (int y = 0; y < Row.height(); ++y)
        {
            for (int x = 0; x < left; ++x)
                count += qGray(probe.At(x, y).rgb()) < 100;
        }
        return count;
    };
    QVERIFY(inked(first) > 5);
    QVERIFY(inked(tenth) > inked(first));
}

void tst_KXColorSampleDelegate::bothLinesAreDrawn()
{
    const ProbeImage none = Painted(QColor(Qt::green)).Probe();
    const ProbeImage first = Painted(QColor(Qt::green), "MMMM").Probe();
    const ProbeImage second = Painted(QColor(Qt::green), QString(), "MMMM").Probe();
    const QColor ink = QApplication::palette().color(QPalette::Text);

    const int right = none.BoundsOf(Qt::green, 0).right() + 3;
    const auto inked = [&](const ProbeImage& probe, int top, int bottom)
    {
        for (int y = top; y < bottom; ++y)
        {
            for (int x = right; x < Row.right(); ++x)
            {
                if (ProbeImage::Similar(probe.At(x, y), ink, 60))
                    return true;
            }
        }
        return false;
    };
    const int middle = Row.height() / 2;
    QVERIFY(!inked(none, 0, Row.height()));
    QVERIFY(inked(first, 0, middle) && !inked(first, middle + 1, Row.height()));
    QVERIFY(inked(second, middle, Row.height()) && !inked(second, 0, middle - 1));
}

void tst_KXColorSampleDelegate::longTextsEndInsideOfTheRow()
{
    const QString text = QString("W").repeated(200);
    const Painted row(QColor(Qt::green), text, text);
    const ProbeImage probe = row.Probe();

    for (int y = 0; y < Row.height(); ++y)
    {
        for (int x = Row.right() - 3; x <= Row.right(); ++x)
            QVERIFY(qGray(probe.At(x, y).rgb()) > 100);
    }
}

void tst_KXColorSampleDelegate::inkIsThatOfThePalette_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QColor>("ink");

    const QPalette light = QApplication::palette();
    QTest::newRow("light") << light << false << light.color(QPalette::Text);
    QTest::newRow("dark") << darkPalette() << false << QColor(230, 232, 235);
    QTest::newRow("dark, selected") << darkPalette() << true << QColor(Qt::yellow);
}

void tst_KXColorSampleDelegate::inkIsThatOfThePalette()
{
    QFETCH(const QPalette, palette);
    QFETCH(const bool, selected);
    QFETCH(const QColor, ink);
    Painted row(QColor(Qt::green), "Text");
    row.Option.palette = palette;
    if (selected)
        row.Option.state |= QStyle::State_Selected;

    const ProbeImage probe = row.Probe();

    const QRect swatch = probe.BoundsOf(Qt::green, 0);
    QCOMPARE(probe.At(swatch.left() - 1, swatch.center().y()), ink);
}

void tst_KXColorSampleDelegate::selectionFillsTheGround()
{
    Painted row(QColor(Qt::green), "Text");
    row.Option.palette = darkPalette();
    row.Option.showDecorationSelected = true;
    row.Option.state |= QStyle::State_Selected;

    const ProbeImage probe = row.Probe();

    NV_VERIFY_NEAR(probe, 2, Row.height() - 3, QColor(61, 143, 224), 12);
    NV_VERIFY_NEAR(probe, Row.right() - 2, 2, QColor(61, 143, 224), 12);
}

void tst_KXColorSampleDelegate::rowIsMirroredRightToLeft()
{
    Painted row(QColor(Qt::green));
    const QRect there = row.Probe().BoundsOf(Qt::green, 0);
    row.Option.direction = Qt::RightToLeft;

    const QRect here = row.Probe().BoundsOf(Qt::green, 0);

    QCOMPARE(here.left(), Row.width() - 1 - there.right());
    QCOMPARE(here.size(), there.size());
}

void tst_KXColorSampleDelegate::nothingIsPaintedOutsideOfTheRow()
{
    const QString text = QString("W").repeated(200);
    const ProbeImage probe = Painted(QColor(Qt::green), text, text).Probe();

    for (int x = 0; x < 240; ++x)
        QCOMPARE(probe.At(x, Row.bottom() + 1), Ground);
    for (int y = 0; y < 60; ++y)
        QCOMPARE(probe.At(Row.right() + 1, y), Ground);
    // The painter is as it was.
    QCOMPARE(probe.At(250, 60), QColor(Qt::cyan));
}

void tst_KXColorSampleDelegate::tinyRowsStayInTheirPlace_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::newRow("nothing") << QRect(20, 20, 0, 0);
    QTest::newRow("narrow") << QRect(20, 5, 30, 40);
    QTest::newRow("flat") << QRect(20, 20, 200, 6);
}

void tst_KXColorSampleDelegate::tinyRowsStayInTheirPlace()
{
    QFETCH(const QRect, rect);
    Painted row(QColor(Qt::green), "Some text", "More of it");
    row.Option.rect = rect;

    const ProbeImage probe = row.Probe();

    for (int y = 0; y < 60; ++y)
    {
        for (int x = 0; x < 249; ++x)
        {
            if (!rect.contains(x, y))
                QCOMPARE(probe.At(x, y), Ground);
        }
    }
}

void tst_KXColorSampleDelegate::widthIsWhatWasSet_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("kept");
    QTest::newRow("wide") << 320 << 320;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("negative") << -2 << 0;
}

void tst_KXColorSampleDelegate::widthIsWhatWasSet()
{
    QFETCH(const int, width);
    Painted row(QColor(Qt::green), "Some text", "Much longer than that");

    row.Delegate.SetWidth(width);

    QTEST(row.Delegate.GetWidth(), "kept");
    QTEST(row.Size().width(), "kept");
}

void tst_KXColorSampleDelegate::widthIsThatOfTheTextsAtFirst()
{
    const int plain = Painted(QColor(Qt::green)).Size().width();
    const Painted first(QColor(Qt::green), "Some text", "i");
    const Painted second(QColor(Qt::green), "i", "Some text");

    QCOMPARE(first.Size().width(), plain + first.Option.fontMetrics.horizontalAdvance("Some text"));
    QCOMPARE(second.Size(), first.Size());
    QVERIFY(first.Delegate.GetWidth() < 0);
}

void tst_KXColorSampleDelegate::heightHoldsTwoLines()
{
    Painted row(QColor(Qt::green));
    QVERIFY(row.Size().height() >= 2 * row.Option.fontMetrics.height());
    const int before = row.Size().height();
    row.Option.font.setPointSize(40);
    row.Option.fontMetrics = QFontMetrics(row.Option.font);

    QVERIFY(row.Size().height() > before);
}

void tst_KXColorSampleDelegate::newWidthIsToldOnce()
{
    KXColorSampleDelegate delegate(nullptr);
    const SignalLog log(&delegate);

    delegate.SetWidth(100);
    delegate.SetWidth(100);
    QCOMPARE(log.Count("sizeHintChanged"), 1);
    delegate.SetWidth(-1);
    delegate.SetWidth(-7);

    QCOMPARE(log.Count("sizeHintChanged"), 2);
}

void tst_KXColorSampleDelegate::listLaysItsRowsOutAnew()
{
    QStandardItemModel model(2, 1);
    KXColorSampleDelegate delegate(nullptr);
    QListView list;
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setModel(&model);
    list.setItemDelegate(&delegate);
    list.resize(200, 200);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));

    delegate.SetWidth(500);
    QTRY_COMPARE(list.visualRect(model.index(0, 0)).width(), 500);
    delegate.SetWidth(50);

    QTRY_COMPARE(list.visualRect(model.index(0, 0)).width(), list.viewport()->width());
}

void tst_KXColorSampleDelegate::belongsToItsParent()
{
    auto parent = std::make_unique<QObject>();
    const QPointer<KXColorSampleDelegate> delegate(new KXColorSampleDelegate(parent.get()));

    QCOMPARE(delegate->parent(), parent.get());
    parent.reset();

    QVERIFY(!delegate);
}

NV_TEST_MAIN(tst_KXColorSampleDelegate)
#include "tst_KXColorSampleDelegate.moc"
