#include "translation/CKaraOKStrokes.h"

#include <QTextBlock>
#include <QTextDocument>

namespace {

constexpr int kSpace = 32;

// One code point of a line and its width in UTF-16 units.
struct CodePoint
{
    char32_t Value;
    int Width;
};

CodePoint At(QStringView line, int i)
{
    const QChar c = line[i];
    if (c.isHighSurrogate() && i + 1 < line.size() && line[i + 1].isLowSurrogate())
        return { QChar::surrogateToUcs4(c, line[i + 1]), 2 };
    return { c.unicode(), 1 };
}

bool IsCjk(char32_t c)
{
    switch (QChar::script(c)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
    case QChar::Script_Bopomofo:
        return true;
    default:
        return false;
    }
}

// Marks that belong to the character before them: combining marks, the kana length mark
// and the voicing marks.
bool IsAttached(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
        return true;
    default:
        return c == 0x30FC || c == 0xFF70 || c == 0x309B || c == 0x309C;
    }
}

bool IsWordCharacter(char32_t c)
{
    return !IsCjk(c) && (QChar::isLetterOrNumber(c) || IsAttached(c));
}

// Blanks, punctuation and anything else that is no syllable of its own.
bool IsTrailing(char32_t c)
{
    return !IsCjk(c) && !IsWordCharacter(c);
}

} // namespace

void CKaraOKStrokes::setDocument(QTextDocument *document)
{
    m_document = document;
    m_pointer = 0;
    m_caret = 0;
}

void CKaraOKStrokes::setMode(bool on)
{
    m_mode = on;
    if (on)
        m_pointer = lineStart(m_caret);
    if (ModeChanged)
        ModeChanged(on);
}

int CKaraOKStrokes::SyllableLength(QStringView line, int from)
{
    const int n = int(line.size());
    if (from < 0 || from >= n)
        return 0;
    int i = from;
    while (i < n && IsTrailing(At(line, i).Value))
        i += At(line, i).Width;
    if (i < n) {
        const CodePoint first = At(line, i);
        i += first.Width;
        if (IsCjk(first.Value)) {
            while (i < n && IsAttached(At(line, i).Value))
                i += At(line, i).Width;
        } else {
            while (i < n && IsWordCharacter(At(line, i).Value))
                i += At(line, i).Width;
        }
    }
    while (i < n && IsTrailing(At(line, i).Value))
        i += At(line, i).Width;
    return i - from;
}

int CKaraOKStrokes::lineStart(int position) const
{
    if (!m_document)
        return 0;
    const QTextBlock block = m_document->findBlock(qMax(0, position));
    return block.isValid() ? block.position() : 0;
}

std::optional<int> CKaraOKStrokes::nextTextLine(int position) const
{
    if (!m_document)
        return std::nullopt;
    for (QTextBlock block = m_document->findBlock(qMax(0, position)).next(); block.isValid();
         block = block.next())
        if (!block.text().trimmed().isEmpty())
            return block.position();
    return std::nullopt;
}

std::pair<int, int> CKaraOKStrokes::NextSyllable() const
{
    if (!m_document)
        return { m_pointer, 0 };
    const QTextBlock block = m_document->findBlock(m_pointer);
    if (!block.isValid())
        return { m_pointer, 0 };
    const QString text = block.text();
    const int from = m_pointer - block.position();
    return { m_pointer, SyllableLength(text, from) };
}

CKaraOKStrokes::Stroke CKaraOKStrokes::KeyDown(int keyCode, int shift, int caret, const KaraOKKeys &keys)
{
    Stroke stroke;
    if (!m_mode || shift != 0 || keyCode <= 0 || !m_document)
        return stroke;
    m_caret = caret;
    if (keyCode == keys.Start) {
        m_pointer = lineStart(caret);
        stroke.Swallow = true;
        if (RecordStart)
            RecordStart();
        return stroke;
    }
    if (keyCode == keys.End) {
        stroke.Swallow = true;
        if (RecordEnd)
            RecordEnd();
        stroke.Caret = nextTextLine(caret);
        if (stroke.Caret) {
            m_caret = *stroke.Caret;
            m_pointer = *stroke.Caret;
        }
        return stroke;
    }
    if (keyCode == kSpace || keyCode == keys.Lyrics) {
        stroke.Swallow = true;
        const auto [at, length] = NextSyllable();
        if (length == 0)
            return stroke;
        const QTextBlock block = m_document->findBlock(at);
        QString text = block.text().mid(at - block.position(), length);
        // A line break inside a paragraph is no part of a lyric.
        text.remove(QChar::LineSeparator);
        m_pointer = at + length;
        if (NewLyrics)
            NewLyrics(text);
    }
    return stroke;
}

void CKaraOKStrokes::CaretMoved(int caret)
{
    const bool otherLine = lineStart(caret) != lineStart(m_caret) || lineStart(caret) != lineStart(m_pointer);
    m_caret = caret;
    if (otherLine)
        m_pointer = lineStart(caret);
}
