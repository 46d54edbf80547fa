// Inputs that once made a fuzz target fail, replayed through the same reader: a fault, or
// over a second under the sanitizers (a long file is kept by its head). Each file in
// inputs/ is named after its target ("sami-…" goes through the SAMI document path); a new
// failure found by scripts/fuzz is added there.
#include "FuzzInputs.h"

#include "core/CScriptedPrompt.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

TEST(FuzzRegressions, EveryKeptInputReadsWithoutFault)
{
    CScriptedPrompt prompt;
    prompt.DefaultYesNo = MsgBoxResult::Yes;
    SetPrompt(&prompt);
    const QDir inputs(QStringLiteral(VELMAR_REGRESSION_INPUTS));
    const QStringList names = inputs.entryList(QDir::Files);
    EXPECT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        QFile file(inputs.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::string target = name.section(u'-', 0, 0).toStdString();
        EXPECT_TRUE(
            RunFuzzInput(target, reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size())))
            << "no target is called " << target;
        prompt.Reset();
    }
    SetPrompt(nullptr);
}
