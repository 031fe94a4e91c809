// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QList>
#include <QString>

#include <optional>

namespace quelto {

/// The hidden sidecar beside a clip: where in it what happened.
///
/// It is a nicety and never gets in a clip's way: reading and writing fail in silence, and a damaged sidecar is like
/// none.
struct ClipMeta {
    struct Event {
        /// Units: seconds from the start of the clip's file; never negative.
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

    /// The sidecar of a fresh clip. Markers are counted back from the real end of the file, which can be shorter than
    /// the moment asked for. Units: seconds.
    static ClipMeta of(const Moment& moment, double duration);

    /// The sidecar's path: in the same folder, a dot, the clip's whole file name, ".json".
    static QString pathFor(const QString& clipPath);
    static std::optional<ClipMeta> load(const QString& clipPath);
    static void move(const QString& oldClipPath, const QString& newClipPath);
    static void remove(const QString& clipPath);
    void save(const QString& clipPath) const;
};

} // namespace quelto
