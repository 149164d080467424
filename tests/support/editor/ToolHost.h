// A tool of the editor at work on a canvas, acted on as with a mouse.

#pragma once

#include <QMainWindow>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QRegion>
#include <QSettings>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

#include <memory>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVDocumentView.h"
#include "Tool.h"

// Settings that nobody else sees, gone with the object.
struct ScratchSettings
{
    QTemporaryDir folder;
    QSettings settings{folder.filePath("s.ini"), QSettings::IniFormat};
};

QImage PlainPicture(const QColor& color = Qt::white, const QSize& size = QSize(300, 200));
// No two neighbours are alike, nothing is quite black or white, and each place differs from the others.
QImage BusyPicture(const QSize& size = QSize(300, 200));
// The smallest rect that holds all pixels in which the two differ.
QRect DifferenceOf(const QImage& one, const QImage& other);

// What is drawn anew of a widget, from its making on.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget* widget)
    {
        QCoreApplication::processEvents();
        widget->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(object, event);
    }

    QRegion painted;
};

// A window with the tool's bar and a canvas at 100 %. Coordinates are document pixels.
template <class T>
struct ToolHost
{
    explicit ToolHost(std::unique_ptr<T> given, const QImage& picture = PlainPicture())
        : tool(std::move(given)),
          document(std::make_unique<Document>(picture, QString(), "Picture")),
          view(new NVDocumentView(document->GetModel()))
    {
        window.setCentralWidget(view);
        window.setMenuWidget(tool->GetBar());
        window.resize(900, 420);
        window.show();
        tool->SetCanvas(view, document.get());
        tool->Activate();
        view->Scale(1 / view->GetScale(), QPointF());
        view->setFocus();
        (void)QTest::qWaitForWindowActive(&window);
    }
    explicit ToolHost(QSettings* settings, const QImage& picture = PlainPicture())
        : ToolHost(std::make_unique<T>(settings, nullptr), picture)
    {
    }
    ~ToolHost()
    {
        if (tool)
        {
            tool->SetCanvas(nullptr, nullptr);
            tool->Deactivate();
        }
        window.takeCentralWidget();
        delete view;
    }

    QPoint at(double x, double y) const { return view->MapFromDocument(QPointF(x, y)).toPoint(); }
    void mouse(QEvent::Type type, double x, double y, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, at(x, y), view->viewport()->mapToGlobal(at(x, y)), button, buttons,
                          modifiers);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    void press(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton, modifiers);
    }
    void move(double x, double y, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        mouse(QEvent::MouseMove, x, y, Qt::NoButton, buttons);
    }
    void release(double x, double y)
    {
        mouse(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
    }
    void click(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(x, y, modifiers);
        release(x, y);
    }
    // From left to right through the middle, without waiting for its end.
    void drag(double y = 100)
    {
        press(50, y);
        for (int x = 60; x <= 250; x += 10)
            move(x, y);
        release(250, y);
    }
    // The same of a tool with strokes, to its end.
    void stroke(double y = 100)
    {
        drag(y);
        QTRY_VERIFY_WITH_TIMEOUT(!tool->IsStrokeRunning(), 30000);
    }
    void leave()
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(view->viewport(), &event);
        QCoreApplication::processEvents();
    }

    KXDocumentInterface* pixels() const { return document->GetPixels(); }
    QUndoStack* steps() const { return document->GetUndoStack(); }
    QImage layer(int index = 0) const { return pixels()->GetLayer(index).image.copy(); }
    QImage composition() const { return pixels()->GetComposition().copy(); }
    QColor pixel(int x, int y) const { return pixels()->GetComposition().pixelColor(x, y); }
    // Puts a layer on top, which becomes the current one.
    void addLayer(const QImage& image)
    {
        KXDocumentInterface::Layer above;
        above.name = "Above";
        above.image = image;
        QVERIFY(pixels()->InsertLayer(pixels()->GetLayerCount(), above));
    }
    // Selects the rect alone.
    void select(const QRect& rect)
    {
        QImage mask(pixels()->GetSize(), QImage::Format_Grayscale8);
        mask.fill(0);
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            memset(mask.scanLine(y) + rect.left(), 255, size_t(rect.width()));
        QVERIFY(pixels()->SetSelectionMask(mask));
    }
    // The canvas dies as a closed tab does.
    void closeDocument()
    {
        view->SetModel(nullptr);
        document.reset();
    }

    std::unique_ptr<T> tool;
    std::unique_ptr<Document> document;
    NVDocumentView* view;
    QMainWindow window;
};
