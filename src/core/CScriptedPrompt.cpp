#include "core/CScriptedPrompt.h"

namespace {

CScriptedPrompt &silentDefault()
{
    static CScriptedPrompt prompt;
    return prompt;
}

IPrompt *g_prompt = nullptr;

// The first button of a set is the one a box without a scripted answer takes,
// except that a question takes the default Yes/No answer.
int defaultAnswer(int style, int defaultYesNo)
{
    switch (style & MsgBoxStyle::ButtonMask) {
    case MsgBoxStyle::OKCancel:
        return MsgBoxResult::OK;
    case MsgBoxStyle::AbortRetryIgnore:
        return MsgBoxResult::Ignore;
    case MsgBoxStyle::YesNoCancel:
    case MsgBoxStyle::YesNo:
        return defaultYesNo;
    case MsgBoxStyle::RetryCancel:
        return MsgBoxResult::Cancel;
    default:
        return MsgBoxResult::OK;
    }
}

// g++ 12 warns falsely about moving out of an optional held in a deque.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
template <typename T> T takeFront(std::deque<T> &queue, T fallback)
{
    if (queue.empty())
        return fallback;
    T value = std::move(queue.front());
    queue.pop_front();
    return value;
}
#pragma GCC diagnostic pop

} // namespace

IPrompt &Prompt()
{
    return g_prompt ? *g_prompt : silentDefault();
}

void SetPrompt(IPrompt *prompt)
{
    g_prompt = prompt;
}

int CScriptedPrompt::MsgBox(const QString &prompt, int style, const QString &title)
{
    const int answer = takeFront(Answers, defaultAnswer(style, DefaultYesNo));
    Records.append({ prompt, style, title, answer });
    if (Echo)
        Echo(Records.last());
    return answer;
}

std::optional<QString> CScriptedPrompt::InputBox(
    const QString &prompt, const QString &title, const QString &defaultText)
{
    const auto answer = takeFront<std::optional<QString>>(Inputs, defaultText);
    Records.append({ prompt, -1, title, answer ? MsgBoxResult::OK : MsgBoxResult::Cancel });
    return answer;
}

QString CScriptedPrompt::OpenFileName(const QString &, const QString &, int *, const QString &)
{
    return takeFront<QString>(FileNames, {});
}

QString CScriptedPrompt::SaveFileName(const QString &, const QString &, int *, const QString &)
{
    return takeFront<QString>(FileNames, {});
}

std::optional<qint64> CScriptedPrompt::ChooseColour(qint64)
{
    return takeFront<std::optional<qint64>>(Colours, std::nullopt);
}

std::optional<PromptFont> CScriptedPrompt::ChooseFont(const PromptFont &)
{
    return takeFront<std::optional<PromptFont>>(Fonts, std::nullopt);
}

QStringList CScriptedPrompt::Messages() const
{
    QStringList out;
    for (const Record &r : Records)
        out << r.Prompt;
    return out;
}

void CScriptedPrompt::Reset()
{
    Answers.clear();
    Inputs.clear();
    FileNames.clear();
    Colours.clear();
    Fonts.clear();
    Records.clear();
}
