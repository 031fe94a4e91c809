// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/language/T.h"
#include "ui/screens/settings/SettingsPageForQml.h"

#include "tests/ui/shell/SettingsCardFixture.h"

namespace quelto::test {
namespace {

const auto SystemSwitch = QStringLiteral("Sistem sesini kaydet");
const auto SystemLevel = QStringLiteral("Sistem sesi seviyesi");
const auto ChatSwitch = QStringLiteral("Sesli sohbeti ayrı kaydet");
const auto MicSwitch = QStringLiteral("Mikrofonu kaydet");
const auto MicMenu = QStringLiteral("Mikrofon");
const auto MicLevel = QStringLiteral("Mikrofon seviyesi");
const auto LiveLevel = QStringLiteral("Canlı seviye");
const auto PermissionButton = QStringLiteral("Ses Ayarları");
const auto RetryButton = QStringLiteral("Tekrar Dene");
const auto Problem = QStringLiteral("Mikrofon bulunamadı.");
const MicrophoneInfo Headset{.id = QStringLiteral("alsa_input.usb"), .name = QStringLiteral("Headset")};
const MicrophoneInfo Webcam{.id = QStringLiteral("alsa_input.cam"), .name = QStringLiteral("Webcam")};

class SettingsAudioTest : public SettingsCardFixture {
protected:
    void showCard() { showCards(QStringLiteral("AudioSettingsCard {}")); }
    /// The label of the slider with that accessible name.
    QString percentageOf(const QString& name) const
    {
        QString shown;
        visitVisible(item(name)->parentItem(), [&](const QQuickItem* each) {
            if (each->inherits("QQuickText")) {
                shown = each->property("text").toString();
            }
        });
        return shown;
    }
    QQuickItem* bar() const
    {
        return firstVisible(window, [](const QQuickItem* each) { return each->objectName() == QStringLiteral("bar"); });
    }
    void speak(float level)
    {
        fakes.audioServer->mic->emitTone(level, time.now());
        time.settle();
    }
    void failMicrophone()
    {
        fakes.audioServer->micProblem = Problem;
        record();
        time.settle();
    }

