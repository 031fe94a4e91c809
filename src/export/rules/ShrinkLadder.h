// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QSizeF>
#include <QtGlobal>

namespace quelto {

/// The properties of a clip that decide how it is shrunk.
struct ShrinkSource {
    /// Units: seconds.
    double duration = 0;
    bool hasAudio = false;
    QSizeF size;
    /// Units: frames per second.
    double frameRate = 0;
};

/// How a clip is encoded so that its file gets a certain size.
struct ShrinkSettings {
    /// Units: bits per second. 0 without sound.
    int audioRate = 0;
    /// Units: bits per second.
    int videoRate = 0;
    /// Both sides are even.
    QSize size;
    /// The declared rate. Pictures keep their times, so a source with fewer pictures keeps its real rate.
    double frameRate = 0;
    /// A picture that follows the last one sooner is dropped. Units: seconds. 0 or less drops none.
    double minGap = 0;
    /// Units: pictures.
    int keyFrameInterval = 0;

    bool operator==(const ShrinkSettings&) const = default;
};

/// The bit rate follows from the target, and the resolution and frame rate from the bit rate. Nothing is scaled up.
/// Impossible values of the source give settings that an encoder accepts.
ShrinkSettings shrinkSettings(double targetBytes, const ShrinkSource& source);

} // namespace quelto
