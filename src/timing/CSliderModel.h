#pragma once

#include <QString>
#include <optional>

// The value logic of the slider dialog (frmSlider): a value between Min and Max in
// steps of StepValue, chosen with a slider whose positions run from 0 to SliderMax.
class CSliderModel
{
public:
    bool Cancelled = false;

    // With no current value, the middle of min and max.
    void Init(double min, double max, double step, std::optional<double> current = std::nullopt);

    double CurValue() const { return m_curValue; }
    // Taken only from Min - 0.0000001 to Max + 0.0000001; moves the slider.
    void setCurValue(double value);
    double StepValue() const { return m_step; }
    // A step that is not above 0 is refused. Sets the slider's range.
    void setStepValue(double step);
    double Min() const { return m_min; }
    void setMin(double min) { m_min = min; }
    double Max() const { return m_max; }
    void setMax(double max) { m_max = max; }

    QString Title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }
    QString Description() const { return m_description; }
    void setDescription(const QString &text) { m_description = text; }

    int SliderMax() const { return m_sliderMax; }
    int SliderPosition() const { return m_position; }
    // The user moved the slider.
    void MoveSlider(int position);
    // The slider's tip: "移动值:" and the value as "0.00".
    QString TipText() const;

    void OK() { Cancelled = false; }
    void Cancel() { Cancelled = true; }

private:
    double m_min = 0;
    double m_max = 0;
    double m_step = 1;
    double m_curValue = 0;
    int m_sliderMax = 0;
    int m_position = 0;
    QString m_title;
    QString m_description;
};
