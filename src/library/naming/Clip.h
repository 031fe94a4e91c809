// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/ClipTier.h"

#include <QString>

#include <optional>

namespace quelto {

/// One clip file as its name tells it; the video is not opened.
struct Clip {
    /// Never fails: a name without " - " belongs to the game "Other" and is a title as a whole.
    explicit Clip(const QString& path);

    QString path;
    QString game;
    QString title;
    std::optional<ClipTier> autoTier;
    qint64 autoScore = 0;
    std::optional<QString> autoLabel;

    /// The title still begins with the date that the recorder gave it.
    bool hasDefaultTitle() const;
    /// What a list shows: the moment's headline, a wording for an unnamed clip, or the title that the user gave.
    QString displayTitle() const;
    /// The aspect export marks upright pictures in the name.
    bool isTall() const;
};

} // namespace quelto
