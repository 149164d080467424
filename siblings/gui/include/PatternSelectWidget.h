#pragma once

#include <QWidget>

#include "gui_export.h"

class PatternTileView;
class QLabel;

// The pattern chooser: a popup window of tiles. It keeps the selection. Opened where it is told, it moves
// itself back onto the screen.
class GUI_EXPORT PatternSelectWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PatternSelectWidget(QWidget* parent);
    ~PatternSelectWidget() override;

    int Count() const;
    // Starts as NVApplication::GetTexturePatternIndex(), cut to the tiles there are.
    int CurrentIndex() const;
    // The tile of the index, ARGB32_Premultiplied, seamless. Without such a tile: false, and the image as it
    // was.
    bool GetItemImage(int index, QImage& image) const;

    void setVisible(bool visible) override;

public Q_SLOTS:
    // Selects a tile without a signal. A bad index is ignored.
    void SetCurrentIndex(int index);

Q_SIGNALS:
    // By a person: a click, or a key on the tiles.
    void ItemSelected(int index);
    // A double click, or Enter on a tile; ItemSelected comes before it.
    void ItemDoubleClicked(int index);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void OnSelected(int index);
    void OnPointed(int index);

private:
    void build();

    int m_current;
    // Both null until the popup is first shown.
    PatternTileView* m_pView = nullptr;
    QLabel* m_pName = nullptr;
};
