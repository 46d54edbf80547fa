// velmar-convert: opens a subtitle file as a timing window opens it by name, and saves it
// under another name through the file options, as OK in that dialog does; or, with
// --pages, writes the picture pages of the script with their SST page list, as the
// picture window does.
//
// Drawing pages needs Qt's graphics library, which a plain conversion does without. The
// same source is therefore built twice: velmar-convert, which loads no graphics library,
// hands a --pages run over to velmar-convert-pages beside it (built with
// VELMAR_CONVERT_PAGES), which draws through the offscreen platform.
#include "core/Class.h"
#include "core/IPrompt.h"
#include "core/basMain.h"
#include "core/basText.h"
#include "formats/CFileOptionModel.h"
#include "formats/CTiming.h"
#include "formats/basFileTypes.h"
#include "formats/basTimingFile.h"
#include "shell/basStart.h"
#include "timing/CTimingGrid.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <malloc.h>
#include <memory>
#include <optional>
#include <sys/mman.h>
#include <unistd.h>

#ifdef VELMAR_CONVERT_PAGES
#include "pages/CPicPreviewModel.h"

#include <QGuiApplication>
#endif

namespace {

const char usageText[]
    = "usage: velmar-convert [options] INPUT OUTPUT\n"
      "Opens INPUT as a timing window does and saves it as OUTPUT through the file options.\n"
      "  --to TYPE            type to save: 0-9 or events ssa ass smi srt smp txt lrc sst\n"
      "                       (default: from OUTPUT's extension)\n"
      "  --open-as TYPE       type to open INPUT as, read with the --encoding code as the\n"
      "                       file options read it (default: type from INPUT's extension,\n"
      "                       UTF-16 only when the file starts with a byte-order mark)\n"
      "  --sub-type 0|1       SMP line form (default 0)\n"
      "  --option MASK        sections and columns to write, 0-255 (default 255)\n"
      "  --time-format N      0 9:59:59.99, 1 9:59:59.90, 2 9:59:59, 3 59:59 (default 0)\n"
      "  --encoding unicode|ansi|utf8|default   code to write (and to read with --open-as);\n"
      "                       default: written as Unicode, read by the byte-order mark;\n"
      "                       utf8: UTF-8 without a byte-order mark\n"
      "  --from-encoding NAME read INPUT in this encoding (an iconv name: UTF-8, UTF-16LE,\n"
      "                       BIG5, CP932, WINDOWS-1252...) instead of deciding it\n"
      "  --modern             modern files for this run: any line ends, the encoding\n"
      "                       detected, and OUTPUT written in it unless --encoding says\n"
      "  --answer yes|no      answer to every question (default yes)\n"
      "  --no-backup          do not copy the old OUTPUT into AutoBak\n"
      "  --pages              cut the script into picture pages and write them as the\n"
      "                       picture window does: OUTPUT is the SST page list (--to sst)\n"
      "  --video-type 0|1     with --pages: 0 NTSC 720x480, 1 PAL 720x576 (default 0)\n"
      "  --picture-folder     with --pages: the bitmaps into the folder named after\n"
      "                       OUTPUT without its extension (made when missing)\n"
      "Exit status: 0 written, 1 INPUT unreadable or OUTPUT unwritable, 2 usage error.\n";

void printLine(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fputc('\n', stderr);
}

QString oneLine(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    text.replace(u'\n', u' ');
    text.replace(u'\r', u' ');
    return text;
}

// Every message box goes to standard error; every question is answered from --answer.
class ConsolePrompt : public IPrompt
{
public:
    bool AnswerYes = true;

    int MsgBox(const QString &prompt, int style, const QString &) override
    {
        const int buttons = style & MsgBoxStyle::ButtonMask;
        if (buttons == MsgBoxStyle::YesNo || buttons == MsgBoxStyle::YesNoCancel) {
            printLine(QStringLiteral("question: ") + oneLine(prompt)
                + (AnswerYes ? QStringLiteral(" -> yes") : QStringLiteral(" -> no")));
            return AnswerYes ? MsgBoxResult::Yes : MsgBoxResult::No;
        }
        printLine(QStringLiteral("message: ") + oneLine(prompt));
        if (buttons == MsgBoxStyle::OKCancel)
            return MsgBoxResult::OK;
        if (buttons == MsgBoxStyle::RetryCancel || buttons == MsgBoxStyle::AbortRetryIgnore)
            return MsgBoxResult::Cancel;
        return MsgBoxResult::OK;
    }
    std::optional<QString> InputBox(const QString &, const QString &, const QString &) override
    {
        return std::nullopt;
    }
    QString OpenFileName(const QString &, const QString &, int *, const QString &) override { return {}; }
    QString SaveFileName(const QString &, const QString &, int *, const QString &) override { return {}; }
    std::optional<qint64> ChooseColour(qint64) override { return std::nullopt; }
    std::optional<PromptFont> ChooseFont(const PromptFont &) override { return std::nullopt; }
};

// An iconv name as a coding: UTF-8 and UTF-16 by their codes, anything else as ANSI in
// that code page.
TextCoding CodingOfName(const QByteArray &name)
{
    if (name == "UTF-8" || name == "UTF8")
        return { FileCode::UTF8, {} };
    if (name == "UTF-16" || name == "UTF-16LE")
        return { FileCode::Unicode, {} };
    return { FileCode::ANSI, name };
}

std::optional<qint32> parseRange(const QString &text, int low, int high)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok || number < low || number > high)
        return std::nullopt;
    return number;
}

