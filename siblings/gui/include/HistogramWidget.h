#pragma once

#include <QWidget>
#include <memory>

#include "gui_export.h"

class KXDocumentInterface;

// The histogram of a document's composition: how many pixels have which level, 0 to 255, in one or several
// colour channels. Pointing at a level tells its count; dragging over levels selects a range, whose pixels
// are counted; a click or Escape selects all again. Left and Right move the level, with Shift they select,
// Home and End go to its ends. The context menu and L switch the logarithmic scale.
//
// A pixel counts by its colour without its opacity; one that is wholly transparent does not count. The
// counting runs off the GUI thread and starts anew when the document changes meanwhile; until it ends, the
// widget shows the figures from before. GUI thread only.
class GUI_EXPORT HistogramWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool logarithmic READ IsLogarithmic WRITE SetLogarithmic)

public:
    // Bits of the colours that are shown, one over the other; without any, the luminance.
    enum ColorChannel : int
    {
        Luminance = 0,
        Red = 1,
        Green = 2,
        RedGreen = 3,
        Blue = 4,
        RedBlue = 5,
        GreenBlue = 6,
        RGB = 7
    };
    Q_ENUM(ColorChannel)

    explicit HistogramWidget(QWidget* parent = nullptr);
    ~HistogramWidget() override;

    // RGB at first.
    ColorChannel GetChannel() const;
    bool IsLogarithmic() const;

    // Not owned; may be null. A document that is destroyed is let go by itself.
    void SetDocument(KXDocumentInterface* document);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // A value with other bits is taken for its lowest three.
    void SetChannel(HistogramWidget::ColorChannel channel);
    void SetLogarithmic(bool on);
    // The document looks different: its pixels are counted again, once for all calls of one turn of the event
    // loop, and not before the widget is visible.
    void RebuildHistogramm();

Q_SIGNALS:
    // The levels that are selected, both included; 0 and 255 when all are.
    void CurrentLevelRangeChanged(int from, int to);
    // The level that is pointed at, and how many pixels have it: with several channels, their mean, rounded.
    void StatsChanged(int level, int count);
    // How many pixels the selected levels hold, counted alike.
    void CountChanged(int count);
    // No level is pointed at any more, or there is nothing to count.
    void StatsNoInfo();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void OnDocumentDestroyed();
    void OnCompositionChanged();
    void OnRebuild();
    void OnCounted();

private:
    struct Data;

    void drawLevels(QPainter& painter) const;
    void clear();
    void cancelCount();
    void pointAt(int level);
    void selectLevels(int from, int to);
    void tellLevel();
    void tellCount();
    int levelAt(int x) const;

    std::unique_ptr<Data> d;
};
