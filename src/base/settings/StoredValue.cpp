// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/settings/StoredValue.h"

#include <limits>

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

quint32 readStored(const QSettings& store, const char* key, quint32 fallback)
{
    const auto stored = store.value(QLatin1String(key), fallback).toLongLong();
    if (stored < 0 || stored > std::numeric_limits<quint32>::max()) {
        qFatal("%s is out of range in %s", key, qUtf8Printable(store.fileName()));
    }
    return static_cast<quint32>(stored);
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
