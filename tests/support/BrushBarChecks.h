// What every bar of a brush-driven tool does alike. A test of a bar runs these checks as the rows of one test
// function, so that each bar is held to all of them.

#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class NVBrushToolbarWidget;

// How a bar differs from its family.
struct BrushBar
{
    // A control of the bar, and the operation that reads it. Without a name, the bar has no such control.
    struct Control
    {
        const char* Name = nullptr;
        std::function<int(const NVBrushToolbarWidget*)> Get;
    };

    // With a list, the bar writes down there which of its value setters were called.
    std::function<NVBrushToolbarWidget*(QWidget* parent, QStringList* calls)> Create;
    Control Size;
    Control Spacing;
    Control Opacity;
    Control BlendMode;
    bool HasPatterns = false;
    // The dynamics that its settings popup does not offer, as numbers of KXBrushSettings::DynamicProperty.
    QList<int> NotOffered;
};

// A bar of class Bar that writes down the calls of its value setters.
template <class Bar>
class RecordingBar : public Bar
{
public:
    RecordingBar(QWidget* parent, QStringList* calls) : Bar(parent), m_calls(calls) { }
    void SetOpacityValue(int percent) override
    {
        *m_calls << QString("opacity %1").arg(percent);
        Bar::SetOpacityValue(percent);
    }
    void SetSizeValue(int pixels) override
    {
        *m_calls << QString("size %1").arg(pixels);
        Bar::SetSizeValue(pixels);
    }
    void SetSpacingValue(int percent) override
    {
        *m_calls << QString("spacing %1").arg(percent);
        Bar::SetSpacingValue(percent);
    }

private:
    QStringList* m_calls;
};

template <class Bar>
NVBrushToolbarWidget* CreateBrushBar(QWidget* parent, QStringList* calls)
{
    return calls ? new RecordingBar<Bar>(parent, calls) : new Bar(parent);
}

template <class Bar>
BrushBar::Control ControlOf(const char* name, int (Bar::*get)() const)
{
    return {name, [get](const NVBrushToolbarWidget* bar) { return (static_cast<const Bar*>(bar)->*get)(); }};
}

// For a _data() function: one row a check; the row is the sentence.
void AddBrushBarChecks();
// The check of the current row. It fails the test function as QVERIFY does.
void RunBrushBarCheck(const BrushBar& bar);
// For cleanup(): takes back what the checks change in the application.
void ResetAfterBrushBarCheck();
