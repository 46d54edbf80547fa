#pragma once

#include <QByteArray>
#include <QImage>
#include <QSet>
#include <QString>
#include <QStringList>
#include <cstdarg>
#include <unordered_map>
#include <vector>

struct ass_library;
struct ass_renderer;
struct ass_track;

// Draws an ASS script over video frames with the libass renderer: the images of the
// lines shown at a time, blended over a frame at the video's size, with the script's
// PlayResX and PlayResY scaled to it. Fonts come from fontconfig.
//
// The script is given in two parts so that an editor can keep it in step line by line:
// the head ([Script Info] and the styles) as text, and the events one by one, each under
// a key of the caller's (a grid row's serial number) as its "Dialogue:" line. A changed
// line replaces one event of the track; only a new head rebuilds the track, and then the
// kept lines are put back without the caller's help.
//
// Nothing here throws or crashes on a bad script: a head or a line that libass does not
// take, a missing font or glyph show in Status() as one line of text.
class CAssRenderer
{
public:
    CAssRenderer();
    ~CAssRenderer();
    CAssRenderer(const CAssRenderer &) = delete;
    CAssRenderer &operator=(const CAssRenderer &) = delete;

    // libass started and has a font provider.
    bool IsAvailable() const { return m_renderer != nullptr; }
    // One line on what keeps the script from showing as written, "" when nothing does.
    QString Status() const;

    // The head of an ASS script. Comment lines are dropped; an [Events] section with its
    // format line is added when the head has none. Makes a new track and puts every kept
    // line back into it. False when libass takes no style from it: the overlay then
    // shows nothing until a usable head comes.
    bool SetHeader(const QString &head);
    const QByteArray &Header() const { return m_head; }

    // The line of `key`: a "Dialogue:" line of the head's event format. Any other kind of
    // line (a "Comment:", an empty text) leaves the key without an event. `order` is the
    // line's place in the script: among lines of one layer, earlier lines are placed
    // first when they collide. The same line again only moves its place.
    void SetEvent(qint32 key, const QString &line, int order);
    void SetOrder(qint32 key, int order);
    void RemoveEvent(qint32 key);
    void ClearEvents();

    // The events of the track, and the text of the event of a key ("" for none).
    int EventCount() const;
    bool HasEvent(qint32 key) const;
    QString EventText(qint32 key) const;
    // Lines read by libass since the renderer was made (a head's rebuild included).
    qint64 ParsedLines() const { return m_parsedLines; }

    // Blends the images of the time over the frame; the frame's size is the video's.
    // False when nothing was drawn.
    bool Render(QImage &frame, double seconds);

private:
    struct Entry
    {
        QByteArray Line;
        int Order = 0;
        int Index = -1; // the event in the track, -1 for none
        bool Rejected = false; // a "Dialogue:" line that libass did not take
        QString MissingStyle;
    };

    static void OnMessage(int level, const char *format, va_list args, void *self);
    void Message(int level, const QString &text);
    void NewTracks();
    void FreeTracks();
    void AddEvent(qint32 key, Entry &entry);
    void DropEvent(Entry &entry);

    ass_library *m_library = nullptr;
    ass_renderer *m_renderer = nullptr;
    // The track that is drawn, and a second one of the same head through which libass
    // reads each line; the read event then moves into the drawn track.
    ass_track *m_track = nullptr;
    ass_track *m_reader = nullptr;
    QByteArray m_head;
    bool m_headUsable = false;
    int m_builtInStyles = 0;
    std::unordered_map<qint32, Entry> m_entries;
    std::vector<qint32> m_keyOfEvent; // the key of each event of the drawn track
    int m_frameWidth = 0;
    int m_frameHeight = 0;
    qint64 m_parsedLines = 0;

    // What libass reported: fonts it replaced (kept, since its font cache never asks
    // again), those of them seen since the head changed, glyphs no font has, the style a
    // line being read asked for in vain, and its last error.
    QSet<QString> m_missingFonts;
    QStringList m_recentMissingFonts;
    QList<uint> m_missingGlyphs;
    QString m_readingMissingStyle;
    QString m_lastError;
};
