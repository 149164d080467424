#pragma once

#include <memory>

#include "TextPicture.h"
#include "Tool.h"

class KXDocumentInterface;
class NVTextDeformation;
class NVTextToolbar;
class QSettings;
class TextEdit;

// A click on the canvas begins a text at that line, a drag one of that width, and a click on a text opens it
// again. It is typed in place, in a layer of its own, and shows what the bar says as it is changed there. It
// becomes one step when it is committed. A text stays one as long as its pixels are what it gives, wherever
// they are moved to, also in part beyond the edge.
class TextTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there, but for the deformation, which is the text's. Not
    // owned; they outlive the tool.
    TextTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~TextTool() override;

    NVTextToolbar* GetTextBar();
    // A text is open on the canvas.
    bool IsEditing() const;
    // The open one, as it is now; a plain one without it.
    TextDescription GetText() const;
    // What of it is selected.
    QString GetSelectedText() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    bool Cancel() override;
    // What was typed last, as long as anything was since the text is open; then all of it.
    bool Undo() override;
    bool Redo() override;
    // Commits.
    void Finish() override;

    bool eventFilter(QObject* object, QEvent* event) override;

public Q_SLOTS:
    // Closes the open text. One without a visible letter leaves nothing, not even its layer.
    void Commit();

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnStyleChanged();
    void OnSizeChanged(int size);
    void OnWarpChanged();
    void OnReturnFocus();
    void OnCancel();
    void OnDocumentGone();

private:
    enum Press
    {
        NoPress,
        // A new text waits for the release, with or without a width.
        PlacePress,
        // The selection follows the pointer.
        SelectPress
    };

    void RestoreValues(NVTextToolbar* bar);
    void ConnectBar(NVTextToolbar* bar);
    TextDescription CurrentStyle();
    void LoadBar(const TextDescription& description);
    KXDocumentInterface* GetPixels() const;

    bool OpenTextAt(const QPointF& point);
    bool OpenText(int index, const QPointF& point);
    void BeginText(const QRectF& place);
    void BeginEdit(int layer, const TextDescription& description);
    void PressInText(const CanvasPoint& point);
    bool IsSecondPress(const CanvasPoint& point);
    QVariant GetSource() const;
    bool IsChanged() const;
    void CommitNothing();
    void CommitNew();
    bool CommitChange();
    void RestoreLayer();
    void EndEdit();
    void DrawOverlay(QPainter& painter);

    QSettings* m_pSettings;
    std::unique_ptr<TextEdit> m_pEdit;
    // The layer was made for the open text.
    bool m_isNew = false;
    int m_layerBefore = 0;
    // What the open text was, and what its layer showed.
    TextDescription m_before;
    TextPicture m_pictureBefore;
    // The last size that the bar told.
    int m_size = 10;
    bool m_isLoadingBar = false;

    Press m_press = NoPress;
    QPointF m_from;
    QPointF m_to;
    // Of the press before.
    ulong m_time = 0;
    QPointF m_point;
};
