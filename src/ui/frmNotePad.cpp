#include "ui/frmNotePad.h"

#include "core/IPrompt.h"
#include "core/basBackup.h"
#include "core/basColour.h"
#include "core/basConvert.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basSetting.h"
#include "shell/CRecentFile.h"
#include "shell/CVelmar.h"
#include "translation/CNotePads.h"
#include "translation/CTextFind.h"
#include "translation/basTranslateWindow.h"
#include "ui/CTextEditControl.h"
#include "ui/MdiVelmar.h"
#include "ui/basWindowMenu.h"
#include "ui/frmFind.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QVBoxLayout>

using MenuItem = WindowMenuItem<frmNotePad>;

const std::vector<MenuItem> &frmNotePad::MenuItems()
{
    using M = MenuItem;
    static const std::vector<M> items = WithFrameMenus<frmNotePad>({
        { M::Title, "mnuFile", "MENU_FILE_000" },
        { M::Entry, "mnuFileOpen", "VELMAR_NOTEPAD_103", [](frmNotePad &w) { w.OpenFile(0, QString()); } },
        { M::Entry, "mnuFileSave", "VELMAR_NOTEPAD_104", [](frmNotePad &w) { w.SaveFile(false); } },
        { M::Entry, "mnuFileSaveAs", "VELMAR_NOTEPAD_105", [](frmNotePad &w) { w.SaveFile(true); } },
        { M::Separator },
        { M::Entry, "mnuFilePrint", "VELMAR_NOTEPAD_106", [](frmNotePad &w) { w.FilePrint(); } },
        { M::Entry, "mnuFilePrinterSetting", "VELMAR_NOTEPAD_107",
            [](frmNotePad &w) { w.FilePrinterSetting(); } },
        { M::Separator },
        { M::Entry, "mnuFileClose", "VELMAR_NOTEPAD_108",
            [](frmNotePad &w) {
                if (auto *sub = qobject_cast<QMdiSubWindow *>(w.parentWidget()))
                    sub->close();
                else
                    w.close();
            } },
        { M::Recent },
        { M::Separator },
        { M::Entry, "mnuFileExit", "VELMAR_TRANSLATE_102", nullptr, &MdiVelmar::mnuFileExit },
        { M::Title, "mnuEdit", "VELMAR_NOTEPAD_101" },
        { M::Entry, "mnuEditUndo", "VELMAR_NOTEPAD_109", [](frmNotePad &w) { w.EditUndo(); } },
        { M::Separator },
        { M::Entry, "mnuEditCut", "VELMAR_NOTEPAD_110", [](frmNotePad &w) { w.EditCut(); } },
        { M::Entry, "mnuEditCopy", "VELMAR_NOTEPAD_111", [](frmNotePad &w) { w.EditCopy(); } },
        { M::Entry, "mnuEditPaste", "VELMAR_NOTEPAD_112", [](frmNotePad &w) { w.EditPaste(); } },
        { M::Entry, "mnuEditDelete", "VELMAR_NOTEPAD_113", [](frmNotePad &w) { w.EditDelete(); } },
        { M::Separator },
        { M::Entry, "mnuEditFind", "VELMAR_NOTEPAD_114", [](frmNotePad &w) { w.EditFind(); } },
        { M::Entry, "mnuEditFindNext", "VELMAR_NOTEPAD_115", [](frmNotePad &w) { w.EditFindNext(); } },
        { M::Entry, "mnuEditReplace", "VELMAR_NOTEPAD_116", [](frmNotePad &w) { w.EditFind(); } },
        { M::Entry, "mnuEditGotoLine", "VELMAR_NOTEPAD_117", [](frmNotePad &w) { w.EditGotoLine(); } },
        { M::Separator },
        { M::Entry, "mnuEditSelectAll", "VELMAR_NOTEPAD_118", [](frmNotePad &w) { w.EditSelectAll(); } },
        { M::Entry, "mnuEditTimeStamp", "VELMAR_NOTEPAD_119", [](frmNotePad &w) { w.EditTimeStamp(); } },
        { M::Title, "mnuFormat", "VELMAR_NOTEPAD_102" },
        { M::Entry, "mnuFormatFont", "VELMAR_NOTEPAD_120", [](frmNotePad &w) { w.FormatFont(); } },
        { M::Entry, "mnuFormatColor", "VELMAR_NOTEPAD_121", [](frmNotePad &w) { w.FormatColor(); } },
    });
    return items;
}

