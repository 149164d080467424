#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QMetaType>
#include <QPainterPath>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QVector>

#include "TextWarp.h"

class QTextDocument;

// The functions here are for the GUI thread alone.

// All that the picture of a text is made from.
struct TextDescription
{
    QString text;
    QString family;
    // Pixels.
    int size = 10;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    QColor color = Qt::black;
    bool isSmooth = true;
    TextWarp warp;
    // Document pixels: the upper left corner, or the upper right one of a text of right-to-left script that
    // has no width.
    QPoint anchor;
    // Where lines are broken, in pixels; 0 breaks them nowhere.
    int width = 0;
    // How much of it its layer was given, as seen from the anchor; null: all that lies in the layer.
    QRect shown;
};
Q_DECLARE_METATYPE(TextDescription)

// But for what is shown.
bool operator==(const TextDescription& one, const TextDescription& other);

// A piece of a layer that holds all of a text. Without a visible pixel the image is null.
struct TextPicture
{
    QRect GetRect() const;

    // ARGB32_Premultiplied.
    QImage image;
    QPoint corner;
};

QFont TextFont(const TextDescription& description);
// Gives the document the style and the width of the description; its text stays. To be called after each
// change of the text, too.
void LayOutText(QTextDocument& document, const TextDescription& description);
// The place of the text in pixels of the document, before it is bent.
QRectF TextFrame(const QTextDocument& document, const TextDescription& description);
// The outlines of the letters of a document that is laid out, and of the lines below them, bent and in their
// place. What an input method shows belongs to it. Letters without outlines are left out.
QVector<QPainterPath> TextOutlines(const QTextDocument& document, const TextDescription& description);
// Its picture, cut to the bounds.
TextPicture DrawText(const QTextDocument& document, const TextDescription& description, const QRect& bounds);
// The picture of the description alone.
TextPicture DrawText(const TextDescription& description, const QRect& bounds);

// The smallest rect that holds all pixels of the image, ARGB32_Premultiplied, that are not clear.
QRect VisibleRect(const QImage& image);
// Whether the layer shows just the text, wherever it was moved to, also where the edges of the layer cut it:
// then the way there from the description's place. False when anything else was done to its pixels.
bool FindText(const QImage& layer, const TextDescription& description, QPoint* way);
