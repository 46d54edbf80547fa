#include "player/CAssRenderer.h"

#include "core/basMessage.h"
#include "player/basAssComposite.h"

#include <QStringView>
#include <algorithm>
#include <ass/ass.h>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace {

// The family libass falls back to when a style names a font the machine lacks: the
// Chinese face of the CJK fonts that the set-up installs.
constexpr const char *kFallbackFamily = "Noto Sans CJK SC";

const QByteArray kEventFormat
    = QByteArrayLiteral("Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text");

// The head as libass gets it: no comment lines (the generated ones carry the time of
// day, and libass skips them anyway), and the [Events] section ending at its format
// line, which is added when missing.
QByteArray NormalizedHead(const QString &head)
{
    QByteArray out;
    out.reserve(head.size() + kEventFormat.size() + 16);
    bool inEvents = false;
    for (QStringView line : QStringView(head).split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        const QStringView trimmed = line.trimmed();
        if (trimmed.startsWith(u';') || trimmed.startsWith(u"!:"))
            continue;
        if (inEvents) {
            if (trimmed.startsWith(u"Format:", Qt::CaseInsensitive)) {
                out += line.toUtf8();
                out += "\r\n";
                return out;
            }
            continue; // lines ahead of the format line, events of a whole script
        }
        out += line.toUtf8();
        out += "\r\n";
        if (trimmed.compare(u"[Events]", Qt::CaseInsensitive) == 0)
            inEvents = true;
    }
    if (!inEvents)
        out += "\r\n[Events]\r\n";
    out += kEventFormat;
    out += "\r\n";
    return out;
}

// The family of a font request as libass writes it: "(NAME, WEIGHT, SLANT)".
QString RequestedFamily(const QString &text, qsizetype open)
{
    const qsizetype close = text.indexOf(u')', open);
    if (close < 0)
        return {};
    const QString inside = text.mid(open + 1, close - open - 1);
    const qsizetype slant = inside.lastIndexOf(QStringLiteral(", "));
    const qsizetype weight = slant > 0 ? inside.lastIndexOf(QStringLiteral(", "), slant - 1) : -1;
    return weight > 0 ? inside.left(weight) : inside;
}

} // namespace

CAssRenderer::CAssRenderer()
{
    m_library = ass_library_init();
    if (!m_library)
        return;
    ass_set_message_cb(m_library, &CAssRenderer::OnMessage, this);
    m_renderer = ass_renderer_init(m_library);
    if (m_renderer)
        ass_set_fonts(m_renderer, nullptr, kFallbackFamily, ASS_FONTPROVIDER_AUTODETECT, nullptr, 1);
}

CAssRenderer::~CAssRenderer()
{
    FreeTracks();
    if (m_renderer)
        ass_renderer_done(m_renderer);
    if (m_library)
        ass_library_done(m_library);
}

// ---- libass's messages --------------------------------------------------------------

void CAssRenderer::OnMessage(int level, const char *format, va_list args, void *self)
{
    // Levels above 4 are debugging chatter, one line per line read: not worth formatting.
    if (level > 4 || !self)
        return;
    char text[1024];
    std::vsnprintf(text, sizeof text, format, args);
    static_cast<CAssRenderer *>(self)->Message(level, QString::fromUtf8(text));
}

void CAssRenderer::Message(int level, const QString &text)
{
    if (level <= 1) {
        m_lastError = text.trimmed();
        return;
    }
    if (level > 2)
        return;
    if (const qsizetype at = text.indexOf(QStringLiteral("Using default font family: (")); at >= 0) {
        const QString family = RequestedFamily(text, text.indexOf(u'(', at));
        if (!family.isEmpty()) {
            m_missingFonts.insert(family.toCaseFolded());
            if (!m_recentMissingFonts.contains(family, Qt::CaseInsensitive))
                m_recentMissingFonts << family;
        }
        return;
    }
    if (const qsizetype at = text.indexOf(QStringLiteral("no style named '")); at >= 0) {
        const qsizetype start = at + 16;
        m_readingMissingStyle = text.mid(start, text.indexOf(u'\'', start) - start);
        return;
    }
    if (const qsizetype at = text.indexOf(QStringLiteral("lyph 0x")); at >= 0) {
        bool ok = false;
        const qsizetype start = at + 7;
        qsizetype end = start;
        while (end < text.size() && text.at(end).isLetterOrNumber())
            ++end;
        const uint code = text.mid(start, end - start).toUInt(&ok, 16);
        if (ok && !m_missingGlyphs.contains(code))
            m_missingGlyphs << code;
    }
}

