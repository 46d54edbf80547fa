#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>

class QTextDocument;

// The keys of karaoke recording, as key codes of the hot-key table (0: none). Space always
// records a syllable besides `Lyrics`.
struct KaraOKKeys
{
    int Start = 0; // HOTKEY_TimingStartTime
    int Lyrics = 0; // HOTKEY_TimingTime
    int End = 0; // HOTKEY_TimingEndTime
};

// Karaoke recording by strokes in a translation draft. While the mode is on the draft is
// not typed into: the caret's line is the line being recorded, and a pointer walks its
// syllables. The start key raises RecordStart and puts the pointer at the start of the
// caret's line; Space (or the lyrics key) raises NewLyrics with the syllable at the pointer
// and moves the pointer behind it; the end key raises RecordEnd and sends the caret to the
// start of the next line that holds text. The timing window turns these into the times of
// its active row.
class CKaraOKStrokes
{
public:
    // The draft the strokes read; not owned.
    void setDocument(QTextDocument *document);

    bool Mode() const { return m_mode; }
    // Switching the mode on puts the pointer at the start of the caret's line.
    void setMode(bool on);

    // What the window does with a key after the strokes have seen it.
    struct Stroke
    {
        bool Swallow = false; // the key is taken; the draft must not see it
        std::optional<int> Caret; // where the caret goes
    };
    // A key (code of the hot-key table; shift bits 1 Shift, 2 Ctrl, 4 Alt) with the caret
    // where it stands. Outside the mode, and for keys with a shift bit, nothing happens.
    Stroke KeyDown(int keyCode, int shift, int caret, const KaraOKKeys &keys);
    // The caret moved: a move to another line takes the pointer to that line's start.
    void CaretMoved(int caret);

    // Position of the next syllable in the draft.
    int Pointer() const { return m_pointer; }
    // The syllable at the pointer: its position and length (0 at the end of the line).
    std::pair<int, int> NextSyllable() const;

    // The length of the syllable of `line` that starts at `from`: one CJK character
    // (han, kana, hangul, with the marks that belong to it) or a run of letters and
    // digits, each with the blanks and punctuation that follow it. Blanks and
    // punctuation in front of a syllable go with it.
    static int SyllableLength(QStringView line, int from);

    std::function<void()> RecordStart;
    std::function<void(const QString &text)> NewLyrics;
    std::function<void()> RecordEnd;
    // The mode was switched: the window makes the draft read-only or editable again.
    std::function<void(bool on)> ModeChanged;

private:
    int lineStart(int position) const;
    std::optional<int> nextTextLine(int position) const;

    QTextDocument *m_document = nullptr;
    bool m_mode = false;
    int m_pointer = 0;
    int m_caret = 0;
};
