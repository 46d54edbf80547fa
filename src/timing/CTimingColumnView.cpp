#include "timing/CTimingColumnView.h"

#include "core/basMessage.h"
#include "timing/CTimingGrid.h"

namespace {

constexpr const char16_t *kKeys[CTimingColumnView::ItemCount] = { u"SSALineType", u"SSAMarked",
    u"SSAStartTime", u"SSAEndTime", u"SSAStyle", u"SSAName", u"SSAMarginL", u"SSAMarginR", u"SSAMarginV",
    u"SSAEffect", u"SSAEffectY1", u"SSAEffectY2", u"SSAEffectDelay", u"SSAEffectFade", u"SSAText" };

constexpr int kTextKeys[CTimingColumnView::ItemCount]
    = { 514, 500, 501, 502, 503, 504, 505, 506, 507, 508, 509, 510, 511, 512, 513 };

constexpr int kStyleItem = 5;

bool IsShownAtStart(int col)
{
    return col == CTimingGrid::ColStartTime || col == CTimingGrid::ColEndTime
        || col == CTimingGrid::ColDialog;
}

} // namespace

CTimingColumnView::CTimingColumnView(CTimingGrid &grid)
    : m_grid(grid)
{
    LoadTexts();
}

QString CTimingColumnView::ShownMark()
{
    return Msg(QStringLiteral("TIMING_MSG_101"));
}

QString CTimingColumnView::HiddenMark()
{
    return Msg(QStringLiteral("TIMING_MSG_100"));
}

void CTimingColumnView::LoadTexts()
{
    m_texts.clear();
    for (int key : kTextKeys)
        m_texts << Msg(QStringLiteral("TIMING_BUTTON_MENU_%1").arg(key));
}

QString CTimingColumnView::ItemKey(int item) const
{
    return item >= 1 && item <= ItemCount ? QString::fromUtf16(kKeys[item - 1]) : QString();
}

QString CTimingColumnView::ItemText(int item) const
{
    return item >= 1 && item <= m_texts.size() ? m_texts.at(item - 1) : QString();
}

void CTimingColumnView::setItemText(int item, const QString &text)
{
    if (item >= 1 && item <= m_texts.size())
        m_texts[item - 1] = text;
}

int CTimingColumnView::ItemFromKey(const QString &key) const
{
    for (int i = 0; i < ItemCount; ++i)
        if (key == QStringView(kKeys[i]))
            return i + 1;
    return 0;
}

int CTimingColumnView::ItemColumn(const QString &key)
{
    for (int i = 0; i < ItemCount; ++i) {
        if (key == QStringView(kKeys[i])) {
            const int col = i + 1;
            return col >= CTimingGrid::ColEffectY1 && col <= CTimingGrid::ColEffectFade ? 0 : col;
        }
    }
    return 0;
}

bool CTimingColumnView::HasMark(int item, const QString &mark) const
{
    return !mark.isEmpty() && ItemText(item).startsWith(mark);
}

void CTimingColumnView::SetMark(int item, const QString &mark)
{
    const QString shown = ShownMark();
    const QString hidden = HiddenMark();
    QString text = ItemText(item);
    if (HasMark(item, shown))
        text = mark + text.mid(shown.size());
    else if (HasMark(item, hidden))
        text = mark + text.mid(hidden.size());
    else
        return;
    setItemText(item, text);
}

void CTimingColumnView::PickItem(int item)
{
    if (item < 1 || item > ItemCount)
        return;
    const QString shown = ShownMark();
    const QString hidden = HiddenMark();
    if (HasMark(item, shown))
        SetMark(item, hidden);
    else if (HasMark(item, hidden))
        SetMark(item, shown);
    const int col = ItemColumn(ItemKey(item));
    if (col == 0)
        return;
    if (HasMark(item, hidden))
        m_grid.HideColumn(col);
    else
        m_grid.ShowColumn(col);
}

void CTimingColumnView::PickItem(const QString &key)
{
    PickItem(ItemFromKey(key));
}

void CTimingColumnView::PressButton()
{
    CSpread &grid = m_grid.Spread();
    const bool drawing = grid.ReDraw();
    grid.setReDraw(false);
    if (HasMark(kStyleItem, ShownMark())) {
        for (int col = 1; col <= ItemCount; ++col) {
            const bool show = IsShownAtStart(col);
            if (show)
                m_grid.ShowColumn(col);
            else
                m_grid.HideColumn(col);
            SetMark(col, show ? ShownMark() : HiddenMark());
        }
    } else if (HasMark(kStyleItem, HiddenMark())) {
        for (int col = 1; col <= ItemCount; ++col) {
            m_grid.ShowColumn(col);
            SetMark(col, ShownMark());
        }
    }
    grid.setReDraw(drawing);
}
