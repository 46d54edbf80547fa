#pragma once

#include "core/IPrompt.h"

#include <QList>
#include <QStringList>
#include <deque>
#include <functional>

// A prompt without windows: records every message and question, and answers from
// queues, falling back to a default answer. Tests script it; the command-line tools use
// it with an echo to standard error.
class CScriptedPrompt : public IPrompt
{
public:
    struct Record
    {
        QString Prompt;
        int Style = 0;
        QString Title;
        int Answer = 0;
    };

    int MsgBox(const QString &prompt, int style = MsgBoxStyle::OKOnly, const QString &title = {}) override;
    std::optional<QString> InputBox(
        const QString &prompt, const QString &title = {}, const QString &defaultText = {}) override;
    QString OpenFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {}) override;
    QString SaveFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {}) override;
    std::optional<qint64> ChooseColour(qint64 initial) override;
    std::optional<PromptFont> ChooseFont(const PromptFont &initial) override;

    // Answers for questions (MsgBoxResult values), taken in order.
    std::deque<int> Answers;
    // The answer to a Yes/No question when the queue is empty (Yes or No).
    int DefaultYesNo = MsgBoxResult::Yes;
    std::deque<std::optional<QString>> Inputs;
    std::deque<QString> FileNames;
    std::deque<std::optional<qint64>> Colours;
    std::deque<std::optional<PromptFont>> Fonts;

    // Everything shown, in order.
    QList<Record> Records;
    // Called after each message box with its record (the tools print it).
    std::function<void(const Record &)> Echo;

    // The texts of the message boxes shown so far.
    QStringList Messages() const;
    void Reset();
};
