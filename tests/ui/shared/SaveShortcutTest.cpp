// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/SaveShortcut.h"

#include "base/settings/AppSettings.h"
#include "ui/shared/SharedForQml.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SaveShortcut, FollowsTheSettings)
{
    const QTemporaryDir folder;
    AppSettings settings(folder.filePath(QStringLiteral("Quelto.conf")));
    AppSettingsForQml::instance = &settings;
    const SaveShortcut shortcut;
    QStringList texts;
    QObject::connect(&shortcut, &SaveShortcut::changed, [&] { texts.append(SaveShortcut::text()); });
    EXPECT_EQ(SaveShortcut::text(), u"Alt+Shift+C");
    settings.setHotkeyKeyName(QStringLiteral("F9"));
    EXPECT_EQ(SaveShortcut::keys().size(), 3);
    settings.setHotkeyModifiers(0);
    EXPECT_EQ(SaveShortcut::keys(), QStringList{QStringLiteral("F9")});
    settings.setLanguage(QStringLiteral("de"));
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Alt+Shift+F9"), QStringLiteral("F9"), QStringLiteral("F9")}))
        << "a new language may have other names";
    AppSettingsForQml::instance = nullptr;
}

} // namespace
} // namespace quelto
