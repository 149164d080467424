// The hand: the document follows the pointer, and goes back on cancel.

#include "HandTool.h"

#include <QMainWindow>

#include "Document.h"
#include "TestMain.h"

class tst_HandTool : public QObject
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
        m_tool = std::make_unique<HandTool>(nullptr);
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

    void aDragTakesTheDocumentAlong()
    {
        const QPointF before = m_view->MapToDocument(QPointF());
        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::OpenHandCursor);

        mouse(QEvent::MouseButtonPress, QPoint(200, 150), Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::ClosedHandCursor);
        mouse(QEvent::MouseMove, QPoint(150, 130), Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, QPoint(120, 110), Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, QPoint(120, 110), Qt::LeftButton, Qt::NoButton);

        QCOMPARE((m_view->MapToDocument(QPointF()) - before).toPoint(), QPoint(80, 40));
        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::OpenHandCursor);
    }

    void hoverMovesNothing()
    {
        const QPointF before = m_view->MapToDocument(QPointF());

        mouse(QEvent::MouseMove, QPoint(150, 130), Qt::NoButton, Qt::NoButton);
        mouse(QEvent::MouseMove, QPoint(50, 30), Qt::NoButton, Qt::NoButton);

        QCOMPARE(m_view->MapToDocument(QPointF()), before);
    }

    void cancelBringsTheDocumentBack()
    {
        const QPointF before = m_view->MapToDocument(QPointF());
        mouse(QEvent::MouseButtonPress, QPoint(200, 150), Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, QPoint(150, 130), Qt::NoButton, Qt::LeftButton);

        QVERIFY(m_tool->Cancel());
        QVERIFY(!m_tool->Cancel());

        QCOMPARE((m_view->MapToDocument(QPointF()) - before).toPoint(), QPoint());
        mouse(QEvent::MouseMove, QPoint(100, 100), Qt::NoButton, Qt::LeftButton);
        QCOMPARE((m_view->MapToDocument(QPointF()) - before).toPoint(), QPoint());
        mouse(QEvent::MouseButtonRelease, QPoint(100, 100), Qt::LeftButton, Qt::NoButton);
    }

    void anotherToolGetsAnArrow()
    {
        m_tool->Deactivate();

        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    void theViewMayGoDuringADrag()
    {
        mouse(QEvent::MouseButtonPress, QPoint(200, 150), Qt::LeftButton, Qt::LeftButton);

        m_window.reset();

        m_tool->Finish();
        m_tool->Deactivate();
        QVERIFY(!m_tool->GetView());
    }

private:
    void mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, place, m_view->viewport()->mapToGlobal(place), button, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(m_view->viewport(), &event);
    }

    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<HandTool> m_tool;
    NVDocumentView* m_view = nullptr;
};

NV_TEST_MAIN(tst_HandTool)
#include "tst_HandTool.moc"
