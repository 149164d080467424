// One row of the history panel: its form, the style sheet of each state, and how it follows the pointer.

#include <QGridLayout>
#include <QLabel>
#include <QProxyStyle>
#include <QStyleOptionButton>
#include <QtTest>

#include <memory>

#include "BarForm.h"
#include "KXResource.h"
#include "NVHistoryItem.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

QString Sheet(int role)
{
    return KXResource::GetData(static_cast<KXResource::ConstRole>(role)).toString();
}

QLabel* Icon(const QWidget& row)
{
    return row.findChild<QLabel*>("m_pIcon");
}

QLabel* Text(const QWidget& row)
{
    return row.findChild<QLabel*>("m_pText");
}

QImage Plain(const QColor& color, int side = 24)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

// A window with one row in its middle, and the pointer outside of it.
struct Host
{
    Host()
    {
        window.resize(300, 100);
        row = new NVHistoryItem(&window);
        row->setGeometry(50, 30, 200, 24);
        row->SetText("Brush stroke");
    }
    bool Show()
    {
        QCursor::setPos(0, 0);
        window.move(100, 100);
        window.show();
        return QTest::qWaitForWindowActive(&window);
    }
    void PointAt(const QPoint& place) { QTest::mouseMove(&window, place); }

    QWidget window;
    QPointer<NVHistoryItem> row;
};

const QPoint OnRow(120, 40);
const QPoint BesideRow(10, 5);

// Each setStyleSheet() of a row that is shown already sends one of these.
class StyleCount : public QObject
{
public:
    explicit StyleCount(QObject* object) { object->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange)
            ++count;
        return false;
    }
    int count = 0;
};

// The application's palette for a while.
class PaletteScope
{
public:
    explicit PaletteScope(const QPalette& palette) : m_before(QApplication::palette())
    {
        QApplication::setPalette(palette);
    }
    ~PaletteScope() { QApplication::setPalette(m_before); }
    PaletteScope(const PaletteScope&) = delete;
    PaletteScope& operator=(const PaletteScope&) = delete;

private:
    QPalette m_before;
};

class RecordingStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (widget && widget->inherits("NVHistoryItem"))
        {
            elements.append(element);
        }
        if (widget && widget->inherits("NVHistoryItem") && element == CE_PushButton)
        {
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            isPlain = button && button->text.isEmpty() && button->icon.isNull() &&
                button->rect == widget->rect() && button->features == QStyleOptionButton::None;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    mutable QList<int> elements;
    mutable bool isPlain = false;
};

} // namespace

class tst_NVHistoryItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void formIsAsStated();
    void startsEnabledNotSelectedAndStyled();
    void textIsShownAsItIs();
    void iconKeepsItsAlphaChannel();
    void nullIconLeavesNoPicture();

    void sheetIsThatOfTheState_data();
    void sheetIsThatOfTheState();
    void changeOfAFlagForgetsTheHover_data();
    void changeOfAFlagForgetsTheHover();
    void sameFlagAgainChangesNothing();
    void flagsAreNotThoseOfTheToolkit();
    void sameSheetIsNotSetAgain();
    void sheetFollowsTheThemeWhenAsked();
    void rowOfAHostWithoutSheetsHasNone();

    void hoverBeginsWhenTheEventLoopHasRun();
    void hoverEndsWhenTheEventLoopHasRun();
    void hoverEventsAreHandledInTheirOrder();
    void deliveryForgetsTheHover();
    void otherCustomEventsAreIgnored();
    void pointerShowsInEachState_data();
    void pointerShowsInEachState();
    void selectedUnderThePointerLooksUnhovered();
    void hidingForgetsTheHover();
    void hideEventForgetsTheHover_data();
    void hideEventForgetsTheHover();

    void paintsAButtonWithoutTextOrIcon();
    void sheetsShapeTheRow_data();
    void sheetsShapeTheRow();
    void textStandsOutInEachTheme_data();
    void textStandsOutInEachTheme();
    void pictureIsSharpOnADenseScreen();

    void diesWhileHovered();
    void diesWithTheHoverStillToCome();
};

void tst_NVHistoryItem::cleanup()
{
    KXResource::UseTheme(KXResource::LightTheme);
}

