// The row of a gradient list, by the pixels that it paints.

#include "NVGradientItemDelegate.h"

#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QProxyStyle>
#include <QStandardItemModel>

#include "GradientStops.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

using Stops = QVector<QPair<double, QColor>>;

const QRect Row(0, 0, 210, 30);
const QColor Ground(255, 0, 255);

// Paints every item in one colour, and notes what it was asked for.
class NotingStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (element == CE_ItemViewItem)
        {
            States.append(option->state);
            Widgets.append(widget);
            painter->fillRect(option->rect, Qt::darkGreen);
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    mutable QList<QStyle::State> States;
    mutable QList<const QWidget*> Widgets;
};

// One row with a brush.
class Painted
{
public:
    explicit Painted(const QBrush& brush, const QRect& row = Row, qreal ratio = 1.0)
        : m_row(row), m_ratio(ratio)
    {
        m_model.insertColumns(0, 1);
        m_model.insertRows(0, 1);
        m_model.setData(Index(), brush, Qt::BackgroundRole);
        Option.rect = row;
        Option.palette = QApplication::palette();
        Option.state = QStyle::State_Enabled | QStyle::State_Active;
        Option.showDecorationSelected = true;
    }

    QModelIndex Index() const { return m_model.index(0, 0); }
    QStandardItemModel* Model() { return &m_model; }

    ProbeImage Probe() const
    {
        QImage image(QSize(m_row.right() + 11, m_row.bottom() + 11) * m_ratio,
                     QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(m_ratio);
        image.fill(Ground);
        QPainter painter(&image);
        Delegate.paint(&painter, Option, Index());
        // What it changed in the painter shows here.
        painter.fillRect(m_row.right() + 5, m_row.bottom() + 5, 1, 1, Qt::cyan);
        painter.end();
        return ProbeImage(image);
    }

    QStyleOptionViewItem Option;
    NVGradientItemDelegate Delegate{nullptr};

private:
    QStandardItemModel m_model;
    QRect m_row;
    qreal m_ratio;
};

QBrush linear(const Stops& stops)
{
    QLinearGradient gradient(0, 0, 1, 0);
    gradient.setStops(stops);
    return gradient;
}

QPalette darkPalette()
{
    QPalette palette(QColor(58, 63, 69), QColor(43, 47, 52));
    palette.setColor(QPalette::Highlight, QColor(61, 143, 224));
    return palette;
}

// A colour laid over another.
QColor over(const QColor& color, const QColor& ground)
{
    const auto mix = [&](int top, int bottom)
    { return (top * color.alpha() + bottom * (255 - color.alpha())) / 255; };
    return QColor(mix(color.red(), ground.red()), mix(color.green(), ground.green()),
                  mix(color.blue(), ground.blue()));
}

} // namespace

class tst_NVGradientItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gradientRunsAcrossTheInnerRectangle_data();
    void gradientRunsAcrossTheInnerRectangle();
    void transparentStopShowsTheChecker();
    void checkerBeginsAtTheCornerOfEachRow_data();
    void checkerBeginsAtTheCornerOfEachRow();
    void halfTransparentColorLiesOverTheChecker();
    void selectionIsSeenInTheMargin_data();
    void selectionIsSeenInTheMargin();
    void focusFrameIsNeverDrawn();
    void rowWithoutLinearGradientIsLeftAlone_data();
    void rowWithoutLinearGradientIsLeftAlone();
    void styleIsThatOfTheWidgetOrElseOfTheApplication();
    void painterIsLeftAsItWas();
    void tinyRowsStayInTheirPlace_data();
    void tinyRowsStayInTheirPlace();
    void manyStopsAndHardEdges();
    void rowIsAtLeastThirtyHigh_data();
    void rowIsAtLeastThirtyHigh();
    void listShowsItsRows();
};

