#include "player/CPlayers.h"

#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basMessage.h"
#include "core/basSetting.h"

using namespace basConvert;

namespace {

const QString Section = QStringLiteral("TimeOffset");
const QString BackKey = QStringLiteral("PlayBack");
const QString ForwordKey = QStringLiteral("PlayForword");

void readStep(const QString &key, double &step)
{
    try {
        step = CDbl(GetSetting(Section, key, QStringLiteral("3")));
    } catch (const VelmarError &) { }
}

} // namespace

void CPlayers::Init()
{
    m_speed = 1.0;
    ReadSettings();
}

void CPlayers::ReadSettings()
{
    readStep(BackKey, m_backStep);
    readStep(ForwordKey, m_forwordStep);
}

void CPlayers::setSpeed(double factor)
{
    m_speed = factor;
    for (CPlayer *player : m_list)
        player->setSpeed(factor);
}

void CPlayers::setBackStep(double seconds)
{
    m_backStep = seconds;
    for (CPlayer *player : m_list)
        player->setBackStep(seconds);
    SaveSetting(Section, BackKey, CStr(seconds));
    if (StepsChanged)
        StepsChanged();
}

void CPlayers::setForwordStep(double seconds)
{
    m_forwordStep = seconds;
    for (CPlayer *player : m_list)
        player->setForwordStep(seconds);
    SaveSetting(Section, ForwordKey, CStr(seconds));
    if (StepsChanged)
        StepsChanged();
}

void CPlayers::Reset()
{
    for (CPlayer *player : m_list)
        player->Reset();
}

void CPlayers::OpenFile(IPlayerWindow *form, const QString &fileName)
{
    if (!form)
        return;
    CPlayer *player = m_list.Find(form->Tag());
    if (!player)
        return;
    player->setPlayerFileName(fileName);
    if (NameChanged)
        NameChanged(player);
}

CPlayer *CPlayers::link(std::unique_ptr<CPlayer> player)
{
    player->setSerialNo(m_counter + 1);
    player->setcollection(this);
    player->setSpeed(m_speed);
    player->setBackStep(m_backStep);
    player->setForwordStep(m_forwordStep);
    CPlayer *raw = m_list.Add(QString::number(m_counter + 1), std::move(player));
    ++m_counter;
    if (IPlayerWindow *form = raw->Window()) {
        form->setTag(QString::number(m_counter));
        form->setCaption(Msg(QStringLiteral("PLAYER_TITLE_000")) + QLatin1Char('(')
            + QString::number(m_counter) + QLatin1Char(')'));
    }
    if (Created)
        Created(raw);
    return raw;
}

CPlayer *CPlayers::Create(IPlayerWindow *form, IMediaControl *control)
{
    auto player = std::make_unique<CPlayer>();
    player->Init(m_counter + 1, form, control);
    return link(std::move(player));
}

CPlayer *CPlayers::Add(std::unique_ptr<CPlayer> player)
{
    try {
        if (!player)
            throw VelmarError(91, QStringLiteral("Object variable or With block variable not set"));
        return link(std::move(player));
    } catch (const VelmarError &e) {
        MsgBox(e.Description());
    } catch (const std::exception &e) {
        MsgBox(QString::fromLocal8Bit(e.what()));
    }
    return nullptr;
}

void CPlayers::Clear()
{
    m_list.Clear();
}
