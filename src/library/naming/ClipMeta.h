// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>

#include <optional>

namespace quelto {

/// The content of the hidden sidecar beside a clip: the event markers of the timeline.
///
/// Errors: none. Metadata is optional, so reading and writing fail silently, and a damaged sidecar counts as missing.
struct ClipMeta {
    struct Event {
        /// Units: seconds from the start of the clip file; never negative.
        double t = 0;
        QString name;

        bool operator==(const Event&) const = default;
    };

    std::optional<QString> game;
    std::optional<QString> label;
    /// The tier's tag.
    std::optional<QString> tier;
    std::optional<qint64> score;
    QList<Event> events;

    bool operator==(const ClipMeta&) const = default;

    /// The sidecar of a new clip. Marker times count back from the actual end of the file, which can be shorter than
    /// the moment requested. Units: seconds.
    static ClipMeta of(const Moment& moment, double duration);

    /// The sidecar of a copy of a part of the clip: the events from start to end, both included, with their times in
    /// that part. Units: seconds.
    ClipMeta trimmed(double start, double end) const;

    /// The sidecar's path, in the clip's folder.
    static QString pathFor(const QString& clipPath);
    static std::optional<ClipMeta> load(const QString& clipPath);
    static void move(const QString& oldClipPath, const QString& newClipPath);
    static void remove(const QString& clipPath);
    /// Replaces the sidecar as a whole. After a failure the previous one is unchanged.
    void save(const QString& clipPath) const;
};

} // namespace quelto
