#include "FormatTestSupport.h"

#include "core/Class.h"
#include "core/basBackup.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "timing/CTimingGrid.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

class FileOption : public FormatTest
{
protected:
    QString path(const char *name) const { return dir.filePath(QString::fromLatin1(name)); }
    void write(const QString &file, const QByteArray &bytes)
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray bytes(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // A document holding two timed lines, read from an SRT text.
    void loadSrt()
    {
        write(path("in.srt"),
            "1\r\n00:00:01,200 --> 00:00:03,450\r\nHello\r\n\r\n"
            "2\r\n00:00:04,000 --> 00:00:06,100\r\n{\\i1}World\r\n\r\n");
        ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, path("in.srt")), basTimingFile::OpenResult::Opened);
    }

    QTemporaryDir dir;
    std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
    CFileOptionModel model;
};

TEST_F(FileOption, TypeFollowsExtensionByWindow)
{
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("a.doc", false), ScriptType::RichText);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("a.RTF", true), ScriptType::RichText);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("a.xyz", true), ScriptType::DialogueText);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("a.srt", false), ScriptType::Plain);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("noext", true), ScriptType::Plain);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("v1.2/noext", true), ScriptType::Plain);
    EXPECT_EQ(CFileOptionModel::TypeOfFileName("x.Lrc", true), ScriptType::LRC);
    EXPECT_EQ(basTimingFile::OpenTypeFromExtension("a.smp"), ScriptType::SMP);
    EXPECT_EQ(basTimingFile::OpenTypeFromExtension("a.weird"), ScriptType::DialogueText);
    EXPECT_EQ(basTimingFile::OpenTypeFromExtension("dir.v2/noext"), ScriptType::DialogueText);
    EXPECT_EQ(basTimingFile::OpenTypeFromExtension("a.SsA"), ScriptType::SSA);
}

TEST_F(FileOption, SavingAsDialogueTextGivesTxtAndTurnsTheBoxesOff)
{
    model.Init();
    model.setDocumentType(ScriptType::ASS, 0);
    model.setOperation(FileOperation::Save);
    EXPECT_TRUE(model.EnabledState().TimingOptions);
    EXPECT_EQ(model.Caption(), QString::fromUtf16(u"保存文件选项"));
    model.FileName = "/x/show.v1.ass";
    model.ClickFileType(ScriptType::DialogueText);
    EXPECT_EQ(model.FileName, "/x/show.v1.txt");
    EXPECT_FALSE(model.EnabledState().TimingOptions);
    EXPECT_FALSE(model.EnabledState().FileSubType);
    model.FileName = "/x/v1.2/show";
    model.ClickFileType(ScriptType::SRT);
    EXPECT_EQ(model.FileName, "/x/v1.2/show.srt");
    model.ClickFileType(ScriptType::RichText);
    EXPECT_EQ(model.FileCode, FileCode::SystemDefault);
    EXPECT_FALSE(model.EnabledState().CodeType);
    EXPECT_EQ(model.SampleText(), CFileOptionModel::Sample(ScriptType::RichText, 0));
    model.setSubTypeButton(1);
    model.ClickFileType(ScriptType::SMP);
    EXPECT_EQ(model.ScriptSubType(), 1);
    EXPECT_TRUE(model.EnabledState().FileSubType);
    EXPECT_NE(CFileOptionModel::Sample(ScriptType::SMP, 0), CFileOptionModel::Sample(ScriptType::SMP, 1));
    EXPECT_EQ(CFileOptionModel::Sample(ScriptType(42), 0), QString::fromUtf16(u"没有参考例子"));
}

TEST_F(FileOption, DependentBoxesAreClearedWithTheirMaster)
{
    model.Init();
    model.setOperation(FileOperation::Save);
    model.setTimingOptionBit(SaveOption::Dialog, false);
    EXPECT_EQ(model.TimingOption, 255 & ~(16 | 32));
    EXPECT_FALSE(model.EnabledState().DialogEffect);
    model.setTimingOptionBit(SaveOption::Dialog, true);
    EXPECT_TRUE(model.EnabledState().DialogEffect);
    EXPECT_EQ(model.TimingOption, 255 & ~32);

    model.ChangeOption = 1 | 2 | 256;
    model.setChangeOptionBit(ChangeOption::Color, false);
    EXPECT_EQ(model.ChangeOption, 1);
    EXPECT_FALSE(model.EnabledState().BlackWhite);
}

