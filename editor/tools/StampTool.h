#pragma once

#include <QPointer>

#include "StrokeTool.h"

class NVStampToolbar;

// Paints with the picture from another place of the document. Alt and a click choose the place; a cross shows
// where the stamp reads.
class StampTool : public StrokeTool
{
    Q_OBJECT

public:
    StampTool(QSettings* settings, QObject* parent);
    ~StampTool() override;

    NVStampToolbar* GetStampBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    void Finish() override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    int GetBlendMode() override;
    void RestoreOwnValues(NVBrushToolbarWidget* bar) override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    QRegion OverlayRegion() const override;
    void PaintOverlay(QPainter& painter) const override;

private Q_SLOTS:
    void OnAligned(bool aligned);
    void OnSizeChanged();

private:
    void ChooseSource(const QPointF& position);
    void ForgetSource();
    bool HasSource() const;
    QPointF CrossPlace() const;

    // The document of the source, which may be another one by now, and the place in it.
    QPointer<Document> m_pSourceDocument;
    QPointF m_source;
    // From the stroke to what it reads. With aligned strokes it is that of the first one.
    QPoint m_offset;
    bool m_hasOffset = false;
    bool m_isAligned = true;
    bool m_isChoosing = false;
};