QString CAssRenderer::Status() const
{
    if (!m_library)
        return Msg(QStringLiteral("VELMAR_OVERLAY_200"));
    if (!m_renderer)
        return Msg(QStringLiteral("VELMAR_OVERLAY_210"));
    if (!m_head.isEmpty() && !m_headUsable)
        return Msg(QStringLiteral("VELMAR_OVERLAY_220"));

    int rejected = 0;
    QString firstRejected;
    QString missingStyle;
    for (const auto &[key, entry] : m_entries) {
        if (entry.Rejected && rejected++ == 0)
            firstRejected = QString::fromUtf8(entry.Line);
        if (missingStyle.isEmpty() && entry.Index >= 0)
            missingStyle = entry.MissingStyle;
    }
    if (rejected > 0) {
        if (firstRejected.size() > 40)
            firstRejected = firstRejected.left(40) + QStringLiteral("…");
        return Msg(QStringLiteral("VELMAR_OVERLAY_230")).arg(rejected).arg(firstRejected);
    }
    if (!missingStyle.isEmpty())
        return Msg(QStringLiteral("VELMAR_OVERLAY_240")).arg(missingStyle);

    QStringList fonts = m_recentMissingFonts;
    for (int i = m_builtInStyles; m_track && i < m_track->n_styles; ++i) {
        const QString family = QString::fromUtf8(m_track->styles[i].FontName);
        if (m_missingFonts.contains(family.toCaseFolded()) && !fonts.contains(family, Qt::CaseInsensitive))
            fonts << family;
    }
    if (!fonts.isEmpty())
        return Msg(QStringLiteral("VELMAR_OVERLAY_250"))
            .arg(fonts.join(QStringLiteral(", ")), QString::fromLatin1(kFallbackFamily));
    if (!m_missingGlyphs.isEmpty()) {
        QStringList codes;
        for (uint code : m_missingGlyphs)
            codes << QStringLiteral("U+%1").arg(code, 4, 16, QLatin1Char('0')).toUpper();
        return Msg(QStringLiteral("VELMAR_OVERLAY_260")).arg(codes.join(u' '));
    }
    if (!m_lastError.isEmpty())
        return Msg(QStringLiteral("VELMAR_OVERLAY_270")).arg(m_lastError);
    return {};
}

// ---- the track ----------------------------------------------------------------------

void CAssRenderer::FreeTracks()
{
    if (m_track)
        ass_free_track(m_track);
    if (m_reader)
        ass_free_track(m_reader);
    m_track = nullptr;
    m_reader = nullptr;
    m_keyOfEvent.clear();
    m_headUsable = false;
    for (auto &[key, entry] : m_entries)
        entry.Index = -1;
}

void CAssRenderer::NewTracks()
{
    if (!m_library)
        return;
    m_track = ass_new_track(m_library);
    m_reader = ass_new_track(m_library);
    if (!m_track || !m_reader) {
        FreeTracks();
        return;
    }
    // A new track holds libass's own "Default" style; a head is usable when libass read
    // at least one style of its own and the event format.
    m_builtInStyles = m_reader->n_styles;
    for (ass_track *track : { m_track, m_reader }) {
        QByteArray data = m_head; // libass wants a writable buffer
        ass_process_data(track, data.data(), int(data.size()));
    }
    m_headUsable = m_reader->n_styles > m_builtInStyles && m_reader->event_format
        && m_track->n_styles == m_reader->n_styles;
}

bool CAssRenderer::SetHeader(const QString &head)
{
    QByteArray normalized = NormalizedHead(head);
    if (m_track && normalized == m_head)
        return m_headUsable;
    m_head = std::move(normalized);
    FreeTracks();
    m_recentMissingFonts.clear();
    m_missingGlyphs.clear();
    m_lastError.clear();
    NewTracks();

    // The kept lines go back in script order.
    std::vector<std::pair<int, qint32>> order;
    order.reserve(m_entries.size());
    for (const auto &[key, entry] : m_entries)
        order.emplace_back(entry.Order, key);
    std::sort(order.begin(), order.end());
    for (const auto &[place, key] : order)
        AddEvent(key, m_entries[key]);
    return m_headUsable;
}