    RecordingSoundSettings& soundSettings = useFake<RecordingSoundSettings>(fakes.platform.soundSettings);
};

TEST_F(SettingsAudioTest, EachSwitchShowsAndChangesItsSetting)
{
    showCard();
    struct Row {
        QString name;
        std::function<bool()> isOn;
        std::function<void(bool)> set;
    };
    const std::vector<Row> rows{
        {SystemSwitch, [&] { return settings.captureAudio(); }, [&](bool on) { settings.setCaptureAudio(on); }},
        {ChatSwitch, [&] { return settings.captureVoiceChat(); }, [&](bool on) { settings.setCaptureVoiceChat(on); }},
        {MicSwitch, [&] { return settings.captureMicrophone(); }, [&](bool on) { settings.setCaptureMicrophone(on); }},
    };
    for (const auto& row : rows) {
        const bool before = row.isOn();
        EXPECT_EQ(isChecked(row.name), before) << row.name.toStdString();
        click(row.name);
        EXPECT_EQ(row.isOn(), !before) << row.name.toStdString();
        EXPECT_EQ(isChecked(row.name), !before) << row.name.toStdString();
        row.set(before);
        EXPECT_EQ(isChecked(row.name), before) << row.name.toStdString();
    }
}

TEST_F(SettingsAudioTest, WithoutSystemSoundItsLevelIsHiddenAndVoiceChatStays)
{
    settings.setSystemVolume(0.4);
    showCard();
    EXPECT_TRUE(hasItem(SystemLevel));
    click(SystemSwitch);
    EXPECT_FALSE(hasItem(SystemLevel));
    EXPECT_TRUE(hasItem(ChatSwitch));
    EXPECT_TRUE(hasItem(MicLevel));
    EXPECT_EQ(settings.systemVolume(), 0.4);
    click(SystemSwitch);
    EXPECT_EQ(percentageOf(SystemLevel), QStringLiteral("40%"));
}

TEST_F(SettingsAudioTest, WithoutMicrophoneItsRowsAreHidden)
{
    settings.setMicrophoneID(Webcam.id);
    settings.setMicVolume(1.5);
    failMicrophone();
    const auto warning = recorder->micWarningText();
    ASSERT_TRUE(warning.contains(Problem));
    showCard();
    const QStringList names{MicMenu, MicLevel, LiveLevel, PermissionButton, RetryButton};
    for (const auto& name : names) {
        EXPECT_TRUE(hasItem(name)) << name.toStdString();
    }
    EXPECT_TRUE(shows(warning));
    click(MicSwitch);
    for (const auto& name : names) {
        EXPECT_FALSE(hasItem(name)) << name.toStdString();
    }
    EXPECT_FALSE(shows(warning));
    EXPECT_EQ(settings.microphoneID(), Webcam.id);
    EXPECT_EQ(settings.micVolume(), 1.5);
}

TEST_F(SettingsAudioTest, ASwitchGetsTheFocusOfItsHiddenRows)
{
    showCard();
    focus(SystemLevel);
    settings.setCaptureAudio(false);
    EXPECT_EQ(focusedName(), SystemSwitch);
    focus(MicLevel);
    settings.setCaptureMicrophone(false);
    EXPECT_EQ(focusedName(), MicSwitch);
    press(Qt::Key_Space);
    EXPECT_TRUE(settings.captureMicrophone());
}

TEST_F(SettingsAudioTest, VoiceChatSaysWhetherItIsRecorded)
{
    showCard();
    const auto idle =
        QStringLiteral("Discord, TeamSpeak, Zoom gibi uygulamaların sesi klipte ayrı bir ses kanalına kaydedilir");
    const auto active = QStringLiteral("Discord vb. sesi ayrı kanala alınıyor");
    EXPECT_TRUE(shows(idle));
    fakes.audioServer->chatApps = {QStringLiteral("Discord")};
    record();
    time.settle();
    ASSERT_TRUE(recorder->chatActive());
    EXPECT_TRUE(shows(active));
    EXPECT_FALSE(shows(idle));
    recorder->stop();
    time.settle();
    EXPECT_TRUE(shows(idle));
}

TEST_F(SettingsAudioTest, VolumesArePercentages)
{
    struct Case {
        double volume;
        const char* text;
    };
    showCard();
    for (const auto& [volume, text] : {Case{0, "0%"}, Case{0.004, "0%"}, Case{0.005, "1%"}, Case{0.295, "30%"},
                                       Case{1, "100%"}, Case{2, "200%"}, Case{3, "300%"}}) {
        settings.setMicVolume(volume);
        EXPECT_EQ(percentageOf(MicLevel), QLatin1String(text)) << volume;
        EXPECT_EQ(settings.micVolume(), volume);
        EXPECT_EQ(item(MicLevel)->property("value").toDouble(), std::min(volume, 2.0));
    }
    EXPECT_EQ(item(MicLevel)->width(), 190);
    EXPECT_EQ(percentageOf(SystemLevel), QStringLiteral("100%"));
}

TEST_F(SettingsAudioTest, SlidersWriteAtOnce)
{
    showCard();
    const auto* slider = item(MicLevel);
    const auto middle = middleOf(slider);
    QTest::mousePress(window, Qt::LeftButton, {}, middle);
    QTest::mouseMove(window, middle + QPoint(40, 0));
    EXPECT_GT(settings.micVolume(), 1.2);
    QTest::mouseMove(window, middle + QPoint(120, 0));
    EXPECT_EQ(settings.micVolume(), 2.0);
    QTest::mouseRelease(window, Qt::LeftButton, {}, middle + QPoint(120, 0));
    settings.setMicVolume(0.5);
    EXPECT_EQ(slider->property("value").toDouble(), 0.5);
    focus(MicLevel);
    press(Qt::Key_Right);
    EXPECT_NEAR(settings.micVolume(), 0.55, 1e-9);
    focus(SystemLevel);
    press(Qt::Key_Left);
    EXPECT_NEAR(settings.systemVolume(), 0.95, 1e-9);
}

TEST_F(SettingsAudioTest, ScreenReadersCanSetAVolume)
{
    showCard();
    auto* const interface = QAccessible::queryAccessibleInterface(item(SystemLevel));
    ASSERT_NE(interface->valueInterface(), nullptr);
    interface->valueInterface()->setCurrentValue(0.25);
    EXPECT_EQ(settings.systemVolume(), 0.25);
    EXPECT_EQ(interface->text(QAccessible::Description), QStringLiteral("25%"));
}

TEST_F(SettingsAudioTest, ScreenReadersGetTheExplanationOfTheMeter)
{
    showCard();
    EXPECT_TRUE(shows(descriptionOf(LiveLevel)));
    EXPECT_NE(descriptionOf(LiveLevel), QString());
}

TEST_F(SettingsAudioTest, OpeningTheMenuFindsNewMicrophones)
{
    fakes.audioServer->microphones = {Headset};
    showCard();
    QCoreApplication::processEvents();
    EXPECT_EQ(item(MicMenu)->width(), 240);
    EXPECT_TRUE(shows(QStringLiteral("Sistem varsayılanı")));
    fakes.audioServer->microphones = {Headset, Webcam};
    focus(MicMenu);
    press(Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(Webcam.name); }));
    EXPECT_TRUE(shows(Headset.name));
    press(Qt::Key_End);
    press(Qt::Key_Return);
    EXPECT_EQ(settings.microphoneID(), Webcam.id);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(Headset.name); }));
    EXPECT_TRUE(shows(Webcam.name));
}

