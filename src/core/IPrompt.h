#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Button sets and answers of a message box, numbered as Basic numbers them.
namespace MsgBoxStyle {
constexpr int OKOnly = 0;
constexpr int OKCancel = 1;
constexpr int AbortRetryIgnore = 2;
constexpr int YesNoCancel = 3;
constexpr int YesNo = 4;
constexpr int RetryCancel = 5;
constexpr int Critical = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int ButtonMask = 7;
} // namespace MsgBoxStyle

namespace MsgBoxResult {
constexpr int OK = 1;
constexpr int Cancel = 2;
constexpr int Abort = 3;
constexpr int Retry = 4;
constexpr int Ignore = 5;
constexpr int Yes = 6;
constexpr int No = 7;
} // namespace MsgBoxResult

// A font as the font dialog gives it.
struct PromptFont
{
    QString Name;
    double Size = 0;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikeout = false;
};

// Every message box, question, input box and common dialog goes through this service.
// The windows install a dialog implementation, the tests a scripted one, the tools one
// that prints and answers from an option. Logic never includes a dialog header.
class IPrompt
{
public:
    virtual ~IPrompt() = default;

    // A message box; returns the MsgBoxResult of the button chosen.
    virtual int MsgBox(const QString &prompt, int style = MsgBoxStyle::OKOnly, const QString &title = {}) = 0;
    // An input box; nothing when cancelled.
    virtual std::optional<QString> InputBox(
        const QString &prompt, const QString &title = {}, const QString &defaultText = {})
        = 0;
    // File dialogs. `filter` is in the "label|pattern|label|pattern" form; the result is
    // empty when cancelled. `filterIndex` is 1-based, in and out.
    virtual QString OpenFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {})
        = 0;
    virtual QString SaveFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {})
        = 0;
    // Colour as a 24-bit number with blue in the high byte; nothing when cancelled.
    virtual std::optional<qint64> ChooseColour(qint64 initial) = 0;
    virtual std::optional<PromptFont> ChooseFont(const PromptFont &initial) = 0;
};

// The installed service; a silent scripted one answering Yes/OK until one is installed.
IPrompt &Prompt();
// Installs a service (not owned); nullptr goes back to the silent default.
void SetPrompt(IPrompt *prompt);

// Short forms for the common case.
inline int MsgBox(const QString &prompt, int style = MsgBoxStyle::OKOnly, const QString &title = {})
{
    return Prompt().MsgBox(prompt, style, title);
}
