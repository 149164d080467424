#pragma once

#include <QPoint>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

// A widget of the library as a host has it: made, filled, and connected where it needs an answer.
struct Exhibit
{
    // Another object whose signals a host connects too, and how it is reached.
    struct Part
    {
        QString name;
        QObject* object;
    };

    explicit Exhibit(QWidget* shown = nullptr);
    Exhibit(const Exhibit&) = delete;
    Exhibit& operator=(const Exhibit&) = delete;
    // The widget goes first, then its companion, then the context from its first entry on.
    ~Exhibit();

    // A window of its own is opened by `open`; anything else stands in a window of the host. Null when
    // somebody deleted it.
    QPointer<QWidget> widget;
    // What a host shows beside it, such as the canvas of a panel. May be null.
    QPointer<QWidget> companion;
    // A panel that is as high as its content, as bars are.
    bool isRow = false;
    QVector<Part> parts;
    // Shows the window, at that global position if it is no dialog. A dialog runs until it is closed; what is
    // returned then says how it ended. Empty for what stands in a window of the host.
    std::function<QString(const QPoint& position)> open;
    std::vector<std::shared_ptr<void>> context;
};

enum class GalleryGroup
{
    Bars,
    Panels,
    Dialogs
};

struct GalleryRow
{
    // That of the class.
    const char* name;
    GalleryGroup group;
    // A widget with a parent that the caller gives.
    std::unique_ptr<Exhibit> (*make)(QWidget* parent);
};

// All exported widgets of the library, by group and name.
const std::vector<GalleryRow>& GalleryRows();
// Null if there is no such widget.
const GalleryRow* FindGalleryRow(const QString& name);
QString GalleryGroupTitle(GalleryGroup group);

// What GalleryRows() is put together of. A further widget is a row in one of them.
const std::vector<GalleryRow>& GalleryBars();
const std::vector<GalleryRow>& GalleryPanels();
const std::vector<GalleryRow>& GalleryDialogs();
