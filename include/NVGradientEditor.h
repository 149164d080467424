#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>

#include "KXDialog.h"
#include "NVGradientStop.h"
#include "generaltoolsgui_export.h"

class ControlNode;
class QMouseEvent;
class QModelIndex;
class QSpinBox;

// The dialog in which gradients are edited: a list of gradients, and for the current one a strip with a
// handle per stop and the colour of the selected stop.
//
// Every edit goes to the working list and its row at once. "Apply" makes the working list the saved one and
// emits Save(); "Restore Defaults" goes back to the saved one; "Ok" applies what is not applied yet. The host
// reads GetGradients() when Save() comes.
//
// A gradient has at least two stops with ascending positions from 0.0 to 1.0, and is known by its row only.
// A stop has no handle, and there is no selected stop, while no row is current.
class GENERALTOOLSGUI_EXPORT NVGradientEditor : public KXDialog
{
    Q_OBJECT

public:
    explicit NVGradientEditor(QWidget* parent);
    ~NVGradientEditor() override;

    // The working list.
    const QList<QList<NVGradientStop>>& GetGradients() const;
    // A copy from the working list. The caller passes an index that exists; for others an empty list comes
    // back.
    QList<NVGradientStop> GetGradient(int index) const;
    int GetGradientCount() const;
    // -1 if there is no current row.
    int GetCurrentIndex() const;

    // Takes the list as saved and as working list; row 0 becomes current.
    void Load(const QList<QList<NVGradientStop>>& gradients);
    // Replaces a gradient in the working list and nothing else: row, strip and buttons stay as they are.
    // Throws std::out_of_range, and changes nothing, for an index that doesn't exist.
    void SetGradient(int index, const QList<NVGradientStop>& gradient);
    // Appends a gradient and makes it current. One of fewer than two stops is ignored.
    void AddGradient(const QList<NVGradientStop>& gradient);
    // Deletes the current gradient; the list may become empty.
    void DeleteGradient();

    // What the choice of a custom colour starts from, black at first, and the picture on its button.
    void UpdateCustomColor(const QColor& color);
    // Size of the strip in pixels; the handles keep their place on it. What moves the selected handle counts
    // as an edit.
    void UpdateSceneSize(const QSize& size);

    // Adds a white stop at that point of the strip and selects it; only x counts, and is kept on the strip.
    // Does nothing without a current row.
    void AddStop(const QPointF& point);
    // Adds a handle alone, at that place in the order of handles or, with -1, at the end. It belongs to the
    // scene.
    ControlNode* InsertStop(const QPointF& position, int index);
    // Takes up the current gradient: its stops, a handle for each, the first one selected. Does nothing
    // without a current row.
    void InitializeEditor();
    // Drops stops and handles.
    void ReleaseEditor();

    // The colour controls, silently, from the selected stop.
    void UpdateColorControls();
    // Number and picture of the colour that the controls make.
    void UpdateIndicator();
    // The selected stop from the colour controls.
    void UpdateStopColor();
    // The strip from the stops.
    void UpdateEditorBackground();
    // The places of the handles from the stops, and the strip.
    void UpdateEditorItem();
    // The current gradient in the working list and its row from the stops.
    void UpdateModel();

public Q_SLOTS:
    // The row is also the one to which "Restore Defaults" goes back. With a row that doesn't exist no row is
    // current afterwards.
    void SetCurrentIndex(int row);
    // Shows the dialog at that global position, not modal.
    void Popup(QPoint position);
    // Adds a gradient from dark blue to cyan and makes it current.
    void NewGradient();

Q_SIGNALS:
    // The working list is the saved one now.
    void Save();
    // -1 without a current row. When a gradient is deleted it comes twice: with the row that follows, still
    // in the old numbering, and with the one that is current in the end.
    void CurrentIndexChanged(int row);
    // These five are never emitted.
    void CurrentGradientChanged();
    void GradientDeleted(int row);
    void GradientInserted(int row);
    void PickerEnabled(bool enabled);
    void EditorDoubleClicked(QPointF position);

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnCurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void OnStopSelected(ControlNode* pNode, bool value);
    void OnStopPosition(ControlNode* pNode, QPointF pos);
    void OnDeleteStop();
    void OnDeleteAllStops();
    void OnRed(int value);
    void OnGreen(int value);
    void OnBlue(int value);
    void OnOpacity(int value);
    void OnBackground();
    void OnForeground();
    void OnCustomColor();
    void OnCustomColorChanged(const QColor& color);
    void OnAccept();
    void OnApply();
    void OnRestore();
    void OnCopy();
    void OnDelete();

private:
    struct Data;

    void InitList();
    void InitScene();
    void ConnectButtons();
    void ConnectColors();
    void ConnectButtonBox();

    QRectF Strip() const;
    QPointF NodePlace(double position) const;
    bool HasSelectedStop() const;
    void SelectNode(int index);
    void RemoveNodes();
    void EnableRemoval();
    void SetUnsaved(bool unsaved);
    void SetStopColor(const QColor& color);
    void SetQuietly(QSpinBox* box, void (NVGradientEditor::*slot)(int), int value);
    QColor ControlsColor() const;
    void ResizeStrip(const QSize& size);
    bool FilterPress(const QMouseEvent* event) const;
    bool FilterDoubleClick(const QMouseEvent* event);

    Data* m_pData;
};
