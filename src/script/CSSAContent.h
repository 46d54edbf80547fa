#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "core/isub.h"
#include "script/CSSAContentLine.h"
#include "script/SaveOption.h"
#include "script/ScriptType.h"

#include <QStringView>
#include <functional>
#include <memory>

class CTiming;
class ITimingGrid;
class IPlayerWindow;

// The [Events] section in memory: the ordered lines of one script, keyed by the decimal
// text of their serial numbers. Reads and writes the section in both versions, carries
// the reviewers' flags through generated comment lines, and copies itself deeply.
class CSSAContent : public isub, public ICollection
{
public:
    // Public fields.
    // SSA, anything else reads and writes as ASS.
    ::ScriptType ScriptType = ::ScriptType::SSA;
    qint32 ScriptSubType = 0;
    IPlayerWindow *PlayerWindow = nullptr;
    // Output mask, SaveOption bits from StartTime on (OtherColumns: the section head,
    // line type, first field, style, speaker, margins and effect).
    qint32 SaveOption = ::SaveOption::Whole;
    bool Dirty = false;

    void Init() override;

    // The owning timing document, or none.
    CTiming *Parent() const { return m_parent; }
    void setParent(CTiming *parent) { m_parent = parent; }
    // The grid that shows this list, or none.
    ITimingGrid *SpreadSheet() const { return m_spreadSheet; }
    void setSpreadSheet(ITimingGrid *grid) { m_spreadSheet = grid; }
    // Stored here and pushed into every line.
    qint32 TimeFormat() const { return m_timeFormat; }
    void setTimeFormat(qint32 format);

    // A new line with the next serial, added and announced.
    CSSAContentLine *Create();
    // Adopts a line made elsewhere: its serial and parent are overwritten.
    CSSAContentLine *Add(std::unique_ptr<CSSAContentLine> line);
    // Removes a line; an unknown key raises error 5.
    void Delete(const QString &key) override;
    qsizetype Count() const override { return m_lines.Count(); }
    // An unknown key raises error 5 (it is not trapped here).
    isub *item(const QString &key) override { return m_lines.Item(key); }
    isub *itemAt(qsizetype index) override { return m_lines.At(index); }
    CSSAContentLine *Item(const QString &key) const { return m_lines.Item(key); }
    CSSAContentLine *At(qsizetype index) const { return m_lines.At(index); }
    bool Exists(const QString &key) const;
    auto begin() const { return m_lines.begin(); }
    auto end() const { return m_lines.end(); }
    void Reserve(qsizetype count) { m_lines.Reserve(count); }

    // The serial of this list within its own collection. The counter of the lines is
    // internal and never falls, not even through Clear.
    qint32 SerialNo() const override { return m_serialNo; }
    // The last serial given to a line.
    qint32 LineCounter() const { return m_counter; }

    // Every line's Dialog followed by "\r\n": the plain export of a script.
    QString Dialog() const;
    // A deep copy; its lines are numbered 1, 2, 3... Times go through the strings of
    // the present TimeFormat, so only TimeFormat 0 copies them exactly.
    std::unique_ptr<CSSAContent> DuplicateSSA() const;

    // The section as text, under SaveOption.
    QString Content() override;
    // Reads the section out of a whole script. A bad line asks TIMING_ERR_104 (No stops
    // and keeps what was read). More than 32768 lines raise overflow (error 6).
    void setContent(const QString &text) override { Read(text); }
    void Read(QStringView text);
    void Clear() override;

    std::function<void(CSSAContentLine *)> ContentLineCreated;
    std::function<void(const QString &key)> ContentLineDestroyed;

private:
    CSSAContentLine *adopt(std::unique_ptr<CSSAContentLine> line);

    CKeyedList<CSSAContentLine> m_lines;
    qint32 m_counter = 0;
    CTiming *m_parent = nullptr;
    ITimingGrid *m_spreadSheet = nullptr;
    qint32 m_timeFormat = 0;
};