frmNotePad::frmNotePad(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmNotePad"));
    rtfEdit = new QTextEdit(this);
    rtfEdit->setObjectName(QStringLiteral("rtfEdit"));
    // The clipboard brings plain text.
    rtfEdit->setAcceptRichText(false);
    m_text = std::make_unique<CTextEditControl>(rtfEdit);
    connect(rtfEdit, &QTextEdit::textChanged, this, [this] {
        if (m_loading)
            return;
        if (CNotePads::Slot *slot = NotePads().At(m_slot))
            slot->Changed = true;
    });
    RunPrintDialog = [this](QPrinter &printer) {
        QPrintDialog dialog(&printer, this);
        return dialog.exec() == QDialog::Accepted;
    };
    menuBar = new QMenuBar(this);
    menuBar->setObjectName(QStringLiteral("mnuNotePad"));
    BuildWindowMenu(
        *this, menuBar, MenuItems(), mnuFileRecent, [this](QAction *entry) { connectRecent(entry); });
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setMenuBar(menuBar);
    layout->addWidget(rtfEdit, 1);
    resize(640, 480);
}

frmNotePad::~frmNotePad()
{
    release();
}

void frmNotePad::connectRecent(QAction *entry)
{
    connect(entry, &QAction::triggered, this, [this, entry] {
        if (OpenRecent)
            OpenRecent(entry->text());
    });
}

QAction *frmNotePad::MenuEntry(const QString &name) const
{
    return menuBar->findChild<QAction *>(name);
}

bool frmNotePad::MenuEntryWanted()
{
    return GetSetting(QStringLiteral("Setting"), QStringLiteral("NotePad"), QStringLiteral("0")).trimmed()
        == u"1";
}

void frmNotePad::Register(MdiVelmar &frame)
{
    frame.RegisterWindowFactory(DocumentWindowKind::NotePad, [](MdiVelmar &f) -> QWidget * {
        auto *w = new frmNotePad;
        f.AddDocumentWindow(w);
        w->Init();
        w->BindFrame(f);
        return w;
    });
    if (!MenuEntryWanted() || frame.findChild<QAction *>(QStringLiteral("mnuFileNewNotePad")))
        return;
    // Behind the frame's new-document entries.
    const QList<QAction *> entries = frame.mnuFile->actions();
    const qsizetype at = entries.indexOf(frame.mnuFileNewTiming);
    QAction *before = at >= 0 && at + 1 < entries.size() ? entries[at + 1] : nullptr;
    auto *entry = new QAction(Msg(QStringLiteral("VELMAR_NOTEPAD_122")), frame.mnuFile);
    entry->setObjectName(QStringLiteral("mnuFileNewNotePad"));
    frame.mnuFile->insertAction(before, entry);
    MdiVelmar *f = &frame;
    connect(entry, &QAction::triggered, f, [f] { f->NewDocument(4); });
}

void frmNotePad::Init()
{
    m_slot = NotePads().Open(this);
    setProperty("Tag", QString::number(m_slot));
    updateCaption();
}

void frmNotePad::BindFrame(MdiVelmar &frame)
{
    MdiVelmar *f = &frame;
    BindWindowMenu(menuBar, MenuItems(), frame);
    connect(f, &MdiVelmar::RecentFilesChanged, this, [this, f] { ShowRecentMenu(f->RecentEntries()); });
    ShowRecentMenu(f->RecentEntries());
    ActiveWindow = [f] { return f->ActiveDocument(); };
    OpenRecent = [f](const QString &caption) { f->OpenRecentFile(caption); };
}

void frmNotePad::release()
{
    if (m_slot) {
        NotePads().Close(m_slot);
        m_slot = 0;
    }
}

bool frmNotePad::Changed() const
{
    const CNotePads::Slot *slot = NotePads().At(m_slot);
    return slot && slot->Changed;
}

QString frmNotePad::FileName() const
{
    const CNotePads::Slot *slot = NotePads().At(m_slot);
    return slot ? slot->FileName : QString();
}

void frmNotePad::updateCaption()
{
    QString title = Msg(QStringLiteral("VELMAR_NOTEPAD_100")) + u'(' + QString::number(m_slot) + u')';
    if (!FileName().isEmpty())
        title += QStringLiteral(" - ") + FileName();
    setWindowTitle(title);
}