struct Options
{
    QString Input, Output;
    std::optional<ScriptType> To;
    std::optional<ScriptType> OpenAs;
    qint32 SubType = 0;
    qint32 Option = SaveOption::Whole;
    qint32 TimeFormat = 0;
    ::FileCode FileCode = ::FileCode::SystemDefault;
    bool EncodingGiven = false;
    QByteArray FromEncoding;
    bool Modern = false;
    bool AnswerYes = true;
    bool Backup = true;
    bool Pages = false;
    std::optional<qint32> VideoType;
    bool PictureFolder = false;
};

int usage(const QString &problem)
{
    if (!problem.isEmpty())
        printLine(QStringLiteral("velmar-convert: ") + problem);
    std::fputs(usageText, stderr);
    return 2;
}

// Gives the exit status of a usage error, or nothing when the options are fine.
std::optional<int> parse(const QStringList &args, Options &o)
{
    QStringList files;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString &a = args[i];
        if (a == u"--help" || a == u"-h") {
            std::fputs(usageText, stdout);
            return 0;
        }
        if (a == u"--no-backup") {
            o.Backup = false;
            continue;
        }
        if (a == u"--pages") {
            o.Pages = true;
            continue;
        }
        if (a == u"--picture-folder") {
            o.PictureFolder = true;
            continue;
        }
        if (a == u"--modern") {
            o.Modern = true;
            continue;
        }
        if (!a.startsWith(QStringLiteral("--")) || a == u"--") {
            if (a == u"--") {
                files += args.mid(i + 1);
                break;
            }
            files << a;
            continue;
        }
        if (i + 1 >= args.size())
            return usage(a + QStringLiteral(" needs a value"));
        const QString v = args[++i];
        std::optional<qint32> n;
        if (a == u"--to") {
            if (!(o.To = TypeOfShortName(v)))
                return usage(QStringLiteral("unknown type: ") + v);
        } else if (a == u"--open-as") {
            if (!(o.OpenAs = TypeOfShortName(v)))
                return usage(QStringLiteral("unknown type: ") + v);
        } else if (a == u"--sub-type") {
            if (!(n = parseRange(v, 0, 1)))
                return usage(QStringLiteral("sub-type must be 0 or 1"));
            o.SubType = *n;
        } else if (a == u"--option") {
            if (!(n = parseRange(v, 0, 255)))
                return usage(QStringLiteral("option must be 0 to 255"));
            o.Option = *n;
        } else if (a == u"--time-format") {
            if (!(n = parseRange(v, 0, 3)))
                return usage(QStringLiteral("time format must be 0 to 3"));
            o.TimeFormat = *n;
        } else if (a == u"--encoding") {
            o.EncodingGiven = true;
            if (v == u"utf8")
                o.FileCode = FileCode::UTF8;
            else if (v == u"unicode")
                o.FileCode = FileCode::Unicode;
            else if (v == u"ansi")
                o.FileCode = FileCode::ANSI;
            else if (v == u"default")
                o.FileCode = FileCode::SystemDefault;
            else
                return usage(QStringLiteral("encoding must be unicode, ansi, utf8 or default"));
        } else if (a == u"--video-type") {
            if (!(o.VideoType = parseRange(v, 0, 1)))
                return usage(QStringLiteral("video type must be 0 or 1"));
        } else if (a == u"--from-encoding") {
            o.FromEncoding = v.toLatin1().toUpper();
            if (!IsKnownCodePage(o.FromEncoding))
                return usage(QStringLiteral("unknown encoding: ") + v);
        } else if (a == u"--answer") {
            if (v != u"yes" && v != u"no")
                return usage(QStringLiteral("answer must be yes or no"));
            o.AnswerYes = v == u"yes";
        } else {
            return usage(QStringLiteral("unknown option: ") + a);
        }
    }
    if (files.size() != 2)
        return usage(QStringLiteral("INPUT and OUTPUT are needed"));
    o.Input = files[0];
    o.Output = files[1];
    if (o.Pages && (o.To ? *o.To : CFileOptionModel::TypeOfFileName(o.Output, true)) != ScriptType::SST)
        return usage(QStringLiteral("--pages writes an SST page list: --to must be sst"));
    if (!o.Pages && (o.VideoType || o.PictureFolder))
        return usage(QStringLiteral("--video-type and --picture-folder go with --pages"));
    return std::nullopt;
}

