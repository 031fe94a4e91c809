// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/SettingsCardFixture.h"

#include "base/language/T.h"

namespace quelto::test {
namespace {

/// The card of the recording where the desktop chooses the screen.
class SettingsScreenChoiceTest : public SettingsCardFixture {
protected:
    void SetUp() override
    {
        SettingsCardFixture::SetUp();
        displays().areChosen = true;
    }

    void show(const char* language = "tr") { showCards(QStringLiteral("RecordingCard {}"), language, "midnight", 420); }
    FakeDisplays& displays() { return static_cast<FakeDisplays&>(*fakes.platform.displays); }

    static constexpr const char* Error =
        "Masaüstü ekran seçimini göstermedi. xdg-desktop-portal'ın çalıştığını denetleyip yeniden deneyin.";
};

TEST_F(SettingsScreenChoiceTest, AFailureIsShownUntilTheNextAttempt)
{
    show();
    const auto again = QStringLiteral("Yeniden Seç");
    click(again);
    EXPECT_EQ(displays().newChoices, 1);
    EXPECT_FALSE(hasItem(T(Error)));
    displays().choice.onFailed(T(Error));
    drawFrame();
    EXPECT_TRUE(shows(T(Error)));
    EXPECT_TRUE(hasItem(T(Error))) << "a screen reader does not find it";
    focus(again);
    press(Qt::Key_Space);
    EXPECT_EQ(displays().newChoices, 2);
    EXPECT_FALSE(hasItem(T(Error)));
}

TEST_F(SettingsScreenChoiceTest, Pictures)
{
    cardWidth = 520;
    for (const char* language : {"de", "ru", "en"}) {
        show(language);
        displays().choice = {};
        click(T("Yeniden Seç"));
        displays().choice.onFailed(T(Error));
        drawFrame();
        EXPECT_EQ(truncatedTexts(), QStringList());
        EXPECT_FALSE(picture(QStringLiteral("settings-screen-choice-failed-") + QLatin1String(language)).isNull());
    }
}

} // namespace
} // namespace quelto::test