void tst_NVGradientItemDelegate::gradientRunsAcrossTheInnerRectangle_data()
{
    QTest::addColumn<QRect>("row");
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("at the origin") << Row << 1.0;
    QTest::newRow("further down") << QRect(3, 61, 210, 40) << 1.0;
    QTest::newRow("twice the pixels") << Row << 2.0;
}

void tst_NVGradientItemDelegate::gradientRunsAcrossTheInnerRectangle()
{
    QFETCH(QRect, row);
    QFETCH(qreal, ratio);
    const Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::blue}}), row, ratio);

    const ProbeImage probe = painted.Probe();

    const QRect inner = row.adjusted(5, 5, -5, -5);
    for (const int y : {inner.top(), inner.center().y(), inner.bottom()})
    {
        NV_VERIFY_NEAR(probe, inner.left(), y, QColor(Qt::red), 4);
        NV_VERIFY_NEAR(probe, inner.center().x(), y, QColor(128, 0, 127), 4);
        NV_VERIFY_NEAR(probe, inner.right(), y, QColor(Qt::blue), 4);
    }
    NV_VERIFY_NEAR(probe, inner.left() - 1, inner.center().y(), Ground, 0);
    NV_VERIFY_NEAR(probe, inner.right() + 1, inner.center().y(), Ground, 0);
    NV_VERIFY_NEAR(probe, inner.center().x(), inner.top() - 1, Ground, 0);
    NV_VERIFY_NEAR(probe, inner.center().x(), inner.bottom() + 1, Ground, 0);
}

void tst_NVGradientItemDelegate::transparentStopShowsTheChecker()
{
    const Painted painted(linear({{0.0, Qt::transparent}, {0.5, Qt::transparent}, {1.0, Qt::red}}));

    const ProbeImage probe = painted.Probe();

    NV_VERIFY_NEAR(probe, 5, 5, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, 9, 9, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, 10, 5, QColor(Qt::black), 0);
    NV_VERIFY_NEAR(probe, 14, 9, QColor(Qt::black), 0);
    NV_VERIFY_NEAR(probe, 5, 10, QColor(Qt::black), 0);
    NV_VERIFY_NEAR(probe, 10, 10, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, 15, 5, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, 204, 5, QColor(Qt::red), 4);
    NV_VERIFY_NEAR(probe, 204, 12, QColor(Qt::red), 4);
}

void tst_NVGradientItemDelegate::checkerBeginsAtTheCornerOfEachRow_data()
{
    QTest::addColumn<QPoint>("place");
    for (const QPoint& place : {QPoint(0, 0), QPoint(0, 30), QPoint(7, 33), QPoint(2, 61)})
        QTest::addRow("%d, %d", place.x(), place.y()) << place;
}

void tst_NVGradientItemDelegate::checkerBeginsAtTheCornerOfEachRow()
{
    QFETCH(QPoint, place);
    const Painted painted(linear({{0.0, Qt::transparent}, {1.0, Qt::transparent}}), Row.translated(place));

    const ProbeImage probe = painted.Probe();

    NV_VERIFY_NEAR(probe, place.x() + 5, place.y() + 5, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, place.x() + 9, place.y() + 5, QColor(Qt::white), 0);
    NV_VERIFY_NEAR(probe, place.x() + 10, place.y() + 5, QColor(Qt::black), 0);
    NV_VERIFY_NEAR(probe, place.x() + 5, place.y() + 10, QColor(Qt::black), 0);
}

void tst_NVGradientItemDelegate::halfTransparentColorLiesOverTheChecker()
{
    const QColor color(200, 40, 20, 100);
    const Painted painted(linear({{0.0, color}, {1.0, color}}));

    const ProbeImage probe = painted.Probe();

    NV_VERIFY_NEAR(probe, 7, 7, over(color, Qt::white), 3);
    NV_VERIFY_NEAR(probe, 12, 7, over(color, Qt::black), 3);
}

void tst_NVGradientItemDelegate::selectionIsSeenInTheMargin_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::palette();
    QTest::newRow("dark") << darkPalette();
}

