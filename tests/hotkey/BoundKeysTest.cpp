// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/BoundKeys.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Row {
    const char* description;
    const char* words;
};

class BoundKeysTest : public testing::TestWithParam<Row> { };

TEST_P(BoundKeysTest, NamesTheKeys)
{
    EXPECT_EQ(boundKeyWords(QString::fromUtf8(GetParam().description)).join(u' '), QString::fromUtf8(GetParam().words));
}

constexpr Row Rows[] = {
    {"Alt+Shift+C", "Alt Shift C"},
    {"Shift+Alt+c", "Alt Shift C"},
    {"<Shift><Alt>c", "Alt Shift C"},
    {"<Primary><Super>F9", "Ctrl Super F9"},
    {"<Control>Home", "Ctrl Home"},
    {"Meta+Print", "Super Print"},
    {"Super+Ö", "Super Ö"},
    {" F9 ", "F9"},
    {"Ctrl++", "Ctrl +"},
    {"Press <Alt><Shift>c", "Alt Shift C"},
    {"Drücke Ctrl+F9", "Ctrl F9"},
    {"Volume Up", "Volume Up"},
    {"Alt+C or Ctrl+F9", "Alt+C or Ctrl+F9"},
    {"Press the red key", "Press the red key"},
    {"", ""},
};

INSTANTIATE_TEST_SUITE_P(Descriptions, BoundKeysTest, testing::ValuesIn(Rows));

TEST(BoundKeys, ASentenceIsOneWord)
{
    EXPECT_EQ(boundKeyWords(QStringLiteral("Press the  red key")), QStringList{QStringLiteral("Press the red key")});
    EXPECT_EQ(boundKeyWords(QString()), QStringList());
}

} // namespace
} // namespace quelto
