#pragma once

#include <QVector>

#include "Tool.h"

class ColorSamples;
class NVColorSamplerToolbar;
class QSettings;

// A click puts a colour sample on the document, a drag moves one, Alt and a click takes it away. The markers
// are seen while the tool is the current one.
class ColorSamplerTool : public Tool
{
    Q_OBJECT

public:
    // The bar's value comes from the settings and goes there. Not owned; they outlive the tool.
    ColorSamplerTool(QSettings* settings, QObject* parent);

    NVColorSamplerToolbar* GetSamplerBar();
    // The side of the square whose mean counts: 1, 3, 5 or 7 pixels.
    int GetSide() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    // The sample that is being dragged goes back to where it was, one that is new goes.
    bool Cancel() override;
    void Finish() override;

Q_SIGNALS:
    void SideChanged(int side);

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CanvasChanged() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnSizeChosen(int index);
    void OnClear();
    void OnSamplesChanged();

private:
    // The topmost one that the pointer takes; -1 for none.
    int SampleAt(const QPointF& position) const;
    QPointF PlaceOf(const QPoint& pixel) const;
    void UpdateMarks() const;
    void DrawMarks(QPainter& painter) const;

    QSettings* m_pSettings;
    QPointer<ColorSamples> m_pSamples;
    // The samples that are on the canvas.
    QVector<QPoint> m_drawn;
    int m_dragged = -1;
    bool m_isNew = false;
    // The samples before the drag.
    QVector<QPoint> m_before;
};
