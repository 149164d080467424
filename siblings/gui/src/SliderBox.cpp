#include "SliderBox_p.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSlider>
#include <cmath>

#include "NVSpinBox.h"

namespace
{

const int SliderEnd = 1000;

} // namespace

SliderBox::SliderBox(const QString& caption, int minimum, int maximum, const QString& suffix, Course course,
                     QWidget* parent)
    : QWidget(parent),
      m_minimum(minimum),
      m_maximum(maximum),
      m_course(course),
      m_value(minimum),
      m_pSlider(new QSlider(Qt::Horizontal, this)),
      m_pBox(new NVSpinBox(this))
{
    m_pSlider->setRange(course == Growing ? 0 : minimum, course == Growing ? SliderEnd : maximum);
    m_pSlider->setPageStep((m_pSlider->maximum() - m_pSlider->minimum()) / 10);
    m_pSlider->setMinimumWidth(130);
    m_pSlider->setAccessibleName(caption);
    m_pBox->setRange(minimum, maximum);
    m_pBox->setSuffix(suffix);
    m_pBox->setAccessibleName(caption);
    m_pBox->setFixedWidth(m_pBox->fontMetrics().horizontalAdvance(QStringLiteral("00000 px")) + 36);

    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pSlider, 1);
    layout->addWidget(m_pBox);

    connect(m_pSlider, &QSlider::valueChanged, this, &SliderBox::OnSlid);
    connect(m_pSlider, &QSlider::actionTriggered, this, &SliderBox::OnSliderAction);
    connect(m_pBox, qOverload<int>(&QSpinBox::valueChanged), this, &SliderBox::OnTyped);
}

QWidget* SliderBox::Box() const
{
    return m_pBox;
}

int SliderBox::Value() const
{
    return m_value;
}

void SliderBox::SetValue(int value)
{
    m_value = qBound(m_minimum, value, m_maximum);
    const QSignalBlocker sliderBlocker(m_pSlider);
    const QSignalBlocker boxBlocker(m_pBox);
    // Several positions of a growing slider stand for one small value; the handle stays where the hand holds
    // it.
    if (valueAt(m_pSlider->value()) != m_value)
        m_pSlider->setValue(positionOf(m_value));
    if (m_pBox->value() != m_value)
        m_pBox->setValue(m_value);
}

void SliderBox::OnSlid(int position)
{
    const int value = valueAt(position);
    if (value == m_value)
        return;
    SetValue(value);
    Q_EMIT Edited(value);
}

// A key on a growing slider moves it on to another value, however small the step.
void SliderBox::OnSliderAction(int action)
{
    if (m_course != Growing)
        return;
    if (action == QAbstractSlider::SliderSingleStepAdd)
        m_pSlider->setSliderPosition(positionOf(qMin(m_maximum, m_value + qMax(1, m_value / 20))));
    else if (action == QAbstractSlider::SliderSingleStepSub)
        m_pSlider->setSliderPosition(positionOf(qMax(m_minimum, m_value - qMax(1, m_value / 20))));
}

void SliderBox::OnTyped(int value)
{
    if (value == m_value)
        return;
    SetValue(value);
    Q_EMIT Edited(value);
}

int SliderBox::valueAt(int position) const
{
    if (m_course == Even)
        return position;
    return qRound(m_minimum * std::pow(double(m_maximum) / m_minimum, double(position) / SliderEnd));
}

int SliderBox::positionOf(int value) const
{
    if (m_course == Even)
        return value;
    return qRound(SliderEnd * std::log(double(value) / m_minimum) / std::log(double(m_maximum) / m_minimum));
}
