#pragma once

#include <QIcon>
#include <QObject>
#include <QPalette>

// The look of the whole program: Fusion with a palette and one small application sheet for each theme of
// NVApplication (0 light, 1 dark, 2 high contrast). While one lives it follows NVApplication::ThemeChanged.
class Theme : public QObject
{
    Q_OBJECT

public:
    // Puts the current theme into force. The QApplication must exist.
    explicit Theme(QObject* parent = nullptr);

    // An unknown number gives the light theme.
    static QPalette Palette(int theme);
    // Class selectors only, so that a restyle stays cheap.
    static QString StyleSheet(int theme);
    // The picture of this name ("document-open") in the theme in force, for the current display. Icons are
    // values: who shows one asks again when Changed is emitted.
    static QIcon Icon(const QString& name);

Q_SIGNALS:
    // Palette, sheet and pictures are those of the new theme now.
    void Changed(int theme);

private Q_SLOTS:
    void OnThemeChanged(int theme);
};
