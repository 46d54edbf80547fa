#include "timing/CSliderModel.h"

#include "core/basConvert.h"
#include "core/basMessage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kTolerance = 0.0000001;

// A slider position from any number: within 0 and the top, rounded half to even.
int ToPosition(double value, int top)
{
    if (!std::isfinite(value) || value <= 0)
        return 0;
    if (value >= top)
        return top;
    return int(basConvert::Round(value));
}

} // namespace

void CSliderModel::Init(double min, double max, double step, std::optional<double> current)
{
    m_min = min;
    m_max = max;
    setStepValue(step);
    setCurValue(current.value_or((min + max) / 2));
}

void CSliderModel::setStepValue(double step)
{
    if (!(step > 0) || !std::isfinite(step))
        return;
    m_step = step;
    const double top = basConvert::Int((m_max - m_min) / m_step + 0.5);
    if (!std::isfinite(top) || top <= 0)
        m_sliderMax = 0;
    else
        m_sliderMax = int(std::min<double>(top, std::numeric_limits<int>::max()));
    m_position = std::min(m_position, m_sliderMax);
}

void CSliderModel::setCurValue(double value)
{
    if (!(value >= m_min - kTolerance && value <= m_max + kTolerance))
        return;
    m_curValue = value;
    m_position = ToPosition((value - m_min) / m_step, m_sliderMax);
}

void CSliderModel::MoveSlider(int position)
{
    m_position = std::clamp(position, 0, m_sliderMax);
    m_curValue = m_position * m_step + m_min;
}

QString CSliderModel::TipText() const
{
    return Msg(QStringLiteral("AJUST_LABEL_100")) + basConvert::Format(m_curValue, u"0.00");
}
