#include "player/CWaveformPeaks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

WaveformPeak CWaveformPeaks::Range(double from, double to) const
{
    const qsizetype count = Count();
    if (count == 0 || !(to > from))
        return {};
    const auto first = static_cast<qsizetype>(std::floor(from * BinsPerSecond));
    // A range ending exactly on a bin boundary does not touch the next bin.
    auto last = static_cast<qsizetype>(std::ceil(to * BinsPerSecond)) - 1;
    last = std::max(last, first);
    if (last < 0 || first >= count)
        return {};
    const qsizetype lo = std::max<qsizetype>(first, 0);
    const qsizetype hi = std::min(last, count - 1);
    WaveformPeak out = Bins[lo];
    for (qsizetype i = lo + 1; i <= hi; ++i) {
        out.Min = std::min(out.Min, Bins[i].Min);
        out.Max = std::max(out.Max, Bins[i].Max);
    }
    return out;
}

int CWaveformPeaks::Loudest() const
{
    int loudest = 1;
    for (const WaveformPeak &p : Bins)
        loudest = std::max({ loudest, std::abs(int(p.Min)), std::abs(int(p.Max)) });
    return loudest;
}
