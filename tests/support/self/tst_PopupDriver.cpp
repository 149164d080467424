// A popup opened and closed by its button, for a popup of either kind of window.

#include "PopupDriver.h"
#include "TestMain.h"

#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>

namespace
{
// A checkable button that shows and hides its popup, in a window with room beside it.
class Host : public QWidget
{
    Q_OBJECT
public:
    explicit Host(Qt::WindowType type) : m_popup(this, type)
    {
        resize(300, 60);
        m_button.setGeometry(10, 10, 24, 24);
        m_button.setCheckable(true);
        m_popup.resize(60, 40);
        m_popup.installEventFilter(this);
        connect(&m_button, &QPushButton::toggled, this, &Host::OnToggled);
    }

    QPushButton* Button() { return &m_button; }
    QWidget* Popup() { return &m_popup; }

    // Escape hides the popup; leaving it hides it unless the pointer is on the button, whose click does so
    // itself.
    bool eventFilter(QObject* object, QEvent* event) override
    {
        const bool escape =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        const bool left = event->type() == QEvent::WindowDeactivate &&
            !m_button.rect().contains(m_button.mapFromGlobal(QCursor::pos()));
        if (escape || left)
        {
            m_popup.hide();
        }
        if (event->type() == QEvent::Hide)
        {
            m_button.setChecked(false);
        }
        return QWidget::eventFilter(object, event);
    }

private Q_SLOTS:
    void OnToggled(bool on)
    {
        m_popup.move(m_button.mapToGlobal(QPoint(0, m_button.height() + 1)));
        m_popup.setVisible(on);
        if (on)
        {
            m_popup.activateWindow();
        }
    }

private:
    QPushButton m_button{this};
    QWidget m_popup;
};
} // namespace

class tst_PopupDriver : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void opensByARealClick();
    void findsThePopupByItself();
    void closesInEachWay_data();
    void closesInEachWay();
    void closesAPopupThatGrabsTheMouse();
    void tellsThatNothingOpens();
    void countsCanBeCleared();
    void popupDeletedWhileOpenIsNotOpen();
};

void tst_PopupDriver::opensByARealClick()
{
    Host host(Qt::Tool);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    QSignalSpy clicked(host.Button(), &QPushButton::clicked);
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(!driver.IsOpen());
    QVERIFY(driver.Open());
    QVERIFY(driver.IsOpen());
    QCOMPARE(clicked.count(), 1);
    QVERIFY(host.Button()->rect().contains(host.Button()->mapFromGlobal(QCursor::pos())));
    QVERIFY(host.Popup()->isActiveWindow());
    QCOMPARE(driver.ShowCount(), 1);
    QCOMPARE(driver.HideCount(), 0);
}

void tst_PopupDriver::findsThePopupByItself()
{
    Host host(Qt::Tool);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    PopupDriver driver(host.Button());
    QVERIFY(!driver.Popup());
    QVERIFY(driver.Open());
    QCOMPARE(driver.Popup(), host.Popup());
    QCOMPARE(driver.ShowCount(), 1);
}

void tst_PopupDriver::closesInEachWay_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("escape") << 1;
    QTest::newRow("free place of the window") << 2;
    QTest::newRow("another widget") << 3;
}

void tst_PopupDriver::closesInEachWay()
{
    QFETCH(int, way);
    Host host(Qt::Tool);
    QPushButton other("other", &host);
    other.setGeometry(200, 10, 60, 24);
    QSignalSpy otherClicked(&other, &QPushButton::clicked);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());

    const bool closed = way == 0 ? driver.CloseByButton()
        : way == 1               ? driver.CloseByEscape()
        : way == 2               ? driver.CloseByClickElsewhere()
                                 : driver.CloseByClickElsewhere(&other);

    QVERIFY(closed);
    QVERIFY(!driver.IsOpen());
    QVERIFY(!host.Button()->isChecked());
    QCOMPARE(driver.ShowCount(), 1);
    QCOMPARE(driver.HideCount(), 1);
    QCOMPARE(otherClicked.count(), way == 3 ? 1 : 0);
}

void tst_PopupDriver::closesAPopupThatGrabsTheMouse()
{
    Host host(Qt::Popup);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());
    QVERIFY(driver.CloseByClickElsewhere());
    QVERIFY(!host.Button()->isChecked());
    QCOMPARE(driver.HideCount(), 1);
}

void tst_PopupDriver::tellsThatNothingOpens()
{
    QWidget window;
    QPushButton button("dead", &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    PopupDriver driver(&button);
    driver.SetPatience(20);
    QVERIFY(!driver.Open());
    QVERIFY(!driver.Popup());
}

void tst_PopupDriver::countsCanBeCleared()
{
    Host host(Qt::Tool);
    host.show();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());
    driver.ClearCounts();
    QCOMPARE(driver.ShowCount(), 0);
    QVERIFY(driver.CloseByButton());
    QCOMPARE(driver.HideCount(), 1);
    driver.ClearCounts();
    QCOMPARE(driver.HideCount(), 0);
}

void tst_PopupDriver::popupDeletedWhileOpenIsNotOpen()
{
    QWidget window;
    QPushButton button("open", &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* popup = new QTextEdit;
    connect(&button, &QPushButton::clicked, popup, &QWidget::show);
    PopupDriver driver(&button);
    QVERIFY(driver.Open());
    delete popup;
    QVERIFY(!driver.IsOpen());
    QVERIFY(!driver.Popup());
}

NV_TEST_MAIN(tst_PopupDriver)

#include "tst_PopupDriver.moc"
