#pragma once

#include <QPointer>
#include <QSpinBox>

#include <optional>

#include "guicore_export.h"

class TextFit;

// The number box of bars and dialogs.
//
// Sums. "2*300/4", with the suffix or without, is worked out on Enter or when the focus leaves (see
// EvaluateSum), rounded and clamped; a step works it out too. A number outside the range may be typed, for a
// sum can begin with it, and is clamped in the same way. What can't be worked out leaves the value as it was
// before typing. A box that shows another number base or group separators knows no sums.
//
// Signals. valueChanged() goes out as from a QSpinBox: with keyboardTracking() at each keystroke that makes a
// whole number within the range, for a sum only when it is finished.
//
// Keyboard. Enter takes what was typed, Escape brings back the value from before typing, and both give the
// keyboard back to the canvas. That is the widget that had the focus before the box in the same window (for
// one number box after another: before the first), or else the central widget of the main window. A box in a
// floating dock widget gives it back to the main window. In a dialog or popup, where there is no canvas, the
// keys go on to the window, except an Escape that had something to bring back.
//
// Look. In a box too narrow for its text the arrows and the margins shrink, and at last the font, so that the
// value is always there in full. A special value text of blanks shows the minimum as an empty text, and an
// empty text is taken for the minimum then.
class GUICORE_EXPORT NVSpinBox : public QSpinBox
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)

public:
    explicit NVSpinBox(QWidget* parent = nullptr);
    ~NVSpinBox() override;

    // Empty where the special value text of blanks is shown.
    QString text() const;

protected:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    void fixup(QString& input) const override;
    QValidator::State validate(QString& input, int& position) const override;
    int valueFromText(const QString& text) const override;

private Q_SLOTS:
    void OnFocusChanged(QWidget* old, QWidget* now);
    void OnTextEdited(const QString& text);

private:
    bool IsTyped() const;
    bool IsEmptyAllowed() const;
    QString Stripped(const QString& text) const;
    QString ShownText() const;
    QWidget* ReturnWidget() const;
    bool GiveFocusBack();

    TextFit* m_pFit = nullptr;
    QPointer<QWidget> m_pFocusBefore;
    // The value from before typing.
    int m_settledValue = 0;
    std::optional<QString> m_typedText;
};
