#pragma once

#include <QString>
#include <QtGlobal>

// What a multi-line text control tells the one listener attached to it.
class ITextControlEvents
{
public:
    virtual ~ITextControlEvents() = default;
    // A key is about to act (Basic key code; shift bits 1 Shift, 2 Ctrl, 4 Alt). True
    // swallows it: the control then does nothing with it.
    virtual bool KeyDown(int keyCode, int shift) = 0;
    // The selection (or caret) moved.
    virtual void SelChange() = 0;
    // The text changed.
    virtual void Change() = 0;
};

// A multi-line text control, seen as its text and one selection. Positions count
// characters from 0. Every edit, typed or written through this interface, is told as a
// selection change first (even when the caret stays) and then as a text change: the
// edit history depends on that order.
class ITextControl
{
public:
    virtual ~ITextControl() = default;

    virtual QString Text() const = 0;
    virtual void setText(const QString &text) = 0;
    // Setting the start collapses the selection at that point.
    virtual qint32 SelStart() const = 0;
    virtual void setSelStart(qint32 start) = 0;
    // The length runs from the start; it is cut at the end of the text.
    virtual qint32 SelLength() const = 0;
    virtual void setSelLength(qint32 length) = 0;
    virtual QString SelText() const = 0;
    // Replaces the selection; the caret stands after the new text.
    virtual void setSelText(const QString &text) = 0;

    // The listener of the events above; nullptr for none.
    virtual void setEvents(ITextControlEvents *events) = 0;
};
