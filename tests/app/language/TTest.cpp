// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/language/T.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(T, GivesAKeyItselfWithItsPlaceholdersFilled)
{
    EXPECT_EQ(T("● Kayıtta — son {0} sn", 30), QStringLiteral("● Kayıtta — son 30 sn"));
    EXPECT_EQ(T("{0} klip"), QStringLiteral("{0} klip"));
}

TEST(T, FillsEveryOccurrenceInOrderAndIgnoresWhatIsLeftOver)
{
    EXPECT_EQ(T("{1} {0} {1}", QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")), QStringLiteral("b a b"));
    EXPECT_EQ(T("{0} {1}", QStringLiteral("a")), QStringLiteral("a {1}"));
}

TEST(T, GoesOnFillingInWhatAnArgumentBrought)
{
    EXPECT_EQ(T("{0}!", QStringLiteral("{1}"), QStringLiteral("x")), QStringLiteral("x!"));
}

TEST(T, PrintsNumbersWithoutGrouping)
{
    EXPECT_EQ(T("{0}", 1500), QStringLiteral("1500"));
}

} // namespace
} // namespace quelto
