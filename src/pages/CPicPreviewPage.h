#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "core/isub.h"
#include "pages/CPageDrawing.h"
#include "script/CSSAContentLine.h"

#include <QString>
#include <QStringView>

#include <memory>

class CPicPreviewPages;

// One picture page: a span of time and the script lines on the screen during it, each
// carrying the page's own start and end. The page draws itself on the box of its list
// and saves the drawing as a numbered bitmap; its content is then that file's name.
class CPicPreviewPage : public isub, public ICollection
{
public:
    void Init() override { }
    void Init(qint32 serialNo) { m_serialNo = serialNo; }

    CPicPreviewPages *Parent() const { return m_parent; }
    void setParent(CPicPreviewPages *parent) { m_parent = parent; }

    double StartTime() const { return m_startTime; }
    void setStartTime(double seconds) { m_startTime = seconds; }
    double EndTime() const { return m_endTime; }
    void setEndTime(double seconds) { m_endTime = seconds; }
    // In the page-list form "hh:mm:ss:cc", hundredths behind the last colon; assigning
    // reads that form back (the same form with a point before the hundredths works too).
    QString StartTimeString() const;
    void setStartTimeString(QStringView text);
    QString EndTimeString() const;
    void setEndTimeString(QStringView text);

    // The text of the line drawn last, as the preview shows it: line breaks as CR LF,
    // hard blanks as blanks, override blocks removed.
    const QString &Dialog() const { return m_dialog; }
    void setDialog(const QString &text);

    // Clears the parent's box and draws the page's lines on it.
    void Display();
    // Writes the drawing as the bitmap "name/1.<serial>.bmp" and takes that name as the
    // page's content. A page from 0 to 0 is not saved. A bitmap that cannot be written
    // is left out silently; the name is taken all the same.
    void Save(const QString &name);

    // The page as its drawing needs it, the styles of its lines looked up in the parent.
    CPageDrawing Drawing() const;
    // Takes the places of its lines back from a drawing of the page (the lines in the
    // same order), and the text of the line drawn last as the page's Dialog.
    void TakePlaced(const QList<CPageLine> &lines);

    // The lines, in the order in which they were added.
    CSSAContentLine *Add(std::unique_ptr<CSSAContentLine> line);
    CSSAContentLine *At(qsizetype index) const { return m_lines.At(index); }
    auto begin() const { return m_lines.begin(); }
    auto end() const { return m_lines.end(); }

    // ICollection; the page's serial number is also its collection number.
    qint32 SerialNo() const override { return m_serialNo; }
    void Delete(const QString &key) override { m_lines.Remove(key); }
    qsizetype Count() const override { return m_lines.Count(); }
    isub *item(const QString &key) override { return m_lines.Find(key); }
    isub *itemAt(qsizetype index) override { return m_lines.At(index); }

    // The bitmap's file name once saved.
    QString Content() override { return m_content; }
    void setContent(const QString &text) override { m_content = text; }
    void Clear() override;

private:
    CPicPreviewPages *m_parent = nullptr;
    double m_startTime = 0;
    double m_endTime = 0;
    QString m_dialog;
    QString m_content;
    CKeyedList<CSSAContentLine> m_lines;
    qint32 m_lineCounter = 0;
};
