// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/CommandLine.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

TEST(CommandLine, RunsTheProgramWithoutArgumentsAndWithThoseOfQt)
{
    for (const auto* line : {"", "-platform offscreen", "--platform offscreen -style=fusion",
                             "-session abc_123 -name x", "-qmljsdebugger=port:3768", "-title --help"}) {
        EXPECT_EQ(answerCommandLine(words(line)), std::nullopt) << line;
    }
}

TEST(CommandLine, AnswersHelpAndVersion)
{
    L10n::use(QStringLiteral("en"));
    for (const auto* line : {"--help", "-h", "-platform offscreen --help", "--help --nonsense"}) {
        const auto answer = answerCommandLine(words(line));
        ASSERT_TRUE(answer) << line;
        EXPECT_EQ(answer->exitCode, 0);
        EXPECT_TRUE(answer->text.contains(u"  -h, --help     ")) << answer->text.toStdString();
        EXPECT_TRUE(answer->text.contains(u"  -v, --version  ")) << answer->text.toStdString();
    }
    EXPECT_EQ(answerCommandLine(words("--version")), answerCommandLine(words("-v")));
    EXPECT_EQ(answerCommandLine(words("-v"))->exitCode, 0);
    EXPECT_TRUE(answerCommandLine(words("-v"))->text.startsWith(u"Quelto "));
    L10n::use(QStringLiteral("tr"));
}

TEST(CommandLine, RejectsEverythingElse)
{
    for (const auto* line :
         {"--nonsense", "-x", "clip.mp4", "--", "-", "--versions", "-platform offscreen file", "--nonsense --help"}) {
        const auto answer = answerCommandLine(words(line));
        ASSERT_TRUE(answer) << line;
        EXPECT_EQ(answer->exitCode, 2) << line;
    }
    EXPECT_TRUE(answerCommandLine(words("--nonsense"))->text.contains(u"--nonsense"));
}

} // namespace
} // namespace quelto
