// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/OutOfRangeSetting.h"

#include "base/settings/AppSettings.h"
#include "base/settings/StoredValue.h"

#include <QMetaProperty>

namespace quelto {

std::optional<OutOfRangeSetting> findOutOfRangeSetting(const QString& path)
{
    const QSettings store(path, QSettings::IniFormat);
    const auto& type = AppSettings::staticMetaObject;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const auto property = type.property(i);
        if (property.metaType() != QMetaType::fromType<quint32>()) {
            continue;
        }
        if (const auto value = outOfRangeText(store, property.name())) {
            return OutOfRangeSetting{.file = path, .key = QLatin1String(property.name()), .value = *value};
        }
    }
    return std::nullopt;
}

QString storedLanguage(const QString& path)
{
    return readStored(QSettings(path, QSettings::IniFormat), "language", QStringLiteral("system"));
}

} // namespace quelto
