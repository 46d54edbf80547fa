#include "core/CFile.h"

#include "core/VelmarError.h"
#include "core/basText.h"

#include <set>

namespace {

// File numbers in use, handed out like free file numbers: the lowest free from 1.
std::set<qint16> &numbersInUse()
{
    static std::set<qint16> numbers;
    return numbers;
}

qint16 freeNumber()
{
    qint16 n = 1;
    while (numbersInUse().count(n))
        ++n;
    numbersInUse().insert(n);
    return n;
}

} // namespace

CFile::~CFile()
{
    CloseFile();
}

bool CFile::OpenFile(const QString &FileName, qint32 Mode)
{
    CloseFile();
    QIODevice::OpenMode flags;
    switch (Mode) {
    case 0:
        flags = QIODevice::ReadOnly;
        break;
    case 1:
        flags = QIODevice::WriteOnly | QIODevice::Truncate;
        break;
    case 2:
        flags = QIODevice::WriteOnly | QIODevice::Append;
        break;
    default:
        flags = QIODevice::ReadWrite;
        break;
    }
    auto file = std::make_unique<QFile>(FileName);
    if (!file->open(flags))
        return false;
    m_file = std::move(file);
    m_fileName = FileName;
    m_mode = Mode;
    m_handle = freeNumber();
    return true;
}

void CFile::CloseFile()
{
    if (m_handle == 0)
        return;
    m_file.reset();
    numbersInUse().erase(m_handle);
    m_handle = 0;
}

void CFile::WriteFile(const QString &Text)
{
    if (!m_file)
        return;
    m_file->write(EncodeSystemCodePage(Text));
}

QString CFile::ReadFile()
{
    if (!m_file)
        return {};
    m_file->seek(0);
    const WholeFileRead read = DecodeWholeFile(m_file->readAll(), true);
    if (!read.Empty)
        m_unicode = read.Unicode;
    return read.Text;
}

void CFile::Progress(std::optional<qint32> step, std::optional<qint32> total)
{
    if (!m_total && !total) {
        if (!step)
            throw VelmarError(9999, QStringLiteral("没有初始化"));
        throw VelmarError(9998, QStringLiteral("第一次不能省略更新值"));
    }
    if (total) {
        m_total = total;
        m_current = step.value_or(0);
    } else {
        m_current += step.value_or(1);
    }
    const qint32 percent = *m_total == 0 ? 0 : qint32(qint64(m_current) * 100 / *m_total);
    if (percent != m_percent || total) {
        m_percent = percent;
        if (ProgressPercent)
            ProgressPercent(percent);
    }
}
