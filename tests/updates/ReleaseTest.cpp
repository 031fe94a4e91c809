// SPDX-License-Identifier: GPL-3.0-or-later
#include "updates/Release.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Comparison {
    const char* name;
    const char* version;
    const char* other;
    bool isVersionNewer;
    bool isOtherNewer;
};

class IsNewerTest : public testing::TestWithParam<Comparison> { };

TEST_P(IsNewerTest, ComparesTheNumbersBetweenTheDots)
{
    const auto version = QString::fromUtf8(GetParam().version);
    const auto other = QString::fromUtf8(GetParam().other);
    EXPECT_EQ(isNewer(version, other), GetParam().isVersionNewer);
    EXPECT_EQ(isNewer(other, version), GetParam().isOtherNewer);
}

INSTANTIATE_TEST_SUITE_P(
    Versions, IsNewerTest,
    testing::Values(
        Comparison{"AnotherNumber", "1.2.1", "1.2", true, false},
        Comparison{"AnotherZero", "1.2.0", "1.2", false, false}, Comparison{"TwoDigits", "1.10", "1.9", true, false},
        Comparison{"Same", "1.2", "1.2", false, false},
        Comparison{"FirstDifferenceDecides", "2.0.9", "1.9.9", true, false},
        Comparison{"SuffixCountsAsZero", "1.2b.9", "1.1", false, true},
        Comparison{"SuffixEqualsZero", "1.2b", "1.0", false, false},
        Comparison{"UnknownVersion", "0.0.1", "0", true, false},
        Comparison{"EmptyPieces", "..1..2.", "1.2", false, false}, Comparison{"Empty", "", "0", false, false},
        Comparison{"LeadingZeros", "1.007", "1.7", false, false}, Comparison{"Signs", "1.+2", "1.2", false, false},
        Comparison{"Negative", "1.-2", "1.0", false, true}, Comparison{"TwoSigns", "1.+-2", "1.0", false, false},
        Comparison{"Spaces", "1. 2", "1.0", false, false}, Comparison{"Prefix", "v2.0", "1.0", false, true},
        Comparison{"Hexadecimal", "1.0x9", "1.0", false, false},
        Comparison{"OtherDigits", "1.\u0663", "1.0", false, false},
        Comparison{"GreatestNumber", "1.9223372036854775807", "1.2", true, false},
        Comparison{"TooGreatNumberCountsAsZero", "1.9223372036854775808", "1.0", false, false},
        Comparison{"FarTooGreatNumber", "999999999999999999999999999999", "0.1", false, true}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ReleaseTest, DecodesAManifest)
{
    const Release release{.version = QStringLiteral("1.4.2"),
                          .notes = {QStringLiteral("Schneller"), QStringLiteral("Ö")},
                          .url = QStringLiteral("https://example.org/1.4.2")};
    EXPECT_EQ(decodeRelease(R"({"url": "https://example.org/1.4.2", "notes": ["Schneller", "\u00d6"],
                                "version": "1.4.2", "size": [1, {}]})"),
              release);
    EXPECT_TRUE(decodeRelease(R"({"version": "1", "notes": [], "url": ""})"));
}

TEST(ReleaseTest, RejectsEverythingElse)
{
    for (const QByteArray json : {"",
                                  "null",
                                  "7",
                                  "[]",
                                  "{}",
                                  "<html><body>Log in to this network</body></html>",
                                  R"({"version": "1", "notes": []})",
                                  R"({"version": "1", "url": "u"})",
                                  R"({"notes": [], "url": "u"})",
                                  R"({"version": 1, "notes": [], "url": "u"})",
                                  R"({"version": null, "notes": [], "url": "u"})",
                                  R"({"version": "1", "notes": "n", "url": "u"})",
                                  R"({"version": "1", "notes": {}, "url": "u"})",
                                  R"({"version": "1", "notes": ["a", 2], "url": "u"})",
                                  R"({"version": "1", "notes": [null], "url": "u"})",
                                  R"({"version": "1", "notes": [], "url": ["u"]})",
                                  R"([{"version": "1", "notes": [], "url": "u"}])",
                                  R"({"Version": "1", "notes": [], "url": "u"})",
                                  R"({"version": "1", "notes": [], "url": "u")",
                                  R"({"version": "1", "notes": [], "url": "u"} x)",
                                  "{\"version\": \"\xff\", \"notes\": [], \"url\": \"u\"}"}) {
        EXPECT_FALSE(decodeRelease(json)) << json.constData();
    }
    const QByteArray nested = R"({"version": "1", "url": "u", "notes": )" + QByteArray(50000, '[');
    EXPECT_FALSE(decodeRelease(nested));
}

TEST(ReleaseTest, VisibleLineHasNoLineBreaksAndControlCharacters)
{
    EXPECT_EQ(visibleLine(QStringLiteral(" 2.0\n\r\t\u0000\u001b[31m \u2028x\u0085y ")),
              QStringLiteral("2.0 [31m x y"));
    EXPECT_EQ(visibleLine(QStringLiteral("2\u202e0\u2066.1\u200f\ufeff")), QStringLiteral("20.1"));
    const auto family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    EXPECT_EQ(visibleLine(family), family);
}

} // namespace
} // namespace quelto