void tst_NVHistoryItem::formIsAsStated()
{
    const NVHistoryItem row(nullptr);

    QCOMPARE(row.objectName(), QString("HistoryItem"));
    QCOMPARE(row.windowTitle(), QString("Form"));
    const auto* grid = qobject_cast<QGridLayout*>(row.layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), Icon(row));
    QCOMPARE(grid->itemAtPosition(0, 1)->widget(), Text(row));
    QCOMPARE(Icon(row)->minimumSize(), QSize(24, 24));
    QCOMPARE(Icon(row)->maximumSize(), QSize(24, 24));
    QVERIFY(Text(row)->sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag);
    QVERIFY(Text(row)->sizePolicy().expandingDirections() & Qt::Horizontal);
}

void tst_NVHistoryItem::startsEnabledNotSelectedAndStyled()
{
    const NVHistoryItem row(nullptr);

    QVERIFY(row.IsEnabled());
    QVERIFY(!row.IsSelected());
    QCOMPARE(Text(row)->text(), QString());
    QCOMPARE(row.styleSheet(), Sheet(56));
    QVERIFY(!row.styleSheet().isEmpty());
    QVERIFY(Icon(row)->isEnabled());
    QVERIFY(!row.testAttribute(Qt::WA_Hover));
}

void tst_NVHistoryItem::textIsShownAsItIs()
{
    NVHistoryItem row(nullptr);

    row.SetText("<b>Crop</b> & more");

    QCOMPARE(Text(row)->text(), QString("<b>Crop</b> & more"));
    QCOMPARE(Text(row)->textFormat(), Qt::PlainText);
}

void tst_NVHistoryItem::iconKeepsItsAlphaChannel()
{
    NVHistoryItem row(nullptr);

    row.SetIcon(Plain(Qt::red));

    const QPixmap picture = Icon(row)->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.size(), QSize(24, 24));
    QCOMPARE(picture.toImage().pixelColor(5, 5), QColor(Qt::red));
    // The toolkit drops it from an opaque picture unless told not to look.
    QVERIFY(picture.hasAlphaChannel());
}

void tst_NVHistoryItem::nullIconLeavesNoPicture()
{
    NVHistoryItem row(nullptr);
    row.SetIcon(Plain(Qt::red));

    row.SetIcon(QImage());

    QVERIFY(Icon(row)->pixmap(Qt::ReturnByValue).isNull());
}

void tst_NVHistoryItem::sheetIsThatOfTheState_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("hover");
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("iconEnabled");

    QTest::newRow("selected") << true << true << false << 54 << true;
    QTest::newRow("selected, hovered") << true << true << true << 55 << true;
    QTest::newRow("selected wins over disabled") << true << false << false << 54 << true;
    QTest::newRow("selected wins over disabled, hovered") << true << false << true << 55 << true;
    QTest::newRow("enabled") << false << true << false << 56 << true;
    QTest::newRow("enabled, hovered") << false << true << true << 57 << true;
    QTest::newRow("disabled") << false << false << false << 58 << false;
    QTest::newRow("disabled, hovered") << false << false << true << 59 << false;
}

void tst_NVHistoryItem::sheetIsThatOfTheState()
{
    QFETCH(bool, selected);
    QFETCH(bool, enabled);
    QFETCH(bool, hover);
    QFETCH(int, role);
    QFETCH(bool, iconEnabled);
    NVHistoryItem row(nullptr);
    row.SetSelected(selected);
    row.SetEnabled(enabled);

    row.UpdateStyle(hover);

    QCOMPARE(row.IsSelected(), selected);
    QCOMPARE(row.IsEnabled(), enabled);
    QVERIFY(!Sheet(role).isEmpty());
    QCOMPARE(row.styleSheet(), Sheet(role));
    QCOMPARE(Icon(row)->isEnabled(), iconEnabled);
    QVERIFY(Text(row)->isEnabled());
}

void tst_NVHistoryItem::changeOfAFlagForgetsTheHover_data()
{
    QTest::addColumn<bool>("selection");
    QTest::addColumn<int>("role");
    QTest::newRow("selected") << true << 54;
    QTest::newRow("disabled") << false << 58;
}

