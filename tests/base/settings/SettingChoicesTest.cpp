// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/SettingChoices.h"

#include "base/settings/AppSettings.h"

#include <QMetaProperty>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace quelto {
namespace {

struct ChoiceCase {
    const char* key;
    QVariant value;
    bool isOffered;
};

TEST(SettingChoices, AreWhatAControlCanProduce)
{
    const auto text = [](const char* words) { return QVariant(QString::fromUtf8(words)); };
    const auto infinity = std::numeric_limits<double>::infinity();
    const std::array cases{
        ChoiceCase{"clipLength", 60, true},
        ChoiceCase{"clipLength", QVariant::fromValue<qlonglong>(60), true},
        ChoiceCase{"clipLength", -5, false},
        ChoiceCase{"clipLength", 61, false},
        ChoiceCase{"clipLength", QVariant::fromValue<qlonglong>(4'294'967'326), false}, // 30 in its lower 32 bits
        ChoiceCase{"clipLength", 60.0, false},
        ChoiceCase{"clipLength", text("60"), false},
        ChoiceCase{"fps", 120, true},
        ChoiceCase{"fps", 0, false},
        ChoiceCase{"discordLimitMB", 500, true},
        ChoiceCase{"discordLimitMB", 25, false},
        ChoiceCase{"resolution", text("p720"), true},
        ChoiceCase{"resolution", text("4k"), false},
        ChoiceCase{"quality", text("Ultra"), false},
        ChoiceCase{"codec", text("hevc"), true},
        ChoiceCase{"codec", text("av1"), false},
        ChoiceCase{"micVolume", 0.35, true},
        ChoiceCase{"micVolume", 2, true},
        ChoiceCase{"micVolume", 2.01, false},
        ChoiceCase{"systemVolume", -0.1, false},
        ChoiceCase{"systemVolume", infinity, false},
        ChoiceCase{"systemVolume", std::numeric_limits<double>::quiet_NaN(), false},
        ChoiceCase{"playSound", false, true},
        ChoiceCase{"playSound", 0, false},
        ChoiceCase{"playSound", text("false"), false},
        ChoiceCase{"microphoneID", text("alsa_input.usb"), true},
        ChoiceCase{"saveFolder", text("/srv/clips"), true},
        ChoiceCase{"language", text("system"), true},
        ChoiceCase{"language", text("pt"), true},
        ChoiceCase{"language", text("xx"), false},
        ChoiceCase{"colorTheme", text("neon"), true},
        ChoiceCase{"colorTheme", text("none"), false},
        ChoiceCase{"displayID", 66, true},
        ChoiceCase{"displayID", -1, false},
        ChoiceCase{"displayID", QVariant::fromValue<qlonglong>(4'294'967'296), false},
        ChoiceCase{"hotkeyCode", 101, true},
        ChoiceCase{"hotkeyCode", 53, false}, // Escape
        ChoiceCase{"hotkeyCode", 1000, false},
        ChoiceCase{"hotkeyModifiers", 0, true},
        ChoiceCase{"hotkeyModifiers", 256 + 512 + 2048 + 4096, true},
        ChoiceCase{"hotkeyModifiers", 1024, false},
        ChoiceCase{"hotkeyKeyName", text("F9"), true},
        ChoiceCase{"hotkeyKeyName", text("←"), true},
        ChoiceCase{"hotkeyKeyName", text(""), false},
        ChoiceCase{"hotkeyKeyName", text(" "), false},
        ChoiceCase{"hotkeyKeyName", text("C\n"), false},
        ChoiceCase{"objectName", text("x"), false},
        ChoiceCase{"noSuchSetting", 1, false},
        ChoiceCase{"", 1, false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(offeredSetting(QLatin1String(each.key), each.value).has_value(), each.isOffered)
            << each.key << " = " << each.value.toString().toStdString();
    }
}

TEST(SettingChoices, IncludeEveryDefaultInItsOwnType)
{
    const QTemporaryDir folder;
    AppSettings settings(folder.filePath(QStringLiteral("Quelto.conf")));
    const auto& type = AppSettings::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const auto value = type.property(i).read(&settings);
        EXPECT_EQ(offeredSetting(QLatin1String(type.property(i).name()), value), value) << type.property(i).name();
    }
}

} // namespace
} // namespace quelto
