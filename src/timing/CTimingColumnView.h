#pragma once

#include <QString>
#include <QStringList>

class CTimingGrid;

// The column view menu of the SSA button of a timing window: fifteen items, one for each
// of the columns 1 to 15, whose first character is a star that tells whether the column
// is shown. The item texts are the only record of the view.
class CTimingColumnView
{
public:
    static constexpr int ItemCount = 15;

    explicit CTimingColumnView(CTimingGrid &grid);

    // Item texts from the catalogue, in menu order.
    void LoadTexts();

    // 1-based item index, the same as the column it stands for.
    QString ItemKey(int item) const;
    QString ItemText(int item) const;
    void setItemText(int item, const QString &text);
    int ItemFromKey(const QString &key) const;
    // The column an item hides and shows, 0 for the four effect parameter items.
    static int ItemColumn(const QString &key);

    // The user picks an item (by index or by key).
    void PickItem(int item);
    void PickItem(const QString &key);
    // The user presses the button itself: full view to compact and back.
    void PressButton();

    static QString ShownMark();
    static QString HiddenMark();

private:
    // Replaces the item's star by the given one; an item without a star stays.
    void SetMark(int item, const QString &mark);
    bool HasMark(int item, const QString &mark) const;

    CTimingGrid &m_grid;
    QStringList m_texts;
};