void tst_NVHistoryItem::changeOfAFlagForgetsTheHover()
{
    QFETCH(bool, selection);
    QFETCH(int, role);
    NVHistoryItem row(nullptr);
    row.UpdateStyle(true);

    selection ? row.SetSelected(true) : row.SetEnabled(false);

    QCOMPARE(row.styleSheet(), Sheet(role));
}

void tst_NVHistoryItem::sameFlagAgainChangesNothing()
{
    NVHistoryItem row(nullptr);
    row.UpdateStyle(true);

    row.SetSelected(false);
    row.SetEnabled(true);

    QCOMPARE(row.styleSheet(), Sheet(57));
}

void tst_NVHistoryItem::flagsAreNotThoseOfTheToolkit()
{
    NVHistoryItem row(nullptr);

    row.SetEnabled(false);
    QVERIFY(row.isEnabled());
    QVERIFY(!row.IsEnabled());

    row.SetEnabled(true);
    row.setEnabled(false);
    QVERIFY(row.IsEnabled());
    QCOMPARE(row.styleSheet(), Sheet(56));
}

void tst_NVHistoryItem::sameSheetIsNotSetAgain()
{
    Host host;
    QVERIFY(host.Show());
    const StyleCount styles(host.row);

    host.row->UpdateStyle(false);
    host.row->EnableHoverInteraction(true);
    QCoreApplication::processEvents();
    QCOMPARE(styles.count, 0);

    host.row->SetEnabled(false);
    QCOMPARE(styles.count, 1);
    host.row->SetEnabled(false);
    host.row->hide();
    host.row->show();
    QCOMPARE(styles.count, 1);
}

void tst_NVHistoryItem::sheetFollowsTheThemeWhenAsked()
{
    NVHistoryItem row(nullptr);
    row.SetSelected(true);
    row.UpdateStyle(true);
    const QString light = row.styleSheet();

    KXResource::UseTheme(KXResource::DarkTheme);
    QCOMPARE(row.styleSheet(), light);
    row.UpdateStyle(true);

    QVERIFY(row.styleSheet() != light);
    QCOMPARE(row.styleSheet(), Sheet(55));
}

void tst_NVHistoryItem::rowOfAHostWithoutSheetsHasNone()
{
    QDir::setSearchPaths("theme", {});
    NVHistoryItem row(nullptr);

    row.SetSelected(true);

    QCOMPARE(row.styleSheet(), QString());
    QVERIFY(row.IsSelected());
}

void tst_NVHistoryItem::hoverBeginsWhenTheEventLoopHasRun()
{
    Host host;
    QVERIFY(host.Show());

    host.row->EnableHoverInteraction(true);
    QVERIFY(!host.row->testAttribute(Qt::WA_Hover));

    QCoreApplication::processEvents();
    QVERIFY(host.row->testAttribute(Qt::WA_Hover));
    host.PointAt(OnRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(57));
}

void tst_NVHistoryItem::hoverEndsWhenTheEventLoopHasRun()
{
    Host host;
    QVERIFY(host.Show());
    host.row->EnableHoverInteraction(true);
    QCoreApplication::processEvents();

    host.row->EnableHoverInteraction(false);
    QVERIFY(host.row->testAttribute(Qt::WA_Hover));

    QCoreApplication::processEvents();
    QVERIFY(!host.row->testAttribute(Qt::WA_Hover));
    host.PointAt(OnRow);
    QCoreApplication::processEvents();
    QVERIFY(host.row->underMouse());
    QCOMPARE(host.row->styleSheet(), Sheet(56));
}

void tst_NVHistoryItem::hoverEventsAreHandledInTheirOrder()
{
    NVHistoryItem row(nullptr);

    row.EnableHoverInteraction(true);
    row.EnableHoverInteraction(false);
    row.EnableHoverInteraction(true);
    QCoreApplication::sendPostedEvents(&row, 1001);
    QVERIFY(!row.testAttribute(Qt::WA_Hover));

    QCoreApplication::sendPostedEvents(&row, 1000);
    QVERIFY(row.testAttribute(Qt::WA_Hover));
}

