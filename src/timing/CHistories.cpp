#include "timing/CHistories.h"

#include "core/IPrompt.h"
#include "core/KeyCode.h"
#include "core/VelmarError.h"

#include <algorithm>

namespace {

// Holds the guard up while the history writes to the control itself.
class Guard
{
public:
    explicit Guard(bool &flag)
        : m_flag(flag)
        , m_old(flag)
    {
        m_flag = true;
    }
    ~Guard() { m_flag = m_old; }
    Guard(const Guard &) = delete;
    Guard &operator=(const Guard &) = delete;

private:
    bool &m_flag;
    bool m_old;
};

QString key(qint32 n)
{
    return QString::number(n);
}

QString withEnter(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("Enter"));
    text.replace(u'\n', QStringLiteral("Enter"));
    text.replace(u'\r', QStringLiteral("Enter"));
    return text;
}

} // namespace

CHistories::~CHistories()
{
    if (m_editer)
        m_editer->setEvents(nullptr);
}

void CHistories::setEditer(ITextControl *editer)
{
    if (m_editer)
        m_editer->setEvents(nullptr);
    m_editer = editer;
    m_steps.Clear();
    m_made = 0;
    m_currentNo = 0;
    m_firstNo = 0;
    m_selChanged = false;
    m_before = {};
    m_after = {};
    if (m_editer) {
        m_before = Selection();
        m_after = m_before;
        m_editer->setEvents(this);
    }
}

HistorySelection CHistories::Selection() const
{
    HistorySelection s;
    if (!m_editer)
        return s;
    s.SelStart = m_editer->SelStart();
    s.SelLength = m_editer->SelLength();
    s.SelText = m_editer->SelText();
    return s;
}

void CHistories::Report(const std::exception &e) const
{
    const auto *v = dynamic_cast<const VelmarError *>(&e);
    const QString text = v ? v->Description() : QString::fromLocal8Bit(e.what());
    MsgBox(QStringLiteral("ERROR SET HISTORY DATA ") + text);
}

void CHistories::Tell()
{
    if (Moved)
        Moved();
}

QString CHistories::GetOpratorString(qint32 code)
{
    switch (code) {
    case 0:
        return QStringLiteral("no change");
    case 1:
        return QStringLiteral("insert");
    case 2:
        return QStringLiteral("delete");
    case 3:
        return QStringLiteral("update");
    default:
        return QStringLiteral("UnKnow");
    }
}

bool CHistories::KeyDown(int keyCode, int shift)
{
    if (!m_editer)
        return false;
    try {
        if (keyCode == KeyCode::Insert)
            m_overtype = !m_overtype;
        m_after.Text.clear();
        const QString text = m_editer->Text();
        const qint32 start = m_editer->SelStart();
        if (m_editer->SelLength() == 0) {
            if (m_overtype && keyCode != KeyCode::Enter && start < text.size())
                m_after.Text = text.mid(start, 1);
            if (keyCode == KeyCode::Backspace) {
                if (start <= 0)
                    return true;
                const bool pair = start >= 2 && text[start - 1] == u'\n' && text[start - 2] == u'\r';
                m_after.Text = pair ? text.mid(start - 2, 2) : text.mid(start - 1, 1);
            } else if (keyCode == KeyCode::Delete) {
                if (start >= text.size())
                    return true;
                const bool pair = start + 1 < text.size() && text[start] == u'\r' && text[start + 1] == u'\n';
                m_after.Text = pair ? text.mid(start, 2) : text.mid(start, 1);
            }
        } else {
            m_after.Text = m_editer->SelText();
        }
        const bool ctrl = (shift & 2) != 0;
        if (ctrl && keyCode == 'Z') {
            Back();
            return true;
        }
        if (ctrl && keyCode == 'Y') {
            Forword();
            return true;
        }
    } catch (const std::exception &e) {
        Report(e);
    }
    return false;
}

void CHistories::SelChange()
{
    if (m_guard || !m_editer)
        return;
    const QString textToGo = m_after.Text;
    m_before = m_after;
    m_selChanged = true;
    m_after = Selection();
    m_after.Text = textToGo;
}

void CHistories::DropLaterSteps()
{
    if (m_currentNo == 0) {
        m_steps.Clear();
        return;
    }
    CHistory *current = m_steps.Find(key(m_currentNo));
    if (!current)
        return;
    qint32 next = current->NextNo;
    // A step can only point forward to a later number, so the walk ends.
    while (next != -1) {
        std::unique_ptr<CHistory> gone = m_steps.Take(key(next));
        if (!gone)
            break;
        next = gone->NextNo;
    }
    current->NextNo = -1;
}

