// The popup of the gradient bar and its editor as a window manager and a real pointer treat them. Run it
// through with-window-manager.sh.

#include "KXMdiArea.h"
#include "ModalDriver.h"
#include "NVGradientEditor.h"
#include "NVGradientPopup.h"
#include "NVGradientToolbar.h"
#include "TestMain.h"

#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

namespace
{
// A main window with the bar above its documents.
class Host : public QMainWindow
{
    Q_OBJECT
public:
    Host()
    {
        setCentralWidget(new KXMdiArea);
        addToolBar("Options")->addWidget(m_pBar);
        const NVGradientStop first(0.0, Qt::red, false, false, false);
        const NVGradientStop last(1.0, Qt::blue, false, false, false);
        m_pBar->Load({{first, last}, {last, first}});
        setGeometry(60, 60, 1180, 850);
    }

    bool Show()
    {
        show();
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }
    QToolButton* Button() const { return m_pBar->findChild<QToolButton*>("m_pGradients"); }
    NVGradientPopup* Popup() const { return m_pBar->findChild<NVGradientPopup*>(); }
    QPushButton* Edit() const { return Popup()->findChild<QPushButton*>("m_pEdit"); }
    bool IsOpen() const { return Popup()->isVisible() && Button()->isChecked(); }
    bool IsClosed() const { return !Popup()->isVisible() && !Button()->isChecked(); }

    NVGradientToolbar* m_pBar = new NVGradientToolbar(nullptr);
};

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    QVERIFY(process.waitForStarted());
    QVERIFY(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }));
    QCOMPARE(process.exitCode(), 0);
}

void click(const QWidget* widget)
{
    const QPoint place = widget->mapToGlobal(widget->rect().center());
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
}

void open(const Host& host)
{
    click(host.Button());
    QTRY_VERIFY(host.IsOpen());
    QTRY_COMPARE(QApplication::activeWindow(), host.Popup());
}
} // namespace

class tst_GradientPopupActivation : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();

    void clickOnTheCheckedButtonClosesOnce();
    void clickElsewhereClosesAndUnchecks();
    void escapeClosesAndUnchecks();
    void popupComesBackAfterTheEditor_data();
    void popupComesBackAfterTheEditor();
};

void tst_GradientPopupActivation::initTestCase()
{
    if (QGuiApplication::platformName() != "xcb")
    {
        QSKIP("needs an X server with a window manager: run it by tests/activation/with-window-manager.sh");
    }
}

void tst_GradientPopupActivation::clickOnTheCheckedButtonClosesOnce()
{
    Host host;
    QVERIFY(host.Show());
    open(host);
    QCOMPARE(host.Popup()->pos(), host.Button()->mapToGlobal(QPoint(0, host.Button()->height() + 1)));

    click(host.Button());
    QTRY_VERIFY(host.IsClosed());
    click(host.Button());
    QTRY_VERIFY(host.IsOpen());
}

void tst_GradientPopupActivation::clickElsewhereClosesAndUnchecks()
{
    Host host;
    QVERIFY(host.Show());
    open(host);

    click(host.centralWidget());
    QTRY_VERIFY(host.IsClosed());
}

void tst_GradientPopupActivation::escapeClosesAndUnchecks()
{
    Host host;
    QVERIFY(host.Show());
    open(host);

    xdotool({"key", "Escape"});
    QTRY_VERIFY(host.IsClosed());
}

void tst_GradientPopupActivation::popupComesBackAfterTheEditor_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("cancelled") << "Escape";
    QTest::newRow("accepted") << "Return";
}

void tst_GradientPopupActivation::popupComesBackAfterTheEditor()
{
    QFETCH(const QString, key);
    Host host;
    QVERIFY(host.Show());
    open(host);
    const QPoint place = host.Popup()->pos();

    // Twice: it stays, and a further click finds it where it was.
    for (int turn = 0; turn < 2; ++turn)
    {
        bool closed = false;
        ModalDriver driver(
            [&](QWidget* window)
            {
                closed = qobject_cast<NVGradientEditor*>(window) && host.IsClosed();
                xdotool({"key", key});
            });
        click(host.Edit());
        QTRY_VERIFY(driver.Finished());
        QVERIFY(closed);
        QTRY_VERIFY(host.IsOpen());
        QTRY_COMPARE(QApplication::activeWindow(), host.Popup());
        QCOMPARE(host.Popup()->pos(), place);
    }
}

NV_TEST_MAIN(tst_GradientPopupActivation)

#include "tst_GradientPopupActivation.moc"
