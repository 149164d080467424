// The tool box: a button a tool, in two columns, keys and pictures.

#include "ToolBox.h"

#include <QAction>
#include <QMainWindow>
#include <QToolButton>

#include "HandTool.h"
#include "NVApplication.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ZoomTool.h"

class tst_ToolBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tools = {new HandTool(this), new ZoomTool(this)};
        m_window = std::make_unique<QMainWindow>();
        m_pBox = new ToolBox(m_tools, m_window.get());
        m_window->addToolBar(Qt::LeftToolBarArea, m_pBox);
        m_window->resize(400, 300);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        qDeleteAll(m_tools);
        m_tools.clear();
    }

    void theFirstToolIsChecked()
    {
        QVERIFY(button("Hand")->isChecked());
        QVERIFY(!button("Zoom")->isChecked());
    }

    void aClickChoosesTheTool()
    {
        SignalLog log(m_pBox);

        QTest::mouseClick(button("Zoom"), Qt::LeftButton);

        QCOMPARE(log.Count("ToolChosen"), 1);
        QVERIFY(button("Zoom")->isChecked());
        QVERIFY(!button("Hand")->isChecked());
    }

    void theKeyChoosesTheTool()
    {
        SignalLog log(m_pBox);

        QTest::keyClick(m_window.get(), Qt::Key_Z);

        QCOMPARE(log.Count("ToolChosen"), 1);
        QVERIFY(button("Zoom")->isChecked());
    }

    void choosingByCallChecksAndTells()
    {
        SignalLog log(m_pBox);

        m_pBox->Choose(m_tools.last());
        QCOMPARE(log.Count("ToolChosen"), 1);
        QVERIFY(button("Zoom")->isChecked());

        HandTool stranger(nullptr);
        m_pBox->Choose(&stranger);
        QCOMPARE(log.Count("ToolChosen"), 1);
    }

    void buttonsStandInTwoColumns()
    {
        const QRect hand = button("Hand")->geometry();
        const QRect zoom = button("Zoom")->geometry();

        QCOMPARE(hand.top(), zoom.top());
        QVERIFY(zoom.left() > hand.right());
    }

    void tooltipsNameToolAndKey()
    {
        QCOMPARE(button("Zoom")->toolTip(), QString("Zoom (Z)"));
        QCOMPARE(button("Hand")->focusPolicy(), Qt::NoFocus);
    }

    void theThemeReachesThePictures()
    {
        const QImage before = button("Hand")->icon().pixmap(24, 24).toImage();

        NVApplication::GetInstance()->SetTheme(1);
        m_pBox->UpdateTheme();

        const QImage dark = button("Hand")->icon().pixmap(24, 24).toImage();
        NVApplication::GetInstance()->SetTheme(0);
        QVERIFY(!dark.isNull());
        QVERIFY(dark != before);
    }

private:
    QToolButton* button(const QString& name) const
    {
        for (QToolButton* each : m_pBox->findChildren<QToolButton*>())
        {
            if (each->defaultAction() && each->defaultAction()->text() == name)
                return each;
        }
        qFatal("no button %s", qPrintable(name));
        return nullptr;
    }

    QList<Tool*> m_tools;
    std::unique_ptr<QMainWindow> m_window;
    ToolBox* m_pBox = nullptr;
};

NV_TEST_MAIN(tst_ToolBox)
#include "tst_ToolBox.moc"