#ifdef VELMAR_CONVERT_PAGES
// The pages of the document as the picture window cuts and draws them on loading, then
// its save of all pages under OUTPUT.
int writePages(CTiming &doc, const Options &o)
{
    CPicPreviewModel window;
    window.Init(&doc, o.VideoType.value_or(0));
    window.Pages().PictureFolder = o.PictureFolder;
    window.FileName = o.Output;
    if (!window.SaveAll()) {
        printLine(QStringLiteral("velmar-convert: cannot write ") + o.Output);
        return 1;
    }
    return 0;
}
#else
// Runs the build of this program that draws pages, beside this one, with the same
// arguments; returns only when it cannot be started.
int handOverPages(char *argv[])
{
    const QString helper = QCoreApplication::applicationDirPath() + QStringLiteral("/velmar-convert-pages");
    const QByteArray path = QFile::encodeName(helper);
    std::fflush(stdout);
    std::fflush(stderr);
    execv(path.constData(), argv);
    printLine(QStringLiteral("velmar-convert: cannot start ") + helper + QStringLiteral(": ")
        + QString::fromLocal8Bit(std::strerror(errno)));
    return 1;
}
#endif

// A conversion builds a whole script three times over (the lines read, the grid, the
// lines stored) and lives only as long as one file. Most of its time went to the kernel
// handing out fresh 4 KB pages one fault at a time, so the heap is grown in one large
// step, kept, and asked to be backed by huge pages; big buffers come from it too instead
// of separate mappings.
void prepareHeap()
{
    constexpr std::uintptr_t hugePage = 2u << 20;
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_TOP_PAD, 128 << 20);
    void *first = std::malloc(1 << 20); // larger than what is left: the heap grows now
    const auto start = reinterpret_cast<std::uintptr_t>(first);
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0));
    const std::uintptr_t from = (start + hugePage - 1) & ~(hugePage - 1);
    if (end > from)
        madvise(reinterpret_cast<void *>(from), end - from, MADV_HUGEPAGE);
    std::free(first);
}

} // namespace

int main(int argc, char *argv[])
{
    prepareHeap();
#ifdef VELMAR_CONVERT_PAGES
    // Pages are drawn with fonts, which need the graphics platform; none needs a display.
    // The platform's own notes (a missing runtime folder...) are not the converter's.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            printLine(text);
    });
    QGuiApplication app(argc, argv);
#else
    QCoreApplication app(argc, argv);
#endif
    Options o;
    if (const std::optional<int> status = parse(QCoreApplication::arguments(), o))
        return *status;
#ifndef VELMAR_CONVERT_PAGES
    if (o.Pages)
        return handOverPages(argv);
#endif

    ConsolePrompt prompt;
    prompt.AnswerYes = o.AnswerYes;
    SetPrompt(&prompt);
    // Version, catalogue (with its "Message.txt" override) and root, as a run starts.
    StartCore();

    // The window's document and its grid.
    std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
    auto grid = std::make_unique<CTimingGrid>();
    grid->SetDocument(doc.get());
    // The process ends behind the save: tearing down tens of thousands of lines and
    // cells would only cost time, so the document and its grid are left to the exit.
    const auto leave = [&](int status) {
        (void)doc.release();
        (void)grid.release();
        std::fflush(stderr);
        return status;
    };

    ModernFiles = o.Modern;
    // A type chosen for the input is a pick through the file options: the file is then read
    // with the chosen code, as the dialog reads it; so is a file of a given encoding.
    basTimingFile::OpenResult opened;
    if (!o.FromEncoding.isEmpty()) {
        const TextCoding from = CodingOfName(o.FromEncoding);
        opened = basTimingFile::OpenWithOptions(*doc, o.Input,
            o.OpenAs.value_or(basTimingFile::OpenTypeFromExtension(o.Input)), from.Code, SaveOption::Whole,
            from.CodePage);
    } else {
        opened = o.OpenAs ? basTimingFile::OpenWithOptions(*doc, o.Input, *o.OpenAs, o.FileCode)
                          : basTimingFile::OpenTimingFile(*doc, o.Input);
    }
    if (opened == basTimingFile::OpenResult::Unreadable) {
        printLine(QStringLiteral("velmar-convert: cannot read ") + o.Input);
        return leave(1);
    }

#ifdef VELMAR_CONVERT_PAGES
    if (o.Pages)
        return leave(writePages(*doc, o));
#endif

    // The save dialog with the chosen options, then OK.
    basTimingFile::SaveChoice choice;
    choice.Type = o.To ? *o.To : CFileOptionModel::TypeOfFileName(o.Output, true);
    choice.SubType = o.SubType;
    choice.TimingOption = o.Option;
    choice.TimeFormat = o.TimeFormat;
    choice.FileCode = o.FileCode;
    // Modern files keep the input's encoding, as the save dialog proposes it.
    if (o.Modern && !o.EncodingGiven) {
        choice.FileCode = doc->FileCode;
        choice.CodePage = doc->FileCodePage;
    }
    choice.Backup = o.Backup;
    if (!basTimingFile::SaveWithOptions(*doc, o.Output, choice)) {
        printLine(QStringLiteral("velmar-convert: cannot write ") + o.Output);
        return leave(1);
    }
    return leave(0);
}
