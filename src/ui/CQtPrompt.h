#pragma once

#include "core/IPrompt.h"

class QWidget;

// The prompt service on screen: message boxes, input boxes and the common dialogs.
class CQtPrompt : public IPrompt
{
public:
    explicit CQtPrompt(QWidget *parent = nullptr)
        : m_parent(parent)
    { }
    void setParentWidget(QWidget *parent) { m_parent = parent; }

    int MsgBox(const QString &prompt, int style = MsgBoxStyle::OKOnly, const QString &title = {}) override;
    std::optional<QString> InputBox(
        const QString &prompt, const QString &title = {}, const QString &defaultText = {}) override;
    QString OpenFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {}) override;
    QString SaveFileName(const QString &title, const QString &filter, int *filterIndex = nullptr,
        const QString &initialName = {}) override;
    std::optional<qint64> ChooseColour(qint64 initial) override;
    std::optional<PromptFont> ChooseFont(const PromptFont &initial) override;

    // "label|pattern|label|pattern" to the ";;"-separated filter of a file dialog.
    static QString QtFilter(const QString &filter);

private:
    QWidget *m_parent;
};
