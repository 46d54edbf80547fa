#include "translation/CTextFind.h"

#include "core/IPrompt.h"
#include "timing/ITextControl.h"

void CFindState::Remember(const QString &text)
{
    if (text.isEmpty())
        return;
    FindList.removeAll(text);
    FindList.prepend(text);
}

CFindState &FindState()
{
    static CFindState state;
    return state;
}

QString CTextFind::Upper(const QString &text)
{
    QString out = text;
    for (qsizetype i = 0; i < out.size(); ++i) {
        const QChar c = out[i];
        if (c.isHighSurrogate() && i + 1 < out.size() && out[i + 1].isLowSurrogate()) {
            const char32_t upper = QChar::toUpper(QChar::surrogateToUcs4(c, out[i + 1]));
            if (QChar::requiresSurrogates(upper)) {
                out[i] = QChar(QChar::highSurrogate(upper));
                out[i + 1] = QChar(QChar::lowSurrogate(upper));
            }
            ++i;
            continue;
        }
        out[i] = c.toUpper();
    }
    return out;
}

QString CTextFind::NotFoundText(const QString &text)
{
    return QStringLiteral("没有找到文字: [") + text + QStringLiteral("]") + QStringLiteral("\r\n")
        + QStringLiteral("如想继续查找，请把光标移动到文件开始点");
}

bool CTextFind::FindNext()
{
    if (!FindTarget)
        return false;
    QString text = FindTarget->Text();
    QString find = FindText;
    const int caret = FindTarget->SelStart();
    qsizetype hit = -1;
    if (!find.isEmpty()) {
        if (!MatchCase) {
            text = Upper(text);
            find = Upper(find);
        }
        if (Direction == 0) {
            // Up: the walk starts before the caret, so the hit under it is passed over.
            for (qsizetype p = qMin<qsizetype>(caret, text.size()) - 1; p >= 0 && hit < 0; --p)
                if (QStringView(text).mid(p, find.size()) == find)
                    hit = p;
        } else {
            const int start = !m_first && caret == m_lastHit ? caret + 1 : caret;
            hit = text.indexOf(find, start);
        }
    }
    if (hit < 0) {
        MsgBox(NotFoundText(FindText), MsgBoxStyle::OKOnly, QStringLiteral("Find"));
        return false;
    }
    FindTarget->setSelStart(int(hit));
    FindTarget->setSelLength(int(find.size()));
    m_lastHit = int(hit);
    m_first = false;
    return true;
}

bool CTextFind::Replace()
{
    if (!FindTarget)
        return false;
    const QString selected = FindTarget->SelText();
    const bool same = MatchCase ? selected == FindText : Upper(selected) == Upper(FindText);
    if (same && !FindText.isEmpty())
        FindTarget->setSelText(ReplaceText);
    return FindNext();
}

void CTextFind::ReplaceAll()
{
    if (!FindTarget || FindText.isEmpty())
        return;
    QString text = FindTarget->Text();
    if (MatchCase) {
        text.replace(FindText, ReplaceText, Qt::CaseSensitive);
    } else {
        const QString upper = Upper(FindText);
        text.replace(FindText, upper, Qt::CaseSensitive);
        text.replace(upper, ReplaceText, Qt::CaseSensitive);
    }
    FindTarget->setText(text);
    FindTarget->setSelStart(0);
}
