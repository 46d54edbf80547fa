#pragma once

#include "core/FileCode.h"
#include "core/isub.h"
#include "formats/CTimingFormats.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"
#include "script/CSubInfo.h"
#include "script/ISubInfoHost.h"
#include "script/SaveOption.h"
#include "script/ScriptType.h"

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <functional>
#include <memory>

class CPreview;
class CTimings;
class CUndoStack;
class ITimingGrid;
class IPlayerWindow;
class QObject;

// The document behind one timing window: a script in all its forms. It owns the head,
// the styles and the event list (and one body per other file format), reads a whole
// file into them and assembles a whole file from them. It knows its window only as an
// object and its grid only through ITimingGrid.
class CTiming : public isub, public ISubInfoHost
{
public:
    CTiming();
    ~CTiming() override;

    // Public fields.
    std::unique_ptr<CFonts> Fonts;
    std::unique_ptr<CSubInfo> ScriptInfo;
    // The live preview's copy of the lines, keyed by the grid rows' serial numbers.
    std::unique_ptr<CPreview> Preview;
    std::unique_ptr<CSSAContent> SSAContent;
    // The bodies of the other file formats: SMIContent, SMPContent, SRTContent,
    // LRCContent and SSTContent, read and assembled through it.
    CTimingFormats Formats;
    QObject *TranslateWindow = nullptr;
    QObject *TimingWindow = nullptr;
    ITimingGrid *TimingTable = nullptr;
    bool StepPause = false;
    bool AutoEndTimePoint = false;
    bool TraceAVI = false;
    bool KaraOKMode = false;
    bool KaraOKRecording = false;
    double KaraOKStartTime = 0;
    double ReactOffsetStart = 0;
    double ReactOffsetEnd = 0;
    // Which sections go out (SaveOption bits): the head, the styles, and the event mask
    // of CSSAContent.
    qint32 TimingOption = SaveOption::Whole;
    ::FileCode FileCode = ::FileCode::ANSI;
    // The code page of an ANSI file read as modern files (iconv name); empty: the system
    // code page.
    QByteArray FileCodePage;
    // The last file read ended its lines with bare LFs only, and was read as written.
    bool BareLineFeeds = false;
    // The capture routine of the window: where a time handed out by CTimings goes.
    std::function<void(double time)> OnNewTime;

    // The undo steps of the grid that holds the lines. The state the file was last read
    // or saved in is the stack's clean state: clearing Changed marks it.
    CUndoStack &UndoStack() const { return *m_undoStack; }
    void setChanged(bool changed) override;

    // Second stage: the window is remembered, the parts are made, the document starts
    // as an empty ASS script (TimingOption 255, TimeFormat 0).
    void Init(qint32 SerialNo = 0, QObject *Window = nullptr);

    CTimings *Parent() const { return m_parent; }
    void setParent(CTimings *parent) { m_parent = parent; }

    // Any type but rich text and video. Pushed into the head, the styles and the event
    // list, in that order.
    ::ScriptType ScriptType() const { return m_scriptType; }
    void setScriptType(::ScriptType type);
    qint32 ScriptSubType() const { return m_scriptSubType; }
    void setScriptSubType(qint32 subType);
    qint32 TimeFormat() const { return m_timeFormat; }
    void setTimeFormat(qint32 format);
    IPlayerWindow *PlayerWindow() const { return m_playerWindow; }
    void setPlayerWindow(IPlayerWindow *player) { m_playerWindow = player; }
    // ISubInfoHost: the picture of the player of the linked window.
    std::optional<QSize> VideoPictureSize() const override;
    // The grid that holds the lines while the window is open (none headless).
    void setTimingTable(ITimingGrid *grid);

    // Assembles the whole file of the present ScriptType. The grid, if any, is first
    // copied into the event list. A fault shows TIMING_ERR_115 and gives the text so far.
    QString Content() override;
    // The whole file a type and options would give, the document left exactly as it was:
    // its type, sub-type, TimingOption, time format and change flag come back however the
    // assembly ends.
    QString ContentWith(::ScriptType type, qint32 subType, qint32 timingOption, qint32 timeFormat);
    // Reads a whole file of the present ScriptType; clears Changed (except for plain
    // text). A fault shows TIMING_ERR_114; what was read so far stays.
    void setContent(const QString &text) override { Read(text); }
    void Read(QStringView text);
    // Does nothing: a new script is built by clearing each part.
    void Clear() override { }

    // The plain-text case: the grid's text column as "\r\n"-joined lines, and the filler
    // of that column.
    QString TextColumn() const;
    void FillTextColumn(QStringView text);

private:
    void readBody(QStringView text);
    void assembleBody(QString &out);

    std::unique_ptr<CUndoStack> m_undoStack;
    CTimings *m_parent = nullptr;
    IPlayerWindow *m_playerWindow = nullptr;
    ::ScriptType m_scriptType = ::ScriptType::ASS;
    qint32 m_scriptSubType = 0;
    qint32 m_timeFormat = 0;
};
