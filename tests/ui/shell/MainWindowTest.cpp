// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/ItemAppearance.h"
#include "tests/ui/shell/ShellFixture.h"

#include <QStyleHints>
#include <QTest>

namespace quelto {
namespace {

class MainWindowTest : public test::ShellFixture { };

TEST_F(MainWindowTest, DisablesSavingWhileIdle)
{
    EXPECT_TRUE(shows(QStringLiteral("KAYIT KAPALI")));
    EXPECT_FALSE(item(QStringLiteral("Klip Kaydet"))->isEnabled());
    EXPECT_FALSE(picture(QStringLiteral("window-idle")).isNull());
}

TEST_F(MainWindowTest, EnablesSavingWhileStarting)
{
    recorder->start();
    EXPECT_TRUE(shows(QStringLiteral("BAŞLATILIYOR")));
    EXPECT_TRUE(item(QStringLiteral("Klip Kaydet"))->isEnabled());
    EXPECT_TRUE(item(QStringLiteral("Kaydı Başlat / Durdur"))->property("isOn").toBool());
    EXPECT_FALSE(shows(QStringLiteral("Son 30 sn • 0 MB")));
    picture(QStringLiteral("window-starting"));
}

TEST_F(MainWindowTest, ShowsTheCaptureSummaryWhileRecording)
{
    record();
    EXPECT_TRUE(shows(QStringLiteral("KAYITTA")));
    EXPECT_TRUE(shows(QStringLiteral("Son 30 sn • 0 MB")));
    EXPECT_EQ(descriptionOf(QStringLiteral("Son 30 sn • 0 MB")),
              QStringLiteral("1920×1080 • 60 FPS • 14 Mbps • H.264"));
    EXPECT_NE(item(QStringLiteral("Mikrofon kaydediliyor")), nullptr);
    picture(QStringLiteral("window-recording"));
}

TEST_F(MainWindowTest, SaveButtonSavesAClip)
{
    record();
    click(QStringLiteral("Klip Kaydet"));
    EXPECT_TRUE(recorder->isSaving());
    EXPECT_FALSE(item(QStringLiteral("Klip Kaydet"))->isEnabled());
    time.advance(std::chrono::seconds(1));
    EXPECT_EQ(savedPaths.size(), 1);
    EXPECT_TRUE(item(QStringLiteral("Klip Kaydet"))->isEnabled());
}

TEST_F(MainWindowTest, SaveButtonIsDimmedWhenTheRecorderStopsDuringASave)
{
    record();
    EXPECT_EQ(item(QStringLiteral("Klip Kaydet"))->opacity(), 1);
    click(QStringLiteral("Klip Kaydet"));
    EXPECT_EQ(item(QStringLiteral("Klip Kaydet"))->opacity(), 1);
    recorder->stop();
    time.settle();
    EXPECT_TRUE(recorder->isSaving());
    EXPECT_EQ(item(QStringLiteral("Klip Kaydet"))->opacity(), 0.45);
}

TEST_F(MainWindowTest, SwitchStartsAndStopsTheRecorder)
{
    click(QStringLiteral("Kaydı Başlat / Durdur"));
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    click(QStringLiteral("Kaydı Başlat / Durdur"));
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Idle);
}

TEST_F(MainWindowTest, ShowsTheFullErrorMessage)
{
    fakes.frames->error = QStringLiteral("Ses sunucusuna (PipeWire) bağlanılamadı. PipeWire'ı başlatın: systemctl "
                                         "--user start pipewire wireplumber – ya da ayarlardan sistem sesini kapatın.");
    recorder->start();
    time.settle();
    EXPECT_TRUE(shows(QStringLiteral("HATA")));
    EXPECT_TRUE(shows(*fakes.frames->error));
    picture(QStringLiteral("window-error"));
}

TEST_F(MainWindowTest, ShowsTheMicrophoneWarning)
{
    fakes.audioServer->micProblem = QStringLiteral("Mikrofon bulunamadı.");
    record();
    EXPECT_TRUE(shows(QStringLiteral("Mikrofon başlatılamadı: Mikrofon bulunamadı.")));
    EXPECT_NE(item(QStringLiteral("Mikrofon kapalı")), nullptr);
    picture(QStringLiteral("window-microphone-warning"));
}

TEST_F(MainWindowTest, SaveButtonIsReachableByKeyboard)
{
    record();
    window->requestActivate();
    QTest::keyClick(window, Qt::Key_Tab);
    for (int i = 0; i < 40 && !item(QStringLiteral("Klip Kaydet"))->hasActiveFocus(); ++i) {
        QTest::keyClick(window, Qt::Key_Tab);
    }
    EXPECT_TRUE(item(QStringLiteral("Klip Kaydet"))->hasActiveFocus());
    picture(QStringLiteral("window-focus"));
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_TRUE(recorder->isSaving());
}

struct MenuKey {
    const char* name;
    Qt::Key key;
    QString action;
};

class MainMenuKeys : public test::ShellFixture, public testing::WithParamInterface<MenuKey> { };

TEST_P(MainMenuKeys, ActWhileTheMenuIsClosed)
{
    window->requestActivate();
    QTest::keyClick(window, GetParam().key, Qt::ControlModifier);
    EXPECT_EQ(requestedActions, QStringList{GetParam().action});
}

INSTANTIATE_TEST_SUITE_P(Cases, MainMenuKeys,
                         testing::Values(MenuKey{"Folder", Qt::Key_O, QStringLiteral("openFolder")},
                                         MenuKey{"Hide", Qt::Key_H, QStringLiteral("hide")},
                                         MenuKey{"Minimize", Qt::Key_M, QStringLiteral("minimize")},
                                         MenuKey{"Close", Qt::Key_W, QStringLiteral("close")},
                                         MenuKey{"Quit", Qt::Key_Q, QStringLiteral("quit")}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(MainWindowTest, MenuShortcutsSaveAndSwitchTheRecorder)
{
    window->requestActivate();
    QTest::keyClick(window, Qt::Key_R, Qt::ControlModifier);
    time.settle();
    EXPECT_EQ(recorder->stateKind(), CaptureState::Recording);
    QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(recorder->isSaving());
}

TEST_F(MainWindowTest, HeldShortcutActsOnce)
{
    // One press and an odd number of repeats.
    const auto hold = [this](Qt::Key key) {
        for (int i = 0; i < 16; ++i) {
            QTest::simulateEvent(window, true, key, Qt::ControlModifier, {}, i > 0);
        }
        QTest::simulateEvent(window, false, key, Qt::ControlModifier, {}, false);
    };
    window->requestActivate();
    hold(Qt::Key_R);
    time.settle();
    ASSERT_EQ(recorder->stateKind(), CaptureState::Recording);
    showFrame();
    hold(Qt::Key_S);
    time.advance(std::chrono::seconds(30));
    EXPECT_EQ(savedPaths.size(), 1);
    hold(Qt::Key_O);
    EXPECT_EQ(requestedActions, QStringList{QStringLiteral("openFolder")});
}

TEST_F(MainWindowTest, ShortcutActsWhileItsMenuIsOpen)
{
    openMenu(QStringLiteral("Dosya"), QStringLiteral("Klip Klasörünü Aç"));
    QTest::keyClick(window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(requestedActions, QStringList{QStringLiteral("openFolder")});
}

TEST_F(MainWindowTest, MenuShowsItsEntries)
{
    click(QStringLiteral("Dosya"));
    EXPECT_TRUE(shows(QStringLiteral("Klip Klasörünü Aç")));
    picture(QStringLiteral("window-menu"));
}

TEST_F(MainWindowTest, RestoresTheFocusAfterAMenuAndAfterADialog)
{
    record();
    window->requestActivate();
    auto* const button = item(QStringLiteral("Klip Kaydet"));
    ASSERT_NE(button, nullptr);
    button->forceActiveFocus(Qt::TabFocusReason);
    openMenu(QStringLiteral("Dosya"), QStringLiteral("Klip Klasörünü Aç"));
    EXPECT_FALSE(button->hasActiveFocus());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->hasActiveFocus(); }));

    QTest::mouseClick(window, Qt::LeftButton, {}, test::middleOf(textItem(QStringLiteral("Quelto"))));
    click(QStringLiteral("Quelto Hakkında"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto 0.1.0")) && !button->hasActiveFocus(); }));
    QTest::qWait(300);
    picture(QStringLiteral("window-about"));
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->hasActiveFocus(); }));
}

