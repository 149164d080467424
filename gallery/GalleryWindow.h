#pragma once

#include <QMainWindow>

#include <memory>

#include "Theme.h"

class GalleryLog;
class GalleryStage;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;
class SignalWatch;
struct Exhibit;
struct GalleryRow;

// The window of the gallery: the list of all widgets, the chosen one, live, and the log of its signals.
class GalleryWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The first widget is chosen. The theme is that of NVApplication.
    explicit GalleryWindow(QWidget* parent = nullptr);
    ~GalleryWindow() override;

    // The name of the chosen widget.
    QString GetChosen() const;
    // The chosen widget itself; null if somebody deleted it.
    QWidget* GetWidget() const;

public Q_SLOTS:
    // A name that is not in the list is ignored.
    void Choose(const QString& name);
    // Puts a new widget in the place of the chosen one, with the values of the beginning. The log goes on.
    void Renew();

private Q_SLOTS:
    void OnCurrentItemChanged(QTreeWidgetItem* item);
    void OnFilterChanged(const QString& text);
    void OnOpen();
    void OnThemeChanged(int theme);

private:
    QWidget* CreateList();
    QWidget* CreateRight();
    QWidget* CreateHeading();
    void FillList();
    void Drop();

    Theme m_theme;
    QLineEdit* m_pFilter;
    QTreeWidget* m_pList;
    QLabel* m_pTitle;
    QComboBox* m_pThemes;
    GalleryStage* m_pStage;
    GalleryLog* m_pLog;
    // Null until the first widget is chosen.
    const GalleryRow* m_pRow = nullptr;
    std::unique_ptr<Exhibit> m_pExhibit;
    std::unique_ptr<SignalWatch> m_pWatch;
};
