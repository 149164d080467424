#pragma once

#include <array>

#include <QKeySequence>
#include <QList>
#include <QWidget>

#include "generaltoolsgui_export.h"

class KXBrushSettings;
class KXShortcut;
class PatternSelectWidget;

// What the option bars of the brush-driven tools have in common: the brush settings popup, wired to the bar
// in both directions, the pattern popup where a bar wants one, and the keys that choose a blend mode or an
// opacity. It shows nothing by itself. A bar overrides the value setters of the controls that it has; the
// others do nothing, so a key without a control is without effect. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVBrushToolbarWidget : public QWidget
{
    Q_OBJECT

public:
    // withPatterns: whether the bar gets a pattern popup.
    NVBrushToolbarWidget(QWidget* parent, bool withPatterns);
    // Deletes both popups and releases live keys.
    ~NVBrushToolbarWidget() override;

    // The settings popup; belongs to the bar, never null.
    KXBrushSettings* GetBrushes() const;
    // The pattern popup; belongs to the bar, null where the bar has none.
    PatternSelectWidget* GetPatterns() const;

    // Turns the keys on: fourteen that choose a blend mode, and the digits for the opacity (1 to 9 are 10 to
    // 90 %, 0 is 100 %). The host calls it when the tool becomes current; the bar never does. Calls are to be
    // paired with ReleaseShortcuts: a second call in a row makes each mode key act twice.
    void CreateShortcuts();
    // Turns the keys off. Does nothing when they are.
    void ReleaseShortcuts();
    // The next blend mode in the list, the first one behind the last.
    void NextBlendMode();
    // The one before, the last one before the first.
    void PreviousBlendMode();

    // What keys and slots come down to. A bar overrides those for which it has a control; here each does
    // nothing.
    virtual void SetOpacityValue(int percent);
    virtual void SetSizeValue(int pixels);
    virtual void SetSpacingValue(int percent);
    virtual void SetNextBlendMode();
    virtual void SetPreviousBlendMode();
    virtual void SetBlendModeValue(int index);

public Q_SLOTS:
    // Percent, clamped by the bar's control. Without such a control nothing happens; that holds for all four.
    void SetOpacity(int percent);
    // Percent of the size.
    void SetSpacing(int percent);
    // Pixels.
    void SetSize(int pixels);
    // Index into the list of blend modes.
    void SetBlendMode(int index);

Q_SIGNALS:
    // The value of the control changed, by hand, by key or by a setter. A bar without the control never emits
    // it.
    void OpacityChanged(int percent);
    void SpacingChanged(int percent);
    void SizeChanged(int pixels);

private Q_SLOTS:
    void OnShortcutActivated(const QKeySequence& key, int id);
    void OnOpacityShortcut();

private:
    KXBrushSettings* m_pBrushes = nullptr;
    PatternSelectWidget* m_pPatterns = nullptr;
    std::array<KXShortcut*, 14> m_ModeShortcuts{};
    QList<KXShortcut*> m_OpacityShortcuts;
};
