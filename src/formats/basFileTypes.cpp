#include "formats/basFileTypes.h"

#include <QLatin1StringView>
#include <array>

namespace {

using K = DocumentWindowKind;
using F = FileFilter;

constexpr std::array<FileTypeRow, 11> rows { {
    { ScriptType::Plain, "TXT", "events", u"翻译稿(txt)", K::Translate, true, "", false, "TXT INI",
        F::Translation, F::Subtitles },
    { ScriptType::SSA, "SSA", "ssa", u"SSA", K::Timing, true, "SSA", true, "SSA", F::Subtitles,
        F::Subtitles },
    { ScriptType::ASS, "ASS", "ass", u"ASS", K::Timing, true, "ASS", true, "ASS", F::Subtitles,
        F::Subtitles },
    { ScriptType::SAMI, "SMI", "smi", u"SAMI(smi)", K::Timing, true, "SMI", true, "SMI SAMI", F::Subtitles,
        F::Subtitles },
    { ScriptType::SRT, "SRT", "srt", u"SRT", K::Timing, true, "SRT", true, "SRT", F::Subtitles,
        F::Subtitles },
    { ScriptType::SMP, "TXT", "smp", u"SMP(txt)", K::Timing, true, "SMP", false, "", F::Subtitles, F::Text },
    { ScriptType::RichText, "RTF", "", u"RTF", K::Translate, true, "RTF DOC", true, "RTF", F::Translation,
        F::Subtitles },
    { ScriptType::DialogueText, "TXT", "txt", u"对白文本(txt)", K::Timing, true, "TXT", true, "", F::Text,
        F::Text },
    { ScriptType::LRC, "LRC", "lrc", u"LRC", K::Timing, false, "LRC", true, "", F::Text, F::Subtitles },
    { ScriptType::SST, "SST", "sst", u"SST", K::Timing, false, "SST", true, "", F::SST, F::SST },
    { ScriptType::Video, "", "", u"", K::Player, true, "", false,
        "AVI DIVX VOB MP3 MPG MPGA ASF WMV WMA MDI MKV", F::Video, F::Video },
} };

// Whether a blank-separated list holds the extension.
bool listed(const char *list, QStringView extension)
{
    if (extension.isEmpty())
        return false;
    const QLatin1StringView all(list);
    qsizetype from = 0;
    while (from < all.size()) {
        qsizetype to = all.indexOf(u' ', from);
        if (to < 0)
            to = all.size();
        if (all.sliced(from, to - from) == extension)
            return true;
        from = to + 1;
    }
    return false;
}

} // namespace

qsizetype ExtensionDot(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    const qsizetype slash = qMax(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return dot > slash ? dot : -1;
}

std::span<const FileTypeRow> FileTypes()
{
    return rows;
}

const FileTypeRow *FileTypeOf(ScriptType type)
{
    for (const FileTypeRow &row : rows)
        if (row.Type == type)
            return &row;
    return nullptr;
}

QString SaveExtensionOf(ScriptType type)
{
    const FileTypeRow *row = FileTypeOf(type);
    const char *extension = row && *row->SaveExtension ? row->SaveExtension : "TXT";
    return u'.' + QString::fromLatin1(extension).toLower();
}

std::optional<ScriptType> OpenedTypeOfExtension(QStringView extension)
{
    for (const FileTypeRow &row : rows)
        if (row.Window == K::Timing && listed(row.Extensions, extension))
            return row.Type;
    return std::nullopt;
}

std::optional<ScriptType> PickedTypeOfExtension(QStringView extension)
{
    for (const FileTypeRow &row : rows)
        if (row.PickedByExtension && listed(row.Extensions, extension))
            return row.Type;
    return std::nullopt;
}

DocumentWindowKind RoutedWindowOfExtension(QStringView extension)
{
    for (const FileTypeRow &row : rows)
        if (listed(row.RoutedExtensions, extension))
            return row.Window;
    return K::None;
}

std::optional<ScriptType> TypeOfShortName(const QString &name)
{
    bool number = false;
    const int value = name.toInt(&number);
    for (const FileTypeRow &row : rows) {
        if (row.Type == ScriptType::Video)
            continue;
        if (number ? qint32(row.Type) == value
                   : (*row.ShortName && name.toLower() == QLatin1StringView(row.ShortName)))
            return row.Type;
    }
    return std::nullopt;
}

QString FilterKey(FileFilter filter, FileOperation operation)
{
    switch (filter) {
    case F::Translation:
        return QStringLiteral("COMM_MSG_202");
    case F::Subtitles:
        if (operation == FileOperation::Open)
            return QStringLiteral("COMM_MSG_203");
        if (operation == FileOperation::Save)
            return QStringLiteral("COMM_MSG_204");
        break;
    case F::Video:
        return QStringLiteral("COMM_MSG_205");
    case F::SST:
        return QStringLiteral("COMM_MSG_207");
    case F::Text:
        break;
    }
    return QStringLiteral("COMM_MSG_206");
}
