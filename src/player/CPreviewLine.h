#pragma once

#include "core/isub.h"

#include <QString>
#include <QStringList>
#include <optional>

class CFont;
class CPreview;
class IPictureBox;

// One line of the live preview: the times and the cleaned dialogue of one grid row, kept
// here as numbers so that the preview tick compares floats and never reads the grid.
// The line prints itself centred on the bottom of the picture while the position is
// strictly inside its span and wipes itself (a reprint in the background colour) when
// the position leaves it.
class CPreviewLine : public isub
{
public:
    // What the preview takes of a style when the style is assigned to the line. It is a
    // copy, so that a style removed later cannot leave the line pointing at nothing.
    struct PreviewFont
    {
        QString FontName;
        double FontSize = 0;
        bool Bold = false;
        bool Italic = false;
        bool UnderLine = false;
        bool StrikeOut = false;
        qint64 PrimaryColour = 0xFFFFFF;
    };

    // Public fields.
    // The style of the line; empty prints in white Arial.
    std::optional<PreviewFont> Font;
    // Where the block was printed, in the picture's units.
    qint32 StartY = 0;
    // The line's row and its check-disabled mark, as the last UpdateLineNumber found them.
    qint32 RealRowNumber = 0;
    bool m_bDisableCheckTiming = false;

    CPreviewLine();
    ~CPreviewLine() override;

    void Init(qint32 SerialNo = 0);

    CPreview *Parent() const { return m_parent; }

    // Takes the style's font, size, attributes and primary colour; nullptr empties Font.
    void setFont(const CFont *font);

    double StartTime() const { return m_startTime; }
    void setStartTime(double seconds);
    double EndTime() const { return m_endTime; }
    void setEndTime(double seconds);
    // The text stands on the picture now.
    bool Shown() const { return m_shown; }

    // The dialogue as it is printed: line breaks as CR LF, hard blanks as blanks, and
    // override blocks removed.
    const QString &Dialog() const { return m_dialog; }
    void setDialog(const QString &text);
    static QString CleanDialog(const QString &text);

    // Prints the dialogue centred on the bottom edge (or at StartY when shown already).
    void Display(IPictureBox &picture);
    // Reprints the dialogue at StartY in the picture's background colour.
    void ClearPreview(IPictureBox &picture);
    // Erases the whole picture.
    void ClearAllPreview(IPictureBox &picture);
    // Wipes the line strictly outside its span, prints it strictly inside.
    void RefreshPreview(IPictureBox &picture, double position);
    // The parent's refresh, heard with the parent's picture.
    void Parent_RefreshPreview(double position);

    // isub: a preview line has no text form of its own.
    QString Content() override { return {}; }
    void setContent(const QString &) override { }
    void Clear() override { }

private:
    friend class CPreview;

    QStringList Parts() const;
    void setShown(bool shown);
    static double CentredX(IPictureBox &picture, const QString &part);

    CPreview *m_parent = nullptr;
    qsizetype m_slot = -1; // index of the line's entry in the parent's tick table
    double m_startTime = 0;
    double m_endTime = 0;
    bool m_shown = false;
    QString m_dialog;
};
