// The panel that is accepted or rejected like a modeless dialog.

#include "KXDialogPanel.h"

#include <QDialogButtonBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// A panel with a line edit, OK and Cancel, which hands its filtered events straight on to the framework's
// base.
class Question : public KXDialogPanel
{
public:
    explicit Question(QWidget* parent = nullptr) : KXDialogPanel(parent)
    {
        edit = new QLineEdit;
        box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QVBoxLayout* layout = new QVBoxLayout(Content());
        layout->addWidget(edit);
        layout->addWidget(box);
        connect(box, &QDialogButtonBox::accepted, this, &KXDialogPanel::Accept);
        connect(box, &QDialogButtonBox::rejected, this, &KXDialogPanel::Reject);
    }

    bool eventFilter(QObject* object, QEvent* event) override { return KXWidget::eventFilter(object, event); }

    QLineEdit* edit;
    QDialogButtonBox* box;
};

enum Place
{
    AsWindow,
    Docked,
    Floating,
    InLayout
};

// Puts the panel there and gives it the focus.
struct Stage
{
    explicit Stage(Place place) : panel(new Question)
    {
        window.resize(600, 400);
        QWidget* centre = new QWidget;
        window.setCentralWidget(centre);
        window.show();
        if (place == InLayout)
        {
            QVBoxLayout* layout = new QVBoxLayout(centre);
            layout->addWidget(panel);
        }
        else if (place != AsWindow)
        {
            panel->Dock(&window)->setFloating(place == Floating);
        }
        panel->show();
        panel->window()->activateWindow();
        panel->edit->setFocus();
    }

    ~Stage() { delete panel; }

    bool IsReady() const
    {
        return QTest::qWaitFor([this] { return panel->edit->hasFocus(); });
    }

    QMainWindow window;
    QPointer<Question> panel;
};

} // namespace

Q_DECLARE_METATYPE(Place)

class tst_KXDialogPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void panelEndsWithThisSignal_data();
    void panelEndsWithThisSignal();
    void closeButtonRejects_data();
    void closeButtonRejects();
    void hidingEndsNothing();
    void tabInFrontEndsNothing();
    void panelComesBack();
    void modifiedAndHeldEnterPressNothing();
    void panelMayDieInItsOwnSignal();
    void closedDockWithoutThePanelIsNoMatter();
};

void tst_KXDialogPanel::panelEndsWithThisSignal_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("signalSent");
    const QList<QPair<QString, Place>> places = {
        {"window", AsWindow}, {"docked", Docked}, {"floating", Floating}, {"in a layout", InLayout}};
    for (const auto& place : places)
    {
        for (const QString way : {"OK", "Cancel", "Return", "Escape"})
        {
            const bool accepts = way == "OK" || way == "Return";
            QTest::addRow("%s, %s", qPrintable(place.first), qPrintable(way))
                << place.second << way << (accepts ? "Accepted()" : "Rejected()");
        }
    }
}

void tst_KXDialogPanel::panelEndsWithThisSignal()
{
    QFETCH(Place, place);
    QFETCH(QString, way);
    QFETCH(QString, signalSent);
    Stage stage(place);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);

    if (way == "Return" || way == "Escape")
    {
        QTest::keyClick(stage.panel->edit, way == "Return" ? Qt::Key_Return : Qt::Key_Escape);
    }
    else
    {
        const auto button = way == "OK" ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel;
        QTest::mouseClick(stage.panel->box->button(button), Qt::LeftButton);
    }

    QCOMPARE(log.Entries(), QStringList(signalSent));
    QVERIFY(!stage.panel->isVisible());
    QVERIFY(stage.window.isVisible());
    QVERIFY(!stage.panel->GetDock() || !stage.panel->GetDock()->isVisible());
}

void tst_KXDialogPanel::closeButtonRejects_data()
{
    QTest::addColumn<Place>("place");
    QTest::newRow("window") << AsWindow;
    QTest::newRow("docked") << Docked;
    QTest::newRow("floating") << Floating;
}

void tst_KXDialogPanel::closeButtonRejects()
{
    QFETCH(Place, place);
    Stage stage(place);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);

    if (place == AsWindow)
    {
        stage.panel->close();
    }
    else
    {
        QAbstractButton* button =
            stage.panel->GetDock()->findChild<QAbstractButton*>("qt_dockwidget_closebutton");
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QCOMPARE(log.Entries(), QStringList("Rejected()"));
    QVERIFY(!stage.panel->isVisible());
}

void tst_KXDialogPanel::hidingEndsNothing()
{
    Stage stage(Docked);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);

    stage.panel->GetDock()->hide();
    stage.panel->GetDock()->show();
    stage.window.hide();
    stage.window.show();

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(stage.panel->isVisible());
}

void tst_KXDialogPanel::tabInFrontEndsNothing()
{
    Stage stage(Docked);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);
    QDockWidget* other = new QDockWidget(&stage.window);
    other->setWidget(new QWidget);
    stage.window.addDockWidget(Qt::RightDockWidgetArea, other);

    stage.window.tabifyDockWidget(stage.panel->GetDock(), other);
    other->show();
    other->raise();
    QCoreApplication::processEvents();

    QCOMPARE(log.Entries(), QStringList());
}

void tst_KXDialogPanel::panelComesBack()
{
    Stage stage(Docked);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);
    stage.panel->Accept();

    stage.panel->GetDock()->show();
    QVERIFY(stage.panel->isVisible());
    stage.panel->Reject();

    QCOMPARE(log.Entries(), QStringList({"Accepted()", "Rejected()"}));
}

void tst_KXDialogPanel::modifiedAndHeldEnterPressNothing()
{
    Stage stage(AsWindow);
    QVERIFY(stage.IsReady());
    SignalLog log(stage.panel);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);

    QTest::keyClick(stage.panel->edit, Qt::Key_Return, Qt::ControlModifier);
    QCoreApplication::sendEvent(stage.panel->edit, &held);

    QCOMPARE(log.Count(), 0);
    QVERIFY(stage.panel->isVisible());
}

void tst_KXDialogPanel::panelMayDieInItsOwnSignal()
{
    Stage stage(Docked);
    QVERIFY(stage.IsReady());
    Question* panel = stage.panel;
    connect(panel, &KXDialogPanel::Rejected, panel, &QObject::deleteLater);

    QTest::keyClick(panel->edit, Qt::Key_Escape);

    QTRY_VERIFY(!stage.panel);
}

void tst_KXDialogPanel::closedDockWithoutThePanelIsNoMatter()
{
    Stage stage(Docked);
    QVERIFY(stage.IsReady());
    QDockWidget* dock = stage.panel->GetDock();
    stage.panel->setParent(stage.window.centralWidget());
    stage.panel->show();
    SignalLog log(stage.panel);

    dock->close();

    QCOMPARE(log.Count(), 0);
    QVERIFY(stage.panel->isVisible());
}

NV_TEST_MAIN(tst_KXDialogPanel)
#include "tst_KXDialogPanel.moc"
