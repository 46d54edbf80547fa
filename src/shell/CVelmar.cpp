#include "shell/CVelmar.h"

#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basMessage.h"
#include "formats/CTimings.h"
#include "player/CPlayers.h"
#include "script/CSSAContents.h"
#include "translation/CTranslates.h"

CVelmar *Velmar = nullptr;

CVelmar::CVelmar() = default;
CVelmar::~CVelmar() = default;

void CVelmar::Init()
{
    setPlayers(Class::MakeCollection<CPlayers>());
    setTranslates(Class::MakeCollection<CTranslates>());
    setTimings(Class::MakeCollection<CTimings>());
    setSSAContents(Class::MakeCollection<CSSAContents>());
    m_id = 0;
}

void CVelmar::setPlayers(std::unique_ptr<CPlayers> list)
{
    if (list)
        list->Count();
    m_players = std::move(list);
}

void CVelmar::setTranslates(std::unique_ptr<CTranslates> list)
{
    if (list)
        list->Count();
    m_translates = std::move(list);
}

void CVelmar::setTimings(std::unique_ptr<CTimings> list)
{
    if (list)
        static_cast<ICollection *>(list.get())->Count();
    m_timings = std::move(list);
}

void CVelmar::setSSAContents(std::unique_ptr<CSSAContents> list)
{
    if (list)
        list->Count();
    m_ssaContents = std::move(list);
}

void CVelmar::setID(qint32 id)
{
    if (m_idLocked)
        throw VelmarError(1002, QStringLiteral("Write-once property"));
    m_id = id;
    m_idLocked = true;
}

QString CVelmar::Content()
{
    MsgBox(Msg(QStringLiteral("COMM_MSG_103")));
    return {};
}
