#pragma once

#include "core/CScriptedPrompt.h"
#include "core/basMessage.h"

#include <gtest/gtest.h>

#include <ostream>

// Readable failures for texts.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

// Every script test runs with a scripted prompt that records the boxes and answers
// from a queue; it is removed again after the test.
class ScriptTest : public ::testing::Test
{
protected:
    void SetUp() override { SetPrompt(&prompt); }
    void TearDown() override { SetPrompt(nullptr); }

    static QString crlf(const QStringList &lines) { return lines.join(QStringLiteral("\r\n")); }

    CScriptedPrompt prompt;
};
