#pragma once

#include <QImage>
#include <QObject>
#include <QRegion>
#include <QVariant>
#include <QVector>

#include "document_export.h"

// A document: layers of one size, a selection mask and a resolution. GUI thread only; an image that a getter
// gives may be read on any thread, since it is a value.
class DOCUMENT_EXPORT KXDocumentInterface : public QObject
{
    Q_OBJECT

public:
    // The largest side in pixels that a host should give a document. A larger image is taken all the same:
    // refusing it is up to who opens it.
    static const int MAX_DOC_DIMENSION;

    struct Layer
    {
        QString name;
        // ARGB32_Premultiplied, as large as the document.
        QImage image;
        bool visible = true;
        // 0 to 100 percent.
        int opacity = 100;
        // Index into the list of thirteen blend modes, 0 "Normal" to 12 "Addition".
        int blendMode = 0;
        // What a host made the image from, so that it can be made anew. It goes wherever the layer goes, and
        // whether the image is still that one is the host's to find out.
        QVariant source = QVariant();
    };

    // A document with one layer that shows the image, which is converted to ARGB32_Premultiplied. The
    // resolution is the horizontal one of the image, 72 pixels an inch where it states none. A null image, or
    // one too large for the memory, gives a transparent document of one pixel.
    explicit KXDocumentInterface(const QImage& image, QObject* parent = nullptr);
    ~KXDocumentInterface() override;

    QSize GetSize() const;
    QRect GetRect() const;
    // Pixels an inch.
    double GetResolution() const;

    int GetLayerCount() const;
    // The index must be valid. Layer 0 lies at the bottom.
    const Layer& GetLayer(int index) const;
    int GetCurrentLayer() const;
    // True while a stroke or another change in steps is under way: who only shows an overview may wait until
    // it ends.
    virtual bool IsBeingEdited() const;

    // The layers flattened, ARGB32_Premultiplied. Only what changed since the last call is composed anew. The
    // image must not be kept over a change of the document, else the change pays for a copy of it. Null when
    // the memory is too short for it.
    const QImage& GetComposition() const;

    // The selection as Grayscale8, as large as the document, 255 selected; a null image when nothing is
    // selected, which means that everything may change.
    QImage GetSelectionMask() const;

    // The pixels of a layer to change in place; tell of the change by NotifyChanged. The size and the format
    // must stay. The index must be valid. The reference holds until a layer comes or goes.
    QImage& EditLayer(int index);
    // Drops the area from the cached composition and emits CompositionChanged with it, cut to the document.
    // An empty area emits nothing.
    void NotifyChanged(const QRect& area);

    // Brackets a change in steps. Calls nest. The outermost EndEdit emits CompositionChanged once more, with
    // the bounds of all that changed in between, for those who waited; it emits nothing when nothing changed.
    // EndEdit without BeginEdit is ignored.
    void BeginEdit();
    void EndEdit();

    // Puts a layer of the document's size at the index, the others move up; it becomes the current one.
    // Another pixel format is converted, the opacity is clamped, a bad blend mode is taken as Normal. Nothing
    // happens and false is returned when the size or the index does not fit.
    bool InsertLayer(int index, const Layer& layer);
    // Takes a layer away. The current layer stays the current one; when it goes itself, the one below takes
    // its place. The last layer stays, and a bad index is refused: false.
    bool RemoveLayer(int index);
    // In these four a bad index is ignored. The opacity is clamped, a bad blend mode is ignored.
    void SetCurrentLayer(int index);
    void SetLayerVisible(int index, bool visible);
    void SetLayerOpacity(int index, int percent);
    void SetLayerBlendMode(int index, int mode);
    // Changes no look and tells nobody. A bad index is ignored.
    void SetLayerSource(int index, const QVariant& source);
    // A mask of another size or format is refused with false; a null image selects nothing.
    bool SetSelectionMask(const QImage& mask);
    // Gives every layer another image, from the lowest up, and the document their size, with a selection of
    // that size or a null one. All else of the layers stays. Nothing happens and false is returned when the
    // images are not as many as the layers, not ARGB32_Premultiplied, null, or not of one size, or when the
    // selection does not fit.
    bool ReplaceImages(const QVector<QImage>& images, const QImage& selection);
    // Not above 0 or not finite is ignored.
    void SetResolution(double dotsPerInch);

Q_SIGNALS:
    // The look of the area, in document pixels, is not what it was.
    void CompositionChanged(QRect area);
    // The display of layer styles was switched.
    void StyleStateChanged(bool on);
    // A layer came or went, another became the current one, or one was given other settings. Comes before the
    // CompositionChanged of the same change, which is left out when the look stays the same.
    void LayersChanged();
    void SelectionChanged();
    // All coordinates in document pixels are void. Comes before the SelectionChanged and the
    // CompositionChanged of the same change.
    void SizeChanged(QSize size);
    void ResolutionChanged(double dotsPerInch);

private:
    bool isLayer(int index) const;
    void compose(const QRegion& area) const;
    void changeLook();

    QVector<Layer> m_layers;
    int m_currentLayer = 0;
    // Open BeginEdit calls, and the bounds of what changed since the first of them.
    int m_edits = 0;
    QRect m_edited;
    QImage m_selection;
    double m_resolution = 72.0;
    // Null until it is first asked for.
    mutable QImage m_composition;
    mutable QRegion m_stale;
};
