// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/probe/EncodedScene.h"

#include "tests/media/probe/MovingScene.h"

namespace quelto::test {

std::vector<EncodedFramePtr> encodedScene(const EncoderRequest& request, const std::vector<HostTime>& times)
{
    std::vector<EncodedFramePtr> encoded;
    const auto encoder = openVideoEncoder(request, [&](EncodedFramePtr frame) { encoded.push_back(std::move(frame)); });
    MovingScene scene(request.size);
    FramePool pool(request.size, 1);
    int index = 0;
    for (const auto time : times) {
        const auto frame = pool.tryAcquire();
        frame->presentationTime = time;
        scene.paint(*frame, index++);
        encoder->encode(*frame, frame->presentationTime);
    }
    encoder->finish();
    return encoded;
}

} // namespace quelto::test