void CHistories::Change()
{
    if (m_guard || !m_editer)
        return;
    try {
        if (m_editer->Text().size() > MaxTextLength) {
            // Reading so long a text at every key costs more than the history is worth.
            m_editer->setEvents(nullptr);
            m_editer = nullptr;
            return;
        }
        DropLaterSteps();
        if (!m_selChanged) {
            const QString textToGo = m_after.Text;
            m_before = m_after;
            m_after = Selection();
            m_after.Text = textToGo;
        }
        if (m_before.Text.size() >= 3 && m_before.Text.endsWith(QStringLiteral("\r\n"))) {
            // The control leaves a line break behind when such a text goes; take it out.
            Guard g(m_guard);
            m_editer->setSelLength(2);
            m_editer->setSelText(QString());
        }
        Create();
        m_selChanged = false;
    } catch (const std::exception &e) {
        Report(e);
    }
}

void CHistories::Create()
{
    if (m_guard || !m_editer)
        return;
    try {
        auto step = std::make_unique<CHistory>();
        const qint32 number = m_made + 1;
        step->Init(number, m_editer);
        step->setParent(this);
        step->BeforeSelText = m_before.SelText;
        step->BeforeSelStart = m_before.SelStart;
        step->BeforeSelLength = m_before.SelLength;
        step->BeforeText = m_before.Text;
        step->AfterSelText = m_after.SelText;
        step->AfterSelStart = m_after.SelStart;
        step->AfterSelLength = m_after.SelLength;
        if (m_after.SelLength != 0)
            step->AfterText = m_editer->SelText();
        else if (m_after.SelStart < m_before.SelStart)
            step->AfterText.clear();
        else
            step->AfterText = m_editer->Text().mid(m_before.SelStart, m_after.SelStart - m_before.SelStart);

        const bool went = !step->BeforeText.isEmpty();
        const bool came = !step->AfterText.isEmpty();
        step->Operate = went && came ? 3 : went ? 2 : came ? 1 : 0;

        if (m_steps.Count() > 0) {
            m_steps.Item(key(m_currentNo))->NextNo = number;
            step->PreviousNo = m_currentNo;
        } else {
            step->PreviousNo = 0;
            m_firstNo = number;
        }
        step->NextNo = -1;
        m_currentNo = number;
        m_steps.Add(key(number), std::move(step));
        ++m_made;
        Tell();
    } catch (const std::exception &e) {
        Report(e);
    }
}

void CHistories::Apply(CHistory &step, bool undo)
{
    Guard g(m_guard);
    m_editer->setSelStart(std::min(step.BeforeSelStart, step.AfterSelStart));
    const QString &out = undo ? step.AfterText : step.BeforeText;
    const QString &in = undo ? step.BeforeText : step.AfterText;
    m_editer->setSelLength(qint32(out.size()));
    // Two blanks keep the control from trimming a text that ends in a line break.
    m_editer->setSelText(in + QStringLiteral("  "));
    m_editer->setSelStart(m_editer->SelStart() - 2);
    m_editer->setSelLength(2);
    m_editer->setSelText(QString());
    step.Caret = m_editer->SelStart();
    // The selection events were held back: the next edit starts from here.
    m_after = Selection();
    m_before = m_after;
    m_selChanged = false;
}

void CHistories::Back()
{
    try {
        if (m_editer && m_currentNo != 0) {
            CHistory *step = m_steps.Item(key(m_currentNo));
            Apply(*step, true);
            m_currentNo = step->PreviousNo;
        }
    } catch (const std::exception &e) {
        Report(e);
    }
    Tell();
}

void CHistories::Forword()
{
    try {
        if (m_editer) {
            const qint32 next = m_currentNo == 0 ? (m_steps.Count() > 0 ? m_firstNo : -1)
                                                 : m_steps.Item(key(m_currentNo))->NextNo;
            if (next != -1) {
                CHistory *step = m_steps.Item(key(next));
                Apply(*step, false);
                m_currentNo = next;
            }
        }
    } catch (const std::exception &e) {
        Report(e);
    }
    Tell();
}

void CHistories::Clear()
{
    m_steps.Clear();
    m_currentNo = 0;
    m_firstNo = 0;
}

CHistory *CHistories::Add(std::unique_ptr<CHistory> step)
{
    step->setParent(this);
    const QString k = key(step->SerialNo);
    return m_steps.Add(k, std::move(step));
}

void CHistories::Delete(const QString &k)
{
    m_steps.Remove(k);
}

QString CHistories::Content() const
{
    QStringList lines;
    qint32 n = m_currentNo;
    while (n != 0 && lines.size() < 10) {
        const CHistory *step = m_steps.Find(key(n));
        if (!step)
            break;
        const QString name = GetOpratorString(step->Operate) + QStringLiteral(" : ");
        switch (step->Operate) {
        case 1:
            lines << name + withEnter(step->AfterText);
            break;
        case 2:
            lines << name + withEnter(step->BeforeText);
            break;
        default:
            lines << name + withEnter(step->BeforeText) + QStringLiteral(" TO ") + withEnter(step->AfterText);
            break;
        }
        n = step->PreviousNo;
    }
    return lines.join(QStringLiteral("\r\n"));
}
