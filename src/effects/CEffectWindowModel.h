#pragma once

#include "core/CSpread.h"
#include "effects/CEffectHistory.h"
#include "effects/CEffectPages.h"

#include <QString>

#include <optional>

class CTimingGrid;
class IPlayerWindow;

// The effect window of a timing window without its widgets: the pages and their values,
// the small grid the pages share as the window shows it, the history of the result box,
// the grid the results are applied to and the player the times come from. The window
// shows what this holds and forwards the user's doing to it.
class CEffectWindowModel
{
public:
    CEffectWindowModel();
    CEffectWindowModel(const CEffectWindowModel &) = delete;
    CEffectWindowModel &operator=(const CEffectWindowModel &) = delete;

    // The tree's nodes are keyed by the page number and "PAGE".
    static QString PageKey(int page);
    // The page behind a key, or -1.
    static int PageOfKey(const QString &key);
    // The caption of a page's node.
    static QString PageCaption(int page);

    // Builds every page once with its defaults and shows the tag page.
    void Load();
    // Keeps the result box's text (unless kept), backs up the page that is left and
    // restores the one entered.
    void SelectPage(int page, const QString &resultText);

    // cmdCreate: keeps the result box's text, then runs the current page's generator.
    // Gives the text to insert at the caret of the result box: empty when the generator
    // wrote into the grid instead (time difference), gave nothing, or failed; a failure
    // shows its message.
    QString Create(const QString &resultText);
    // cmdRestore(0) and (1): the kept text to show, or nothing.
    std::optional<QString> Back(const QString &resultText);
    std::optional<QString> Forward();
    // cmdClear: the text is kept first, so that going back finds it again.
    void Clear(const QString &resultText);
    // The user typed in the result box.
    void ResultEdited() { History.Changed(); }

    // cmdApply: the result, a line per row, into the dialogue column of the timing grid
    // from its active row (basEffectApply::ApplyResult). Without a timing grid it says so.
    bool Apply(const QString &resultText);

    // A time hot key in the small grid: its active cell becomes the current one and,
    // with a player, takes the player's position as a time. True when a time was written.
    bool StampTime();

    // The small grid of the pages as the window shows it; the page values take it over
    // before a page is left or a generator reads it, and give it back after a restore.
    CSpread &spdArg() { return m_spread; }
    void StoreSpread();
    void LoadSpread();

    CEffectPages Pages;
    CEffectHistory History;
    CTimingGrid *TimingGrid = nullptr;
    IPlayerWindow *PlayerWindow = nullptr;

private:
    QString generate();

    CSpread m_spread;
};
