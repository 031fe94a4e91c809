// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shared/SaveShortcut.h"

#include "base/settings/AppSettings.h"
#include "ui/shared/SharedForQml.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(SaveShortcut, TextFollowsTheSettings)
{
    const QTemporaryDir folder;
    AppSettings settings(folder.filePath(QStringLiteral("Quelto.conf")));
    AppSettingsForQml::instance = &settings;
    const SaveShortcut shortcut;
    QStringList texts;
    QObject::connect(&shortcut, &SaveShortcut::textChanged, [&] { texts.append(SaveShortcut::text()); });
    EXPECT_EQ(SaveShortcut::text(), u"⌥⇧C");
    settings.setHotkeyKeyName(QStringLiteral("F9"));
    settings.setHotkeyModifiers(0);
    EXPECT_EQ(texts, (QStringList{QStringLiteral("⌥⇧F9"), QStringLiteral("F9")}));
    AppSettingsForQml::instance = nullptr;
}

} // namespace
} // namespace quelto
