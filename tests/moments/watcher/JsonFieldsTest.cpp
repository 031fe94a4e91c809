// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/JsonReading.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

QByteArray nested(int depth)
{
    return R"({"a":)" + QByteArray(depth - 1, '[') + QByteArray(depth - 1, ']') + '}';
}

TEST(JsonReading, TakesObjectsOnly)
{
    EXPECT_TRUE(jsonObject("{}"));
    EXPECT_FALSE(jsonObject("[]"));
    EXPECT_FALSE(jsonObject("7"));
    EXPECT_FALSE(jsonObject(""));
    EXPECT_FALSE(jsonObject(R"({"a":)"));
}

TEST(JsonReading, IgnoresWhatIsNestedDeeperThanGamesDo)
{
    EXPECT_TRUE(jsonObject(nested(DeepestJson)));
    EXPECT_FALSE(jsonObject(nested(DeepestJson + 1)));
    EXPECT_FALSE(jsonObject(QByteArray(4'000'000, '[')));
}

TEST(JsonReading, BracketsInTextsAreNoNesting)
{
    EXPECT_TRUE(jsonObject(R"({"a":")" + QByteArray(1000, '[') + R"(\"[[","b":"\\"})"));
}

TEST(JsonReading, AWrongKindCountsAsAbsent)
{
    const auto object = *jsonObject(R"({"number":1.5,"whole":3,"text":"3","yes":true,"none":null,"huge":1e300,
                                        "edge":2147483647,"over":2147483648,"below":-2147483648})");
    EXPECT_EQ(numberIn(object, QLatin1StringView("number")), 1.5);
    EXPECT_EQ(numberIn(object, QLatin1StringView("text")), std::nullopt);
    EXPECT_EQ(integerIn(object, QLatin1StringView("whole")), 3);
    EXPECT_EQ(integerIn(object, QLatin1StringView("edge")), 2147483647);
    for (const auto* key : {"number", "text", "yes", "none", "huge", "over", "below", "absent"}) {
        EXPECT_EQ(integerIn(object, QLatin1StringView(key)), std::nullopt) << key;
    }
    EXPECT_EQ(booleanIn(object, QLatin1StringView("yes")), true);
    EXPECT_EQ(booleanIn(object, QLatin1StringView("whole")), std::nullopt);
    EXPECT_EQ(textIn(object, QLatin1StringView("text")), QStringLiteral("3"));
    EXPECT_EQ(textIn(object, QLatin1StringView("whole")), std::nullopt);
}

} // namespace
} // namespace quelto
