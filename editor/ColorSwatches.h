#pragma once

#include <QWidget>

class QToolButton;

// The foreground and the background colour of the application, with their swap and default buttons. A click
// on a colour asks for another one.
class ColorSwatches : public QWidget
{
    Q_OBJECT

public:
    explicit ColorSwatches(QWidget* parent = nullptr);

public Q_SLOTS:
    // The foreground becomes the background and the other way round.
    static void Swap();
    // Black on white.
    static void ResetToDefaults();
    // Loads the pictures again.
    void UpdateTheme();

private Q_SLOTS:
    void OnForegroundClicked();
    void OnBackgroundClicked();
    void OnColorsChanged();

private:
    QToolButton* AddButton(const QString& name, const QRect& place);

    QToolButton* m_pBackground;
    QToolButton* m_pForeground;
    QToolButton* m_pSwap;
    QToolButton* m_pDefaults;
};
