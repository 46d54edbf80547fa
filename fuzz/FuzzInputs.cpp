#include "FuzzInputs.h"

#include "core/CMessages.h"
#include "core/Class.h"
#include "core/basText.h"
#include "formats/CTiming.h"
#include "formats/basTimingFile.h"
#include "script/CFont.h"
#include "script/CFonts.h"
#include "script/CSSAContent.h"
#include "script/CSSAContentLine.h"
#include "timing/CTimingGrid.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace {

// The input as the windows would decode a file of these bytes.
QString text(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return DecodeWholeFile(bytes, false).Text;
}

// A whole file opened into a timing document with its grid, as the window opens it,
// then assembled again as the same type.
void document(ScriptType type, qint32 subType, const uint8_t *data, size_t size)
{
    std::unique_ptr<CTiming> doc = Class::Make<CTiming>();
    CTimingGrid grid;
    grid.SetDocument(doc.get());
    doc->setScriptSubType(subType);
    basTimingFile::ReadIntoDocument(*doc, type, text(data, size), false);
    doc->Content();
}

// A "Message.txt" catalogue read, one message looked up, and written again.
void catalogue(const uint8_t *data, size_t size)
{
    CMessages messages;
    messages.setContent(text(data, size));
    messages.CollectionView().item(QStringLiteral("COMM_MSG_100"))->Content();
    messages.Content();
}

// A single style line, read under SSA or ASS by the first byte, and written back.
void styleLine(const uint8_t *data, size_t size)
{
    if (size == 0)
        return;
    std::unique_ptr<CFonts> fonts = Class::MakeCollection<CFonts>();
    fonts->ScriptType = (data[0] & 1) ? ScriptType::SSA : ScriptType::ASS;
    std::unique_ptr<CFont> font = Class::Make<CFont>();
    font->setParent(fonts.get());
    font->setContent(text(data + 1, size - 1));
    font->Content();
}

// A single event line, read under SSA or ASS (by the first byte) and written back under
// the output mask of the second byte.
void eventLine(const uint8_t *data, size_t size)
{
    if (size < 2)
        return;
    std::unique_ptr<CSSAContent> list = Class::Make<CSSAContent>();
    list->ScriptType = (data[0] & 1) ? ScriptType::SSA : ScriptType::ASS;
    list->SaveOption = data[1];
    CSSAContentLine *line = list->Create();
    line->setContent(text(data + 2, size - 2));
    line->Content();
    list->Content();
}

} // namespace

bool RunFuzzInput(std::string_view target, const uint8_t *data, size_t size)
{
    struct Document
    {
        std::string_view Name;
        ScriptType Type;
        qint32 SubType;
    };
    static constexpr Document documents[] = {
        { "ass_script", ScriptType::ASS, 0 },
        { "ssa_script", ScriptType::SSA, 0 },
        { "sami", ScriptType::SAMI, 0 },
        { "srt", ScriptType::SRT, 0 },
        { "smp0", ScriptType::SMP, 0 },
        { "smp1", ScriptType::SMP, 1 },
        { "text", ScriptType::DialogueText, 0 },
        { "lrc", ScriptType::LRC, 0 },
        { "sst", ScriptType::SST, 0 },
    };
    for (const Document &d : documents) {
        if (d.Name == target) {
            document(d.Type, d.SubType, data, size);
            return true;
        }
    }
    if (target == "catalogue")
        catalogue(data, size);
    else if (target == "style_line")
        styleLine(data, size);
    else if (target == "event_line")
        eventLine(data, size);
    else
        return false;
    return true;
}
