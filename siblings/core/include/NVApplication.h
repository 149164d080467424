#pragma once

#include <QColor>
#include <QObject>

#include "core_export.h"

class QAction;

// The state that the whole application shares: theme, colours, texture pattern and the action that refines
// the selection. It is no QApplication, so that a program or a test brings its own. GUI thread only.
class CORE_EXPORT NVApplication : public QObject
{
    Q_OBJECT

public:
    // Made at the first call, lives until the program ends.
    static NVApplication* GetInstance();

    // Black by default.
    static QColor GetForeground();
    // White by default.
    static QColor GetBackground();
    // Index of the current texture pattern among the tiles of PatternSelectWidget, 0 by default.
    static int GetTexturePatternIndex();

    // A KXResource::Theme: 0 light (default), 1 dark, 2 high contrast (dark on white).
    int GetTheme() const;
    // The action behind the buttons "Refine selection"; null by default and when it was destroyed.
    QAction* GetRefineSelection() const;

    // The action stays the caller's; one that is destroyed is forgotten and null is told. Null takes it back.
    void RegisterRefineSelection(QAction* action);

public Q_SLOTS:
    // Switches the "theme:" pictures and then tells. An unknown number is taken as 0.
    void SetTheme(int theme);
    // An invalid colour is ignored. A colour is kept as RGB, whatever model it comes in.
    void SetForeground(const QColor& color);
    void SetBackground(const QColor& color);
    // A negative index is ignored.
    void SetTexturePatternIndex(int index);

Q_SIGNALS:
    // Each is emitted once a change, never when the value stays the same.
    void ThemeChanged(int theme);
    void ForegroundChanged(const QColor& color);
    void BackgroundChanged(const QColor& color);
    void TexturePatternIndexChanged(int index);
    // Null when there is no such action any more.
    void RefineSelectionRegistered(QAction* action);

private Q_SLOTS:
    void OnRefineSelectionDestroyed();

private:
    NVApplication();

    int m_theme = 0;
    QColor m_foreground = Qt::black;
    QColor m_background = Qt::white;
    int m_texturePatternIndex = 0;
    QAction* m_pRefineSelection = nullptr;
};
