#include "shell/CScriptInfoFields.h"

#include "core/basConvert.h"
#include "core/basMessage.h"
#include "script/CSubInfo.h"

#include <optional>

using basConvert::CStr;

namespace {

// The script types of the list, in its order.
constexpr ScriptType ListedTypes[] = { ScriptType::SSA, ScriptType::ASS };

QStringList Items(const char *prefix, int first, int count)
{
    QStringList items;
    for (int i = 0; i < count; ++i)
        items << Msg(QString::fromLatin1(prefix) + QString::number(first + i));
    return items;
}

template <typename Set> void TakeNumber(const QString &text, Set set)
{
    if (const std::optional<double> v = basConvert::TryCDbl(text))
        set(*v);
}

QString ToLines(const QString &text)
{
    QString lines = text;
    return lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString ToCrlf(const QString &text)
{
    QString lines = text;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return lines.replace(u'\n', QStringLiteral("\r\n"));
}

} // namespace

void CScriptInfoFields::Read(const CSubInfo &info)
{
    Title = info.Title();
    Comment = ToLines(info.Comment());
    OriginalScript = info.OriginalScript();
    OriginalTranslation = info.OriginalTranslation();
    OriginalEditing = info.OriginalEditing();
    OriginalTiming = info.OriginalTiming();
    SynchPoint = CStr(info.SynchPoint());
    ScriptUpdatedBy = info.ScriptUpdatedBy();
    UpdateDetails = info.UpdateDetails();
    ScriptType = -1;
    for (int i = 0; i < int(std::size(ListedTypes)); ++i)
        if (ListedTypes[i] == info.ScriptType())
            ScriptType = i;
    Collisions = info.Collisions() == 0 || info.Collisions() == 1 ? info.Collisions() : -1;
    PlayResX = CStr(info.PlayResX());
    PlayResY = CStr(info.PlayResY());
    PlayDepth = CStr(info.PlayDepth());
    Timer = CStr(info.Timer());
    WrapStyle = info.WrapStyle() >= 0 && info.WrapStyle() <= 3 ? info.WrapStyle() : -1;
    LrcName = info.LrcName();
    LrcArtist = info.LrcArtist();
    LrcCDName = info.LrcCDName();
    LrcEditor = info.LrcEditor();
    LrcOffset = CStr(info.LrcOffset());
    VelmarComment = ToLines(info.VelmarComment());
}

void CScriptInfoFields::Write(CSubInfo &info) const
{
    info.setTitle(Title);
    info.setComment(ToCrlf(Comment));
    info.setOriginalScript(OriginalScript);
    info.setOriginalTranslation(OriginalTranslation);
    info.setOriginalEditing(OriginalEditing);
    info.setOriginalTiming(OriginalTiming);
    TakeNumber(SynchPoint, [&info](double v) { info.setSynchPoint(v); });
    info.setScriptUpdatedBy(ScriptUpdatedBy);
    info.setUpdateDetails(UpdateDetails);
    if (ScriptType >= 0 && ScriptType < int(std::size(ListedTypes)))
        info.setScriptType(ListedTypes[ScriptType]);
    if (Collisions == 0 || Collisions == 1)
        info.setCollisions(qint16(Collisions));
    TakeNumber(PlayResX, [&info](double v) { info.setPlayResX(v); });
    TakeNumber(PlayResY, [&info](double v) { info.setPlayResY(v); });
    TakeNumber(PlayDepth, [&info](double v) { info.setPlayDepth(v); });
    TakeNumber(Timer, [&info](double v) { info.setTimer(v); });
    if (WrapStyle >= 0 && WrapStyle <= 3)
        info.setWrapStyle(qint16(WrapStyle));
    info.setLrcName(LrcName);
    info.setLrcArtist(LrcArtist);
    info.setLrcCDName(LrcCDName);
    info.setLrcEditor(LrcEditor);
    TakeNumber(LrcOffset, [&info](double v) { info.setLrcOffset(v); });
}

QStringList CScriptInfoFields::ScriptTypeItems()
{
    return Items("SUBINFO_LIST_", 100, 2);
}

QStringList CScriptInfoFields::WrapStyleItems()
{
    return Items("SUBINFO_LIST_", 200, 4);
}

QStringList CScriptInfoFields::CollisionItems()
{
    return Items("SUBINFO_LIST_", 300, 2);
}

bool CScriptInfoFields::WrapStyleEnabled(int scriptTypeIndex)
{
    return scriptTypeIndex >= 0 && scriptTypeIndex < int(std::size(ListedTypes))
        && ListedTypes[scriptTypeIndex] == ::ScriptType::ASS;
}
