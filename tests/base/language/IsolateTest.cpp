// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/Isolate.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct IsolateCase {
    const char* name;
    const char16_t* text;
    const char16_t* expected;
};

class IsolateTest : public testing::TestWithParam<IsolateCase> { };

TEST_P(IsolateTest, IsolatesOnlyTheRightToLeftPart)
{
    const auto text = QString::fromUtf16(GetParam().text);
    EXPECT_EQ(isolated(text), QString::fromUtf16(GetParam().expected));
    EXPECT_FALSE(isolated(text).isRightToLeft());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, IsolateTest,
    testing::Values(
        IsolateCase{"Empty", u"", u""}, IsolateCase{"Latin", u"Dota 2 clip (2)", u"Dota 2 clip (2)"},
        IsolateCase{"Russian", u"Танки", u"Танки"}, IsolateCase{"OnlyPunctuation", u"(2)", u"(2)"},
        IsolateCase{"NameAlone", u"שלום עולם!", u"\u2068שלום עולם!\u2069"},
        IsolateCase{"NameInASentence", u"שלום עולם klibi (2)", u"\u2067שלום עולם\u2069 klibi (2)"},
        IsolateCase{"NameBeforeADate", u"لعبة - 2026-03-01 20.15.07", u"\u2067لعبة\u2069 - 2026-03-01 20.15.07"},
        IsolateCase{"NameBehindASentence", u"Auto clip (Epic): لعبة", u"Auto clip (Epic): \u2067لعبة\u2069"},
        IsolateCase{"NumberInsideAName", u"فريق 7 الذهبي 2026", u"\u2067فريق 7 الذهبي\u2069 2026"},
        IsolateCase{"LatinWordInsideAName", u"بطل FIFA العالم", u"\u2067بطل FIFA العالم\u2069"},
        IsolateCase{"LettersOutsideTheBasicPlane", u"\U0001E900\U0001E901", u"\u2068\U0001E900\U0001E901\u2069"},
        IsolateCase{"OpenOverride", u"clip\u202Etxt", u"\u2068clip\u202Etxt\u2069"}),
    [](const auto& each) { return each.param.name; });

} // namespace
} // namespace quelto
