#include "player/CPreviewLine.h"

#include "core/IPictureBox.h"
#include "core/basConvert.h"
#include "player/CPreview.h"
#include "script/CFont.h"

#include <cmath>
#include <limits>

namespace {

const QString crlf = QStringLiteral("\r\n");

qint32 RoundToLong(double value)
{
    if (!std::isfinite(value))
        return 0;
    const double r = basConvert::Round(value);
    if (r > std::numeric_limits<qint32>::max())
        return std::numeric_limits<qint32>::max();
    if (r < std::numeric_limits<qint32>::min())
        return std::numeric_limits<qint32>::min();
    return qint32(r);
}

} // namespace

CPreviewLine::CPreviewLine() = default;
CPreviewLine::~CPreviewLine() = default;

void CPreviewLine::Init(qint32 SerialNo)
{
    setSerialNo(SerialNo);
}

void CPreviewLine::setFont(const CFont *font)
{
    if (!font) {
        Font.reset();
        return;
    }
    PreviewFont f;
    f.FontName = font->FontName();
    f.FontSize = font->FontSize();
    f.Bold = font->Bold() != 0;
    f.Italic = font->Italic() != 0;
    f.UnderLine = font->UnderLine() != 0;
    f.StrikeOut = font->StrikeOut() != 0;
    f.PrimaryColour = font->PrimaryColourValue();
    Font = f;
}

void CPreviewLine::setStartTime(double seconds)
{
    m_startTime = seconds;
    if (m_parent)
        m_parent->SyncSlot(*this);
}

void CPreviewLine::setEndTime(double seconds)
{
    m_endTime = seconds;
    if (m_parent)
        m_parent->SyncSlot(*this);
}

void CPreviewLine::setShown(bool shown)
{
    m_shown = shown;
    if (m_parent)
        m_parent->SyncSlot(*this);
}

void CPreviewLine::setDialog(const QString &text)
{
    m_dialog = CleanDialog(text);
}

QString CPreviewLine::CleanDialog(const QString &text)
{
    const bool braces = text.contains(u'{');
    qsizetype slash = text.indexOf(u'\\');
    if (slash < 0 && !braces)
        return text;
    // "\N" and "\n" become line breaks and "\h" a blank, in one pass: a replacement
    // brings in no backslash, so one pass gives what three replacements in turn give.
    QString t;
    t.reserve(text.size() + 8);
    const qsizetype n = text.size();
    qsizetype copied = 0;
    while (slash >= 0 && slash + 1 < n) {
        const QChar next = text.at(slash + 1);
        const bool lineBreak = next == u'N' || next == u'n';
        if (lineBreak || next == u'h') {
            t.append(QStringView(text).sliced(copied, slash - copied));
            if (lineBreak)
                t.append(crlf);
            else
                t.append(u' ');
            copied = slash + 2;
            slash = text.indexOf(u'\\', copied);
        } else {
            slash = text.indexOf(u'\\', slash + 1);
        }
    }
    t.append(QStringView(text).sliced(copied));
    if (!braces)
        return t;
    // Override blocks go; an unclosed one takes the rest of the text with it. A "{"
    // without a backslash behind it is text.
    bool removed = false;
    for (;;) {
        const qsizetype open = t.indexOf(QStringLiteral("{\\"));
        if (open < 0)
            break;
        removed = true;
        const qsizetype close = t.indexOf(u'}', open + 2);
        if (close < 0)
            t.truncate(open);
        else
            t.remove(open, close - open + 1);
    }
    if (removed) {
        // Removing a block can join a backslash to a letter behind it.
        t.replace(QStringLiteral("\\n"), QStringLiteral(" "));
        t.replace(QStringLiteral("\\N"), QStringLiteral(" "));
        t.replace(QStringLiteral("\\h"), QStringLiteral(" "));
    }
    return t;
}

QStringList CPreviewLine::Parts() const
{
    return m_dialog.split(crlf);
}

double CPreviewLine::CentredX(IPictureBox &picture, const QString &part)
{
    return double(basConvert::IntDiv(picture.ScaleWidth(), 2))
        - basConvert::IntDiv(picture.TextWidth(part), 2);
}

void CPreviewLine::Display(IPictureBox &picture)
{
    try {
        const QStringList parts = Parts();
        if (!Font) {
            picture.setFontName(QStringLiteral("Arial"));
            picture.setForeColor(0xFFFFFF);
        } else {
            picture.setFontName(Font->FontName);
            picture.setFontSize(Font->FontSize);
            picture.setFontBold(Font->Bold);
            picture.setFontItalic(Font->Italic);
            picture.setFontUnderline(Font->UnderLine);
            picture.setFontStrikethru(Font->StrikeOut);
            picture.setForeColor(Font->PrimaryColour);
        }
        if (m_shown) {
            picture.setCurrentY(StartY);
        } else {
            // The block stands on the bottom edge with a margin.
            const double height = picture.TextHeight(m_dialog);
            const double y
                = m_parent ? m_parent->Height() - (height + 30) : picture.ScaleHeight() - (height + 90);
            picture.setCurrentY(y);
            StartY = RoundToLong(y);
        }
        for (const QString &part : parts) {
            picture.setCurrentX(CentredX(picture, part));
            picture.Print(part);
        }
        setShown(true);
    } catch (...) { }
}

void CPreviewLine::ClearPreview(IPictureBox &picture)
{
    try {
        const QStringList parts = Parts();
        picture.setCurrentY(StartY);
        for (const QString &part : parts) {
            picture.setCurrentX(CentredX(picture, part));
            picture.setForeColor(picture.BackColor());
            picture.Print(part);
        }
        setShown(false);
    } catch (...) { }
}

void CPreviewLine::ClearAllPreview(IPictureBox &picture)
{
    picture.Cls();
    setShown(false);
}

void CPreviewLine::RefreshPreview(IPictureBox &picture, double position)
{
    try {
        if (m_shown && (position < m_startTime || position > m_endTime))
            ClearPreview(picture);
        if (position > m_startTime && position < m_endTime)
            Display(picture);
    } catch (...) { }
}

void CPreviewLine::Parent_RefreshPreview(double position)
{
    if (m_parent && m_parent->Picture())
        RefreshPreview(*m_parent->Picture(), position);
}
