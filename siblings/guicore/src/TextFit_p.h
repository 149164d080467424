#pragma once

#include <QObject>
#include <QRect>

#include <functional>

class QAbstractSpinBox;
class QLineEdit;
class QStylePainter;

// What fits the text of a number box. It belongs to the box, watches it, and draws it where the text has no
// room in the style's own drawing.
class TextFit : public QObject
{
    Q_OBJECT

public:
    // Gives the text of the value, with prefix and suffix, whatever is typed just now.
    using ShownText = std::function<QString()>;

    TextFit(QAbstractSpinBox* box, ShownText text);

public Q_SLOTS:
    void Fit();

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void FitTightly();
    void Draw() const;
    // Of one of the style's two arrows.
    void DrawArrow(QStylePainter& painter, int control) const;
    QRect ArrowStrip() const;

    QAbstractSpinBox* m_pBox;
    QLineEdit* m_pEdit;
    ShownText m_text;
    bool m_tight = false;
    QString m_fittedText;
};
