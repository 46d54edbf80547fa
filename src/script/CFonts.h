#pragma once

#include "core/CKeyedList.h"
#include "core/ICollection.h"
#include "core/isub.h"
#include "script/CFont.h"
#include "script/ScriptType.h"

#include <QStringView>
#include <functional>
#include <memory>

// The styles of one script, keyed by style name. Reads and writes the style section
// in both versions; a style added under a name already present is refused when it is
// identical and renamed "Name(n)" otherwise.
class CFonts : public isub, public ICollection
{
public:
    // Pushed down from the timing document.
    ::ScriptType ScriptType = ::ScriptType::ASS;

    // An empty list with one style "Default": a new list is never empty.
    void Init() override;

    // A style with the defaults under that name. The name is not checked: a duplicate
    // raises error 457 to the caller.
    CFont *Create(const QString &StyleName);
    // Adds a style made elsewhere. An identical style (IsSameFont) of the same name is
    // refused with a message and nullptr; a different one of the same name is renamed.
    // Any other fault leaves the list as it was and gives nullptr.
    CFont *Add(std::unique_ptr<CFont> font);
    // An unknown key is ignored.
    void Delete(const QString &key) override;
    // Takes a style out of the list without telling FontDestroyed: it goes on living
    // elsewhere (into another list). nullptr for an unknown key.
    std::unique_ptr<CFont> Take(const QString &key);
    // Gives a style a new name and keys it by that name, in its place in the list; false
    // (nothing changes) for an unknown key or a name the list already has.
    bool Rename(const QString &key, const QString &newName);
    // The 0-based position of a style, or -1.
    qsizetype IndexOf(const QString &key) const;
    qsizetype Count() const override { return m_fonts.Count(); }
    // nullptr for an unknown key.
    isub *item(const QString &key) override { return m_fonts.Find(key); }
    isub *itemAt(qsizetype index) override { return m_fonts.At(index); }
    CFont *Item(const QString &key) const { return m_fonts.Find(key); }
    CFont *At(qsizetype index) const { return m_fonts.At(index); }
    bool Exists(const QString &key) const { return m_fonts.Exists(key); }
    auto begin() const { return m_fonts.begin(); }
    auto end() const { return m_fonts.end(); }

    // The counter of added styles: it only makes new names unique.
    qint32 SerialNo() const override { return m_counter; }
    // Empties the list; "Default" is not made again.
    void Clear() override { m_fonts.Clear(); }

    // The name a style had before it was renamed on adding, or "".
    QString GetOriginalStyleName(const QString &key) const;
    // Compares the fields both versions share (not the name, the outline colour, the
    // alphas nor the ASS-only fields).
    static bool IsSameFont(const CFont &Font1, const CFont &Font2);
    // A copy without a parent. The third (SSA) colour is not copied.
    static std::unique_ptr<CFont> CopyFont(const CFont &SouceFont);

    // The whole style section, or the built-in line when the list is empty.
    QString Content() override;
    // Reads the style section out of a whole script (types 1 and 2 only).
    void setContent(const QString &text) override { Read(text); }
    void Read(QStringView text);

    std::function<void(const QString &name)> FontCreated;
    std::function<void(const QString &name)> FontDestroyed;

private:
    CKeyedList<CFont> m_fonts;
    qint32 m_counter = 0;
};