TEST_F(FileOption, SpaceRulesJoinParagraphsOrDropEmptyLines)
{
    const QString text = "  a \r\nb\r\n\r\n\r\nc\r\n";
    // Paragraph mode wins over dropping; each empty line gives one line end.
    EXPECT_EQ(CFileOptionModel::ApplySpaceRules(text, true, true), "a\\Nb\r\n\r\nc\r\n");
    EXPECT_EQ(CFileOptionModel::ApplySpaceRules(text, false, true), "a\r\nb\r\nc\r\n");
    EXPECT_EQ(CFileOptionModel::ApplySpaceRules(text, false, false), text);
}

TEST_F(FileOption, OpenTakesMarkedUnicodeAndResetsTheOptions)
{
    doc->TimingOption = 3;
    const QString srt = "1\r\n00:00:01,000 --> 00:00:02,000\r\n\u4f60\u597d\r\n\r\n";
    QByteArray utf16("\xff\xfe", 2);
    utf16 += QByteArray(reinterpret_cast<const char *>(srt.utf16()), srt.size() * 2);
    write(path("u.srt"), utf16);
    ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, path("u.srt")), basTimingFile::OpenResult::Opened);
    EXPECT_EQ(doc->FileCode, FileCode::Unicode);
    EXPECT_EQ(doc->TimingOption, 255);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_FALSE(doc->Changed());
    EXPECT_EQ(doc->FileName(), path("u.srt"));
    ASSERT_GE(doc->SSAContent->Count(), 1);
    EXPECT_EQ(doc->SSAContent->At(0)->Dialog(), QString::fromUtf16(u"你好"));

    // Opened as chosen by hand: an SRT text read as plain lines, ANSI.
    write(path("plain.srt"), "one\r\ntwo");
    ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, path("plain.srt"), ScriptType::DialogueText),
        basTimingFile::OpenResult::Opened);
    EXPECT_EQ(doc->FileCode, FileCode::ANSI);
    EXPECT_EQ(doc->TextColumn(), "one\r\ntwo");
}

TEST_F(FileOption, OpenThroughTheOptionsReadsWithTheChosenCode)
{
    const QString srt = "1\r\n00:00:01,000 --> 00:00:02,000\r\n\u4f60\u597d\r\n\r\n";
    const QByteArray units(reinterpret_cast<const char *>(srt.utf16()), srt.size() * 2);
    write(path("marked.srt"), QByteArray("\xff\xfe", 2) + units);
    write(path("bare.srt"), units);
    write(path("empty.srt"), "");
    const auto firstText
        = [this] { return doc->SSAContent->Count() > 0 ? doc->SSAContent->At(0)->Dialog() : QString(); };

    // Unicode chosen: even a file without its mark reads right.
    ASSERT_EQ(basTimingFile::OpenWithOptions(*doc, path("bare.srt"), ScriptType::SRT, FileCode::Unicode, 28),
        basTimingFile::OpenResult::Opened);
    EXPECT_EQ(firstText(), QString::fromUtf16(u"你好"));
    EXPECT_EQ(doc->FileCode, FileCode::Unicode);
    EXPECT_EQ(doc->TimingOption, 28);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_EQ(doc->FileName(), path("bare.srt"));
    EXPECT_FALSE(doc->Changed());
    // Left to the stream: the mark decides.
    ASSERT_EQ(
        basTimingFile::OpenWithOptions(*doc, path("marked.srt"), ScriptType::SRT, FileCode::SystemDefault),
        basTimingFile::OpenResult::Opened);
    EXPECT_EQ(firstText(), QString::fromUtf16(u"你好"));
    EXPECT_EQ(doc->FileCode, FileCode::SystemDefault);
    // ANSI chosen for a UTF-16 file: what the user asked for, not what the file is.
    ASSERT_EQ(basTimingFile::OpenWithOptions(*doc, path("marked.srt"), ScriptType::SRT, FileCode::ANSI),
        basTimingFile::OpenResult::Opened);
    EXPECT_NE(firstText(), QString::fromUtf16(u"你好"));

    EXPECT_EQ(basTimingFile::OpenWithOptions(*doc, path("empty.srt"), ScriptType::ASS, FileCode::Unicode),
        basTimingFile::OpenResult::Empty);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_EQ(basTimingFile::OpenWithOptions(*doc, path("none.srt"), ScriptType::SRT, FileCode::Unicode),
        basTimingFile::OpenResult::Unreadable);
    EXPECT_EQ(prompt.Messages(), QStringList { QString::fromUtf16(u" 无法打开文件。 ") + path("none.srt") });
}

