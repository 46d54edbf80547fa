#pragma once

#include <QFile>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

// A file opened by number, with the whole-file read rule (including the guess for
// UTF-16 without a mark) and a small progress counter.
class CFile
{
public:
    CFile() = default;
    ~CFile();
    CFile(const CFile &) = delete;
    CFile &operator=(const CFile &) = delete;

    // Mode: 0 input, 1 output, 2 append, 4 binary, any other value random access.
    bool OpenFile(const QString &FileName, qint32 Mode);
    QString FileName() const { return m_fileName; }
    qint16 Handle() const { return m_handle; }
    qint32 Mode() const { return m_mode; }
    void CloseFile();
    // Writes the text at the current position; errors are ignored.
    void WriteFile(const QString &Text);
    // The whole file by the read rule; "" for an empty file. Whether the read took the
    // text as UTF-16 is kept in Unicode().
    QString ReadFile();
    bool Unicode() const { return m_unicode; }

    // The progress counter: the first call must give a total (error 9999 without step
    // and total, 9998 with a step alone). Each call adds the step (1 when omitted).
    void Progress(std::optional<qint32> step = std::nullopt, std::optional<qint32> total = std::nullopt);
    // Fired with the percentage when it changed, or always when a total was given.
    std::function<void(qint32 percent)> ProgressPercent;

private:
    QString m_fileName;
    qint16 m_handle = 0;
    qint32 m_mode = 0;
    bool m_unicode = false;
    std::unique_ptr<QFile> m_file;
    std::optional<qint32> m_total;
    qint32 m_current = 0;
    qint32 m_percent = -1;
};
