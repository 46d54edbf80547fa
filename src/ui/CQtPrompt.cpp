#include "ui/CQtPrompt.h"

#include "core/basColour.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>

int CQtPrompt::MsgBox(const QString &prompt, int style, const QString &title)
{
    QMessageBox box(m_parent);
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Velmar") : title);
    box.setText(prompt);
    switch (style & 0x70) {
    case MsgBoxStyle::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case MsgBoxStyle::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case MsgBoxStyle::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case MsgBoxStyle::Information:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        break;
    }
    struct Button
    {
        QMessageBox::StandardButton qt;
        int result;
    };
    QList<Button> buttons;
    switch (style & MsgBoxStyle::ButtonMask) {
    case MsgBoxStyle::OKCancel:
        buttons = { { QMessageBox::Ok, MsgBoxResult::OK }, { QMessageBox::Cancel, MsgBoxResult::Cancel } };
        break;
    case MsgBoxStyle::AbortRetryIgnore:
        buttons = { { QMessageBox::Abort, MsgBoxResult::Abort }, { QMessageBox::Retry, MsgBoxResult::Retry },
            { QMessageBox::Ignore, MsgBoxResult::Ignore } };
        break;
    case MsgBoxStyle::YesNoCancel:
        buttons = { { QMessageBox::Yes, MsgBoxResult::Yes }, { QMessageBox::No, MsgBoxResult::No },
            { QMessageBox::Cancel, MsgBoxResult::Cancel } };
        break;
    case MsgBoxStyle::YesNo:
        buttons = { { QMessageBox::Yes, MsgBoxResult::Yes }, { QMessageBox::No, MsgBoxResult::No } };
        break;
    case MsgBoxStyle::RetryCancel:
        buttons
            = { { QMessageBox::Retry, MsgBoxResult::Retry }, { QMessageBox::Cancel, MsgBoxResult::Cancel } };
        break;
    default:
        buttons = { { QMessageBox::Ok, MsgBoxResult::OK } };
        break;
    }
    QMessageBox::StandardButtons set;
    for (const Button &b : buttons)
        set |= b.qt;
    box.setStandardButtons(set);
    const auto chosen = static_cast<QMessageBox::StandardButton>(box.exec());
    for (const Button &b : buttons)
        if (b.qt == chosen)
            return b.result;
    // Closing the box counts as its cancelling button, or its only one.
    for (const Button &b : buttons)
        if (b.result == MsgBoxResult::Cancel)
            return b.result;
    return buttons.last().result;
}

std::optional<QString> CQtPrompt::InputBox(
    const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    const QString text = QInputDialog::getText(m_parent, title.isEmpty() ? QStringLiteral("Velmar") : title,
        prompt, QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

QString CQtPrompt::QtFilter(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(u';', u' ');
        out << parts[i] + QStringLiteral(" (") + patterns + u')';
    }
    return out.join(QStringLiteral(";;"));
}

namespace {
QString selectFilter(const QString &filter, int *filterIndex)
{
    const QStringList filters = CQtPrompt::QtFilter(filter).split(QStringLiteral(";;"));
    if (!filterIndex || *filterIndex < 1 || *filterIndex > filters.size())
        return {};
    return filters[*filterIndex - 1];
}

void storeFilterIndex(const QString &filter, const QString &chosen, int *filterIndex)
{
    if (filterIndex)
        *filterIndex = int(CQtPrompt::QtFilter(filter).split(QStringLiteral(";;")).indexOf(chosen)) + 1;
}
} // namespace

QString CQtPrompt::OpenFileName(
    const QString &title, const QString &filter, int *filterIndex, const QString &initialName)
{
    QString chosen = selectFilter(filter, filterIndex);
    const QString name
        = QFileDialog::getOpenFileName(m_parent, title, initialName, QtFilter(filter), &chosen);
    storeFilterIndex(filter, chosen, filterIndex);
    return name;
}

QString CQtPrompt::SaveFileName(
    const QString &title, const QString &filter, int *filterIndex, const QString &initialName)
{
    QString chosen = selectFilter(filter, filterIndex);
    const QString name
        = QFileDialog::getSaveFileName(m_parent, title, initialName, QtFilter(filter), &chosen);
    storeFilterIndex(filter, chosen, filterIndex);
    return name;
}

std::optional<qint64> CQtPrompt::ChooseColour(qint64 initial)
{
    const QColor c = QColorDialog::getColor(BgrToColor(initial), m_parent);
    if (!c.isValid())
        return std::nullopt;
    return ColorToBgr(c);
}

std::optional<PromptFont> CQtPrompt::ChooseFont(const PromptFont &initial)
{
    QFont start(initial.Name);
    if (initial.Size > 0)
        start.setPointSizeF(initial.Size);
    start.setBold(initial.Bold);
    start.setItalic(initial.Italic);
    start.setUnderline(initial.Underline);
    start.setStrikeOut(initial.Strikeout);
    bool ok = false;
    const QFont f = QFontDialog::getFont(&ok, start, m_parent);
    if (!ok)
        return std::nullopt;
    return PromptFont { f.family(), f.pointSizeF(), f.bold(), f.italic(), f.underline(), f.strikeOut() };
}
