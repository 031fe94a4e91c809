// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileName.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(FileName, ValidNamesAreOrdinaryText)
{
    for (const char* name : {"", "a.mp4", "Çığ – Ж😀.mp4"}) {
        EXPECT_EQ(decodeFileName(name), QString::fromUtf8(name));
        EXPECT_EQ(encodeFileName(QString::fromUtf8(name)), name);
        EXPECT_EQ(displayFileName(QString::fromUtf8(name)), QString::fromUtf8(name));
    }
}

TEST(FileName, EveryByteSurvives)
{
    // Latin-1, an incomplete character, an overlong slash, an encoded surrogate, a byte after an emoji, a byte order
    // mark.
    for (const QByteArray name :
         {"B\xfcy\xfck.mp4", "a\xe2\x82", "\xc0\xaf", "\xed\xb2\x80", "😀\xff", "\x80\xff", "\xef\xbb\xbf mark"}) {
        EXPECT_EQ(encodeFileName(decodeFileName(name)), name) << name.toPercentEncoding().constData();
    }
    QByteArray all;
    for (int first = 1; first < 256; ++first) {
        for (const int second : {0x20, 0x80, 0xBF, 0xC3, 0xE2, 0xF0, 0xFF}) {
            all += static_cast<char>(first);
            all += static_cast<char>(second);
        }
    }
    EXPECT_EQ(encodeFileName(decodeFileName(all)), all);
}

TEST(FileName, DifferentNamesHaveDifferentTexts)
{
    EXPECT_NE(decodeFileName("\xff.mp4"), decodeFileName("\xfe.mp4"));
}

TEST(FileName, UsersSeeAReplacementCharacterForEachByteThatIsNotText)
{
    EXPECT_EQ(displayFileName(decodeFileName("B\xfcy\xfck 😀.mp4")), QStringLiteral("B\uFFFDy\uFFFDk 😀.mp4"));
}

} // namespace
} // namespace quelto
