// SPDX-License-Identifier: GPL-3.0-or-later
#include "moments/watcher/JsonFields.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

QByteArray nested(int depth)
{
    return R"({"a":)" + QByteArray(depth - 1, '[') + QByteArray(depth - 1, ']') + '}';
}

TEST(JsonFields, ParsesObjectsOnly)
{
    EXPECT_TRUE(parseJsonObject("{}"));
    EXPECT_FALSE(parseJsonObject("[]"));
    EXPECT_FALSE(parseJsonObject("7"));
    EXPECT_FALSE(parseJsonObject(""));
    EXPECT_FALSE(parseJsonObject(R"({"a":)"));
}

TEST(JsonFields, RepairsInvalidUtf8)
{
    // A truncated sequence, a stray byte, an overlong form and an encoded surrogate.
    for (const auto* bytes : {"\xc3", "\xe2\x82", "\xff", "\x80", "\xc0\xaf", "\xed\xa0\x80"}) {
        const auto object = parseJsonObject(R"({"name":"ab)" + QByteArray(bytes) + R"(","kills":7})");
        ASSERT_TRUE(object) << bytes;
        EXPECT_EQ(integerIn(*object, QLatin1StringView("kills")), 7);
        const auto name = textIn(*object, QLatin1StringView("name")).value();
        EXPECT_TRUE(name.startsWith(QStringLiteral("ab\uFFFD"))) << name.toStdString();
    }
    const auto valid = *parseJsonObject(R"({"name":"Çınar 🎮"})");
    EXPECT_EQ(textIn(valid, QLatin1StringView("name")), QStringLiteral("Çınar 🎮"));
}

TEST(JsonFields, RejectsDeepNesting)
{
    EXPECT_TRUE(parseJsonObject(nested(MaxJsonDepth)));
    EXPECT_FALSE(parseJsonObject(nested(MaxJsonDepth + 1)));
    EXPECT_FALSE(parseJsonObject(QByteArray(4'000'000, '[')));
}

TEST(JsonFields, BracketsInStringsAreNotNesting)
{
    EXPECT_TRUE(parseJsonObject(R"({"a":")" + QByteArray(1000, '[') + R"(\"[[","b":"\\"})"));
}

TEST(JsonFields, WrongTypeCountsAsAbsent)
{
    const auto object = *parseJsonObject(R"({"number":1.5,"whole":3,"text":"3","yes":true,"none":null,"huge":1e300,
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