QString frmNotePad::Content()
{
    return m_text->Text();
}

// ---- the edit commands -----------------------------------------------------------------------

QTextEdit *frmNotePad::activeTextControl() const
{
    QWidget *window = ActiveWindow ? ActiveWindow() : const_cast<frmNotePad *>(this);
    if (!window)
        return nullptr;
    QWidget *control = window->focusWidget();
    if (!control && window == this)
        control = rtfEdit;
    return qobject_cast<QTextEdit *>(control);
}

void frmNotePad::EditUndo()
{
    if (QTextEdit *edit = activeTextControl())
        edit->undo();
}

void frmNotePad::EditCut()
{
    QTextEdit *edit = activeTextControl();
    if (!edit || edit->isReadOnly())
        return;
    QTextCursor cursor = edit->textCursor();
    QGuiApplication::clipboard()->setText(cursor.selection().toPlainText());
    cursor.removeSelectedText();
    edit->setTextCursor(cursor);
}

void frmNotePad::EditCopy()
{
    if (QTextEdit *edit = activeTextControl())
        QGuiApplication::clipboard()->setText(edit->textCursor().selection().toPlainText());
}

void frmNotePad::EditPaste()
{
    QTextEdit *edit = activeTextControl();
    if (!edit || edit->isReadOnly())
        return;
    QString text = QGuiApplication::clipboard()->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    edit->textCursor().insertText(text);
}

void frmNotePad::EditDelete()
{
    QTextEdit *edit = activeTextControl();
    if (!edit || edit->isReadOnly())
        return;
    QTextCursor cursor = edit->textCursor();
    cursor.removeSelectedText();
    edit->setTextCursor(cursor);
}

void frmNotePad::EditFind()
{
    if (FindWindow) {
        FindWindow->raise();
        FindWindow->activateWindow();
        return;
    }
    FindWindow = new frmFind(this);
    FindWindow->setFindTarget(m_text.get());
    FindWindow->BeforeClose = [this] { FindWindow_BeforeClose(); };
    FindWindow->show();
}

void frmNotePad::EditFindNext()
{
    if (FindWindow) {
        FindWindow->cmdFindNext->click();
        return;
    }
    const CFindState &kept = FindState();
    if (kept.FindList.isEmpty()) {
        EditFind();
        return;
    }
    if (m_findNext.FindText != kept.FindList.first() || m_findNext.MatchCase != kept.MatchCase)
        m_findNext.Restart();
    m_findNext.FindTarget = m_text.get();
    m_findNext.FindText = kept.FindList.first();
    m_findNext.MatchCase = kept.MatchCase;
    m_findNext.Direction = kept.Direction;
    m_findNext.FindNext();
}

void frmNotePad::FindWindow_BeforeClose()
{
    FindWindow = nullptr;
}

void frmNotePad::EditGotoLine()
{
    const std::optional<QString> answer
        = Prompt().InputBox(QStringLiteral("请输入行数"), QStringLiteral("前进到指定行"));
    if (!answer)
        return;
    const double line = basConvert::Val(*answer);
    m_text->setSelStart(CNotePads::LinePosition(m_text->Text(), line > 1e9 ? 1000000000 : int(line)));
    rtfEdit->setFocus();
}

void frmNotePad::EditSelectAll()
{
    rtfEdit->selectAll();
}

void frmNotePad::EditTimeStamp()
{
    const std::optional<QString> stamp = CNotePads::TimeStamp(Velmar ? Velmar->Players() : nullptr);
    if (!stamp) {
        MsgBox(QStringLiteral("因为没有打开的播放器，无法取得时间点"));
        return;
    }
    m_text->setSelText(*stamp);
}

void frmNotePad::FormatFont()
{
    const QTextCharFormat current = rtfEdit->currentCharFormat();
    const QFont font = current.font();
    PromptFont initial;
    initial.Name = font.family();
    initial.Size = font.pointSizeF() > 0 ? font.pointSizeF() : rtfEdit->font().pointSizeF();
    initial.Bold = font.bold();
    initial.Italic = font.italic();
    initial.Underline = font.underline();
    initial.Strikeout = font.strikeOut();
    const std::optional<PromptFont> chosen = Prompt().ChooseFont(initial);
    if (!chosen)
        return;
    QTextCharFormat f;
    if (!chosen->Name.isEmpty())
        f.setFontFamilies(QStringList { chosen->Name });
    if (chosen->Size > 0)
        f.setFontPointSize(chosen->Size);
    f.setFontWeight(chosen->Bold ? QFont::Bold : QFont::Normal);
    f.setFontItalic(chosen->Italic);
    f.setFontUnderline(chosen->Underline);
    f.setFontStrikeOut(chosen->Strikeout);
    rtfEdit->mergeCurrentCharFormat(f);
}

