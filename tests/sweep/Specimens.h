// One specimen of each exported widget class, for what must hold for all of them.

#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

// A widget ready to be shown, with what it needs to live. The widget goes first, if it is still there.
struct Specimen
{
    Specimen() = default;
    Specimen(const Specimen&) = delete;
    Specimen& operator=(const Specimen&) = delete;
    ~Specimen() { delete Widget; }

    // Shows the widget and waits until it is there.
    bool Show() const;
    // Opens everything of it that can be open at once: popups of its buttons, lists of its combo boxes.
    void OpenPopups() const;

    std::vector<std::shared_ptr<void>> Context;
    QPointer<QWidget> Widget;
};

struct Species
{
    const char* Name = nullptr;
    std::function<void(Specimen&)> Make;
    // A bare control or frame: who uses it gives it the name by which a screen reader calls it.
    bool NamedByHost = false;
    // Pointer types of slot arguments that may be null.
    QList<QByteArray> NullAllowed;

    std::unique_ptr<Specimen> Create() const;
};

const std::vector<Species>& AllSpecies();
// The one of that name; it must be there.
const Species& SpeciesOf(const char* name);
// For a _data() function: the column "species" with one row a class.
void AddSpeciesRows();
