// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/SampleCount.h"

#include <QtEndian>

#include <array>

#include <unistd.h>

namespace quelto {

namespace {

constexpr int MaxBoxes = 10'000;

consteval std::uint32_t boxType(const char (&name)[5])
{
    std::uint32_t type = 0;
    for (int i = 0; i < 4; ++i) {
        type = type << 8U | static_cast<unsigned char>(name[i]);
    }
    return type;
}

/// The header of a box and the first bytes of its content; zeros beyond the end of the file.
class BoxHeader {
public:
    BoxHeader(int fd, std::int64_t position)
        : m_isRead(::pread(fd, m_bytes.data(), m_bytes.size(), position) >= 8)
    {
    }

    bool isValid() const { return m_isRead && size() >= headerSize(); }
    std::uint32_t type() const { return at(4); }
    std::uint32_t headerSize() const { return at(0) == 1 ? 16 : 8; }
    std::uint64_t size() const { return at(0) == 1 ? qFromBigEndian<std::uint64_t>(m_bytes.data() + 8) : at(0); }
    /// The number at this offset of the content, after version and flags.
    std::uint32_t content(std::size_t offset) const { return at(headerSize() + 4 + offset); }

private:
    std::uint32_t at(std::size_t offset) const { return qFromBigEndian<std::uint32_t>(m_bytes.data() + offset); }

    std::array<char, 32> m_bytes{};
    bool m_isRead;
};

struct Track {
    bool isAudio = false;
    bool hasSingleFrameSamples = false;
    std::uint64_t samples = 0;

    std::uint64_t indexedSamples() const { return isAudio && hasSingleFrameSamples ? 0 : samples; }
};

bool isContainer(std::uint32_t type)
{
    constexpr std::array Containers{boxType("moov"), boxType("trak"), boxType("mdia"), boxType("minf"),
                                    boxType("stbl"), boxType("moof"), boxType("traf")};
    return std::ranges::find(Containers, type) != Containers.end();
}

} // namespace

std::uint64_t declaredSampleCount(int fd)
{
    std::uint64_t samples = 0;
    Track track;
    std::int64_t position = 0;
    for (int i = 0; i < MaxBoxes; ++i) {
        const BoxHeader box(fd, position);
        if (!box.isValid()) {
            break;
        }
        switch (box.type()) {
        case boxType("trak"):
            samples += std::exchange(track, {}).indexedSamples();
            break;
        case boxType("hdlr"):
            // QuickTime tracks may have a second handler box, for the data reference.
            track.isAudio |= box.content(4) == boxType("soun");
            break;
        case boxType("stts"):
            track.hasSingleFrameSamples = box.content(0) == 1 && box.content(8) == 1;
            break;
        case boxType("stsz"):
        case boxType("stz2"):
            track.samples += box.content(4);
            break;
        case boxType("trun"):
            samples += box.content(0);
            break;
        default:
            break;
        }
        const std::uint64_t step = isContainer(box.type()) ? box.headerSize() : box.size();
        if (__builtin_add_overflow(position, step, &position)) {
            break;
        }
    }
    return samples + track.indexedSamples();
}

} // namespace quelto