TEST_F(FileOption, OpenFillsTheDocumentsGridAndSaveStoresItBack)
{
    CTimingGrid grid;
    grid.SetDocument(doc.get());
    loadSrt();
    EXPECT_EQ(grid.Spread().GetText(CTimingGrid::ColDialog, 1), "Hello");
    EXPECT_EQ(grid.Spread().GetText(CTimingGrid::ColStartTime, 2), "0:00:04.00");
    grid.Spread().SetText(CTimingGrid::ColDialog, 1, "Edited");
    basTimingFile::PrepareSave(model, *doc);
    EXPECT_TRUE(model.FileContent.startsWith("1\r\n00:00:01,200 --> 00:00:03,450\r\nEdited\r\n"));
}

TEST_F(FileOption, EmptyOrMissingFileLeavesTheDocument)
{
    write(path("empty.ass"), "");
    doc->setScriptType(ScriptType::SRT);
    doc->FileCode = FileCode::Unicode;
    EXPECT_EQ(basTimingFile::OpenTimingFile(*doc, path("empty.ass")), basTimingFile::OpenResult::Empty);
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_EQ(doc->FileCode, FileCode::Unicode);
    EXPECT_TRUE(prompt.Messages().isEmpty());

    EXPECT_EQ(basTimingFile::OpenTimingFile(*doc, path("none.ass")), basTimingFile::OpenResult::Unreadable);
    EXPECT_EQ(prompt.Messages(), QStringList { QString::fromUtf16(u" 无法打开文件。 ") + path("none.ass") });
}

TEST_F(FileOption, PreviewUsesTheChosenOptionsAndPutsTheDocumentBack)
{
    loadSrt();
    doc->setChanged(true);
    basTimingFile::PrepareSave(model, *doc);
    EXPECT_TRUE(model.FileContent.startsWith("1\r\n00:00:01,200 --> 00:00:03,450\r\nHello"));
    model.ClickFileType(ScriptType::ASS);
    model.setTimingOptionBit(SaveOption::Head, false);
    model.setTimingOptionBit(SaveOption::Styles, false);
    model.setTimingOptionBit(SaveOption::OtherColumns, false);
    model.setTimingOptionBit(SaveOption::DialogTags, false);
    EXPECT_FALSE(model.FileContent.contains("[Script Info]"));
    EXPECT_FALSE(model.FileContent.contains("Style:"));
    EXPECT_TRUE(model.FileContent.contains("0:00:04.00"));
    EXPECT_FALSE(model.FileContent.contains("{\\i1}"));
    model.setTimeFormat(3);
    EXPECT_TRUE(model.FileContent.contains("\r\n00:04,00:06,"));
    EXPECT_EQ(doc->ScriptType(), ScriptType::SRT);
    EXPECT_EQ(doc->TimingOption, 255);
    EXPECT_EQ(doc->TimeFormat(), 0);
    EXPECT_TRUE(doc->Changed());
}

