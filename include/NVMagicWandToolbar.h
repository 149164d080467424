#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class QAction;
class Ui_MagicWandToolbar;
template <class Bar>
class SelectionStates;

// The option bar of the magic wand: how a new selection joins the one that is there, tolerance, which layers
// are looked at and whether only what hangs together is selected. Each signal goes out once a change, whether
// by hand or by a slot. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVMagicWandToolbar : public QWidget
{
    Q_OBJECT

public:
    // Which keys they stand for is the host's choice. Both at once intersect.
    enum KeyModifier
    {
        UniteModifier = 1,
        SubtractModifier = 2
    };
    Q_DECLARE_FLAGS(KeyModifiers, KeyModifier)

    explicit NVMagicWandToolbar(QWidget* parent);
    ~NVMagicWandToolbar() override;

    // What counts now: 0 none, 1 replace (default), 2 unite, 3 subtract, 4 intersect. Modifiers count more
    // than the chosen state.
    int GetState() const;
    // The chosen state, whatever modifiers are held.
    int GetClearState() const;
    // 0 to 255, default 0.
    int GetTolerance() const;
    // Both are on at first.
    bool IsSampleAllLayers() const;
    bool IsContiguous() const;

    // The flags that are held now; flags other than these two leave the chosen state in force. The chosen
    // state stays and is lit again when the flags go.
    void SetModifiers(QFlags<KeyModifier> flags);

public Q_SLOTS:
    // 0 to 4, anything else is ignored. The state of a button that is lit already is not taken, since only a
    // button that changes chooses; so 0 leaves a button lit, and that one's state is not taken afterwards.
    void SetState(int state);
    // Clamped to its range.
    void SetTolerance(int tolerance);
    void SetSampleAllLayers(bool on);
    void SetContiguous(bool on);

Q_SIGNALS:
    // What GetState() gives has changed. SetState(0) tells it whether it changed or not.
    void StateChanged(int state);
    void ToleranceChanged(int tolerance);
    void AllLayersChanged(bool on);
    void ContiguousChanged(bool on);

private Q_SLOTS:
    void OnReplace(bool checked);
    void OnUnite(bool checked);
    void OnSubract(bool checked);
    void OnIntersect(bool checked);
    void OnRefineRegistered(QAction* pAction);

private:
    friend class SelectionStates<NVMagicWandToolbar>;

    void ConnectSignals();

    Ui_MagicWandToolbar* m_pUi = nullptr;
    int m_State = 0;
    QFlags<KeyModifier> m_Modifiers;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(NVMagicWandToolbar::KeyModifiers)
