// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/StoredValue.h"

#include <QRegularExpression>

#include <utility>

namespace quelto {

namespace {

template <typename Preset> Preset readPreset(const QSettings& store, const char* key, Preset fallback)
{
    return presetFromRawValue<Preset>(readStored(store, key, rawValueOf(fallback)));
}

} // namespace

bool readStored(const QSettings& store, const char* key, bool fallback)
{
    return store.value(QLatin1String(key), fallback).toBool();
}

int readStored(const QSettings& store, const char* key, int fallback)
{
    return store.value(QLatin1String(key), fallback).toInt();
}

double readStored(const QSettings& store, const char* key, double fallback)
{
    return store.value(QLatin1String(key), fallback).toDouble();
}

QString readStored(const QSettings& store, const char* key, const QString& fallback)
{
    const auto stored = store.value(QLatin1String(key), fallback);
    // The INI format splits an unquoted value at its commas, but a folder's name may contain one.
    return stored.typeId() == QMetaType::QStringList ? stored.toStringList().join(QStringLiteral(", "))
                                                     : stored.toString();
}

std::optional<QString> outOfRangeText(const QSettings& store, const char* key)
{
    const auto stored = store.value(QLatin1String(key));
    bool isNumber = false;
    const auto number = stored.toLongLong(&isNumber);
    static const QRegularExpression wholeNumber(QStringLiteral(R"(^\s*[+-]?\d+\s*$)"));
    const bool isTooLong = !isNumber && wholeNumber.match(stored.toString()).hasMatch();
    return isTooLong || !std::in_range<quint32>(number) ? std::optional(stored.toString()) : std::nullopt;
}

quint32 readStored(const QSettings& store, const char* key, quint32 fallback)
{
    if (const auto text = outOfRangeText(store, key)) {
        qFatal("%s=%s is out of range in %s", key, qUtf8Printable(*text), qUtf8Printable(store.fileName()));
    }
    return store.value(QLatin1String(key), fallback).toUInt();
}

ResolutionPreset readStored(const QSettings& store, const char* key, ResolutionPreset fallback)
{
    return readPreset(store, key, fallback);
}

QualityPreset readStored(const QSettings& store, const char* key, QualityPreset fallback)
{
    return readPreset(store, key, fallback);
}

VideoCodec readStored(const QSettings& store, const char* key, VideoCodec fallback)
{
    return readPreset(store, key, fallback);
}

} // namespace quelto
