#include "player/CWaveformResult.h"

#include "core/basMessage.h"
#include "core/basTime.h"

QString CWaveformResult::Message() const
{
    switch (Status) {
    case WaveformStatus::Ready:
    case WaveformStatus::Cancelled:
        return {};
    case WaveformStatus::Partial:
        return Msg(QStringLiteral("VELMAR_WAVE_100")).arg(TimeToString(Peaks ? Peaks->Duration() : 0.0, 2));
    case WaveformStatus::NoAudio:
        return Msg(QStringLiteral("VELMAR_WAVE_200"));
    case WaveformStatus::Unsupported:
        return Msg(QStringLiteral("VELMAR_WAVE_300")).arg(Detail);
    case WaveformStatus::Failed:
        break;
    }
    return Msg(QStringLiteral("VELMAR_WAVE_400")).arg(Detail);
}

QString CWaveformResult::ProgressMessage(double done)
{
    return Msg(QStringLiteral("VELMAR_WAVE_500")).arg(int(done * 100));
}
