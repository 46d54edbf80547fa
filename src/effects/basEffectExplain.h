#pragma once

#include <QString>
#include <QStringList>

// The effect window's own manual of the override tags and of its special-effect pages,
// shown read-only beside the parameters.
namespace basEffectExplain {

constexpr int EntryCount = 25;

// Entry 0 explains the gradual tag "\t", entries 1 to 24 the tags of the tag page.
// "说明: ", the explanation lines, "例子: " and the example, each of the first ones
// ending with CR LF; an unknown entry gives an empty text.
QString ExplainEntry(int entry);
// The text for a tab of the tag page: the entry after it.
QString ExplainTag(int tab);
// The text of a page: page 0 explains the current tab; pages 1, 2, 3, 4, 6 and 7 have
// a text of their own; page 5 and unknown pages have none.
QString ExplainPage(int page, int tab = 0);

// The sample sentence of the move page.
QString MoveSampleText();

} // namespace basEffectExplain
