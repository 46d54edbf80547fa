#pragma once

#include "script/CFonts.h"

#include <QList>
#include <QStringList>
#include <memory>

// Styles taken from another script into a style list: they may be renamed first, and the
// chosen ones go in all together or not at all.
class CImportFontModel
{
public:
    // The styles offered, and the list they go into (not owned).
    void Init(std::unique_ptr<CFonts> importFonts, CFonts *target);

    CFonts *ImportFonts() const { return m_import.get(); }
    QStringList Names() const;

    // Renames the offered style at `index`, with the checks and messages of the style
    // window; true when renamed.
    bool Rename(int index);
    // OK: when a chosen style has a name the target has, its message is shown, nothing is
    // added and false keeps the window open. Otherwise every chosen style (0-based indexes
    // into Names()) joins the target and true closes the window.
    bool OK(const QList<int> &chosen);
    void Cancel() { Canceled = true; }

    bool Canceled = false;
    // The names the last OK added, in order.
    QStringList Added;

private:
    std::unique_ptr<CFonts> m_import;
    CFonts *m_target = nullptr;
};
