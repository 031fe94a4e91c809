// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/AppSettings.h"

#include <QDir>
#include <QFile>
#include <QMetaProperty>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quelto {
namespace {

class AppSettingsTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("Quelto/Quelto.conf"));

    void store(const QByteArray& lines) const
    {
        QDir(folder.path()).mkdir(QStringLiteral("Quelto"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + lines);
    }

    QByteArray stored() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(AppSettingsTest, HasTheDefaultsOnAFirstRun)
{
    const AppSettings settings(path);
    EXPECT_EQ(settings.clipLength(), 30);
    EXPECT_EQ(settings.resolution(), ResolutionPreset::p1080);
    EXPECT_EQ(settings.quality(), QualityPreset::high);
    EXPECT_EQ(settings.fps(), 60);
    EXPECT_EQ(settings.codec(), VideoCodec::h264);
    EXPECT_TRUE(settings.captureAudio());
    EXPECT_TRUE(settings.captureMicrophone());
    EXPECT_EQ(settings.microphoneID(), QString());
    EXPECT_EQ(settings.micVolume(), 1.0);
    EXPECT_EQ(settings.systemVolume(), 1.0);
    EXPECT_TRUE(settings.captureVoiceChat());
    EXPECT_TRUE(settings.showCursor());
    EXPECT_EQ(settings.displayID(), 0U);
    EXPECT_EQ(settings.saveFolder(),
              QStandardPaths::writableLocation(QStandardPaths::MoviesLocation) + QStringLiteral("/Quelto"));
    EXPECT_TRUE(settings.autoStart());
    EXPECT_TRUE(settings.playSound());
    EXPECT_TRUE(settings.showOverlay());
    EXPECT_EQ(settings.discordLimitMB(), 10);
    EXPECT_TRUE(settings.autoClipEnabled());
    EXPECT_TRUE(settings.autoClipLeague());
    EXPECT_TRUE(settings.autoClipDota());
    EXPECT_TRUE(settings.autoClipWoW());
    EXPECT_EQ(settings.language(), QStringLiteral("system"));
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("ember"));
    EXPECT_TRUE(settings.autoClipEpic());
    EXPECT_TRUE(settings.autoClipMedium());
    EXPECT_FALSE(settings.autoClipBasic());
    EXPECT_EQ(settings.hotkeyCode(), 8U);
    EXPECT_EQ(settings.hotkeyModifiers(), 2560U);
    EXPECT_EQ(settings.hotkeyKeyName(), QStringLiteral("C"));
    EXPECT_EQ(settings.captureSignature(), QStringLiteral("0|p1080|high|60|h264|true|true|true||true"));
}

TEST_F(AppSettingsTest, WritesNoDefaults)
{
    const AppSettings settings(path);
    EXPECT_TRUE(stored().isEmpty());
}

struct StoredWord {
    const char* name;
    const char* line;
    QString signature;
};

class AppSettingsWords : public AppSettingsTest, public testing::WithParamInterface<StoredWord> { };

TEST_P(AppSettingsWords, FallBackWhereTheyAreUnknown)
{
    store(GetParam().line);
    EXPECT_EQ(AppSettings(path).captureSignature(), GetParam().signature);
}