void tst_NVHistoryItem::deliveryForgetsTheHover()
{
    NVHistoryItem row(nullptr);
    row.UpdateStyle(true);
    row.EnableHoverInteraction(true);
    QCOMPARE(row.styleSheet(), Sheet(57));

    QCoreApplication::sendPostedEvents(&row);

    QCOMPARE(row.styleSheet(), Sheet(56));
}

void tst_NVHistoryItem::otherCustomEventsAreIgnored()
{
    NVHistoryItem row(nullptr);
    row.UpdateStyle(true);

    QEvent event(static_cast<QEvent::Type>(1002));
    QCoreApplication::sendEvent(&row, &event);

    QVERIFY(!row.testAttribute(Qt::WA_Hover));
    QCOMPARE(row.styleSheet(), Sheet(57));
}

void tst_NVHistoryItem::pointerShowsInEachState_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("away");
    QTest::addColumn<int>("over");
    QTest::newRow("selected") << true << true << 54 << 55;
    QTest::newRow("enabled") << false << true << 56 << 57;
    QTest::newRow("disabled") << false << false << 58 << 59;
}

void tst_NVHistoryItem::pointerShowsInEachState()
{
    QFETCH(bool, selected);
    QFETCH(bool, enabled);
    QFETCH(int, away);
    QFETCH(int, over);
    Host host;
    host.row->SetSelected(selected);
    host.row->SetEnabled(enabled);
    host.row->EnableHoverInteraction(true);
    QVERIFY(host.Show());
    QCoreApplication::processEvents();

    host.PointAt(OnRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(over));
    host.PointAt(OnRow + QPoint(20, 3));
    QCOMPARE(host.row->styleSheet(), Sheet(over));
    host.PointAt(BesideRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(away));
}

void tst_NVHistoryItem::selectedUnderThePointerLooksUnhovered()
{
    Host host;
    host.row->EnableHoverInteraction(true);
    QVERIFY(host.Show());
    host.PointAt(OnRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(57));

    host.row->SetSelected(true);

    QCOMPARE(host.row->styleSheet(), Sheet(54));
}

void tst_NVHistoryItem::hidingForgetsTheHover()
{
    Host host;
    host.row->EnableHoverInteraction(true);
    QVERIFY(host.Show());
    host.PointAt(OnRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(57));

    host.row->hide();

    QCOMPARE(host.row->styleSheet(), Sheet(56));
}

void tst_NVHistoryItem::hideEventForgetsTheHover_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("hidden") << int(QEvent::Hide);
    QTest::newRow("hidden to the parent") << int(QEvent::HideToParent);
}

void tst_NVHistoryItem::hideEventForgetsTheHover()
{
    QFETCH(int, type);
    NVHistoryItem row(nullptr);
    row.UpdateStyle(true);

    QEvent event(static_cast<QEvent::Type>(type));
    QCoreApplication::sendEvent(&row, &event);

    QCOMPARE(row.styleSheet(), Sheet(56));
}

void tst_NVHistoryItem::paintsAButtonWithoutTextOrIcon()
{
    QDir::setSearchPaths("theme", {});
    RecordingStyle style;
    NVHistoryItem row(nullptr);
    row.SetText("Brush stroke");
    row.SetIcon(Plain(Qt::red));
    row.resize(200, 24);
    row.setStyle(&style);

    row.grab();

    QCOMPARE(style.elements.value(0), int(QStyle::CE_PushButton));
    QVERIFY(style.isPlain);
}

void tst_NVHistoryItem::sheetsShapeTheRow_data()
{
    QTest::addColumn<int>("theme");
    QTest::newRow("light") << int(KXResource::LightTheme);
    QTest::newRow("dark") << int(KXResource::DarkTheme);
    QTest::newRow("high contrast") << int(KXResource::HighContrastTheme);
}

