#pragma once

#include "effects/CEffectArgs.h"
#include "effects/CEffectControl.h"
#include "effects/CTagPage.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <vector>

// The eight pages of the effect window over one shared pool of controls. A page is a
// declaration that shows some controls of the pool with its captions (and, the first
// time, its defaults); the values of all controls are backed up when a page is left and
// put back when it is entered. The tag page (page 0) keeps its own values in `Tag`.
class CEffectPages
{
public:
    static constexpr int PageCount = 8;
    // The colour cycle over the values shown: a page without controls of its own, which
    // keeps the controls and values of the page shown before it (nothing hidden, backed up
    // or restored).
    static constexpr int ColourCycleCurrentPage = 5;

    struct BackupRow
    {
        QString Name;
        QVariant Index; // empty for a control that is in no array
        QVariant Value; // empty when the type stores nothing
    };

    CEffectPages();

    // Selects every page once so that each is declared with its defaults and backed up,
    // then shows page 0.
    void Load();
    // Backs up the page that is left and restores the one entered.
    void SelectPage(int page);
    int CurrentPage() const { return m_page; }

    // The tab of the tag page: changes the explanation and the gradual frame together.
    void SelectTab(int tab);
    int CurrentTab() const { return m_tab; }

    // Hides and enables every control inside the frame, then declares the page (page 5
    // declares none and leaves everything as it stands).
    void ShowPage(int page, bool showDefaults);
    void BackupCtrl(int page, bool firstTime);
    void RestoreCtrl(int page);
    // Enables the gradual frame of the tag page.
    void AccelEnabled(bool enabled) { m_accelEnabled = enabled; }
    bool IsAccelEnabled() const { return m_accelEnabled; }
    bool TabStripVisible() const { return m_tabStripVisible; }

    // The text of the explanation box for the current page and tab.
    QString Explanation() const;

    // The pool, in the order of the form's controls.
    const std::vector<CEffectControl> &Controls() const { return m_controls; }
    // The visible controls in the order of the page's declaration.
    QList<const CEffectControl *> VisibleControls() const;
    CEffectControl *Control(const QString &name, int index = -1);
    const CEffectControl *Control(const QString &name, int index = -1) const;
    // Sets an option and clears the other options of its array.
    void SetOption(const QString &name, int index);

    // Points picked in the player window, while the named box has the focus. A click
    // fills the coordinate pair of the focused box on the move and position pages; a
    // drag measures the distance from its start point into the focused spacing box.
    void PosSelected(const QString &focusKey, int x, int y);
    void StartPosSelected(const QString &focusKey, int x, int y);
    void ChangePosSelected(const QString &focusKey, int x, int y);
    void EndPosSelected() { m_dragging = false; }

    // The generator parameters from the current values.
    CEffectArgs Args() const;

    const QList<BackupRow> &Backup(int page) const { return m_backup[page]; }

    CTagPage Tag;

private:
    void addControls(const QString &name, const QString &typeName, int count);
    void place(const QString &name, int index, const QString &caption);
    void placeText(int index, const QString &label, const QString &value, const QString &unit);
    void declare(int page);
    void declareTagPage();
    void declareDrawing();
    void declareKaraoke();
    void declareTimeDifference();
    void declareColourCycle();
    void declareMove();
    void declarePositionSteps();

    std::vector<CEffectControl> m_controls;
    QList<BackupRow> m_backup[PageCount];
    int m_page = 0;
    int m_tab = 0;
    int m_order = 0;
    bool m_showDefaults = false;
    bool m_accelEnabled = false;
    bool m_tabStripVisible = false;
    bool m_dragging = false;
    int m_dragX = 0;
    int m_dragY = 0;
};
