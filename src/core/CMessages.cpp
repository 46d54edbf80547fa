#include "core/CMessages.h"

#include "core/IPrompt.h"
#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basLanguage.h"
#include "core/basMessage.h"
#include "core/basPlatform.h"
#include "core/basText.h"

#include <QFileInfo>

namespace {
const QString kFallbackKey = QStringLiteral("DEFAULTE_MESSAGE");
}

class CMessages::View : public ICollection
{
public:
    explicit View(CMessages &owner)
        : m_owner(owner)
    { }
    qint32 SerialNo() const override { return 0; }
    void Delete(const QString &key) override { m_owner.m_list.Take(key); }
    qsizetype Count() const override { return m_owner.Count(); }
    isub *item(const QString &key) override
    {
        if (CMessage *m = m_owner.item(key))
            return m;
        return m_owner.Create(kFallbackKey);
    }
    isub *itemAt(qsizetype index) override { return m_owner.At(index); }
    void Init() override { }

private:
    CMessages &m_owner;
};

CMessages::CMessages()
    : m_view(std::make_unique<View>(*this))
{ }

CMessages::~CMessages() = default;

void CMessages::Init()
{
    Clear();
    setFileName({});
    setContent(DefaultMessageText());
    // English replaces every built-in text; "Message.txt" still has the last word.
    const bool english = InterfaceLanguage() == u"en";
    if (english)
        setContent(EnglishMessageText());
    setContent(OwnMessageText(english));
    const QString path = ProgramFolder() + QStringLiteral("Message.txt");
    if (QFileInfo::exists(path)) {
        const TextFileRead file = ReadTextStream(path, FileCode::SystemDefault);
        if (!file.Ok) {
            MsgBox(QStringLiteral("Read Message Error: ") + file.Error);
        } else {
            setContent(file.Text);
            setFileName(QStringLiteral("Message.txt"));
            setChanged(false);
        }
    }
    // Last, so that no file can change the fall-back text.
    Create(kFallbackKey)->Message = QStringLiteral("MESSAGE ERROR");
}

CMessage *CMessages::Create(const QString &key)
{
    if (CMessage *existing = item(key))
        return existing;
    auto message = std::make_unique<CMessage>();
    message->Init(key);
    message->setParent(this);
    return m_list.Add(key, std::move(message));
}

bool CMessages::Exists(const QString &key) const
{
    return m_list.Exists(key);
}

CMessage *CMessages::item(const QString &key) const
{
    return m_list.Find(key);
}

void CMessages::setContent(const QString &text)
{
    try {
        qsizetype start = 0;
        const QStringView all(text);
        while (start <= all.size()) {
            qsizetype end = all.indexOf(u"\r\n", start);
            if (end < 0)
                end = all.size();
            const QStringView line = all.sliced(start, end - start);
            const qsizetype eq = line.indexOf(u'=');
            if (eq >= 0) {
                CMessage *message = Create(basConvert::Trim(line.left(eq)));
                message->setContent(line.toString());
            }
            start = end + 2;
        }
    } catch (const VelmarError &e) {
        MsgBox(QStringLiteral("Read Message Error: ") + e.Description());
    }
}

QString CMessages::Content()
{
    QString out;
    for (CMessage *m : m_list)
        out += m->Content() + QStringLiteral("\r\n");
    return out;
}

void CMessages::Clear()
{
    m_list.Clear();
}

ICollection &CMessages::CollectionView()
{
    return *m_view;
}
