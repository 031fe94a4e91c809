// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/AppSettings.h"
#include "base/settings/OutOfRangeSetting.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
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

    /// The file, when it has all values of these settings.
    QByteArray stored(AppSettings& settings) const
    {
        EXPECT_TRUE(settings.finishWriting(std::chrono::seconds(10)));
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(AppSettingsTest, HasDefaultsOnFirstRun)
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
}

TEST_F(AppSettingsTest, DoesNotWriteDefaults)
{
    AppSettings settings(path);
    EXPECT_TRUE(stored(settings).isEmpty());
}

TEST_F(AppSettingsTest, FallsBackToTheDefaultForAnUnknownPreset)
{
    store("resolution=4k\nquality=\ncodec=HEVC\n");
    const AppSettings settings(path);
    EXPECT_EQ(settings.resolution(), ResolutionPreset::p1080);
    EXPECT_EQ(settings.quality(), QualityPreset::high);
    EXPECT_EQ(settings.codec(), VideoCodec::h264) << "names are case-sensitive";
}

TEST_F(AppSettingsTest, ReadsKnownPresets)
{
    store("resolution=native\nquality=low\ncodec=hevc\n");
    const AppSettings settings(path);
    EXPECT_EQ(settings.resolution(), ResolutionPreset::native);
    EXPECT_EQ(settings.quality(), QualityPreset::low);
    EXPECT_EQ(settings.codec(), VideoCodec::hevc);
}

TEST_F(AppSettingsTest, KeepsValuesOutsideTheOfferedLists)
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

TEST_F(AppSettingsTest, WritesAValueWhenItIsSet)
{
    AppSettings settings(path);
    settings.setClipLength(60);
    EXPECT_TRUE(stored(settings).contains("clipLength=60"));
    settings.setCodec(VideoCodec::hevc);
    EXPECT_TRUE(stored(settings).contains("codec=hevc"));
    settings.setCaptureAudio(false);
    EXPECT_TRUE(stored(settings).contains("captureAudio=false"));
}

TEST_F(AppSettingsTest, SetterDoesNotWaitForTheDisk)
{
    QDir().mkpath(QFileInfo(path).path());
    AppSettings settings(path);
    // What the file is written under. While another program holds it, writing has to wait.
    QLockFile busy(path + QStringLiteral(".lock"));
    ASSERT_TRUE(busy.tryLock());
    settings.setFps(30);
    settings.setFps(120);
    EXPECT_FALSE(settings.finishWriting(std::chrono::milliseconds(50)));
    busy.unlock();
    EXPECT_TRUE(stored(settings).contains("fps=120"));
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
        EXPECT_TRUE(stored(settings).contains(QByteArray("\n") + property.name() + '=')) << name;
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

TEST_F(AppSettingsTest, ReadsAnUnquotedFolderWithAComma)
{
    store("saveFolder=/srv/clips, old\n");
    EXPECT_EQ(AppSettings(path).saveFolder(), QStringLiteral("/srv/clips, old"));
}

TEST_F(AppSettingsTest, EmptySaveFolderIsTheDefault)
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
    EXPECT_FALSE(stored(settings).isEmpty());
    EXPECT_EQ(AppSettings(path).saveFolder(), usual);
}

TEST_F(AppSettingsTest, RelativeSaveFolderIsInTheHomeFolder)
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
    EXPECT_FALSE(stored(settings).isEmpty());
    EXPECT_EQ(AppSettings(path).saveFolder(), settings.saveFolder());
}

TEST_F(AppSettingsTest, SaveFolderHasNoSurplusSlashes)
{
    const auto clips = QStringLiteral("/srv/clips");
    AppSettings settings(path);
    for (const char* written : {"/srv/clips/", "/srv/clips//", "//srv//clips", "/srv/./clips/."}) {
        store(QByteArray("saveFolder=") + written + "\n");
        EXPECT_EQ(AppSettings(path).saveFolder(), clips) << written;
        settings.setSaveFolder(QString::fromLatin1(written));
        EXPECT_EQ(settings.saveFolder(), clips) << written;
        EXPECT_TRUE(stored(settings).contains("saveFolder=/srv/clips\n")) << written;
    }
    settings.setSaveFolder(QStringLiteral("/"));
    EXPECT_EQ(settings.saveFolder(), QStringLiteral("/"));
}

TEST_F(AppSettingsTest, EmitsChangesBeforeWritingAndWritesUnchangedValues)
{
    AppSettings settings(path);
    int changes = 0;
    bool wasWritten = true;
    QObject::connect(&settings, &AppSettings::fpsChanged, &settings,
                     [&] { wasWritten = stored(settings).contains("fps"); });
    QObject::connect(&settings, &AppSettings::changed, &settings, [&] { ++changes; });
    settings.setFps(60);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(wasWritten);
    EXPECT_TRUE(stored(settings).contains("fps=60"));
}

TEST_F(AppSettingsTest, KeepsAValueThatCannotBeWritten)
{
    AppSettings settings(QStringLiteral("/proc/no/such/place/Quelto.conf"));
    settings.setFps(30);
    EXPECT_EQ(settings.fps(), 30);
}

using AppSettingsDeathTest = AppSettingsTest;

TEST_F(AppSettingsDeathTest, OutOfRangeNumberEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    store("displayID=-1\n");
    EXPECT_DEATH(AppSettings{path}, "displayID");
    store("hotkeyCode=4294967296\n");
    EXPECT_DEATH(AppSettings{path}, "hotkeyCode=4294967296 is out of range in .*Quelto.conf");
    store("hotkeyModifiers=99999999999999999999\n");
    EXPECT_DEATH(AppSettings{path}, "hotkeyModifiers");
}

TEST_F(AppSettingsTest, OutOfRangeNumberIsFoundWithoutReadingTheSettings)
{
    EXPECT_EQ(findOutOfRangeSetting(path), std::nullopt) << "no file";
    const OutOfRangeSetting hotkey{.file = path, .key = QStringLiteral("hotkeyCode"), .value = QStringLiteral("-1")};
    store("clipLength=-5\nfps=99999999999\ndisplayID=4294967295\nhotkeyCode=-1\n");
    EXPECT_EQ(findOutOfRangeSetting(path), hotkey) << "only these three numbers have a range";
    store("displayID=abc\nhotkeyModifiers=\nhotkeyCode=8\n");
    EXPECT_EQ(findOutOfRangeSetting(path), std::nullopt) << "a word reads as 0";
    store("displayID=99999999999999999999\n");
    EXPECT_EQ(findOutOfRangeSetting(path)->value, QStringLiteral("99999999999999999999"));
}

TEST_F(AppSettingsTest, LanguageIsReadWithoutTheOtherSettings)
{
    EXPECT_EQ(storedLanguage(path), QStringLiteral("system"));
    store("language=de\nhotkeyCode=-1\n");
    EXPECT_EQ(storedLanguage(path), QStringLiteral("de"));
}

} // namespace
} // namespace quelto
