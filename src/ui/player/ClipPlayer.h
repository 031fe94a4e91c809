// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "playback/model/ClipPlayerModel.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// The player of a screen, as QML creates it. Set PlaybackForQml::instance before.
// Qt 6.4 finds the properties of a base class for QML by its full name only.
class ClipPlayer : public quelto::ClipPlayerModel {
    Q_OBJECT
    QML_ELEMENT
    /// One object for each event: `time` (seconds), `icon` (name of a symbol), `color`, `title`.
    Q_PROPERTY(QVariantList markers READ markers NOTIFY eventsChanged)
    /// The speeds to choose from.
    Q_PROPERTY(QVariantList rates READ rates CONSTANT)

public:
    explicit ClipPlayer(QObject* parent = nullptr);

    QVariantList markers() const;
    static QVariantList rates();

    /// Minutes and seconds: "1:05".
    Q_INVOKABLE static QString positionText(double seconds);
    /// "1.5×".
    Q_INVOKABLE static QString rateText(double rate);
};

/// What players are made of.
struct PlaybackForQml {
    struct Parts {
        ClipPlayerModel::Dependencies model;
        std::function<std::unique_ptr<Player>()> createPlayer;
    };
    static inline std::optional<Parts> instance;
};

} // namespace quelto
