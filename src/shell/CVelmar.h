#pragma once

#include "core/isub.h"

#include <memory>

class CPlayers;
class CTranslates;
class CTimings;
class CSSAContents;

// The root document: holds the document collections for the whole run.
class CVelmar : public isub
{
public:
    CVelmar();
    ~CVelmar() override;

    // Creates Players, Translates, Timings and SSAContents in that order; ID = 0.
    void Init();

    CPlayers *Players() const { return m_players.get(); }
    CTranslates *Translates() const { return m_translates.get(); }
    CTimings *Timings() const { return m_timings.get(); }
    CSSAContents *SSAContents() const { return m_ssaContents.get(); }
    void setPlayers(std::unique_ptr<CPlayers> list);
    void setTranslates(std::unique_ptr<CTranslates> list);
    void setTimings(std::unique_ptr<CTimings> list);
    void setSSAContents(std::unique_ptr<CSSAContents> list);

    // Write-once: the first write stores the value and sets the guard; a later write
    // raises error 1002.
    qint32 ID() const { return m_id; }
    void setID(qint32 id);

    // The root has no text form: reading shows "COMM_MSG_103" and gives "".
    QString Content() override;
    void setContent(const QString &) override { }
    void Clear() override { }

private:
    std::unique_ptr<CPlayers> m_players;
    std::unique_ptr<CTranslates> m_translates;
    std::unique_ptr<CTimings> m_timings;
    std::unique_ptr<CSSAContents> m_ssaContents;
    qint32 m_id = 0;
    bool m_idLocked = false;
};

// The root of the run, once StartCore has made it.
extern CVelmar *Velmar;
