// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/L10n.h"
#include "base/language/T.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QTest>

namespace quelto {
namespace {

/// The window in each language.
class LanguagesTest : public test::ShellFixture, public testing::WithParamInterface<Language> {
protected:
    QString name() const { return rawValueOf(GetParam()); }

    void SetUp() override
    {
        ShellFixture::SetUp();
        window->resize(window->minimumSize());
        settings.setLanguage(name());
        drawFrame();
    }
};

TEST_P(LanguagesTest, ApplyAtOnceAndFitTheMinimumWindow)
{
    record();
    EXPECT_TRUE(shows(T("KAYITTA")));
    picture(QStringLiteral("language-%1-recording").arg(name()));
    EXPECT_EQ(truncatedTexts(), QStringList());
}

TEST_P(LanguagesTest, FitWhileIdleAndWhileStarting)
{
    drawFrame();
    EXPECT_EQ(truncatedTexts(), QStringList());
    recorder->start();
    drawFrame();
    EXPECT_EQ(truncatedTexts(), QStringList());
}

TEST_P(LanguagesTest, FitTheMenus)
{
    struct Menu {
        const char* title;
        const char* entry;
    };
    for (const auto& [title, entry] : {Menu{"Quelto", "Quelto Hakkında"}, Menu{"Dosya", "Klip Klasörünü Aç"},
                                       Menu{"Düzen", "Tümünü Seç"}, Menu{"Pencere", "Küçült"}}) {
        // By its text, because the sidebar has the same name as the first menu.
        QTest::mouseClick(window, Qt::LeftButton, {}, test::middleOf(textItem(T(title))));
        ASSERT_TRUE(QTest::qWaitFor([&] { return shows(T(entry)); })) << entry;
        picture(QStringLiteral("language-%1-menu-%2").arg(name(), QString::fromUtf8(title)));
        EXPECT_EQ(truncatedTexts(), QStringList());
        QTest::keyClick(window, Qt::Key_Escape);
    }
}

TEST_P(LanguagesTest, FitTheLongestError)
{
    fakes.frames->error = T("Ses sunucusu PipeWire çalışmıyor. Bir uçbirimde “systemctl --user start pipewire "
                            "wireplumber” komutunu çalıştırın ya da ayarlardan sistem sesini kapatın.");
    recorder->start();
    time.settle();
    EXPECT_TRUE(shows(*fakes.frames->error));
    picture(QStringLiteral("language-%1-error").arg(name()));
    EXPECT_EQ(truncatedTexts(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(All, LanguagesTest, testing::ValuesIn(AllLanguages),
                         [](const auto& language) { return rawValueOf(language.param).toStdString(); });

} // namespace
} // namespace quelto