void frmNotePad::FormatColor()
{
    const qint64 current = basTranslateWindow::ColourOfFormat(rtfEdit->currentCharFormat());
    const std::optional<qint64> chosen = Prompt().ChooseColour(current);
    if (!chosen)
        return;
    QTextCharFormat f;
    f.setForeground(BgrToColor(*chosen));
    rtfEdit->mergeCurrentCharFormat(f);
}

void frmNotePad::FilePrint()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    if (!RunPrintDialog || !RunPrintDialog(printer))
        return;
    rtfEdit->document()->print(&printer);
}

void frmNotePad::FilePrinterSetting()
{
    MsgBox(QStringLiteral("在此版本中, 打印设定选项无效"));
}

// ---- files ------------------------------------------------------------------------------------

bool frmNotePad::askToSave()
{
    if (!Changed())
        return true;
    const QString name = FileName().isEmpty() ? windowTitle() : FileName();
    switch (MsgBox(CNotePads::CloseQuestion(name), MsgBoxStyle::YesNoCancel | MsgBoxStyle::Question,
        CNotePads::CloseTitle())) {
    case MsgBoxResult::Yes:
        return SaveFile(false);
    case MsgBoxResult::No:
        return true;
    default:
        return false;
    }
}

bool frmNotePad::OpenFile(int, const QString &FileName)
{
    if (!askToSave())
        return false;
    QString name = FileName;
    int filterIndex = 1;
    if (name.isEmpty()) {
        name = Prompt().OpenFileName(
            Msg(QStringLiteral("VELMAR_NOTEPAD_103")), CNotePads::OpenFilter(), &filterIndex);
        if (name.isEmpty())
            return false;
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        MsgBox(name + QStringLiteral(" 无法打开文件。 "));
        return false;
    }
    const QByteArray bytes = file.readAll();
    bool unicode = false;
    const QString text = CNotePads::Decode(bytes, filterIndex, &unicode);
    {
        m_loading = true;
        m_text->setText(text);
        m_loading = false;
    }
    m_unicode = unicode;
    if (CNotePads::Slot *slot = NotePads().At(m_slot)) {
        slot->FileName = name;
        slot->Changed = false;
    }
    updateCaption();
    if (RecentFile)
        RecentFile->InsertRecentFileList(name, ::ScriptType::Plain);
    m_text->setSelStart(0);
    return true;
}

bool frmNotePad::SaveFile(bool SaveAs, int)
{
    QString name = FileName();
    bool unicode = m_unicode;
    if (SaveAs || name.isEmpty()) {
        int filterIndex = unicode ? 1 : 2;
        const QString proposal = name.isEmpty() ? CNotePads::ProposedName(m_slot) : name;
        name = Prompt().SaveFileName(
            Msg(QStringLiteral("VELMAR_NOTEPAD_105")), CNotePads::SaveFilter(), &filterIndex, proposal);
        if (name.isEmpty())
            return false;
        unicode = filterIndex != 2;
    }
    QString error;
    if (!SaveWithBackup(name, Content(), unicode, &error)) {
        MsgBox(QStringLiteral("打开文件错误: ") + error);
        return false;
    }
    m_unicode = unicode;
    if (CNotePads::Slot *slot = NotePads().At(m_slot)) {
        slot->FileName = name;
        slot->Changed = false;
    }
    updateCaption();
    if (RecentFile)
        RecentFile->InsertRecentFileList(name, ::ScriptType::Plain);
    return true;
}

void frmNotePad::ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries)
{
    ShowRecentEntries(mnuFileRecent, entries, [this](QAction *entry) { connectRecent(entry); });
}

void frmNotePad::closeEvent(QCloseEvent *event)
{
    if (!askToSave()) {
        event->ignore();
        return;
    }
    if (FindWindow)
        FindWindow->close();
    release();
    event->accept();
}
