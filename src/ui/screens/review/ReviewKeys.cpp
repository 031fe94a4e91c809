// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/screens/review/ReviewKeys.h"

#include <array>

namespace quelto {

namespace {

struct AnswerKey {
    char16_t letter;
    /// The evdev code, plus 8 as in X11.
    quint32 scanCode;
    ReviewProgress::Answer answer;
};

constexpr std::array Keys{
    AnswerKey{.letter = u'd', .scanCode = 32 + 8, .answer = ReviewProgress::Answer::remove},
    AnswerKey{.letter = u'x', .scanCode = 45 + 8, .answer = ReviewProgress::Answer::remove},
    AnswerKey{.letter = u'k', .scanCode = 37 + 8, .answer = ReviewProgress::Answer::keep},
};

} // namespace

std::optional<ReviewProgress::Answer> reviewAnswer(const QString& text, quint32 scanCode)
{
    if (text.size() != 1) {
        return std::nullopt;
    }
    const auto typed = text.front();
    // Some scripts have a combining mark in place of a letter.
    const bool isOtherScript = (typed.isLetter() || typed.isMark()) && typed.script() != QChar::Script_Latin;
    const auto* const key = std::ranges::find_if(Keys, [&](const AnswerKey& each) {
        return isOtherScript ? each.scanCode == scanCode : typed.toLower() == each.letter;
    });
    return key == Keys.end() ? std::nullopt : std::optional(key->answer);
}

} // namespace quelto
