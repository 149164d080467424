#pragma once

#include <array>

#include <QKeySequence>
#include <QList>
#include <QWidget>

#include "generaltoolsgui_export.h"

class KXShortcut;
class PatternSelectWidget;
class Ui_FillCanToolbar;

// The option bar of the fill can: tolerance, opacity, pattern, fill mode, blend mode and four switches. Every
// option has a signal and a slot. Each signal goes out once a change, whether by hand, by key or by a slot,
// and not when the value stays the same; Enter in a number box alone tells its value once more. The pattern
// has no signal; it is asked for, at GetPatterns(). GUI thread only.
class GENERALTOOLSGUI_EXPORT NVFillCanToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVFillCanToolbar(QWidget* parent);
    // Deletes the pattern popup and releases live keys.
    ~NVFillCanToolbar() override;

    // 0 "Normal" to 12 "Addition", in the order of the list; -1 when nothing is selected.
    int GetBlendMode() const;
    // 0 "Color", 1 "Pattern"; -1 when nothing is selected.
    int GetFillMode() const;
    // 0 to 255, default 32.
    int GetTolerance() const;
    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // The four are off at first.
    bool IsAntialiasing() const;
    bool IsAllLayers() const;
    bool IsContiguous() const;
    bool IsIgnoreTransparency() const;
    // The pattern popup; belongs to the bar, never null.
    PatternSelectWidget* GetPatterns() const;

    // Turns the keys on: fourteen that choose a blend mode, and the digits for the opacity (1 to 9 are 10 to
    // 90 %, 0 is 100 %). The host calls it when the tool becomes current; the bar never does. Calls are to be
    // paired with ReleaseShortcuts: a second call in a row makes each mode key act twice.
    void CreateShortcuts();
    // Turns the keys off. Does nothing when they are.
    void ReleaseShortcuts();
    // Both wrap round, and do nothing while the list of blend modes is disabled.
    void NextBlendMode();
    void PreviousBlendMode();

public Q_SLOTS:
    // An index that is not in the list leaves it without a selection; that holds for the fill mode too. Both
    // act on a disabled list.
    void SetBlendMode(int index);
    void SetFillMode(int index);
    // Clamped to its range; so is the opacity.
    void SetTolerance(int tolerance);
    void SetOpacity(int percent);
    void SetAntialiasing(bool on);
    void SetAllLayers(bool on);
    void SetContiguous(bool on);
    void SetIgnoreTransparency(bool on);

Q_SIGNALS:
    void AllLayersChanged(bool on);
    void AntialiasingChanged(bool on);
    void ContiguousChanged(bool on);
    // -1 when the selection is gone; that holds for the fill mode too.
    void BlendModeChanged(int index);
    void FillModeChanged(int index);
    void IgnoreTransparencyChanged(bool on);
    void OpacityChanged(int percent);
    void ToleranceChanged(int tolerance);

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnShortcutActivated(const QKeySequence& key, int id);
    void OnOpacityShortcut();
    void OnShowPatterns(bool checked);
    void OnPatternChanged(int index);

private:
    void ConnectSignals();

    Ui_FillCanToolbar* m_pUi = nullptr;
    PatternSelectWidget* m_pPatterns = nullptr;
    std::array<KXShortcut*, 14> m_ModeShortcuts{};
    QList<KXShortcut*> m_OpacityShortcuts;
};
