#include "translation/CNotePads.h"

#include "core/basPlatform.h"
#include "core/basText.h"
#include "core/basTime.h"
#include "player/CPlayer.h"
#include "player/CPlayers.h"

#include <QStringList>

int CNotePads::Open(QObject *window)
{
    std::size_t i = 0;
    while (i < m_slots.size() && m_slots[i].InUse)
        ++i;
    if (i == m_slots.size())
        m_slots.emplace_back();
    m_slots[i] = Slot { true, false, window, QString() };
    return int(i) + 1;
}

void CNotePads::Close(int index)
{
    if (Slot *slot = At(index))
        *slot = Slot();
}

CNotePads::Slot *CNotePads::At(int index)
{
    if (index < 1 || index > Count() || !m_slots[std::size_t(index - 1)].InUse)
        return nullptr;
    return &m_slots[std::size_t(index - 1)];
}

QString CNotePads::OpenFilter()
{
    return QStringLiteral("翻译稿(自动) (*.*)|*.*|翻译稿(Unicode) (*.*)|*.*|翻译稿(ANSI) (*.*)|*.*");
}

QString CNotePads::SaveFilter()
{
    return QStringLiteral("翻译稿(Unicode) (*.*)|*.*|翻译稿(ANSI) (*.*)|*.*");
}

QString CNotePads::Decode(const QByteArray &bytes, int filterIndex, bool *unicode)
{
    bool wide = false;
    QString text;
    if (filterIndex == 2) {
        wide = true;
        text = DecodeUtf16(bytes);
    } else if (filterIndex == 3) {
        text = DecodeSystemCodePage(bytes);
    } else {
        const WholeFileRead read = DecodeWholeFile(bytes, false);
        wide = read.Unicode;
        text = read.Text;
    }
    if (unicode)
        *unicode = wide;
    return text;
}

QString CNotePads::ProposedName(int index)
{
    return ProgramFolder() + QStringLiteral("翻译") + QString::number(index) + QStringLiteral(".txt");
}

QString CNotePads::CloseQuestion(const QString &name)
{
    return QStringLiteral("[") + name + QStringLiteral("] 已改变.") + QStringLiteral("\r\n")
        + QStringLiteral("要保存文件吗 ?");
}

QString CNotePads::CloseTitle()
{
    return QStringLiteral("关闭翻译");
}

int CNotePads::LinePosition(const QString &crlfText, int line)
{
    const QStringList lines = crlfText.split(QStringLiteral("\r\n"));
    const int before = qBound(0, line - 1, int(lines.size()) - 1);
    int position = 0;
    for (int i = 0; i < before; ++i)
        position += int(lines[i].size()) + 2;
    return position;
}

std::optional<QString> CNotePads::TimeStamp(const CPlayers *players)
{
    if (!players || players->Count() == 0)
        return std::nullopt;
    const CPlayer *first = players->At(0);
    if (!first)
        return std::nullopt;
    return TimeToString(first->CurrentPosition(), 2);
}

CNotePads &NotePads()
{
    static CNotePads pads;
    return pads;
}