TEST_F(SettingsAudioTest, AMissingMicrophoneStaysChosenAndShowsNoEntry)
{
    fakes.audioServer->microphones = {Headset};
    settings.setMicrophoneID(Webcam.id);
    showCard();
    QCoreApplication::processEvents();
    EXPECT_EQ(item(MicMenu)->property("selectedIndex").toInt(), -1);
    EXPECT_FALSE(shows(Headset.name));
    EXPECT_FALSE(shows(QStringLiteral("Sistem varsayılanı")));
    EXPECT_EQ(settings.microphoneID(), Webcam.id);
}

TEST_F(SettingsAudioTest, TheMeterFollowsTheMicrophone)
{
    showCard();
    EXPECT_EQ(bar()->width(), 0);
    EXPECT_TRUE(shows(QStringLiteral("Kayıt açıkken mikrofon seviyesi burada görünür")));
    record();
    time.settle();
    EXPECT_TRUE(shows(QStringLiteral("Konuşun — çubuk hareket ediyorsa mikrofon kaydediliyor")));
    speak(0.3F);
    const double level = recorder->micLevel();
    EXPECT_GT(level, 0);
    EXPECT_NEAR(bar()->width(), level * item(LiveLevel)->width(), 0.01);
    settings.setCaptureMicrophone(false);
    settings.setCaptureMicrophone(true);
    EXPECT_NEAR(bar()->width(), level * item(LiveLevel)->width(), 0.01);
    recorder->stop();
    time.settle();
    EXPECT_EQ(bar()->width(), 0);
}

TEST_F(SettingsAudioTest, TheMeterRestsWhileTheWindowIsHidden)
{
    showCard();
    record();
    time.settle();
    auto* const shown = bar();
    window->hide();
    speak(0.3F);
    EXPECT_GT(recorder->micLevel(), 0);
    EXPECT_EQ(shown->width(), 0);
    window->show();
    EXPECT_GT(shown->width(), 0);
}

TEST_F(SettingsAudioTest, TheMeterRestsBehindAnOpenClip)
{
    makeClips({"Dota 2 - a.mp4"});
    navigation->showSettings();
    time.settle();
    drawFrame();
    record();
    time.settle();
    auto* const shown = bar();
    ASSERT_NE(shown, nullptr);
    speak(0.3F);
    EXPECT_GT(shown->width(), 0);
    navigation->openClip(library->clips().first().path);
    EXPECT_EQ(shown->width(), 0);
    navigation->closeClip();
    EXPECT_GT(shown->width(), 0);
}

TEST_F(SettingsAudioTest, TheMeterIsClippedByItsCapsule)
{
    showCards(QStringLiteral("LevelMeter { name: 'a'; level: 0.5 } LevelMeter { name: 'b'; level: 3 }\n"
                             "LevelMeter { name: 'c'; level: -1 }"));
    const auto image = window->grabWindow();
    const auto pixel = [&](const QString& name, double x, double y) {
        const auto place = placeOf(item(name));
        return image.pixelColor(QPointF(place.x() + x * place.width(), place.y() + y * place.height()).toPoint());
    };
    const auto isNear = [](const QColor& one, const QColor& other) {
        return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
            std::abs(one.blue() - other.blue()) <
            40;
    };
    const auto a = QStringLiteral("a");
    EXPECT_TRUE(isNear(pixel(a, 0.02, 0.5), theme->good()));
    EXPECT_TRUE(isNear(pixel(a, 0.25, 0.5), theme->accent()));
    EXPECT_TRUE(isNear(pixel(a, 0.49, 0.5), theme->live()));
    EXPECT_TRUE(isNear(pixel(a, 0.52, 0.5), theme->bg()));
    const auto b = QStringLiteral("b");
    EXPECT_TRUE(isNear(pixel(b, 0.97, 0.5), theme->live()));
    // A corner of the meter is outside its capsule.
    EXPECT_TRUE(isNear(pixel(b, 0, 0), theme->bg()));
    EXPECT_TRUE(isNear(pixel(b, 0.999, 0), theme->bg()));
    EXPECT_TRUE(isNear(pixel(QStringLiteral("c"), 0.05, 0.5), theme->bg()));
}