void CAssRenderer::AddEvent(qint32 key, Entry &entry)
{
    entry.Index = -1;
    entry.Rejected = false;
    entry.MissingStyle.clear();
    if (!m_headUsable)
        return;
    const int before = m_reader->n_events;
    m_readingMissingStyle.clear();
    QByteArray data = entry.Line;
    data += '\n';
    ass_process_data(m_reader, data.data(), int(data.size()));
    ++m_parsedLines;
    if (m_reader->n_events != before + 1) {
        while (m_reader->n_events > before) {
            ass_free_event(m_reader, m_reader->n_events - 1);
            --m_reader->n_events;
        }
        entry.Rejected = entry.Line.startsWith("Dialogue:");
        return;
    }
    // The event libass read moves into the drawn track, strings and all; the reading
    // track is left as it was.
    ASS_Event &read = m_reader->events[before];
    const int eid = ass_alloc_event(m_track);
    if (eid >= 0) {
        ASS_Event &event = m_track->events[eid];
        event = read;
        event.ReadOrder = entry.Order;
        event.render_priv = nullptr;
        read.Name = read.Effect = read.Text = nullptr;
        entry.Index = eid;
        entry.MissingStyle = m_readingMissingStyle;
        m_keyOfEvent.push_back(key);
    }
    ass_free_event(m_reader, before);
    m_reader->n_events = before;
}

void CAssRenderer::DropEvent(Entry &entry)
{
    const int index = entry.Index;
    entry.Index = -1;
    if (index < 0 || !m_track)
        return;
    // The last event takes the freed place: the events' order in the array means
    // nothing to libass, which stacks them by layer and read order.
    const int last = m_track->n_events - 1;
    ass_free_event(m_track, index);
    if (index != last) {
        m_track->events[index] = m_track->events[last];
        const qint32 movedKey = m_keyOfEvent[size_t(last)];
        m_keyOfEvent[size_t(index)] = movedKey;
        m_entries[movedKey].Index = index;
    }
    m_track->n_events = last;
    m_keyOfEvent.pop_back();
}

void CAssRenderer::SetEvent(qint32 key, const QString &line, int order)
{
    // One line is one event: a line break inside the text would make two.
    QString oneLine = line;
    oneLine.replace(u'\r', u' ').replace(u'\n', u' ');
    QByteArray bytes = oneLine.toUtf8();

    auto [it, made] = m_entries.try_emplace(key);
    Entry &entry = it->second;
    if (!made && entry.Line == bytes) {
        SetOrder(key, order);
        return;
    }
    DropEvent(entry);
    entry.Line = std::move(bytes);
    entry.Order = order;
    AddEvent(key, entry);
}

void CAssRenderer::SetOrder(qint32 key, int order)
{
    const auto it = m_entries.find(key);
    if (it == m_entries.end() || it->second.Order == order)
        return;
    it->second.Order = order;
    if (it->second.Index >= 0)
        m_track->events[it->second.Index].ReadOrder = order;
}

void CAssRenderer::RemoveEvent(qint32 key)
{
    const auto it = m_entries.find(key);
    if (it == m_entries.end())
        return;
    DropEvent(it->second);
    m_entries.erase(it);
}

void CAssRenderer::ClearEvents()
{
    if (m_track)
        ass_flush_events(m_track);
    m_keyOfEvent.clear();
    m_entries.clear();
}

int CAssRenderer::EventCount() const
{
    return m_track ? m_track->n_events : 0;
}

bool CAssRenderer::HasEvent(qint32 key) const
{
    const auto it = m_entries.find(key);
    return it != m_entries.end() && it->second.Index >= 0;
}

QString CAssRenderer::EventText(qint32 key) const
{
    const auto it = m_entries.find(key);
    if (it == m_entries.end() || it->second.Index < 0)
        return {};
    return QString::fromUtf8(m_track->events[it->second.Index].Text);
}

// ---- drawing ------------------------------------------------------------------------

bool CAssRenderer::Render(QImage &frame, double seconds)
{
    if (!m_renderer || !m_track || !m_headUsable || frame.isNull() || !std::isfinite(seconds))
        return false;
    if (frame.width() != m_frameWidth || frame.height() != m_frameHeight) {
        m_frameWidth = frame.width();
        m_frameHeight = frame.height();
        ass_set_frame_size(m_renderer, m_frameWidth, m_frameHeight);
        ass_set_storage_size(m_renderer, m_frameWidth, m_frameHeight);
    }
    const double ms = std::clamp(seconds * 1000.0, -9.0e15, 9.0e15);
    int changed = 0;
    const ASS_Image *images = ass_render_frame(m_renderer, m_track, std::llround(ms), &changed);
    if (!images)
        return false;
    basAssComposite::Composite(frame, images);
    return true;
}
