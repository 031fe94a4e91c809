// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/ReviewKeys.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

using Answer = ReviewProgress::Answer;

constexpr quint32 CodeOfD = 40;
constexpr quint32 CodeOfK = 45;
constexpr quint32 CodeOfX = 53;

struct KeyCase {
    const char* name;
    const char* text;
    quint32 scanCode;
    std::optional<Answer> answer;
};

class ReviewKeys : public testing::TestWithParam<KeyCase> { };

TEST_P(ReviewKeys, Answer)
{
    EXPECT_EQ(reviewAnswer(QString::fromUtf8(GetParam().text), GetParam().scanCode), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, ReviewKeys,
    testing::Values(KeyCase{"d", "d", CodeOfD, Answer::remove}, KeyCase{"D", "D", CodeOfD, Answer::remove},
                    KeyCase{"x", "x", CodeOfX, Answer::remove}, KeyCase{"X", "X", CodeOfX, Answer::remove},
                    KeyCase{"k", "k", CodeOfK, Answer::keep}, KeyCase{"K", "K", CodeOfK, Answer::keep},
                    // A Latin layout in another order: the letter counts, and not its place.
                    KeyCase{"LetterElsewhere", "d", 43, Answer::remove},
                    KeyCase{"OtherLetterAtThePlace", "e", CodeOfD, std::nullopt},
                    // The Russian letters at the places of D, X and K.
                    KeyCase{"CyrillicAtD", "в", CodeOfD, Answer::remove},
                    KeyCase{"CyrillicAtX", "Ч", CodeOfX, Answer::remove},
                    KeyCase{"CyrillicAtK", "л", CodeOfK, Answer::keep},
                    KeyCase{"DevanagariMarkAtD", "\u094D", CodeOfD, Answer::remove},
                    KeyCase{"CyrillicElsewhere", "ф", 38, std::nullopt}, KeyCase{"NoText", "", CodeOfD, std::nullopt},
                    KeyCase{"Digit", "1", CodeOfD, std::nullopt}, KeyCase{"Several", "dd", CodeOfD, std::nullopt}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace quelto
