#pragma once

#include <QWidget>

class NVSpinBox;
class QSlider;

// A slider and a number box for one whole number.
class SliderBox : public QWidget
{
    Q_OBJECT

public:
    enum Course
    {
        Even,
        // Each step of the slider multiplies the value, so that small ones have room in a wide range. The
        // minimum must be at least 1.
        Growing
    };

    // The caption names slider and box to a screen reader.
    SliderBox(const QString& caption, int minimum, int maximum, const QString& suffix, Course course,
              QWidget* parent);

    QWidget* Box() const;
    int Value() const;
    // Clamped; without a signal.
    void SetValue(int value);

Q_SIGNALS:
    // A person changed the value.
    void Edited(int value);

private Q_SLOTS:
    void OnSlid(int position);
    void OnSliderAction(int action);
    void OnTyped(int value);

private:
    int valueAt(int position) const;
    int positionOf(int value) const;

    int m_minimum;
    int m_maximum;
    Course m_course;
    int m_value;
    QSlider* m_pSlider;
    NVSpinBox* m_pBox;
};