TEST_F(FileOption, SaveBacksUpAndWritesByCode)
{
    loadSrt();
    basTimingFile::PrepareSave(model, *doc);
    model.FileName = path("in.srt");
    model.FileCode = FileCode::ANSI;
    ASSERT_TRUE(model.Ok());
    EXPECT_FALSE(model.Cancelled);
    EXPECT_FALSE(model.OperateError);
    EXPECT_TRUE(QFile::exists(BackupFolder() + "in.srt"));
    EXPECT_EQ(bytes(path("in.srt")), EncodeSystemCodePage(model.FileContent));

    model.FileCode = FileCode::SystemDefault; // the system default writes Unicode, except rich text
    model.FileName = path("out.srt");
    ASSERT_TRUE(model.SaveFile());
    EXPECT_TRUE(bytes(path("out.srt")).startsWith("\xff\xfe"));
    basTimingFile::TakeOverSave(*doc, model);
    EXPECT_EQ(doc->FileName(), path("out.srt"));
    EXPECT_EQ(doc->FileCode, FileCode::SystemDefault);

    model.FileName = dir.filePath("no/such/dir/x.srt");
    EXPECT_FALSE(model.Ok());
    EXPECT_EQ(prompt.Messages().size(), 1);

    // UTF-8 is a fourth code, always offered, written without a mark.
    EXPECT_EQ(
        CFileOptionModel::FileCodeOfIndex(CFileOptionModel::CodeTypeIndex(FileCode::UTF8)), FileCode::UTF8);
    model.FileCode = FileCode::UTF8;
    model.FileName = path("u8.srt");
    ASSERT_TRUE(model.SaveFile());
    EXPECT_EQ(bytes(path("u8.srt")), model.FileContent.toUtf8());
}

// Open and save of a file with LF line ends in Big5, by name and through the options:
// with modern files the lines are read, the code page is proposed for the save and kept;
// without, the seed's reading, the hint of bare line feeds, and ANSI proposed as before.
TEST_F(FileOption, ModernFilesKeepTheEncodingOfAnOpenAndSave)
{
    const QByteArray big5 = EncodeCodePage(
        QStringLiteral(
            "1\n00:00:01,000 --> 00:00:02,000\n這是一個繁體中文的字幕檔案，我們今天一起去看電影吧\n\n"
            "2\n00:00:03,000 --> 00:00:04,000\n時間軸已經對好了，字幕組的大家辛苦了\n\n"),
        "BIG5");
    write(path("big5.srt"), big5);

    ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, path("big5.srt")), basTimingFile::OpenResult::Opened);
    EXPECT_TRUE(doc->BareLineFeeds);
    EXPECT_EQ(doc->FileCode, FileCode::ANSI);
    EXPECT_TRUE(doc->FileCodePage.isEmpty());
    basTimingFile::PrepareSave(model, *doc);
    EXPECT_EQ(model.FileCode, FileCode::ANSI);
    EXPECT_TRUE(model.CodePage.isEmpty());

    ModernFiles = true;
    ASSERT_EQ(basTimingFile::OpenTimingFile(*doc, path("big5.srt")), basTimingFile::OpenResult::Opened);
    EXPECT_FALSE(doc->BareLineFeeds);
    EXPECT_EQ(doc->SSAContent->At(1)->Dialog(), QStringLiteral("時間軸已經對好了，字幕組的大家辛苦了"));
    EXPECT_EQ(doc->FileCodePage, "BIG5");
    basTimingFile::PrepareSave(model, *doc);
    EXPECT_EQ(model.FileCode, FileCode::ANSI);
    EXPECT_EQ(model.CodePage, "BIG5");
    model.BackupBeforeSave = false;
    model.FileName = path("again.srt");
    ASSERT_TRUE(model.Ok());
    QByteArray crlf = big5;
    crlf.replace("\n", "\r\n");
    EXPECT_EQ(bytes(path("again.srt")), crlf);

    // Through the options the picked file's coding is proposed, and the open reads by it.
    CFileOptionModel pick;
    pick.Init();
    pick.TimingDocument = doc.get();
    pick.FileCode = FileCode::Unicode;
    pick.TakeFileName(path("big5.srt"));
    EXPECT_EQ(pick.FileCode, FileCode::ANSI);
    EXPECT_EQ(pick.CodePage, "BIG5");
    EXPECT_TRUE(pick.FileContent.contains(QStringLiteral("\r\n時間軸")));
    ModernFiles = false;
}

} // namespace
