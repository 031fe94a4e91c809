// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace quelto::pipewire {

/// A pixel format in memory of the GPU and the memory layouts in which it can be read, the preferred one first.
struct DmaBufFormat {
    /// A DRM_FORMAT_ value of drm_fourcc.h.
    std::uint32_t format = 0;
    /// DRM_FORMAT_MOD_ values.
    std::vector<std::uint64_t> modifiers;

    bool operator==(const DmaBufFormat&) const = default;
};

/// The formats of DMA-BUFs that a stream still offers to take.
///
/// Thread: one at a time.
class DmaBufOffers {
public:
    explicit DmaBufOffers(std::vector<DmaBufFormat> formats);

    /// Formats without a remaining modifier are left out. Empty if only shared memory is left.
    const std::vector<DmaBufFormat>& formats() const noexcept { return m_formats; }
    bool contains(std::uint32_t format, std::uint64_t modifier) const;
    /// Offers none any longer: an encoder that cannot read one layout can rarely read another, and each attempt costs
    /// the recording a moment. False if there were none.
    bool withdraw();

private:
    std::vector<DmaBufFormat> m_formats;
};

} // namespace quelto::pipewire
