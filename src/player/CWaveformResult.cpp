#include "player/CWaveformResult.h"

#include "core/CMessage.h"
#include "core/CMessages.h"
#include "core/basMain.h"
#include "core/basTime.h"

namespace {

// A text of "Message.txt" when it names the key, otherwise the built-in one: the
// waveform's texts are not part of the shipped catalogue.
QString text(const char *key, const QString &builtIn)
{
    if (Messages) {
        if (CMessage *m = Messages->item(QString::fromLatin1(key)))
            return m->Content();
    }
    return builtIn;
}

} // namespace

QString CWaveformResult::Message() const
{
    switch (Status) {
    case WaveformStatus::Ready:
    case WaveformStatus::Cancelled:
        return {};
    case WaveformStatus::Partial:
        return text("WAVE_MSG_100", QStringLiteral("音频数据不完整，波形只到 %1"))
            .arg(TimeToString(Peaks ? Peaks->Duration() : 0.0, 2));
    case WaveformStatus::NoAudio:
        return text("WAVE_MSG_200", QStringLiteral("此文件没有音轨"));
    case WaveformStatus::Unsupported:
        return text("WAVE_MSG_300", QStringLiteral("不支持此音频编码：%1")).arg(Detail);
    case WaveformStatus::Failed:
        break;
    }
    return text("WAVE_MSG_400", QStringLiteral("无法读取音频：%1")).arg(Detail);
}

QString CWaveformResult::ProgressMessage(double done)
{
    return text("WAVE_MSG_500", QStringLiteral("正在读取音频波形… %1%")).arg(int(done * 100));
}
