#pragma once

#include "core/FileCode.h"
#include "core/isub.h"
#include "formats/FileOptions.h"
#include "formats/ITranslateContent.h"
#include "script/ScriptType.h"
#include "translation/CKaraOKStrokes.h"

#include <QString>
#include <QTextDocument>
#include <QtGlobal>
#include <functional>
#include <memory>
#include <vector>

class CSpread;
class CTranslates;
class QObject;
class QTextCursor;

// A translation draft. The document keeps no text of its own: it reads and writes the
// rich-text view of its window (a QTextDocument), and works on a hidden twin so that
// the view and its selection stay undisturbed. It owns the rules that split a draft's
// file text into the change table, the colour loop and the lines, and that turn rich
// text into text with override tags.
class CTranslate : public isub, public ITranslateContent
{
public:
    CTranslate();
    ~CTranslate() override;
    void Init() { }

    CTranslates *Parent() const { return m_parent; }
    void setParent(CTranslates *parent) { m_parent = parent; }
    CTranslates *collection() const { return m_parent; }
    QObject *Window() const { return m_window; }
    void setWindow(QObject *window) { m_window = window; }
    // The view the window shows; the document has its own until a window gives one.
    QTextDocument *Translate() const { return m_view; }
    void setTranslate(QTextDocument *view)
    {
        m_view = view ? view : m_ownView.get();
        KaraOK.setDocument(m_view);
    }
    // The hidden twin all conversions work on.
    QTextDocument &Shadow() { return m_shadow; }

    double ReactOffset = -0.3;
    bool Dirty = false;
    qint32 ChangeOption = ::ChangeOption::Text;
    qint32 TranslateOption = ::TranslateOption::ChangeTable;
    ::FileCode FileCode = ::FileCode::SystemDefault;
    // Plain text or rich text.
    ::ScriptType ScriptType = ::ScriptType::Plain;
    // Karaoke recording by strokes in the view; a timing window switches its mode.
    CKaraOKStrokes KaraOK;

    // The window's caption: "翻译(n)".
    QString Caption() const;

    bool Changed() const override { return Dirty; }
    void setChanged(bool changed) override { Dirty = changed; }

    // Reading writes the draft out (with the tables in front, as rich text, plain text or
    // text with override tags by the options); assigning reads a draft in.
    QString Content() override;
    void setContent(const QString &text) override;
    // ITranslateContent: Content under other options; the type, both option sets and the
    // change flag come back however the writing ends.
    QString ContentWith(::ScriptType type, qint32 changeOption, qint32 translateOption) override;
    // Empties the view's text.
    void Clear() override;

    // The quick tables, as grids with the row label in column 0. The change table holds
    // a text in column 1 and its replacement in column 2; the colour loop a text in
    // column 1 whose back colour is the row's colour. After reading a draft each ends in
    // one empty row.
    CSpread &spdChangeTable() const { return *m_changeTable; }
    CSpread &spdColor() const { return *m_colorTable; }
    // Empties both tables to their one row labelled "1".
    void ResetTables();
    // Adds an empty row to a table, with its label.
    void AddChangeTableRow();
    void AddColorTableRow();
    // Row labels, one character, rows counted from 0.
    static QString ChangeTableLabel(int row);
    static QString ColorTableLabel(int row);

    // The character walk: the shadow from a position on, as text with override tags by
    // ChangeOption.
    QString RichTextToTags(qsizetype start = 0) const;

    // The plain-text clipboard operations on a selection of the view.
    void Cut(QTextCursor &selection);
    void Copy(const QTextCursor &selection) const;
    void Paste(QTextCursor &selection);
    // The clipboard; the system clipboard unless a test or tool sets others.
    std::function<QString()> ClipboardText;
    std::function<void(const QString &)> setClipboardText;

private:
    void CopyDocument(const QTextDocument &from, QTextDocument &to) const;
    qsizetype WriteTables();
    void ReadTables();

    CTranslates *m_parent = nullptr;
    QObject *m_window = nullptr;
    std::unique_ptr<QTextDocument> m_ownView;
    QTextDocument *m_view = nullptr;
    QTextDocument m_shadow;
    std::unique_ptr<CSpread> m_changeTable;
    std::unique_ptr<CSpread> m_colorTable;
};
