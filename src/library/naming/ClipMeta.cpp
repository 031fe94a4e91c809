// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"

#include "base/files/AtomicFile.h"
#include "base/files/FileName.h"
#include "base/files/RenameToFreeName.h"
#include "base/files/RetryOnInterrupt.h"
#include "library/naming/ClipName.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace quelto {

namespace {

// Far above the size of any real sidecar; bounds memory.
constexpr qint64 MaxSidecarBytes = 16 * 1024 * 1024;

/// A field has the wrong type, which invalidates the whole sidecar.
struct InvalidSidecar : std::runtime_error {
    InvalidSidecar()
        : std::runtime_error("invalid sidecar")
    {
    }
};

std::optional<QString> optionalText(const QJsonValue& value)
{
    if (value.isUndefined() || value.isNull()) {
        return std::nullopt;
    }
    return value.isString() ? value.toString() : throw InvalidSidecar();
}

std::optional<qint64> optionalInteger(const QJsonValue& value)
{
    if (value.isUndefined() || value.isNull()) {
        return std::nullopt;
    }
    constexpr double MaxExactInteger = 9007199254740992.0; // 2^53
    const auto number = value.isDouble() ? value.toDouble() : throw InvalidSidecar();
    return std::trunc(number) == number && std::abs(number) <= MaxExactInteger ? static_cast<qint64>(number)
                                                                               : throw InvalidSidecar();
}

QList<ClipMeta::Event> eventsIn(const QJsonValue& value)
{
    QList<ClipMeta::Event> events;
    const auto list = value.isArray() ? value.toArray() : throw InvalidSidecar();
    for (const auto& each : list) {
        const auto time = each.toObject().value(QStringLiteral("t"));
        const auto name = each.toObject().value(QStringLiteral("name"));
        if (!time.isDouble() || !name.isString()) {
            throw InvalidSidecar();
        }
        events.append({time.toDouble(), name.toString()});
    }
    return events;
}

bool openForReading(const QString& path, QFile& file)
{
    const int descriptor =
        retryOnInterrupt([&] { return ::open(encodeFileName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
    return descriptor >= 0 && file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

template <typename Value> void put(QJsonObject& object, const QString& key, const std::optional<Value>& value)
{
    if (value) {
        object.insert(key, *value);
    }
}

} // namespace

ClipMeta ClipMeta::of(const Moment& moment, double duration)
{
    ClipMeta meta{.game = moment.game, .label = moment.label, .tier = tagOf(moment.tier), .score = moment.score};
    for (const auto& event : moment.events) {
        if (const auto time = std::max(duration - event.secondsBeforeEnd, 0.0); time <= duration) {
            meta.events.append({time, event.name});
        }
    }
    return meta;
}

QString ClipMeta::pathFor(const QString& clipPath)
{
    const QFileInfo clip(clipPath);
    return clip.path() + u'/' + sidecarFileName(clip.fileName());
}

std::optional<ClipMeta> ClipMeta::load(const QString& clipPath)
{
    QFile file;
    if (!openForReading(pathFor(clipPath), file) || file.size() > MaxSidecarBytes) {
        return std::nullopt;
    }
    const auto object = QJsonDocument::fromJson(file.readAll()).object();
    try {
        return ClipMeta{.game = optionalText(object.value(QStringLiteral("game"))),
                        .label = optionalText(object.value(QStringLiteral("label"))),
                        .tier = optionalText(object.value(QStringLiteral("tier"))),
                        .score = optionalInteger(object.value(QStringLiteral("score"))),
                        .events = eventsIn(object.value(QStringLiteral("events")))};
    } catch (const InvalidSidecar&) {
        return std::nullopt;
    }
}

void ClipMeta::move(const QString& oldClipPath, const QString& newClipPath)
{
    renameToFreeName(AT_FDCWD, encodeFileName(pathFor(oldClipPath)).constData(),
                     encodeFileName(pathFor(newClipPath)).constData());
}

void ClipMeta::remove(const QString& clipPath)
{
    ::unlink(encodeFileName(pathFor(clipPath)).constData());
}

void ClipMeta::save(const QString& clipPath) const
{
    QJsonObject object;
    put(object, QStringLiteral("game"), game);
    put(object, QStringLiteral("label"), label);
    put(object, QStringLiteral("tier"), tier);
    put(object, QStringLiteral("score"), score);
    QJsonArray list;
    for (const auto& event : events) {
        list.append(QJsonObject{{QStringLiteral("t"), event.t}, {QStringLiteral("name"), event.name}});
    }
    object.insert(QStringLiteral("events"), list);

    const auto json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    const QFileInfo sidecar(pathFor(clipPath));
    try {
        AtomicFile file(sidecar.path());
        file.write(std::as_bytes(std::span(json)));
        file.flush();
        file.publish(sidecar.fileName());
    } catch (const std::system_error&) {
        // The clip is complete without its sidecar.
    }
}

} // namespace quelto