TEST_F(SettingsAudioTest, TheWarningOffersTheSoundSettingsAndAnotherTry)
{
    failMicrophone();
    const auto warning = recorder->micWarningText();
    showCard();
    EXPECT_TRUE(shows(warning));
    EXPECT_EQ(fontOf(textItem(warning)).pixelSize(), 11);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(item(warning))->role(), QAccessible::AlertMessage);
    EXPECT_FALSE(item(PermissionButton)->property("filled").toBool());
    EXPECT_TRUE(item(RetryButton)->property("filled").toBool());
    click(PermissionButton);
    EXPECT_EQ(soundSettings.openings, 1);
    fakes.audioServer->micProblem.reset();
    focus(RetryButton);
    const int starts = fakes.frames->starts;
    press(Qt::Key_Space);
    time.settle();
    EXPECT_EQ(fakes.frames->starts, starts + 1);
    EXPECT_FALSE(hasItem(RetryButton));
    EXPECT_FALSE(shows(warning));
    EXPECT_EQ(focusedName(), MicMenu);
}

TEST_F(SettingsAudioTest, ThereIsNoButtonWithoutAProgramForSoundSettings)
{
    soundSettings.isInstalled = false;
    failMicrophone();
    showCard();
    EXPECT_FALSE(hasItem(PermissionButton));
    EXPECT_TRUE(hasItem(RetryButton));
}

TEST_F(SettingsAudioTest, TabVisitsTheControlsInTheirOrder)
{
    failMicrophone();
    showCard();
    focus(SystemSwitch);
    QStringList names;
    for (int i = 0; i < 7; ++i) {
        press(Qt::Key_Tab);
        names.append(focusedName());
    }
    EXPECT_EQ(names,
              (QStringList{SystemLevel, ChatSwitch, MicSwitch, MicMenu, MicLevel, PermissionButton, RetryButton}));
}

TEST_F(SettingsAudioTest, FitsANarrowWindow)
{
    cardWidth = 360;
    failMicrophone();
    for (const auto* language : {"de", "ru", "fr"}) {
        showCards(QStringLiteral("AudioSettingsCard {}"), language, "ember", 800);
        EXPECT_EQ(truncatedTexts(), QStringList()) << language;
        EXPECT_FALSE(picture(QStringLiteral("settings-audio-narrow-%1").arg(QLatin1String(language))).isNull());
        window->close();
    }
}

TEST_F(SettingsAudioTest, Pictures)
{
    fakes.audioServer->microphones = {Headset, Webcam};
    struct Case {
        const char* language;
        const char* palette;
        bool hasProblem;
    };
    for (const auto& [language, palette, hasProblem] : {Case{"tr", "ember", false}, Case{"de", "sunset", true},
                                                        Case{"ru", "onyx", true}, Case{"en", "ember", true}}) {
        settings.setLanguage(QLatin1String(language));
        if (hasProblem) {
            fakes.audioServer->micProblem =
                TOnDesktop("Mikrofon izni yok. Sistem Ayarları › Gizlilik ve Güvenlik › Mikrofon bölümünden Quelto'ye "
                           "izin verin.");
        }
        recorder->stop();
        time.settle();
        record();
        showCards(QStringLiteral("AudioSettingsCard {}"), language, palette, 640);
        if (!hasProblem) {
            speak(0.4F);
        }
        EXPECT_FALSE(picture(QStringLiteral("settings-audio-%1").arg(QLatin1String(language))).isNull());
        EXPECT_EQ(truncatedTexts(), QStringList()) << language;
        window->close();
    }
}

} // namespace
} // namespace quelto::test
