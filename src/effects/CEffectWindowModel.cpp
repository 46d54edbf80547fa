#include "effects/CEffectWindowModel.h"

#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "effects/basEffectApply.h"
#include "effects/basEffectFx.h"
#include "effects/basEffectTag.h"
#include "player/CPlayer.h"

#include <exception>

namespace {

const QString PageWord = QStringLiteral("PAGE");

} // namespace

CEffectWindowModel::CEffectWindowModel()
{
    m_spread.setMaxCols(2);
}

QString CEffectWindowModel::PageKey(int page)
{
    return PageWord + QString::number(page);
}

int CEffectWindowModel::PageOfKey(const QString &key)
{
    const qsizetype at = key.indexOf(PageWord);
    if (at < 0)
        return -1;
    bool ok = false;
    const int page = key.mid(at + PageWord.size()).toInt(&ok);
    return ok && page >= 0 && page < CEffectPages::PageCount ? page : -1;
}

QString CEffectWindowModel::PageCaption(int page)
{
    switch (page) {
    case 0:
        return QStringLiteral("效果符参考");
    case 1:
        return QStringLiteral("SSA作图");
    case 2:
        return QStringLiteral("卡拉OK ++");
    case 3:
        return QStringLiteral("时间轴差分");
    case 4:
        return QStringLiteral("颜色循环渐进");
    case 5: // a colour cycle over the values the form shows, with no form of its own
        return Msg(QStringLiteral("VELMAR_EFFECT_100"));
    case 6:
        return QStringLiteral("移动");
    case 7:
        return QStringLiteral("位置差分");
    default:
        return {};
    }
}

void CEffectWindowModel::Load()
{
    Pages.Load();
    LoadSpread();
}

void CEffectWindowModel::SelectPage(int page, const QString &resultText)
{
    if (page < 0 || page >= CEffectPages::PageCount)
        return;
    History.Remember(resultText);
    StoreSpread();
    Pages.SelectPage(page);
    LoadSpread();
}

QString CEffectWindowModel::generate()
{
    using namespace basEffectFx;
    switch (Pages.CurrentPage()) {
    case 0:
        return basEffectTag::BuildTag(Pages.Tag, Pages.CurrentTab());
    case 1:
        return BuildDrawing(Pages.Args()).Text();
    case 2:
        return BuildKaraokePlus(Pages.Args()).Text();
    case 3: {
        const CEffectArgs args = Pages.Args();
        BuildTimeDifference(args.optArg, args.txtArg[0], m_spread);
        return {};
    }
    case 4:
    case 5:
        return BuildColourCycle(Pages.Args()).Text();
    case 6:
        return BuildMove(Pages.Args()).Text();
    case 7:
        return BuildPositionSteps(Pages.Args()).Text();
    default:
        return {};
    }
}

QString CEffectWindowModel::Create(const QString &resultText)
{
    History.Remember(resultText);
    StoreSpread();
    QString text;
    try {
        text = generate();
    } catch (const VelmarError &fault) {
        text.clear();
        MsgBox(fault.Description());
    } catch (const std::exception &fault) {
        text.clear();
        MsgBox(QString::fromLocal8Bit(fault.what()));
    }
    // The time difference writes into the grid, also the rows it made before a fault.
    StoreSpread();
    if (!text.isEmpty())
        History.Changed();
    return text;
}

std::optional<QString> CEffectWindowModel::Back(const QString &resultText)
{
    return History.Back(resultText);
}

std::optional<QString> CEffectWindowModel::Forward()
{
    return History.Forward();
}

void CEffectWindowModel::Clear(const QString &resultText)
{
    History.Remember(resultText);
    History.Changed();
}

bool CEffectWindowModel::Apply(const QString &resultText)
{
    return basEffectApply::ApplyResult(TimingGrid, resultText);
}

bool CEffectWindowModel::StampTime()
{
    const int row = m_spread.ActiveRow();
    const int col = m_spread.ActiveCol();
    m_spread.setRow(row);
    m_spread.setCol(col);
    CPlayer *player = PlayerWindow ? PlayerWindow->player() : nullptr;
    if (!player || row < 1 || row > m_spread.MaxRows() || col < 1 || col > m_spread.MaxCols())
        return false;
    m_spread.setText(TimeToString(player->CurrentPosition(), 2));
    return true;
}

void CEffectWindowModel::StoreSpread()
{
    CEffectControl *control = Pages.Control(QStringLiteral("spdArg"), 0);
    if (!control)
        return;
    CEffectSpread &pool = control->Spread;
    pool.setMaxRows(m_spread.MaxRows());
    for (int row = 1; row <= pool.MaxRows(); ++row)
        for (int col = 1; col <= 2; ++col)
            pool.setText(row, col, m_spread.GetText(col, row));
}

void CEffectWindowModel::LoadSpread()
{
    const CEffectControl *control = Pages.Control(QStringLiteral("spdArg"), 0);
    if (!control)
        return;
    const CEffectSpread &pool = control->Spread;
    m_spread.setReDraw(false);
    m_spread.setMaxRows(pool.MaxRows());
    for (int col = 1; col <= 2; ++col) {
        m_spread.setRow(0);
        m_spread.setCol(col);
        m_spread.setText(pool.ColumnHeaders.value(col - 1));
        for (int row = 1; row <= pool.MaxRows(); ++row)
            m_spread.SetText(col, row, pool.Text(row, col));
    }
    m_spread.setReDraw(true);
}
