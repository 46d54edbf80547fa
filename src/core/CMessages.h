#pragma once

#include "core/CKeyedList.h"
#include "core/CMessage.h"
#include "core/ICollection.h"
#include "core/isub.h"

// The message catalogue, keyed by message key. Its collection view (MessageList) falls
// back to "DEFAULTE_MESSAGE" for an unknown key; its own item gives nothing.
class CMessages : public isub
{
public:
    CMessages();
    ~CMessages() override;

    // Loads the built-in text, the English one over it when the interface speaks
    // English, then "Message.txt" from the program folder over both.
    void Init();

    CMessage *Create(const QString &key);
    bool Exists(const QString &key) const;
    // The plain lookup: nullptr for an unknown key.
    CMessage *item(const QString &key) const;
    qsizetype Count() const { return m_list.Count(); }
    CMessage *At(qsizetype index) const { return m_list.At(index); }

    // Parses a whole catalogue text: "KEY = text" lines, later lines overriding earlier.
    void setContent(const QString &text) override;
    // Every text and "\r\n", in order, without keys.
    QString Content() override;
    void Clear() override;

    // The collection view that the rest of the system looks texts up through.
    ICollection &CollectionView();

private:
    class View;
    CKeyedList<CMessage> m_list;
    std::unique_ptr<View> m_view;
};