/// On a desktop whose theme asks for hover effects.
class MainMenuTitles : public test::ShellFixture {
protected:
    void SetUp() override
    {
        QGuiApplication::styleHints()->setUseHoverEffects(true);
        ShellFixture::SetUp();
    }
    void TearDown() override
    {
        ShellFixture::TearDown();
        QGuiApplication::styleHints()->setUseHoverEffects(false);
    }

    void moveTo(const QPoint& place) const
    {
        QTest::mouseMove(window, place);
        drawFrame();
    }
    /// The titles that look open.
    QStringList markedTitles() const
    {
        QStringList marked;
        for (const auto* name : {"Quelto", "Dosya", "Düzen", "Pencere"}) {
            const auto* title = textItem(QString::fromUtf8(name))->parentItem();
            if (test::colorOf(title->property("background").value<QQuickItem*>()).alpha() > 0) {
                marked.append(QString::fromUtf8(name));
            }
        }
        return marked;
    }
};

TEST_F(MainMenuTitles, AreNotMarkedAfterEscape)
{
    window->requestActivate();
    moveTo(test::middleOf(item(QStringLiteral("Dosya"))));
    openMenu(QStringLiteral("Dosya"), QStringLiteral("Klip Klasörünü Aç"));
    EXPECT_EQ(markedTitles(), QStringList{QStringLiteral("Dosya")});
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Klip Klasörünü Aç")); }));
    EXPECT_EQ(markedTitles(), QStringList());
    moveTo(test::middleOf(item(QStringLiteral("Düzen"))));
    EXPECT_EQ(markedTitles(), QStringList()) << "no menu is open, so the pointer opens none";
    moveTo(QPoint(600, 400));
    EXPECT_EQ(test::colorOf(textItem(QStringLiteral("Dosya"))), theme->muted());
}

