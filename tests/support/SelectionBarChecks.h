// What the two selection bars do alike: their form and the states of their four buttons. A test of a bar runs
// these checks as the rows of one test function, so that each bar is held to all of them.

#pragma once

#include <QMap>
#include <QWidget>

#include <functional>

#include "BarForm.h"

// How a bar differs from its family.
struct SelectionBar
{
    std::function<QWidget*(QWidget* parent)> Create;
    std::function<int(const QWidget*)> GetState;
    std::function<int(const QWidget*)> GetClearState;
    std::function<void(QWidget*, int)> SetState;
    std::function<void(QWidget*, int)> SetModifiers;
    // Calls the function with each state that the bar tells.
    std::function<void(QWidget*, std::function<void(int)>)> Listen;
    const char* Form = nullptr;
    const char* Title = nullptr;
    const char* Picture = nullptr;
    const char* ClassName = nullptr;
    // Column to name, but for the picture and the four buttons with the separators around them.
    QMap<int, QString> Columns;
    QList<BarControl> Controls;
    QStringList TabOrder;
};

template <class Bar>
SelectionBar SelectionBarOf()
{
    SelectionBar facts;
    facts.Create = [](QWidget* parent) { return new Bar(parent); };
    facts.GetState = [](const QWidget* bar) { return static_cast<const Bar*>(bar)->GetState(); };
    facts.GetClearState = [](const QWidget* bar) { return static_cast<const Bar*>(bar)->GetClearState(); };
    facts.SetState = [](QWidget* bar, int state) { static_cast<Bar*>(bar)->SetState(state); };
    facts.SetModifiers = [](QWidget* bar, int flags)
    { static_cast<Bar*>(bar)->SetModifiers(QFlags<typename Bar::KeyModifier>(QFlag(flags))); };
    facts.Listen = [](QWidget* bar, std::function<void(int)> heard)
    { QObject::connect(static_cast<Bar*>(bar), &Bar::StateChanged, bar, std::move(heard)); };
    facts.ClassName = Bar::staticMetaObject.className();
    return facts;
}

// The bar's form; grid and row are checked by the checks below, in place of CheckFrame and CheckRow.
BarForm SelectionForm(const SelectionBar& bar);

// For a _data() function: one row a check; the row is the sentence.
void AddSelectionBarChecks();
// The check of the current row. It fails the test function as QVERIFY does.
void RunSelectionBarCheck(const SelectionBar& bar);
// For cleanup(): takes back what the checks change in the application.
void ResetAfterSelectionBarCheck();
