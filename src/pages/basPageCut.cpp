#include "pages/basPageCut.h"

#include "core/basPlatform.h"
#include "core/basTime.h"

#include <algorithm>
#include <set>
#include <vector>

namespace basPageCut {

double LastPageTime()
{
    static const double last = StringToTime(u"9:59:59.99");
    return last;
}

QList<CPageCut> CutPages(const QList<std::pair<double, double>> &lines)
{
    struct Event
    {
        double time;
        bool starts; // a start at a cut comes after the ends at the same cut
        int line;
    };
    const double last = LastPageTime();
    std::vector<Event> events;
    events.reserve(size_t(lines.size()) * 2);
    for (int i = 0; i < lines.size(); ++i) {
        const auto [start, end] = lines[i];
        if (!(start < end) || !(start < last))
            continue;
        events.push_back({ start, true, i });
        events.push_back({ std::min(end, last), false, i });
    }
    std::sort(events.begin(), events.end(), [](const Event &a, const Event &b) {
        return a.time != b.time ? a.time < b.time : a.starts < b.starts;
    });

    QList<CPageCut> pages;
    std::set<int> onScreen; // script order
    for (size_t e = 0; e < events.size();) {
        const double cut = events[e].time;
        for (; e < events.size() && events[e].time == cut; ++e) {
            if (events[e].starts)
                onScreen.insert(events[e].line);
            else
                onScreen.erase(events[e].line);
        }
        if (onScreen.empty() || e == events.size())
            continue;
        CPageCut page;
        page.StartTime = cut;
        page.EndTime = events[e].time;
        page.Lines.reserve(qsizetype(onScreen.size()));
        for (int line : onScreen)
            page.Lines.append(line);
        pages.append(std::move(page));
    }
    return pages;
}

std::pair<int, int> VideoTypePixelSize(int videoType)
{
    return videoType == 1 ? std::pair { 724, 580 } : std::pair { 724, 484 };
}

QString PageBitmapName(const QString &name, qint64 serialNo)
{
    return name + QStringLiteral("/1.") + QString::number(serialNo) + QStringLiteral(".bmp");
}

std::pair<QString, QString> PageListFolder(const QString &name)
{
    const qsizetype cut = std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
    if (cut >= 0)
        return { name.left(cut), name };
    QString folder = ProgramFolder();
    if (folder.endsWith(u'/'))
        folder.chop(1);
    return { folder, folder + u'/' + name };
}

QString PageTimeString(double seconds)
{
    const QString t = TimeToString(seconds, 2);
    const qsizetype point = t.lastIndexOf(u'.');
    return u'0' + t.left(7) + u':' + (point < 0 ? QString() : t.mid(point + 1, 2));
}

double PageTimeFromString(QStringView text)
{
    QString s = text.toString();
    if (s.size() >= 3 && (s[s.size() - 3] == u':' || s[s.size() - 3] == u'.'))
        s[s.size() - 3] = u'.';
    else if (s.size() >= 2)
        s.insert(s.size() - 2, u'.');
    return LooseStringToTime(s);
}

QString PageListLine(int number, const QString &start, const QString &end, const QString &fileName)
{
    return QString::number(number) + QStringLiteral("\t\t") + start + u'\t' + end + u'\t' + fileName
        + QStringLiteral("\r\n");
}

} // namespace basPageCut