TEST_F(MainMenuTitles, OpenUnderThePointerWhileAMenuIsOpen)
{
    window->requestActivate();
    openMenu(QStringLiteral("Dosya"), QStringLiteral("Klip Klasörünü Aç"));
    moveTo(test::middleOf(item(QStringLiteral("Düzen"))));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Tümünü Seç")); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Klip Klasörünü Aç")); }));
    EXPECT_EQ(markedTitles(), QStringList{QStringLiteral("Düzen")});
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QStringLiteral("Tümünü Seç")); }));
    EXPECT_EQ(markedTitles(), QStringList());
    moveTo(test::middleOf(item(QStringLiteral("Dosya"))));
    EXPECT_FALSE(shows(QStringLiteral("Klip Klasörünü Aç")));
}

TEST_F(MainWindowTest, MenusAreReachableByKeyboard)
{
    window->requestActivate();
    makeClips({"Dota 2 - a.mp4"});
    auto* const before = window->activeFocusItem();
    QTest::keyClick(window, Qt::Key_F10);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(window->activeFocusItem(), before);

    QTest::keyClick(window, Qt::Key_F10);
    QTest::keyClick(window, Qt::Key_Right);
    picture(QStringLiteral("window-menu-by-keyboard"));
    // Three more steps wrap around from the second menu to the first.
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(window, Qt::Key_Right);
    }
    QTest::keyClick(window, Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto Hakkında")); }));
    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto 0.1.0")); }));
}

TEST_F(MainWindowTest, ChoosingAMenuEntryByKeyRestoresTheFocus)
{
    window->requestActivate();
    click(QStringLiteral("Ara"));
    QTest::keyClick(window, 'a');
    auto* const field = window->activeFocusItem();
    QTest::keyClick(window, Qt::Key_F10);
    QTest::keyClick(window, Qt::Key_Right);
    QTest::keyClick(window, Qt::Key_Right);
    QTest::keyClick(window, Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Tümünü Seç")); }));
    // The fifth entry.
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(window, Qt::Key_Down);
    }
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->hasActiveFocus(); }));
    EXPECT_EQ(field->property("selectedText").toString(), QStringLiteral("a"));
}

TEST_F(MainWindowTest, EditMenuActsOnTheFieldThatHadTheFocus)
{
    window->requestActivate();
    click(QStringLiteral("Ara"));
    for (const char letter : {'a', 'b', 'c'}) {
        QTest::keyClick(window, letter);
    }
    auto* const field = window->activeFocusItem();
    const auto choose = [&](const char* entry) {
        openMenu(QStringLiteral("Düzen"), QString::fromUtf8(entry));
        click(QString::fromUtf8(entry));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(QString::fromUtf8(entry)); }));
    };
    choose("Tümünü Seç");
    EXPECT_EQ(field->property("selectedText").toString(), QStringLiteral("abc"));
    choose("Kes");
    EXPECT_EQ(field->property("text").toString(), QString());
    choose("Yapıştır");
    EXPECT_EQ(field->property("text").toString(), QStringLiteral("abc"));
    choose("Geri Al");
    EXPECT_EQ(field->property("text").toString(), QString());
    EXPECT_TRUE(field->hasActiveFocus());
}

TEST_F(MainWindowTest, DialogTextIsItsAccessibleDescription)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, test::middleOf(textItem(QStringLiteral("Quelto"))));
    click(QStringLiteral("Quelto Hakkında"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("Quelto 0.1.0")); }));
    EXPECT_TRUE(descriptionOf(QStringLiteral("Quelto 0.1.0")).startsWith(QStringLiteral("Linux için")));
}

TEST_F(MainWindowTest, UsesTheColorsOfEveryPalette)
{
    record();
    for (const auto& palette : Palette::all()) {
        settings.setColorTheme(palette.id);
        const auto image = picture(QStringLiteral("window-palette-") + palette.id);
        const auto bottom = image.pixelColor(image.width() / 2, image.height() - 1);
        const auto expected = palette.gradient.isEmpty() ? palette.bg : palette.gradient.last();
        // The last pixel row is slightly before the end of the gradient.
        EXPECT_NEAR(bottom.red(), expected.red(), 1) << palette.id.toStdString();
        EXPECT_NEAR(bottom.green(), expected.green(), 1) << palette.id.toStdString();
        EXPECT_NEAR(bottom.blue(), expected.blue(), 1) << palette.id.toStdString();
    }
}

TEST_F(MainWindowTest, FitsTheMinimumSize)
{
    fakes.audioServer->micProblem = QStringLiteral("Mikrofon bulunamadı.");
    record();
    window->resize(1020, 640);
    EXPECT_EQ(picture(QStringLiteral("window-smallest")).size(), QSize(1020, 640));
}

} // namespace
} // namespace quelto
