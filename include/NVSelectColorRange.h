#pragma once

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QSize>

#include "KXDialogPanel.h"
#include "generaltoolsgui_export.h"

class QLabel;

// The panel in which a selection is built from colours: a strip of sampled colours, a tolerance, a preview
// and how the result goes together with the present selection.
//
// The host samples colours into it by AddColor(), renders the preview for GetPreviewSize() and hands it back
// by SetPreview(). When the panel is accepted it reads colours, tolerance and mode. At most 256 colours have
// room.
class GENERALTOOLSGUI_EXPORT NVSelectColorRange : public KXDialogPanel
{
    Q_OBJECT

public:
    explicit NVSelectColorRange(QWidget* parent);
    ~NVSelectColorRange() override;

    // 0 to 255.
    int GetTolerance() const;
    // 0 create new, 1 add, 2 subtract, 3 intersect; -1 if SetMode() was given something else.
    int GetMode() const;
    // The selected colour; -1 without one.
    int GetCurrentIndex() const;
    // What the preview has room for now, in logical pixels.
    QSize GetPreviewSize() const;
    // From left to right.
    QList<QColor> GetSourceColors() const;

public Q_SLOTS:
    // Clamped.
    void SetTolerance(int tolerance);
    void SetMode(int mode);
    // Appends a colour and selects it: `shown` is what the strip and the figures show, white in the strip if
    // it is fully transparent; `source` is what the selection is computed from. Nothing happens, and nothing
    // is told, if the strip is full or has this pair already. A fully transparent `shown` is never found
    // again, so its pair may come twice.
    void AddColor(const QColor& shown, const QColor& source);
    void SetPreview(const QPixmap& preview);
    // -1 selects none. Nothing is told if the colour is selected already. An index outside of the strip is
    // ignored.
    void SelectColor(int index);

Q_SIGNALS:
    void ToleranceChanged(int tolerance);
    // -1 when none is selected any more. Not sent when the selection moves because a colour was removed.
    void ColorSelected(int index);
    void ColorListChanged();

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnRemove();
    void OnRemoveAll();
    void OnChooseColor();

private:
    struct Data;

    void InitStrip();
    void ConnectSignals();

    QLabel* AddSwatch(const QColor& color);
    // Takes it out of the strip; it dies at the next turn of the event loop.
    void DropSwatch(QLabel* swatch);
    void ScrollToSwatch(int index);
    // Of the selected colour; none without one.
    void ShowFigures();
    void EnableRemoveAll();

    Data* m_pData;
};