void tst_NVGradientItemDelegate::selectionIsSeenInTheMargin()
{
    QFETCH(QPalette, palette);
    Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::red}}));
    painted.Option.palette = palette;
    NV_VERIFY_NEAR(painted.Probe(), 2, 15, Ground, 0);

    painted.Option.state |= QStyle::State_Selected;

    const ProbeImage probe = painted.Probe();
    const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
    for (const QPoint& margin :
         {QPoint(0, 0), QPoint(4, 15), QPoint(100, 4), QPoint(100, 25), QPoint(209, 29)})
    {
        NV_VERIFY_NEAR(probe, margin.x(), margin.y(), highlight, 4);
    }
    NV_VERIFY_NEAR(probe, 5, 5, QColor(Qt::red), 4);
    NV_VERIFY_NEAR(probe, 204, 24, QColor(Qt::red), 4);
}

void tst_NVGradientItemDelegate::focusFrameIsNeverDrawn()
{
    for (const QPalette& palette : {QApplication::palette(), darkPalette()})
    {
        Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::blue}}));
        painted.Option.palette = palette;
        painted.Option.state |= QStyle::State_Selected;
        const ProbeImage plain = painted.Probe();

        painted.Option.state |= QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;

        QVERIFY(!painted.Probe().Differs(plain));
        QVERIFY(painted.Option.state & QStyle::State_HasFocus);
    }
}

void tst_NVGradientItemDelegate::rowWithoutLinearGradientIsLeftAlone_data()
{
    QTest::addColumn<QBrush>("brush");
    QTest::newRow("no brush") << QBrush();
    QTest::newRow("plain colour") << QBrush(Qt::red);
    QTest::newRow("texture") << QBrush(QPixmap(4, 4));
    QTest::newRow("radial") << QBrush(QRadialGradient(0, 0, 1));
    QTest::newRow("conical") << QBrush(QConicalGradient(0, 0, 1));
}

void tst_NVGradientItemDelegate::rowWithoutLinearGradientIsLeftAlone()
{
    QFETCH(QBrush, brush);
    Painted painted(brush);
    painted.Option.state |= QStyle::State_Selected | QStyle::State_HasFocus;

    const ProbeImage probe = painted.Probe();

    QCOMPARE(probe.ColorCount(), 2); // the ground and the mark beside the row
    NV_VERIFY_NEAR(probe, 2, 2, Ground, 0);
    NV_VERIFY_NEAR(probe, 100, 15, Ground, 0);
}

void tst_NVGradientItemDelegate::styleIsThatOfTheWidgetOrElseOfTheApplication()
{
    NotingStyle style;
    QListView view;
    view.setStyle(&style);
    Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::red}}));
    painted.Option.state |= QStyle::State_HasFocus | QStyle::State_MouseOver;

    painted.Probe();
    QVERIFY(style.States.isEmpty());
    painted.Option.widget = &view;
    const ProbeImage probe = painted.Probe();

    QCOMPARE(style.States.size(), 1);
    QCOMPARE(style.Widgets.first(), &view);
    QVERIFY(!(style.States.first() & QStyle::State_HasFocus));
    QVERIFY(style.States.first() & QStyle::State_MouseOver);
    NV_VERIFY_NEAR(probe, 2, 2, QColor(Qt::darkGreen), 0);
    NV_VERIFY_NEAR(probe, 7, 7, QColor(Qt::red), 4);
}

void tst_NVGradientItemDelegate::painterIsLeftAsItWas()
{
    const Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::red}}));

    const ProbeImage probe = painted.Probe();

    NV_VERIFY_NEAR(probe, Row.right() + 5, Row.bottom() + 5, QColor(Qt::cyan), 0);
}

void tst_NVGradientItemDelegate::tinyRowsStayInTheirPlace_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(210, 4), QSize(210, 10), QSize(8, 30), QSize(10, 10), QSize(0, 0)})
        QTest::addRow("%d by %d", size.width(), size.height()) << size;
}

