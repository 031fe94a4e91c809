// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/reader/SampleCount.h"

#include <QtEndian>

#include <array>

#include <unistd.h>

namespace quelto {

namespace {

constexpr int MostBoxes = 10'000;

consteval std::uint32_t boxType(const char (&name)[5])
{
    std::uint32_t type = 0;
    for (int i = 0; i < 4; ++i) {
        type = type << 8U | static_cast<unsigned char>(name[i]);
    }
    return type;
}

/// The size and type of a box, and what its content begins with; zeros behind the file's end.
class BoxHead {
public:
    BoxHead(int file, std::int64_t position)
        : m_isThere(::pread(file, m_bytes.data(), m_bytes.size(), position) >= 8)
    {
    }

    bool isWhole() const { return m_isThere && size() >= ownSize(); }
    std::uint32_t type() const { return at(4); }
    std::uint32_t ownSize() const { return at(0) == 1 ? 16 : 8; }
    std::uint64_t size() const { return at(0) == 1 ? qFromBigEndian<std::uint64_t>(m_bytes.data() + 8) : at(0); }
    /// The number at that place of the content, behind version and flags.
    std::uint32_t content(std::size_t place) const { return at(ownSize() + 4 + place); }

private:
    std::uint32_t at(std::size_t place) const { return qFromBigEndian<std::uint32_t>(m_bytes.data() + place); }

    std::array<char, 32> m_bytes{};
    bool m_isThere;
};

struct Track {
    bool isSound = false;
    bool isOfSingleFrames = false;
    std::uint64_t samples = 0;

    std::uint64_t toKeep() const { return isSound && isOfSingleFrames ? 0 : samples; }
};

bool isContainer(std::uint32_t type)
{
    constexpr std::array Containers{boxType("moov"), boxType("trak"), boxType("mdia"), boxType("minf"),
                                    boxType("stbl"), boxType("moof"), boxType("traf")};
    return std::ranges::find(Containers, type) != Containers.end();
}

} // namespace

std::uint64_t claimedSamples(int file)
{
    std::uint64_t samples = 0;
    Track track;
    std::int64_t position = 0;
    for (int i = 0; i < MostBoxes; ++i) {
        const BoxHead box(file, position);
        if (!box.isWhole()) {
            break;
        }
        switch (box.type()) {
        case boxType("trak"):
            samples += std::exchange(track, {}).toKeep();
            break;
        case boxType("hdlr"):
            // Some have another one for where their data lies.
            track.isSound |= box.content(4) == boxType("soun");
            break;
        case boxType("stts"):
            track.isOfSingleFrames = box.content(0) == 1 && box.content(8) == 1;
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
        const std::uint64_t step = isContainer(box.type()) ? box.ownSize() : box.size();
        if (__builtin_add_overflow(position, step, &position)) {
            break;
        }
    }
    return samples + track.toKeep();
}

} // namespace quelto
