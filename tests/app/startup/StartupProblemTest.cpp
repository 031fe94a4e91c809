// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup/StartupProblem.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

TEST(StartupProblem, NamesFileKeyAndValueInEveryLanguage)
{
    const OutOfRangeSetting setting{.file = QStringLiteral("/home/me/.config/Quelto/Quelto.conf"),
                                    .key = QStringLiteral("hotkeyCode"),
                                    .value = QStringLiteral("-1")};
    QStringList titles;
    for (const auto language : AllLanguages) {
        L10n::use(rawValueOf(language));
        const auto problem = startupProblem(setting);
        for (const auto& part : {setting.file, setting.key, setting.value}) {
            EXPECT_EQ(problem.text.count(part), 1) << problem.text.toStdString();
        }
        titles.append(problem.title);
    }
    EXPECT_EQ(titles.removeDuplicates(), 0);
    L10n::use(QStringLiteral("tr"));
}

} // namespace
} // namespace quelto
