#pragma once

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <cstdio>
#include <vector>

// Media made with the ffmpeg command for the waveform tests: 440 Hz tone bursts of
// `BurstLength` seconds at known times, silence between.
namespace WaveformMedia {

constexpr double BurstLength = 0.3;

inline QString Ffmpeg()
{
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

// The filter source of `seconds` of stereo audio at `rate` with bursts starting at `bursts`.
inline QString BurstSource(const std::vector<double> &bursts, double seconds, int rate)
{
    QStringList on;
    for (double b : bursts)
        on << QStringLiteral("between(t,%1,%2)").arg(b).arg(b + BurstLength);
    const QString channel = QStringLiteral("if(%1,0.8*sin(2*PI*440*t),0)").arg(on.join(u'+'));
    return QStringLiteral("aevalsrc='%1|%1':s=%2:d=%3").arg(channel).arg(rate).arg(seconds);
}

// Runs ffmpeg with `inputs` (each "-f lavfi -i SOURCE") and `output` arguments; the output
// file's path, or empty when ffmpeg is missing or fails.
inline QString Make(const QStringList &sources, const QStringList &outputArgs, const QString &out)
{
    const QString ffmpeg = Ffmpeg();
    if (ffmpeg.isEmpty())
        return {};
    QStringList args { QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"), QStringLiteral("error"),
        QStringLiteral("-y") };
    for (const QString &s : sources)
        args << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i") << s;
    args << outputArgs << out;
    QProcess run;
    run.start(ffmpeg, args);
    if (!run.waitForFinished(180000) || run.exitStatus() != QProcess::NormalExit || run.exitCode() != 0) {
        std::fprintf(
            stderr, "ffmpeg %s\n%s\n", qPrintable(args.join(u' ')), run.readAllStandardError().constData());
        return {};
    }
    return out;
}

} // namespace WaveformMedia
