#include "shell/CRecentFile.h"

#include "core/VelmarError.h"
#include "core/basConvert.h"
#include "core/basSetting.h"
#include "formats/basFileTypes.h"

using namespace basConvert;

namespace {
const QString kSection = QStringLiteral("Recent");

qint32 lengthSetting()
{
    try {
        return std::max<qint32>(
            0, CLng(GetSetting(QStringLiteral("RecentFiles"), QStringLiteral("Count"), QStringLiteral("5"))));
    } catch (const VelmarError &) {
        return 5;
    }
}
} // namespace

void CRecentFile::Init()
{
    Init(lengthSetting());
}

void CRecentFile::Init(qint32 length)
{
    length = std::max<qint32>(0, length);
    m_names.assign(size_t(length), QString());
    m_types.assign(size_t(length), ScriptType::Plain);
    for (qint32 slot = 1; slot <= length; ++slot) {
        const QString n = QString::number(slot);
        m_names[size_t(slot - 1)] = GetSetting(kSection, QStringLiteral("FileName") + n, QString());
        try {
            m_types[size_t(slot - 1)]
                = ScriptType(CLng(GetSetting(kSection, QStringLiteral("FileType") + n, QStringLiteral("0"))));
        } catch (const VelmarError &) {
            m_types[size_t(slot - 1)] = ScriptType::Plain;
        }
    }
    UpdateRecentFileMenu();
}

QString CRecentFile::FileName(int slot) const
{
    return slot >= 1 && slot <= Length() ? m_names[size_t(slot - 1)] : QString();
}

ScriptType CRecentFile::FileType(int slot) const
{
    return slot >= 1 && slot <= Length() ? m_types[size_t(slot - 1)] : ScriptType::Plain;
}

void CRecentFile::InsertRecentFileList(const QString &name, ScriptType type)
{
    const qint32 length = Length();
    if (length == 0)
        return;
    qint32 start = length;
    const QString upper = UCase(name);
    for (qint32 slot = 1; slot <= length; ++slot)
        if (UCase(m_names[size_t(slot - 1)]) == upper) {
            m_names[size_t(slot - 1)].clear();
            start = slot;
            break;
        }
    for (qint32 slot = start; slot >= 2; --slot) {
        m_names[size_t(slot - 1)] = m_names[size_t(slot - 2)];
        m_types[size_t(slot - 1)] = m_types[size_t(slot - 2)];
    }
    m_names[0] = name;
    m_types[0] = type;
    UpdateRecentFileMenu();
}

void CRecentFile::UpdateRecentFileMenu()
{
    m_menu.clear();
    m_menu.reserve(m_names.size());
    for (qint32 slot = 1; slot <= Length(); ++slot) {
        RecentFileMenuEntry e;
        e.Slot = slot;
        e.FileName = m_names[size_t(slot - 1)];
        e.Type = m_types[size_t(slot - 1)];
        e.Visible = !e.FileName.isEmpty();
        if (e.Visible)
            e.Caption = QString::number(slot) + QStringLiteral(": ") + ScripyTypeName(e.Type)
                + QStringLiteral(": ") + e.FileName;
        m_menu.push_back(e);
    }
    if (MenuChanged)
        MenuChanged(m_menu);
    for (qint32 slot = 1; slot <= Length(); ++slot) {
        const QString n = QString::number(slot);
        SaveSetting(kSection, QStringLiteral("FileName") + n, m_names[size_t(slot - 1)]);
        SaveSetting(
            kSection, QStringLiteral("FileType") + n, QString::number(qint32(m_types[size_t(slot - 1)])));
    }
}

namespace {

// The labels of the entries, by the window that opens the file.
QString windowLabel(DocumentWindowKind window)
{
    switch (window) {
    case DocumentWindowKind::Translate:
        return QStringLiteral("翻译");
    case DocumentWindowKind::Timing:
        return QStringLiteral("时间轴");
    case DocumentWindowKind::Player:
        return QStringLiteral("动画");
    default:
        return QStringLiteral("未知类型");
    }
}

} // namespace

QString CRecentFile::ScripyTypeName(ScriptType type)
{
    const FileTypeRow *row = FileTypeOf(type);
    return windowLabel(row ? row->Window : DocumentWindowKind::None);
}

ScriptType CRecentFile::ScripyType(const QString &name)
{
    // The first type of the labelled window.
    for (const FileTypeRow &row : FileTypes())
        if (windowLabel(row.Window) == name)
            return row.Type;
    return ScriptType::Plain;
}