void tst_NVHistoryItem::sheetsShapeTheRow()
{
    QFETCH(int, theme);
    KXResource::UseTheme(theme);
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, QColor(120, 130, 140));
    palette.setColor(QPalette::Highlight, QColor(200, 10, 20));
    const PaletteScope scope(palette);
    Host host;
    QVERIFY(host.Show());
    // Clear of picture and text, and on the outline.
    const QPoint inside(240, 42);
    const QPoint edge(150, 30);

    const ProbeImage plain(&host.window);
    NV_VERIFY_NEAR(plain, inside.x(), inside.y(), QColor(120, 130, 140), 0);
    NV_VERIFY_NEAR(plain, edge.x(), edge.y(), QColor(120, 130, 140), 0);

    host.row->SetSelected(true);
    const ProbeImage selected(&host.window);
    NV_VERIFY_NEAR(selected, inside.x(), inside.y(), QColor(200, 10, 20), 0);
    host.row->UpdateStyle(true);
    QVERIFY(ProbeImage(&host.window).Differs(selected));

    host.row->SetSelected(false);
    host.row->SetEnabled(false);
    const ProbeImage undone(&host.window);
    NV_VERIFY_NEAR(undone, inside.x(), inside.y(), QColor(120, 130, 140), 0);
    QVERIFY(undone.Differs(plain));
    host.row->UpdateStyle(true);
    const ProbeImage hovered(&host.window);
    QVERIFY(!hovered.Near(edge.x(), edge.y(), QColor(120, 130, 140)));
}

void tst_NVHistoryItem::textStandsOutInEachTheme_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << int(KXResource::LightTheme) << QColor(240, 241, 243) << QColor(28, 30, 33);
    QTest::newRow("dark") << int(KXResource::DarkTheme) << QColor(45, 47, 51) << QColor(232, 234, 237);
    QTest::newRow("high contrast") << int(KXResource::HighContrastTheme) << QColor(Qt::white)
                                   << QColor(Qt::black);
}

// In each state the text, a block of full colour in this font, is at least 90 grey levels from its ground.
void tst_NVHistoryItem::textStandsOutInEachTheme()
{
    QFETCH(int, theme);
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    KXResource::UseTheme(theme);
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, QColor(42, 110, 187));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    const PaletteScope scope(palette);
    Host host;
    host.row->SetText(QString(30, QChar(0x2588)));
    QVERIFY(host.Show());

    for (int state = 0; state < 6; ++state)
    {
        host.row->SetSelected(state < 2);
        host.row->SetEnabled(state < 4);
        host.row->UpdateStyle(state % 2 == 1);
        const ProbeImage probe(&host.window);
        const QColor ground = probe.At(50 + 26, 30 + 2);
        const QColor ink = probe.At(150, 42);
        QVERIFY2(qAbs(qGray(ground.rgb()) - qGray(ink.rgb())) >= 90,
                 qPrintable(QString("state %1: %2 on %3").arg(state).arg(ink.name(), ground.name())));
    }
}

void tst_NVHistoryItem::pictureIsSharpOnADenseScreen()
{
    if (!IsOnDenseScreen())
        return;
    Host host;
    QImage picture = Plain(Qt::white, 48);
    picture.setDevicePixelRatio(2);
    picture.setPixelColor(20, 20, Qt::red);
    host.row->SetIcon(picture);
    QVERIFY(host.Show());

    const QImage drawn = host.row->grab().toImage();

    QCOMPARE(drawn.devicePixelRatio(), 2.0);
    QCOMPARE(drawn.pixelColor(20, 20), QColor(Qt::red));
    QCOMPARE(drawn.pixelColor(21, 20), QColor(Qt::white));
    QCOMPARE(drawn.pixelColor(20, 21), QColor(Qt::white));
}

void tst_NVHistoryItem::diesWhileHovered()
{
    Host host;
    host.row->EnableHoverInteraction(true);
    QVERIFY(host.Show());
    host.PointAt(OnRow);
    QTRY_COMPARE(host.row->styleSheet(), Sheet(57));

    delete host.row;
    host.PointAt(OnRow + QPoint(5, 0));
    host.PointAt(BesideRow);

    QVERIFY(!host.row);
}

void tst_NVHistoryItem::diesWithTheHoverStillToCome()
{
    auto row = std::make_unique<NVHistoryItem>(nullptr);
    row->EnableHoverInteraction(true);

    row.reset();
    QCoreApplication::processEvents();

    QVERIFY(!row);
}

NV_TEST_MAIN(tst_NVHistoryItem)

#include "tst_NVHistoryItem.moc"