INSTANTIATE_TEST_SUITE_P(Cases, AppSettingsWords,
                         testing::Values(StoredWord{"Resolution", "resolution=4k\n",
                                                    QStringLiteral("0|p1080|high|60|h264|true|true|true||true")},
                                         StoredWord{"EmptyQuality", "quality=\n",
                                                    QStringLiteral("0|p1080|high|60|h264|true|true|true||true")},
                                         StoredWord{"CapitalCodec", "codec=HEVC\n",
                                                    QStringLiteral("0|p1080|high|60|h264|true|true|true||true")},
                                         StoredWord{"Known", "codec=hevc\nquality=low\nresolution=native\n",
                                                    QStringLiteral("0|native|low|60|hevc|true|true|true||true")}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(AppSettingsTest, KeepsValuesOutsideTheListsAsTheyStand)
{
    store("clipLength=3\nfps=17\nmicVolume=7.5\ndiscordLimitMB=-1\nlanguage=xx\ncolorTheme=none\n");
    const AppSettings settings(path);
    EXPECT_EQ(settings.clipLength(), 3);
    EXPECT_EQ(settings.fps(), 17);
    EXPECT_EQ(settings.micVolume(), 7.5);
    EXPECT_EQ(settings.discordLimitMB(), -1);
    EXPECT_EQ(settings.language(), QStringLiteral("xx"));
    EXPECT_EQ(settings.colorTheme(), QStringLiteral("none"));
}

TEST_F(AppSettingsTest, WritesAValueTheMomentItIsSet)
{
    AppSettings settings(path);
    settings.setClipLength(60);
    EXPECT_TRUE(stored().contains("clipLength=60"));
    settings.setCodec(VideoCodec::hevc);
    EXPECT_TRUE(stored().contains("codec=hevc"));
    settings.setCaptureAudio(false);
    EXPECT_TRUE(stored().contains("captureAudio=false"));
}

TEST_F(AppSettingsTest, WritesEveryPreferenceUnderItsOwnName)
{
    int preferences = 0;
    const auto& type = AppSettings::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const auto property = type.property(i);
        if (!property.isWritable()) {
            continue;
        }
        ++preferences;
        const std::string name = property.name();
        AppSettings settings(path);
        int changes = 0;
        QObject::connect(&settings, &AppSettings::changed, &settings, [&] { ++changes; });
        const auto before = property.read(&settings);
        const QVariant changed = name == "resolution" ? QVariant(QStringLiteral("p720"))
            : name == "quality"                       ? QVariant(QStringLiteral("low"))
            : name == "codec"                         ? QVariant(QStringLiteral("hevc"))
            : before.typeId() == QMetaType::Bool      ? QVariant(!before.toBool())
            : before.typeId() == QMetaType::QString   ? QVariant(before.toString() + u'x')
                                                      : QVariant(before.toDouble() + 1);
        EXPECT_TRUE(property.write(&settings, changed)) << name;
        EXPECT_EQ(changes, 1) << name;
        EXPECT_TRUE(stored().contains(QByteArray("\n") + property.name() + '=')) << name;
        EXPECT_EQ(property.read(std::make_unique<AppSettings>(path).get()).toString(), changed.toString()) << name;
    }
    EXPECT_EQ(preferences, 30);
}

TEST_F(AppSettingsTest, ReadsBackWhatItWrote)
{
    {
        AppSettings settings(path);
        settings.setSaveFolder(QStringLiteral("/home/özgür, Klips; [1] #%/ \"a\"=b"));
        settings.setMicVolume(0.1);
        settings.setDisplayID(4'294'967'295U);
        settings.setHotkeyKeyName(QStringLiteral("Ş"));
        settings.setQuality(QualityPreset::ultra);
        settings.setAutoClipBasic(true);
    }
    const AppSettings settings(path);
    EXPECT_EQ(settings.saveFolder(), QStringLiteral("/home/özgür, Klips; [1] #%/ \"a\"=b"));
    EXPECT_EQ(settings.micVolume(), 0.1);
    EXPECT_EQ(settings.displayID(), 4'294'967'295U);
    EXPECT_EQ(settings.hotkeyKeyName(), QStringLiteral("Ş"));
    EXPECT_EQ(settings.quality(), QualityPreset::ultra);
    EXPECT_TRUE(settings.autoClipBasic());
}

TEST_F(AppSettingsTest, TakesAFolderWithACommaThatWasWrittenByHand)
{
    store("saveFolder=/srv/clips, old\n");
    EXPECT_EQ(AppSettings(path).saveFolder(), QStringLiteral("/srv/clips, old"));
}

TEST_F(AppSettingsTest, NoFolderIsTheDefaultOne)
{
    const auto usual = AppSettings(path).saveFolder();
    ASSERT_TRUE(QDir::isAbsolutePath(usual));
    for (const char* lines : {"saveFolder=\n", "saveFolder=\"\"\n", "saveFolder=@Invalid()\n"}) {
        store(lines);
        EXPECT_EQ(AppSettings(path).saveFolder(), usual) << lines;
    }
    AppSettings settings(path);
    settings.setSaveFolder(QStringLiteral("/elsewhere"));
    settings.setSaveFolder(QString());
    EXPECT_EQ(settings.saveFolder(), usual);
    EXPECT_EQ(AppSettings(path).saveFolder(), usual);
}

TEST_F(AppSettingsTest, AFolderWithoutItsBeginningIsInTheHomeFolder)
{
    const auto clips = QDir::homePath() + QStringLiteral("/Videos/clips");
    for (const char* written : {"Videos/clips", "./Videos/clips", "~/Videos/clips", "~/Videos/clips/"}) {
        store(QByteArray("saveFolder=") + written + "\n");
        EXPECT_EQ(AppSettings(path).saveFolder(), clips) << written;
    }
    AppSettings settings(path);
    settings.setSaveFolder(QStringLiteral("~"));
    EXPECT_EQ(settings.saveFolder(), QDir::homePath());
    settings.setSaveFolder(QStringLiteral("~clips"));
    EXPECT_EQ(settings.saveFolder(), QDir::homePath() + QStringLiteral("/~clips"));
    EXPECT_EQ(AppSettings(path).saveFolder(), settings.saveFolder());
}

TEST_F(AppSettingsTest, TellsOfAChangeBeforeItIsWrittenAndWritesAlsoWhatIsUnchanged)
{
    AppSettings settings(path);
    int changes = 0;
    bool wasWritten = true;
    QObject::connect(&settings, &AppSettings::fpsChanged, &settings, [&] { wasWritten = stored().contains("fps"); });
    QObject::connect(&settings, &AppSettings::changed, &settings, [&] { ++changes; });
    settings.setFps(60);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(wasWritten);
    EXPECT_TRUE(stored().contains("fps=60"));
}

TEST_F(AppSettingsTest, SurvivesAFolderThatCannotBeWritten)
{
    AppSettings settings(QStringLiteral("/proc/no/such/place/Quelto.conf"));
    settings.setFps(30);
    EXPECT_EQ(settings.fps(), 30);
}

using AppSettingsDeathTest = AppSettingsTest;

TEST_F(AppSettingsDeathTest, EndsTheProgramOnANumberThatNothingWrites)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    store("displayID=-1\n");
    EXPECT_DEATH(AppSettings{path}, "displayID");
    store("hotkeyCode=4294967296\n");
    EXPECT_DEATH(AppSettings{path}, "hotkeyCode");
}

TEST_F(AppSettingsTest, ReachesBackNinetySecondsWhileMomentsAreDetected)
{
    AppSettings settings(path);
    EXPECT_EQ(settings.bufferSeconds(), 90);
    settings.setClipLength(300);
    EXPECT_EQ(settings.bufferSeconds(), 300);
    settings.setClipLength(30);
    settings.setAutoClipEnabled(false);
    EXPECT_EQ(settings.bufferSeconds(), 30);
}

TEST_F(AppSettingsTest, SignsTheMicrophoneButNotTheClipLength)
{
    AppSettings settings(path);
    const auto signature = settings.captureSignature();
    settings.setClipLength(120);
    settings.setSystemVolume(0.5);
    settings.setSaveFolder(QStringLiteral("/elsewhere"));
    EXPECT_EQ(settings.captureSignature(), signature);
    settings.setMicrophoneID(QStringLiteral("usb"));
    EXPECT_EQ(settings.captureSignature(), QStringLiteral("0|p1080|high|60|h264|true|true|true|usb|true"));
}

TEST_F(AppSettingsTest, SignsEachFieldAtItsPlace)
{
    const std::array<std::pair<const char*, const char*>, 10> lines{
        {{"displayID=7", "7|p1080|high|60|h264|true|true|true||true"},
         {"resolution=p720", "0|p720|high|60|h264|true|true|true||true"},
         {"quality=low", "0|p1080|low|60|h264|true|true|true||true"},
         {"fps=30", "0|p1080|high|30|h264|true|true|true||true"},
         {"codec=hevc", "0|p1080|high|60|hevc|true|true|true||true"},
         {"captureAudio=false", "0|p1080|high|60|h264|false|true|true||true"},
         {"showCursor=false", "0|p1080|high|60|h264|true|false|true||true"},
         {"captureMicrophone=false", "0|p1080|high|60|h264|true|true|false||true"},
         {"microphoneID=usb", "0|p1080|high|60|h264|true|true|true|usb|true"},
         {"captureVoiceChat=false", "0|p1080|high|60|h264|true|true|true||false"}}};
    for (const auto& [line, signature] : lines) {
        const auto own = folder.filePath(QString::fromLatin1(line));
        QFile file(own);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[General]\n") + line + '\n');
        file.close();
        EXPECT_EQ(AppSettings(own).captureSignature(), QLatin1String(signature)) << line;
    }
}

TEST_F(AppSettingsTest, KnowsTheSwitchOfEachGame)
{
    AppSettings settings(path);
    settings.setAutoClipDota(false);
    EXPECT_TRUE(settings.isGameEnabled(QStringLiteral("League of Legends")));
    EXPECT_FALSE(settings.isGameEnabled(QStringLiteral("Dota 2")));
    EXPECT_TRUE(settings.isGameEnabled(QStringLiteral("World of Warcraft")));
    EXPECT_FALSE(settings.isGameEnabled(QStringLiteral("Chess")));
}

TEST_F(AppSettingsTest, KnowsTheSwitchOfEachTier)
{
    const AppSettings settings(path);
    EXPECT_TRUE(settings.isTierEnabled(ClipTier::epic));
    EXPECT_TRUE(settings.isTierEnabled(ClipTier::medium));
    EXPECT_FALSE(settings.isTierEnabled(ClipTier::basic));
}

TEST_F(AppSettingsTest, EstimatesTheSizeFromTheDisplay)
{
    QSize display(2560, 1440);
    AppSettings settings(path, [&](std::uint32_t) { return std::optional(display); });
    EXPECT_EQ(settings.estimatedCaptureSize(), QSize(1920, 1080));
    settings.setResolution(ResolutionPreset::native);
    EXPECT_EQ(settings.estimatedCaptureSize(), QSize(2560, 1440));
    display = {0, 1440};
    EXPECT_EQ(settings.estimatedCaptureSize(), QSize(1920, 1080));
}

TEST_F(AppSettingsTest, EstimatesFullHdWithoutADisplay)
{
    EXPECT_EQ(AppSettings(path).estimatedCaptureSize(), QSize(1920, 1080));
}

TEST_F(AppSettingsTest, ShowsTheShortcut)
{
    EXPECT_EQ(AppSettings(path).hotkeyDisplay(), QStringLiteral("⌥⇧C"));
}

} // namespace
} // namespace quelto