void tst_NVGradientItemDelegate::tinyRowsStayInTheirPlace()
{
    QFETCH(QSize, size);
    const Painted painted(linear({{0.0, Qt::transparent}, {1.0, Qt::red}}), QRect(QPoint(20, 20), size));

    const ProbeImage probe = painted.Probe();

    QCOMPARE(probe.ColorCount(), 2);
}

void tst_NVGradientItemDelegate::manyStopsAndHardEdges()
{
    const Painted painted(linear({{0.25, Qt::red}, {0.5, Qt::red}, {0.501, Qt::green}, {0.75, Qt::green}}));

    const ProbeImage probe = painted.Probe();

    NV_VERIFY_NEAR(probe, 5, 15, QColor(Qt::red), 4);
    NV_VERIFY_NEAR(probe, 100, 15, QColor(Qt::red), 4);
    NV_VERIFY_NEAR(probe, 109, 15, QColor(Qt::green), 4);
    NV_VERIFY_NEAR(probe, 204, 15, QColor(Qt::green), 4);
}

void tst_NVGradientItemDelegate::rowIsAtLeastThirtyHigh_data()
{
    QTest::addColumn<QSize>("natural");
    QTest::addColumn<QSize>("hint");
    QTest::newRow("low") << QSize(50, 17) << QSize(50, 30);
    QTest::newRow("just so") << QSize(50, 30) << QSize(50, 30);
    QTest::newRow("high") << QSize(7, 40) << QSize(7, 40);
}

void tst_NVGradientItemDelegate::rowIsAtLeastThirtyHigh()
{
    QFETCH(QSize, natural);
    QFETCH(QSize, hint);
    Painted painted(linear({{0.0, Qt::red}, {1.0, Qt::red}}));
    painted.Model()->setData(painted.Index(), natural, Qt::SizeHintRole);

    QCOMPARE(painted.Delegate.sizeHint(painted.Option, painted.Index()), hint);
}

void tst_NVGradientItemDelegate::listShowsItsRows()
{
    QListView view;
    QStandardItemModel model;
    model.insertColumns(0, 1);
    model.insertRows(0, 3);
    const QList<NVGradientStop> stops = FromGradientStops({{0.0, Qt::yellow}, {1.0, Qt::blue}});
    for (int row = 0; row < 2; ++row)
    {
        QLinearGradient gradient(0, 0, 1, 0);
        gradient.setStops(row == 0 ? ToGradientStops(stops) : ToReversedStops(stops));
        model.setData(model.index(row, 0), QBrush(gradient), Qt::BackgroundRole);
    }
    view.setModel(&model);
    view.setItemDelegate(new NVGradientItemDelegate(&view));
    view.setFrameShape(QFrame::NoFrame);
    view.resize(300, 120);

    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.setCurrentIndex(model.index(1, 0));

    const ProbeImage probe(view.viewport());
    QCOMPARE(view.visualRect(model.index(1, 0)), QRect(0, 30, 300, 30));
    NV_VERIFY_NEAR(probe, 6, 15, QColor(Qt::yellow), 6);
    NV_VERIFY_NEAR(probe, 293, 15, QColor(Qt::blue), 6);
    NV_VERIFY_NEAR(probe, 6, 45, QColor(Qt::blue), 6);
    NV_VERIFY_NEAR(probe, 293, 45, QColor(Qt::yellow), 6);
    QVERIFY(!ProbeImage::Similar(probe.At(2, 45), view.palette().color(QPalette::Base), 20));
    NV_VERIFY_NEAR(probe, 2, 15, view.palette().color(QPalette::Base), 4);
    NV_VERIFY_NEAR(probe, 150, 75, view.palette().color(QPalette::Base), 4);
}

NV_TEST_MAIN(tst_NVGradientItemDelegate)
#include "tst_NVGradientItemDelegate.moc"
