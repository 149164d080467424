#pragma once

#include <QObject>

class GradientTool;
class QMenu;
class QSettings;
class QWidget;

// Fills the menu that brings gradients in from files and writes them to files.
class GradientMenu : public QObject
{
    Q_OBJECT

public:
    // None is owned, all outlive this; dialogs come up over the window. The settings hold the folder of the
    // last file.
    GradientMenu(QMenu* menu, GradientTool* tool, QSettings* settings, QWidget* window);

    // Puts the gradients of the files at the end of the list. A message names each file that cannot be read,
    // and why.
    void Import(const QStringList& paths);
    // The current gradient into a GGR file, all of them into an SVG file. A message tells when that fails.
    bool Export(const QString& path);

Q_SIGNALS:
    // What was done, for the status bar.
    void Message(const QString& text);

private Q_SLOTS:
    void OnImport();
    void OnExport();

private:
    QString Folder() const;
    void ShowError(const QString& text);

    GradientTool* m_pTool;
    QSettings* m_pSettings;
    QWidget* m_pWindow;
};
