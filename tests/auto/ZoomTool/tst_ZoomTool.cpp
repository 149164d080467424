// The zoom tool: clicks double and halve the scale about the pointer, a drag zooms freely.

#include "ZoomTool.h"

#include <QMainWindow>

#include "Document.h"
#include "TestMain.h"

class tst_ZoomTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QImage image(2000, 1500, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::gray);
        m_document = std::make_unique<Document>(image, QString(), "Picture");
        m_view = new NVDocumentView(m_document->GetModel());
        m_window = std::make_unique<QMainWindow>();
        m_window->setCentralWidget(m_view);
        m_window->resize(400, 300);
        m_window->show();
        m_view->Scale(1 / m_view->GetScale(), QPointF());
        m_tool = std::make_unique<ZoomTool>(nullptr);
        m_tool->SetCanvas(m_view, m_document.get());
        m_tool->Activate();
    }

    void cleanup()
    {
        m_tool->SetCanvas(nullptr, nullptr);
        m_window.reset();
        m_tool.reset();
        m_document.reset();
    }

    void aClickZoomsInAboutThePointer()
    {
        const QPoint place(100, 80);
        const QPointF before = m_view->MapToDocument(place);

        click(place, Qt::LeftButton);

        QCOMPARE(m_view->GetScale(), 2.0);
        const QPointF way = m_view->MapToDocument(place) - before;
        QVERIFY(qAbs(way.x()) < 1 && qAbs(way.y()) < 1);
    }

    void altAndTheRightButtonZoomOut()
    {
        click(QPoint(100, 80), Qt::LeftButton, Qt::AltModifier);
        QCOMPARE(m_view->GetScale(), 0.5);

        click(QPoint(100, 80), Qt::RightButton);
        QCOMPARE(m_view->GetScale(), 0.25);
    }

    void aDragZoomsAsFarAsItGoes()
    {
        mouse(QEvent::MouseButtonPress, QPoint(100, 80), Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, QPoint(220, 80), Qt::NoButton, Qt::LeftButton);
        QVERIFY(qAbs(m_view->GetScale() - 2) < 0.05);
        mouse(QEvent::MouseMove, QPoint(100, 80), Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, QPoint(100, 80), Qt::LeftButton, Qt::NoButton);

        QVERIFY(qAbs(m_view->GetScale() - 1) < 0.05);
    }

    void cancelBringsTheScaleBack()
    {
        mouse(QEvent::MouseButtonPress, QPoint(100, 80), Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, QPoint(220, 80), Qt::NoButton, Qt::LeftButton);

        QVERIFY(m_tool->Cancel());
        QVERIFY(!m_tool->Cancel());

        QVERIFY(qAbs(m_view->GetScale() - 1) < 1e-6);
        mouse(QEvent::MouseButtonRelease, QPoint(220, 80), Qt::LeftButton, Qt::NoButton);
        QVERIFY(qAbs(m_view->GetScale() - 1) < 1e-6);
    }

private:
    void click(const QPoint& place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, place, button, button, modifiers);
        mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton, modifiers);
    }
    void mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, place, m_view->viewport()->mapToGlobal(place), button, buttons, modifiers);
        QCoreApplication::sendEvent(m_view->viewport(), &event);
    }

    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<ZoomTool> m_tool;
    NVDocumentView* m_view = nullptr;
};

NV_TEST_MAIN(tst_ZoomTool)
#include "tst_ZoomTool.moc"
