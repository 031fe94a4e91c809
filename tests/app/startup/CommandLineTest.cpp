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

std::optional<CommandLineAnswer> answerTo(const char* line)
{
    return answerCommandLine(words(line), [] { return std::nullopt; });
}

TEST(CommandLine, RunsTheProgramWithoutArgumentsAndWithThoseOfQt)
{
    for (const auto* line : {"", "-platform offscreen", "--platform offscreen -style=fusion",
                             "-session abc_123 -name x", "-qmljsdebugger=port:3768", "-title --help"}) {
        EXPECT_EQ(answerTo(line), std::nullopt) << line;
    }
}

TEST(CommandLine, AnswersHelpAndVersion)
{
    L10n::use(QStringLiteral("en"));
    for (const auto* line : {"--help", "-h", "-platform offscreen --help", "--help --nonsense"}) {
        const auto answer = answerTo(line);
        ASSERT_TRUE(answer) << line;
        EXPECT_EQ(answer->exitCode, 0);
        for (const auto* option : {u"  -s, --save-clip  ", u"  -h, --help       ", u"  -v, --version    "}) {
            EXPECT_TRUE(answer->text.contains(QStringView(option))) << answer->text.toStdString();
        }
    }
    EXPECT_EQ(answerTo("--version"), answerTo("-v"));
    EXPECT_EQ(answerTo("-v")->exitCode, 0);
    EXPECT_TRUE(answerTo("-v")->text.startsWith(u"Quelto "));
    L10n::use(QStringLiteral("tr"));
}

TEST(CommandLine, SavesAClip)
{
    int requests = 0;
    const auto succeed = [&]() -> std::optional<QString> {
        ++requests;
        return std::nullopt;
    };
    EXPECT_EQ(answerCommandLine(words("--save-clip"), succeed), CommandLineAnswer{});
    EXPECT_EQ(answerCommandLine(words("-s"), succeed), CommandLineAnswer{});
    EXPECT_EQ(requests, 2);
    const auto fail = [] { return std::optional(QStringLiteral("not running")); };
    EXPECT_EQ(answerCommandLine(words("--save-clip"), fail),
              (CommandLineAnswer{.text = QStringLiteral("not running\n"), .exitCode = 1}));
}

TEST(CommandLine, RejectsEverythingElse)
{
    for (const auto* line :
         {"--nonsense", "-x", "clip.mp4", "--", "-", "--versions", "-platform offscreen file", "--nonsense --help"}) {
        const auto answer = answerTo(line);
        ASSERT_TRUE(answer) << line;
        EXPECT_EQ(answer->exitCode, 2) << line;
    }
    EXPECT_TRUE(answerTo("--nonsense")->text.contains(u"--nonsense"));
}

} // namespace
} // namespace quelto
