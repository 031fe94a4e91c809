// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "media/types/VideoFrame.h"

#include <random>

namespace quelto::test {

/// Paints frames with a moving texture and noise, an encoder load similar to a game.
class MovingScene {
public:
    explicit MovingScene(QSize size);

    void paint(VideoFrame& frame, int index);

private:
    QSize m_size;
    std::vector<std::uint8_t> m_texture;
    std::minstd_rand m_random{7};
};

} // namespace quelto::test
