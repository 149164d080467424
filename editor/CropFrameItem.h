#pragma once

#include <QGraphicsItem>

// The frame of a crop over the picture of a canvas, in whose scene it lies: what is to go is darkened.
class CropFrameItem : public QGraphicsItem
{
public:
    // The picture is from 0, 0 on.
    explicit CropFrameItem(const QSize& picture);

    // A null one, as at first, for none.
    QRect GetFrame() const;
    // In document pixels.
    void SetFrame(const QRect& frame);

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QSize m_picture;
    QRect m_frame;
};
