#pragma once

#include "timing/ITextControl.h"

#include <QObject>

class QTextEdit;

// A QTextEdit seen as the text control of the edit history. Keys are offered to the
// listener before they act; an edit is told as a selection change (the selection it
// leaves, even when the caret stays) and then as a text change, the order the history
// counts on.
class CTextEditControl : public QObject, public ITextControl
{
    Q_OBJECT

public:
    explicit CTextEditControl(QTextEdit *edit, QObject *parent = nullptr);

    QString Text() const override;
    void setText(const QString &text) override;
    qint32 SelStart() const override;
    void setSelStart(qint32 start) override;
    qint32 SelLength() const override;
    void setSelLength(qint32 length) override;
    QString SelText() const override;
    void setSelText(const QString &text) override;
    void setEvents(ITextControlEvents *events) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void tellSelection();
    void tellChange();

    QTextEdit *m_edit;
    ITextControlEvents *m_events = nullptr;
    // While the control itself writes, the signals of the edit are not passed on: the
    // write tells its own events in the right order.
    bool m_writing = false;
    bool m_inKey = false;
    bool m_changed = false;
};
