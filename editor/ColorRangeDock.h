#pragma once

#include <QDockWidget>
#include <QPointer>

#include <memory>

#include "BackgroundWork.h"
#include "ColorRange.h"
#include "NVDocumentView.h"

class Document;
class NVSelectColorRange;
class QSettings;

// The panel in which a selection is built from colours. While it is open the canvas is its own: a click adds
// the colour that the document shows there, also with Shift, and with Alt it takes the colour out of the
// strip that is most like it; Escape cancels. A preview of the selection that would come out is made on
// another thread, anew with each change.
class ColorRangeDock : public QDockWidget
{
    Q_OBJECT

public:
    // Tolerance and mode come from the settings and go there. Not owned; they outlive the panel.
    explicit ColorRangeDock(QSettings* settings, QWidget* parent = nullptr);
    // Emits nothing any more.
    ~ColorRangeDock() override;

    bool IsOpen() const;
    // While a preview is on its way.
    bool IsComputing() const;
    ColorRangeSettings GetSettings() const;
    // How the colours meet the selection that is there: a SelectionState.
    int GetState() const;

    // What is worked on from now on; neither is owned, both may be null, which closes the panel. They are to
    // be taken out before they go.
    void SetCanvas(NVDocumentView* view, Document* document);
    // Nothing without a canvas. An open one comes to the front.
    void Open();
    // As Cancel does.
    void Cancel();

Q_SIGNALS:
    // The canvas is the panel's, and is free again.
    void Opened();
    void Closed();
    // The person wants the selection; comes after Closed.
    void Accepted();
    void PreviewShown();
    // Something to say in the status bar.
    void Message(const QString& text);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnPressed(const CanvasPoint& point);
    void OnChanged();
    void OnComputed();
    void OnAccepted();
    void OnRejected();

private:
    void Connect();
    void Disconnect();
    void Close();
    void AddColor(const QColor& color);
    void RemoveColor(const QColor& color);

    QSettings* m_pSettings;
    NVSelectColorRange* m_pPanel;
    QPointer<NVDocumentView> m_pView;
    QPointer<Document> m_pDocument;
    bool m_isOpen = false;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<QImage> m_pPreview;
};
