// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "moments/scoring/Moment.h"

#include <QString>

#include <optional>

namespace quelto {

/// A finished clip file, with what the program knows of it without opening it again.
struct SavedClip {
    QString path;
    /// How long its video lasts. Units: seconds.
    double duration = 0;
    /// The moment that the clip was made for; none for a clip saved by hand.
    std::optional<Moment> moment;
};

} // namespace quelto
