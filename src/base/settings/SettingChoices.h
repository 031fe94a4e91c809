// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace quelto {

/// The value in the preference's own type, if a control of the settings page can produce it; nothing for another value
/// and for an unknown key. For values that come from outside of the program.
std::optional<QVariant> offeredSetting(const QString& key, const QVariant& value);

} // namespace quelto
