// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/codec/EncoderCandidates.h"

namespace quelto {

namespace {

using Option = EncoderOption;

constexpr std::array NvencReplay{
    Option{"preset", "p4"},
    Option{"tune", "ll"},
    Option{"rc", "vbr"},
    Option{"delay", "0"},
    Option{"zerolatency", "1"},
    Option{"forced-idr", "1"},
    Option{"b_ref_mode", "disabled"},
};

constexpr std::array VaapiReplay{
    Option{"rc_mode", "VBR"},
    Option{"async_depth", "1"},
};

// Measured on a moving 1080p60 scene at 13.7 Mbit/s, CPU time per second of video: 0.42 s with plain "ultrafast"
// (34.0 dB), 0.58 s with these options (34.7 dB), 0.72 s for "superfast" (35.3 dB), 1.18 s for "veryfast" (35.3 dB).
// The game needs the remaining CPU time. The 8×8 transform is required for High profile. Sliced threads cost nothing
// here and delay output by one frame only: rate control uses the duration of a frame before it allocates bits, which
// gives a still screen its full bit budget.
constexpr std::array X264Replay{
    Option{"preset", "ultrafast"},
    Option{"forced-idr", "1"},
    Option{"aq-mode", "1"},
    Option{"x264-params",
           "8x8dct=1:cabac=1:deblock=0,0:rc-lookahead=0:sync-lookahead=0:scenecut=0:sliced-threads=1:open-gop=0"},
};

constexpr std::array X265Replay{
    Option{"preset", "ultrafast"},
    Option{"tune", "zerolatency"},
    Option{"forced-idr", "1"},
    Option{"x265-params", "log-level=none:scenecut=0:open-gop=0:repeat-headers=0:info=0"},
};

// Exports are H.264 only, so the HEVC encoders have no options for them.
constexpr std::array NvencQuality{
    Option{"preset", "p6"}, Option{"tune", "hq"},      Option{"rc", "vbr"},
    Option{"cq", "15"},     Option{"spatial-aq", "1"}, Option{"bf", "2"},
};
constexpr std::array NvencRate{
    Option{"preset", "p6"},         Option{"tune", "hq"},      Option{"rc", "vbr"},
    Option{"multipass", "fullres"}, Option{"spatial-aq", "1"}, Option{"bf", "2"},
};

constexpr std::array VaapiQuality{
    Option{"rc_mode", "CQP"},
    Option{"qp", "17"},
};
constexpr std::array VaapiRate{
    Option{"rc_mode", "VBR"},
};

// At this quality, tuning for the eye gains nothing. Measured with ffmpeg at 1080p60: moving noise gets 45.8 dB at
// 26 Mbit/s. Without "psnr" the same needs a factor of 11, which takes 3 % more bits for the noise and 24 % more for a
// zoom into a fractal.
constexpr std::array X264Quality{
    Option{"preset", "veryfast"},
    Option{"tune", "psnr"},
    Option{"crf", "13.5"},
};

// With the default tolerance of 1, two passes over four seconds of noise that suddenly gets stronger missed the rate by
// up to 33 %; with 0.1 by 4 %.
constexpr std::array X264Rate{
    Option{"preset", "medium"},
    Option{"x264-params", "ratetol=0.1"},
};

using enum VideoCodec;

constexpr std::array Candidates{
    EncoderCandidate{h264, "h264_nvenc", FrameInput::nv12, EncoderKind::hardware, NvencReplay, NvencQuality, NvencRate},
    EncoderCandidate{hevc, "hevc_nvenc", FrameInput::nv12, EncoderKind::hardware, NvencReplay, {}, {}},
    EncoderCandidate{h264, "h264_vaapi", FrameInput::vaapi, EncoderKind::hardware, VaapiReplay, VaapiQuality,
                     VaapiRate},
    EncoderCandidate{hevc, "hevc_vaapi", FrameInput::vaapi, EncoderKind::hardware, VaapiReplay, {}, {}},
    EncoderCandidate{h264, "libx264", FrameInput::nv12, EncoderKind::software, X264Replay, X264Quality, X264Rate},
    EncoderCandidate{hevc, "libx265", FrameInput::yuv420p, EncoderKind::software, X265Replay, {}, {}},
};

} // namespace

std::span<const EncoderOption> EncoderCandidate::optionsFor(EncoderProfile profile) const noexcept
{
    switch (profile) {
    case EncoderProfile::constantQuality:
        return constantQuality;
    case EncoderProfile::averageRate:
        return averageRate;
    case EncoderProfile::replay:
        break;
    }
    return replay;
}

std::span<const EncoderCandidate> encoderCandidates() noexcept
{
    return Candidates;
}

} // namespace quelto
