#pragma once

#include "core/CDocumentList.h"
#include "formats/CTiming.h"

#include <functional>

class CVelmar;
class QObject;

// Every open timing document, and the reaction offsets they share.
class CTimings : public CDocumentList<CTiming>
{
public:
    // A new document for `Window`: the next serial, the present reaction offsets; the
    // window gets the serial as its "Tag" and "时间轴(n)" as its title.
    CTiming *Create(QObject *Window = nullptr);
    // Asks every document's window to save (through SaveWindow, set by the shell).
    void SaveFile();
    // Hands a time to the capture routine of the document whose window is the active
    // child of the main window; nothing when no timing window is active.
    void SendNewTime(double Time);

    CVelmar *Parent() const { return m_parent; }
    void setParent(CVelmar *parent) { m_parent = parent; }

    // Each setter clamps to -1..1, stores, writes the value into every open document and
    // saves it in the settings store (section "TimeOffset").
    double ReactOffset() const { return m_reactOffset; }
    void setReactOffset(double value);
    double ReactOffsetStart() const { return m_reactOffsetStart; }
    void setReactOffsetStart(double value);
    double ReactOffsetEnd() const { return m_reactOffsetEnd; }
    void setReactOffsetEnd(double value);

    // The active child of the main window (set by the shell).
    std::function<QObject *()> ActiveWindow;
    // Saves one document through its window (set by the shell).
    std::function<void(CTiming *)> SaveWindow;

private:
    CVelmar *m_parent = nullptr;
    double m_reactOffset = 0;
    double m_reactOffsetStart = 0;
    double m_reactOffsetEnd = 0;
};
