#pragma once

#include "core/IForm.h"
#include "shell/IAutoSaveDocument.h"
#include "translation/CTextFind.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class CTextEditControl;
class MdiVelmar;
class frmFind;
template <typename Window> struct WindowMenuItem;
class QAction;
class QMenuBar;
class QPrinter;
class QTextEdit;
struct RecentFileMenuEntry;

// A simple editor for a translation draft: plain text in and out, without tables, with
// the edit commands, find and replace, go to line, a time stamp from the first player,
// font and colour of the selection, and printing. Each window holds a slot of the
// notepads; the slot's number is its number and its tag.
class frmNotePad : public QWidget, public IForm, public IAutoSaveDocument
{
    Q_OBJECT

public:
    explicit frmNotePad(QWidget *parent = nullptr);
    ~frmNotePad() override;

    // Makes notepad windows for the frame's NewDocument(4). With the setting "NotePad" of
    // the "Setting" section at 1, the frame's File menu also offers a new notepad.
    static void Register(MdiVelmar &frame);
    static bool MenuEntryWanted();

    // Takes the lowest free slot.
    void Init();
    void BindFrame(MdiVelmar &frame);
    int Number() const { return m_slot; }
    bool Changed() const;
    QString FileName() const;
    QAction *MenuEntry(const QString &name) const;

    // IForm. OpenType and SaveType are not used.
    bool OpenFile(int OpenType, const QString &FileName) override;
    bool SaveFile(bool SaveAs, int SaveType = 0) override;

    // IAutoSaveDocument: the editor's text.
    Kind AutoSaveKind() const override { return NotePad; }
    QString Content() override;

    void FindWindow_BeforeClose();

    // The commands of the menus.
    void EditUndo();
    void EditCut();
    void EditCopy();
    void EditPaste();
    void EditDelete();
    void EditFind();
    void EditFindNext();
    void EditGotoLine();
    void EditSelectAll();
    void EditTimeStamp();
    void FormatFont();
    void FormatColor();
    void FilePrint();
    void FilePrinterSetting();
    void ShowRecentMenu(const std::vector<RecentFileMenuEntry> &entries);

    // The frame's active child, whose focused rich-text control the edit commands act
    // on; unset: this window.
    std::function<QWidget *()> ActiveWindow;
    // Sets the printer up with the user (the print dialog); false when cancelled. Tests
    // replace it.
    std::function<bool(QPrinter &)> RunPrintDialog;
    std::function<void(const QString &caption)> OpenRecent;

    QTextEdit *rtfEdit = nullptr;
    QMenuBar *menuBar = nullptr;
    QList<QAction *> mnuFileRecent;
    QPointer<frmFind> FindWindow;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    static const std::vector<WindowMenuItem<frmNotePad>> &MenuItems();
    void connectRecent(QAction *entry);
    QTextEdit *activeTextControl() const;
    void updateCaption();
    bool askToSave();
    void release();

    int m_slot = 0;
    bool m_unicode = true;
    bool m_loading = false;
    std::unique_ptr<CTextEditControl> m_text;
    // Find next without the dialog: kept between strokes, so that a repeated search moves
    // on from its last hit.
    CTextFind m_findNext;
};
