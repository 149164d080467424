#pragma once

#include <QList>

#include "KXPopupWindow.h"
#include "NVGradientStop.h"
#include "generaltoolsgui_export.h"

class QModelIndex;
class Ui_GradientPopup;

// The list of gradients that drops down from the button of the gradient bar. The list that it holds is the
// one that counts; the editor works on a copy and hands it back when it saves.
//
// A gradient is a list of at least two stops with ascending positions from 0.0 to 1.0, and is known by its
// row only.
class GENERALTOOLSGUI_EXPORT NVGradientPopup : public KXPopupWindow
{
    Q_OBJECT

public:
    explicit NVGradientPopup(QWidget* parent);
    ~NVGradientPopup() override;

    int GetGradientCount() const;
    // A copy. The caller passes an index that exists; for others an empty list comes back.
    QList<NVGradientStop> GetGradient(int index) const;
    // -1 if there is no current row.
    int GetCurrentIndex() const;

    // Replaces the list. Row 0 becomes current, whichever was before.
    void Load(const QList<QList<NVGradientStop>>& gradients);
    // Replaces one gradient and repaints its row, without a signal. Throws std::out_of_range, and changes
    // nothing, for an index that doesn't exist.
    void SetGradient(int index, const QList<NVGradientStop>& gradient);

public Q_SLOTS:
    // With a row that doesn't exist no row is current afterwards.
    void SetCurrentIndex(int row);

Q_SIGNALS:
    // The editor has closed; whoever hid the popup for it may show it again.
    void ShowPopup();
    // The editor has saved: the list is a new one.
    void Save();
    // The current row changed, or its gradient was saved by the editor. -1 without a current row.
    void CurrentIndexChanged(int row);
    // These two are never emitted.
    void GradientDeleted(int row);
    void GradientInserted(int row);

protected:
    // Escape hides the popup, and is passed on like all other keys.
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void OnCurrentChanged(const QModelIndex& current, const QModelIndex& previous);
    void OnEdit();
    void OnNew();
    void OnSave();

private:
    enum class Start
    {
        OnCurrentGradient,
        OnNewGradient
    };

    void RunEditor(Start start);

    Ui_GradientPopup* m_pUi;
    QList<QList<NVGradientStop>> m_gradients;
};
