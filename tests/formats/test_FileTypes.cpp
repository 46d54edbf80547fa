#include "FormatTestSupport.h"

#include "formats/CFileOptionModel.h"
#include "formats/basFileTypes.h"
#include "formats/basTimingFile.h"
#include "shell/CRecentFile.h"
#include "shell/basRouting.h"

#include <QStringList>

namespace {

using K = DocumentWindowKind;

// What each kind of file means to every part that decides by it, as the file options,
// the timing window and the frame document it.
struct Expected
{
    ScriptType Type;
    const char *Saved; // the extension a save gives
    const char *Name; // the command line's name
    const char16_t *Caption; // the file options' button
    K Window;
    bool RoutedByType;
    const char *Opened; // extensions a timing window opens as this type
    const char *Picked; // extensions that pick it in the file options
    const char *Routed; // extensions the frame hands to its window
    const char *FilterOpen, *FilterSave; // the frame's file dialog
};

void PrintTo(const Expected &e, std::ostream *os)
{
    *os << "type " << qint32(e.Type);
}

const Expected rows[] = {
    { ScriptType::Plain, ".txt", "events", u"翻译稿(txt)", K::Translate, true, "", "", "TXT INI", "202",
        "202" },
    { ScriptType::SSA, ".ssa", "ssa", u"SSA", K::Timing, true, "SSA", "SSA", "SSA", "203", "204" },
    { ScriptType::ASS, ".ass", "ass", u"ASS", K::Timing, true, "ASS", "ASS", "ASS", "203", "204" },
    { ScriptType::SAMI, ".smi", "smi", u"SAMI(smi)", K::Timing, true, "SMI", "SMI", "SMI SAMI", "203",
        "204" },
    { ScriptType::SRT, ".srt", "srt", u"SRT", K::Timing, true, "SRT", "SRT", "SRT", "203", "204" },
    { ScriptType::SMP, ".txt", "smp", u"SMP(txt)", K::Timing, true, "SMP", "", "", "203", "204" },
    { ScriptType::RichText, ".rtf", "", u"RTF", K::Translate, true, "", "RTF DOC", "RTF", "202", "202" },
    { ScriptType::DialogueText, ".txt", "txt", u"对白文本(txt)", K::Timing, true, "TXT", "TXT", "", "206",
        "206" },
    { ScriptType::LRC, ".lrc", "lrc", u"LRC", K::Timing, false, "LRC", "LRC", "", "206", "206" },
    { ScriptType::SST, ".sst", "sst", u"SST", K::Timing, false, "SST", "SST", "", "207", "207" },
    { ScriptType::Video, ".txt", "", u"", K::Player, true, "", "",
        "AVI DIVX VOB MP3 MPG MPGA ASF WMV WMA MDI MKV", "205", "205" },
};

QStringList words(const char *list)
{
    return QString::fromLatin1(list).split(u' ', Qt::SkipEmptyParts);
}

class FileTypeRows : public ::testing::TestWithParam<Expected>
{
};

} // namespace

TEST_P(FileTypeRows, EveryPartDecidesAsTheRowSays)
{
    const Expected &e = GetParam();
    const FileTypeRow *row = FileTypeOf(e.Type);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(QString::fromUtf16(row->Caption), QString::fromUtf16(e.Caption));
    EXPECT_EQ(CFileOptionModel::ExtensionOfType(e.Type), QString::fromLatin1(e.Saved));
    if (*e.Name) {
        EXPECT_EQ(TypeOfShortName(QString::fromLatin1(e.Name)), e.Type);
        EXPECT_EQ(TypeOfShortName(QString::fromLatin1(e.Name).toUpper()), e.Type);
    }
    EXPECT_EQ(TypeOfShortName(QString::number(qint32(e.Type))),
        e.Type == ScriptType::Video ? std::nullopt : std::optional(e.Type));

    for (const QString &ext : words(e.Opened))
        EXPECT_EQ(basTimingFile::OpenTypeFromExtension(QStringLiteral("d.x/a.") + ext.toLower()), e.Type)
            << ext.toStdString();
    for (const QString &ext : words(e.Picked)) {
        EXPECT_EQ(CFileOptionModel::TypeOfFileName(QStringLiteral("a.") + ext, true), e.Type)
            << ext.toStdString();
        EXPECT_EQ(CFileOptionModel::TypeOfFileName(QStringLiteral("a.") + ext.toLower(), false),
            e.Type == ScriptType::RichText ? ScriptType::RichText : ScriptType::Plain)
            << ext.toStdString();
    }
    // Where the two differ, the other one takes the extension for unknown.
    for (const QString &ext : words(e.Opened)) {
        if (!words(e.Picked).contains(ext)) {
            EXPECT_EQ(
                CFileOptionModel::TypeOfFileName(QStringLiteral("a.") + ext, true), ScriptType::DialogueText);
        }
    }
    for (const QString &ext : words(e.Picked)) {
        if (!words(e.Opened).contains(ext)) {
            EXPECT_EQ(
                basTimingFile::OpenTypeFromExtension(QStringLiteral("a.") + ext), ScriptType::DialogueText);
        }
    }
    for (const QString &ext : words(e.Routed))
        EXPECT_EQ(WindowKindOfFileName(QStringLiteral("/w/a.") + ext.toLower()), e.Window)
            << ext.toStdString();

    EXPECT_EQ(WindowKindOfType(e.Type), e.RoutedByType ? e.Window : K::None);
    const char16_t *label = e.Window == K::Timing ? u"时间轴" : e.Window == K::Player ? u"动画" : u"翻译";
    EXPECT_EQ(CRecentFile::ScripyTypeName(e.Type), QString::fromUtf16(label));
    EXPECT_EQ(FileDialogFilterKey(FileOperation::Open, e.Type), QStringLiteral("COMM_MSG_") + e.FilterOpen);
    EXPECT_EQ(FileDialogFilterKey(FileOperation::Save, e.Type), QStringLiteral("COMM_MSG_") + e.FilterSave);
}

INSTANTIATE_TEST_SUITE_P(EveryRow, FileTypeRows, ::testing::ValuesIn(rows));

TEST(FileTypeTable, HoldsEveryKindOnceInTheOrderOfTheirNumbers)
{
    ASSERT_EQ(FileTypes().size(), std::size(rows));
    for (size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(FileTypes()[i].Type, rows[i].Type);
    EXPECT_EQ(FileTypeOf(ScriptType(10)), nullptr);
    EXPECT_EQ(TypeOfShortName(QStringLiteral("rtf")), std::nullopt);
    EXPECT_EQ(TypeOfShortName(QString()), std::nullopt);
}
