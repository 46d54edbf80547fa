#include "ui/CTextEditControl.h"

#include "core/basTime.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>

namespace {

// The control's text with "\r\n" line ends, as the history and the documents see it.
QString withCrlf(QString text)
{
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    return text;
}

// A position in the "\r\n" text to a position in the edit's document, where a line end
// is one character.
int documentPosition(const QString &crlfText, qint32 position)
{
    position = qBound(0, position, qint32(crlfText.size()));
    int lineEnds = 0;
    for (qint32 i = 0; i + 1 < position; ++i)
        if (crlfText[i] == u'\r' && crlfText[i + 1] == u'\n')
            ++lineEnds;
    return position - lineEnds;
}

qint32 crlfPosition(const QTextEdit *edit, int documentPos)
{
    const QTextBlock block = edit->document()->findBlock(documentPos);
    return documentPos + (block.isValid() ? block.blockNumber() : 0);
}

int shiftBits(Qt::KeyboardModifiers m)
{
    return (m.testFlag(Qt::ShiftModifier) ? 1 : 0) | (m.testFlag(Qt::ControlModifier) ? 2 : 0)
        | (m.testFlag(Qt::AltModifier) ? 4 : 0);
}

} // namespace

CTextEditControl::CTextEditControl(QTextEdit *edit, QObject *parent)
    : QObject(parent)
    , m_edit(edit)
{
    m_edit->installEventFilter(this);
    connect(m_edit, &QTextEdit::textChanged, this, [this] {
        m_changed = true;
        if (!m_writing)
            tellChange();
    });
    connect(m_edit, &QTextEdit::cursorPositionChanged, this, [this] {
        if (!m_writing)
            tellSelection();
    });
}

QString CTextEditControl::Text() const
{
    return withCrlf(m_edit->toPlainText());
}

void CTextEditControl::setText(const QString &text)
{
    {
        const QScopedValueRollback<bool> writing(m_writing, true);
        m_edit->setPlainText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    }
    tellSelection();
    tellChange();
}

qint32 CTextEditControl::SelStart() const
{
    return crlfPosition(m_edit, m_edit->textCursor().selectionStart());
}

void CTextEditControl::setSelStart(qint32 start)
{
    QTextCursor cursor = m_edit->textCursor();
    cursor.setPosition(documentPosition(Text(), start));
    m_edit->setTextCursor(cursor);
}

qint32 CTextEditControl::SelLength() const
{
    const QTextCursor cursor = m_edit->textCursor();
    return crlfPosition(m_edit, cursor.selectionEnd()) - crlfPosition(m_edit, cursor.selectionStart());
}

void CTextEditControl::setSelLength(qint32 length)
{
    const QString text = Text();
    const qint32 start = SelStart();
    QTextCursor cursor = m_edit->textCursor();
    cursor.setPosition(documentPosition(text, start));
    cursor.setPosition(documentPosition(text, start + qMax(0, length)), QTextCursor::KeepAnchor);
    m_edit->setTextCursor(cursor);
}

QString CTextEditControl::SelText() const
{
    return withCrlf(m_edit->textCursor().selectedText());
}

void CTextEditControl::setSelText(const QString &text)
{
    {
        const QScopedValueRollback<bool> writing(m_writing, true);
        QTextCursor cursor = m_edit->textCursor();
        cursor.insertText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        m_edit->setTextCursor(cursor);
    }
    tellSelection();
    tellChange();
}

void CTextEditControl::setEvents(ITextControlEvents *events)
{
    m_events = events;
}

bool CTextEditControl::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_edit || event->type() != QEvent::KeyPress || !m_events)
        return QObject::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    int code = KeyCodeOfQtKey(key->key());
    if (code == 0 && !key->text().isEmpty())
        code = key->text().at(0).toUpper().unicode();
    if (m_inKey)
        return false;
    if (m_events->KeyDown(code, shiftBits(key->modifiers())))
        return true;
    // The key is delivered here with the edit's own signals held back, so that its edit
    // is told as the selection it leaves and then the change, even when the caret stays.
    m_changed = false;
    const qint32 start = SelStart(), length = SelLength();
    {
        const QScopedValueRollback<bool> inKey(m_inKey, true);
        const QScopedValueRollback<bool> writing(m_writing, true);
        QCoreApplication::sendEvent(m_edit, event);
    }
    if (m_changed || SelStart() != start || SelLength() != length)
        tellSelection();
    if (m_changed)
        tellChange();
    return true;
}

void CTextEditControl::tellSelection()
{
    if (m_events)
        m_events->SelChange();
}

void CTextEditControl::tellChange()
{
    if (m_events)
        m_events->Change();
}
