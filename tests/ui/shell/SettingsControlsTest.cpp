// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/files/FileName.h"

#include "tests/ui/shell/SettingsFixture.h"

#include <QGuiApplication>

namespace quelto::test {
namespace {

class SettingsControlsTest : public SettingsFixture {
protected:
    void key(Qt::Key pressed) const
    {
        QTest::keyClick(window, pressed);
        QCoreApplication::processEvents();
    }
    /// Gives the control the focus as the Tab key does.
    static void focus(QQuickItem* control)
    {
        ASSERT_NE(control, nullptr);
        control->forceActiveFocus(Qt::TabFocusReason);
    }
    bool isSelected(const char* picker, const char* label) const
    {
        return pillOf(picker, label)->property("isSelected").toBool();
    }
};

TEST_F(SettingsControlsTest, PillsWriteTheirSettings)
{
    use(pillOf("Klip uzunluğu", "1.5 dk"));
    EXPECT_EQ(settings.clipLength(), 90);
    use(pillOf("Çözünürlük", "720p"));
    EXPECT_EQ(settings.resolution(), ResolutionPreset::p720);
    use(pillOf("Kalite", "Ultra"));
    EXPECT_EQ(settings.quality(), QualityPreset::ultra);
    use(pillOf("FPS", "120"));
    EXPECT_EQ(settings.fps(), 120);
    use(pillOf("Codec", "HEVC"));
    EXPECT_EQ(settings.codec(), VideoCodec::hevc);
    use(pillOf("Discord yükleme sınırı", "50 MB"));
    EXPECT_EQ(settings.discordLimitMB(), 50);
}

TEST_F(SettingsControlsTest, PillsWriteTheirSettingsByKeyboard)
{
    focus(pillOf("Klip uzunluğu", "30 sn"));
    key(Qt::Key_Right);
    EXPECT_EQ(settings.clipLength(), 45);
    focus(pillOf("Çözünürlük", "1080p"));
    key(Qt::Key_Left);
    EXPECT_EQ(settings.resolution(), ResolutionPreset::p1440);
    focus(pillOf("Kalite", "Yüksek"));
    key(Qt::Key_Home);
    EXPECT_EQ(settings.quality(), QualityPreset::low);
    focus(pillOf("FPS", "60"));
    key(Qt::Key_Left);
    EXPECT_EQ(settings.fps(), 30);
    focus(pillOf("Codec", "H.264"));
    key(Qt::Key_Right);
    EXPECT_EQ(settings.codec(), VideoCodec::hevc);
    focus(pillOf("Discord yükleme sınırı", "10 MB"));
    key(Qt::Key_End);
    EXPECT_EQ(settings.discordLimitMB(), 500);
}

TEST_F(SettingsControlsTest, PillsFollowTheSettings)
{
    EXPECT_TRUE(isSelected("Klip uzunluğu", "30 sn"));
    settings.setClipLength(120);
    EXPECT_TRUE(isSelected("Klip uzunluğu", "2 dk"));
    EXPECT_FALSE(isSelected("Klip uzunluğu", "30 sn"));
    settings.setResolution(ResolutionPreset::native);
    EXPECT_TRUE(isSelected("Çözünürlük", "Yerel"));
    settings.setCodec(VideoCodec::hevc);
    EXPECT_TRUE(isSelected("Codec", "HEVC"));
}

TEST_F(SettingsControlsTest, ValueOutsideTheListSelectsNoPill)
{
    settings.setClipLength(77);
    settings.setFps(144);
    settings.setDiscordLimitMB(25);
    for (const auto* picker : {"Klip uzunluğu", "FPS", "Discord yükleme sınırı"}) {
        const auto* group = find(QAccessible::Grouping, QString::fromUtf8(picker));
        EXPECT_EQ(group->property("selectedIndex").toInt(), -1) << picker;
    }
    EXPECT_EQ(settings.clipLength(), 77);
}

TEST_F(SettingsControlsTest, TogglesWriteTheirSettingsByMouseAndKeyboard)
{
    struct Row {
        const char* name;
        bool (AppSettings::*read)() const;
    };
    const Row rows[]{{"Açılışta kaydı başlat", &AppSettings::autoStart},
                     {"İmleci göster", &AppSettings::showCursor},
                     {"Klip kaydedilince ses çal", &AppSettings::playSound},
                     {"Ekranda bildirim göster", &AppSettings::showOverlay}};
    for (const auto& row : rows) {
        EXPECT_TRUE((settings.*row.read)()) << row.name;
        useToggle(row.name);
        EXPECT_FALSE((settings.*row.read)()) << row.name;
        focus(find(QAccessible::CheckBox, QString::fromUtf8(row.name)));
        key(Qt::Key_Space);
        EXPECT_TRUE((settings.*row.read)()) << row.name;
    }
    settings.setPlaySound(false);
    EXPECT_FALSE(
        QAccessible::queryAccessibleInterface(find(QAccessible::CheckBox, QStringLiteral("Klip kaydedilince ses çal")))
            ->state()
            .checked);
}

TEST_F(SettingsControlsTest, ClipSettingsShowWhatTheyCost)
{
    for (const auto* text : {"1920×1080", "14 Mbps", "~51 MB", "~86 MB"}) {
        EXPECT_TRUE(shows(QString::fromUtf8(text))) << text;
    }
    settings.setResolution(ResolutionPreset::p720);
    EXPECT_TRUE(shows(QStringLiteral("1280×720")));
    EXPECT_NE(find(QAccessible::StaticText, QStringLiteral("Çıktı: 1280×720")), nullptr);
}

TEST_F(SettingsControlsTest, ScreenReadersGetTheExplanations)
{
    const auto descriptionOf = [&](QAccessible::Role role, const char* name) {
        return QAccessible::queryAccessibleInterface(find(role, QString::fromUtf8(name)))
            ->text(QAccessible::Description);
    };
    EXPECT_EQ(descriptionOf(QAccessible::Grouping, "Kalite"), QStringLiteral("Yüksek kalite = daha büyük dosya"));
    EXPECT_EQ(descriptionOf(QAccessible::ComboBox, "Dil"), QStringLiteral("Türkçe\nUygulamanın arayüz dili"));
    EXPECT_EQ(descriptionOf(QAccessible::Grouping, "Renk teması"),
              QStringLiteral("Uygulamanın tüm renkleri; degradeli temalar arka plana renk geçişi ekler"));
    EXPECT_EQ(descriptionOf(QAccessible::Button, "Klasörü Aç"), settings.saveFolder());
    EXPECT_EQ(descriptionOf(QAccessible::Button, "Değiştir…"), settings.saveFolder());
    EXPECT_NE(find(QAccessible::StaticText,
                   QStringLiteral("Maç bitince bildirime tıklayıp klipleri incele: beğendiklerin kalır, diğerleri "
                                  "Çöp Kutusu'na gider.")),
              nullptr);
}

TEST_F(SettingsControlsTest, ScreenReadersDoNotFindWhatIsHidden)
{
    QStringList names;
    const auto collect = [&](const auto& self, const QAccessibleInterface* parent) -> void {
        for (int i = 0; i < parent->childCount(); ++i) {
            const auto* const child = parent->child(i);
            names.append(child->text(QAccessible::Name));
            self(self, child);
        }
    };
    collect(collect, QAccessible::queryAccessibleInterface(window));
    EXPECT_FALSE(names.filter(QStringLiteral("Dil")).isEmpty());
    EXPECT_EQ(names.filter(QStringLiteral("Güncelleme var")), QStringList());
}

TEST_F(SettingsControlsTest, DisplayIsChosenFromTheMenu)
{
    fakes.displays->displays.append({.id = 9, .name = QStringLiteral("DELL U2720Q"), .pixelSize = {2560, 1440}});
    Q_EMIT qGuiApp->screenAdded(QGuiApplication::primaryScreen());
    EXPECT_EQ(shownBy("Ekran"), QStringLiteral("Ana ekran"));
    pickFrom("Ekran", "DELL U2720Q");
    EXPECT_EQ(settings.displayID(), 9U);
    EXPECT_EQ(shownBy("Ekran"), QStringLiteral("DELL U2720Q"));
    focus(menu("Ekran"));
    key(Qt::Key_Space);
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_EQ(settings.displayID(), 0U);
}

TEST_F(SettingsControlsTest, UnpluggedDisplayShowsNoEntryAndStays)
{
    fakes.displays->displays.append({.id = 9, .name = QStringLiteral("DELL U2720Q"), .pixelSize = {2560, 1440}});
    Q_EMIT qGuiApp->screenAdded(QGuiApplication::primaryScreen());
    settings.setDisplayID(9);
    EXPECT_EQ(shownBy("Ekran"), QStringLiteral("DELL U2720Q"));
    fakes.displays->displays.removeLast();
    Q_EMIT qGuiApp->screenRemoved(nullptr);
    EXPECT_EQ(shownBy("Ekran"), QStringLiteral("—"));
    EXPECT_EQ(settings.displayID(), 9U);
    fakes.displays->displays.append({.id = 9, .name = QStringLiteral("DELL U2720Q"), .pixelSize = {2560, 1440}});
    Q_EMIT qGuiApp->screenAdded(QGuiApplication::primaryScreen());
    EXPECT_EQ(shownBy("Ekran"), QStringLiteral("DELL U2720Q"));
}

TEST_F(SettingsControlsTest, ChosenLanguageIsInTheMenu)
{
    EXPECT_EQ(shownBy("Dil"), QStringLiteral("Türkçe"));
    settings.setLanguage(QStringLiteral("xx"));
    QTest::qWait(150);
    settings.setLanguage(QStringLiteral("tr"));
    QTest::qWait(150);
    drawFrame();
    focus(menu("Dil"));
    key(Qt::Key_Space);
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_EQ(settings.language(), QStringLiteral("system"));
}

TEST_F(SettingsControlsTest, SaveFolderIsShownOpenedAndChosen)
{
    EXPECT_TRUE(shows(settings.saveFolder()));
    use(find(QAccessible::Button, QStringLiteral("Klasörü Aç")));
    EXPECT_EQ(files.opened, QStringList{settings.saveFolder()});
    use(find(QAccessible::Button, QStringLiteral("Değiştir…")));
    ASSERT_TRUE(folderDialog.reply);
    EXPECT_EQ(folderDialog.request.title, QStringLiteral("Kayıt klasörü"));
    EXPECT_EQ(folderDialog.request.acceptLabel, QStringLiteral("Seç"));
    EXPECT_EQ(folderDialog.request.startFolder, settings.saveFolder());
    EXPECT_EQ(folderDialog.request.parent, window);
    const auto before = settings.saveFolder();
    folderDialog.reply(folder.filePath(QStringLiteral("other")));
    EXPECT_EQ(settings.saveFolder(), folder.filePath(QStringLiteral("other")));
    EXPECT_TRUE(shows(settings.saveFolder()));
    EXPECT_FALSE(shows(before));
}

TEST_F(SettingsControlsTest, FolderWithForeignBytesIsReadable)
{
    const auto path = folder.filePath(decodeFileName("B\xfcy\xfck"));
    settings.setSaveFolder(path);
    const auto shown = displayFileName(path);
    ASSERT_NE(shown, path);
    EXPECT_TRUE(shows(shown));
    EXPECT_EQ(descriptionOf(QStringLiteral("Klasörü Aç")), shown);
    EXPECT_EQ(descriptionOf(QStringLiteral("Değiştir…")), shown);
    use(find(QAccessible::Button, QStringLiteral("Klasörü Aç")));
    EXPECT_EQ(files.opened, QStringList{path});
}

TEST_F(SettingsControlsTest, FolderMayBeChosenAfterThePageIsLeft)
{
    use(find(QAccessible::Button, QStringLiteral("Değiştir…")));
    navigation->showLibrary();
    drawFrame();
    folderDialog.reply(folder.filePath(QStringLiteral("other")));
    EXPECT_EQ(settings.saveFolder(), folder.filePath(QStringLiteral("other")));
}

TEST_F(SettingsControlsTest, LaunchAtLoginShowsTheRealState)
{
    const auto name = QStringLiteral("Girişte başlat");
    const auto isOn = [&] {
        return QAccessible::queryAccessibleInterface(find(QAccessible::CheckBox, name))->state().checked;
    };
    EXPECT_FALSE(isOn());
    useToggle("Girişte başlat");
    EXPECT_TRUE(loginItem.isEnabled);
    EXPECT_TRUE(isOn());
    loginItem.failure = QStringLiteral("Disk dolu");
    useToggle("Girişte başlat");
    EXPECT_TRUE(isOn());
    EXPECT_EQ(navigation->toast(), QStringLiteral("Girişte başlat ayarlanamadı: Disk dolu"));
    navigation->showLibrary();
    loginItem.isEnabled = false;
    openPage();
    EXPECT_FALSE(isOn());
}

TEST_F(SettingsControlsTest, PalettesAreAGroupOfRadioButtons)
{
    const auto* ember = QAccessible::queryAccessibleInterface(find(QAccessible::RadioButton, QStringLiteral("Kor")));
    EXPECT_TRUE(ember->state().checked);
    auto* neon = find(QAccessible::RadioButton, QStringLiteral("Neon Geceler"));
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(neon)->state().checked);
    focus(find(QAccessible::RadioButton, QStringLiteral("Kor")));
    key(Qt::Key_End);
    EXPECT_EQ(window->activeFocusItem(), neon);
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("ember"));
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    EXPECT_EQ(window->activeFocusItem(), find(QAccessible::RadioButton, QStringLiteral("Blurple")));
    key(Qt::Key_Return);
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("blurple"));
}

TEST_F(SettingsControlsTest, UnknownPaletteShowsTheFirstOneAndStays)
{
    settings.setColorTheme(QStringLiteral("unknown"));
    QTest::qWait(150);
    drawFrame();
    EXPECT_TRUE(
        QAccessible::queryAccessibleInterface(find(QAccessible::RadioButton, QStringLiteral("Kor")))->state().checked);
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("unknown"));
}

} // namespace
} // namespace quelto::test
