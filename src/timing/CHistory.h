#pragma once

#include <QString>
#include <QtGlobal>

class CHistories;
class ITextControl;

// A selection of a text control with the text that an edit took out of it.
struct HistorySelection
{
    QString SelText;
    qint32 SelStart = 0;
    qint32 SelLength = 0;
    QString Text;
};

// One step of an edit history: the selection before and after, the text that went and
// the text that came.
class CHistory
{
public:
    void Init(qint32 serialNo, ITextControl *editer = nullptr)
    {
        SerialNo = serialNo;
        m_editer = editer;
    }

    CHistories *Parent() const { return m_parent; }
    void setParent(CHistories *parent) { m_parent = parent; }

    qint32 SerialNo = 0;
    qint32 PreviousNo = 0; // 0: none
    qint32 NextNo = -1; // -1: none
    qint32 Operate = 0; // 0 no change, 1 insert, 2 delete, 3 update
    QString BeforeSelText;
    qint32 BeforeSelStart = 0;
    qint32 BeforeSelLength = 0;
    QString BeforeText;
    QString AfterSelText;
    qint32 AfterSelStart = 0;
    qint32 AfterSelLength = 0;
    QString AfterText;
    // Where the caret stood after the step was last applied.
    qint32 Caret = 0;

private:
    CHistories *m_parent = nullptr;
    ITextControl *m_editer = nullptr;
};
