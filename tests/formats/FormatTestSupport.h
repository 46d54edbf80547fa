#pragma once

#include "core/CScriptedPrompt.h"
#include "core/basMessage.h"
#include "formats/IFormatHost.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <ostream>

// Readable failure output for texts.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

// A test with the scripted prompt installed: every message and question is recorded.
class FormatTest : public ::testing::Test
{
protected:
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    // A text of file lines joined by "\r\n".
    static QString crlf(const QStringList &lines) { return lines.join(QStringLiteral("\r\n")); }
    static QString fault(const char *key, const char *description)
    {
        return Msg(QString::fromLatin1(key)) + QString::fromLatin1(description);
    }

    CScriptedPrompt prompt;
};

// The document side of a format list: records what the readers hand over.
struct TestHost : IFormatHost
{
    qint32 SubType = 0;
    QString LrcName, LrcArtist, LrcCDName, LrcEditor, SSTHead;
    double LrcOffset = 0;

    qint32 ScriptSubType() const override { return SubType; }
    void setScriptSubType(qint32 value) override { SubType = value; }
    void setLrcName(const QString &value) override { LrcName = value; }
    void setLrcArtist(const QString &value) override { LrcArtist = value; }
    void setLrcCDName(const QString &value) override { LrcCDName = value; }
    void setLrcEditor(const QString &value) override { LrcEditor = value; }
    void setLrcOffset(double value) override { LrcOffset = value; }
    void setSSTHead(const QString &value) override { SSTHead = value; }
};
