// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/filter/FloatPlane.h"

#include <cstddef>
#include <cstdint>

namespace quelto {

/// Reads a plane of 8-bit values as averages over equal boxes. Boxes can begin between two pixels. Outside the plane
/// its edge pixels continue.
class BoxSampler {
public:
    /// One direction: box i covers origin + i × length to origin + (i + 1) × length. Units: pixels of the plane.
    struct Boxes {
        double origin = 0;
        double length = 1;
        int count = 0;
    };

    struct Plane {
        const std::uint8_t* data = nullptr;
        std::ptrdiff_t stride = 0;
    };

    BoxSampler(Boxes x, Boxes y, QSize plane);

    void sample(const Plane& plane, FloatPlane& result);

private:
    /// A pixel and its part of a box.
    struct Tap {
        int pixel = 0;
        float weight = 0;
    };
    /// The taps of each box.
    using Taps = std::vector<std::vector<Tap>>;

    static Taps tapsOf(const Boxes& boxes, int length);

    Taps m_x;
    Taps m_y;
    /// The first pixel of a row that a box reads.
    int m_firstPixel;
    /// The average of some rows, from the first pixel to the last that is read.
    std::vector<float> m_row;
};

} // namespace quelto
