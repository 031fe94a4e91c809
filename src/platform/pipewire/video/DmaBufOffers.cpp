// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/DmaBufOffers.h"

namespace quelto::pipewire {

DmaBufOffers::DmaBufOffers(std::vector<DmaBufFormat> formats)
    : m_formats(std::move(formats))
{
    std::erase_if(m_formats, [](const DmaBufFormat& offer) { return offer.modifiers.empty(); });
}

bool DmaBufOffers::contains(std::uint32_t format, std::uint64_t modifier) const
{
    return std::ranges::any_of(m_formats, [&](const DmaBufFormat& offer) {
        return offer.format == format && std::ranges::find(offer.modifiers, modifier) != offer.modifiers.end();
    });
}

bool DmaBufOffers::withdraw()
{
    const bool hadAny = !m_formats.empty();
    m_formats.clear();
    return hadAny;
}

} // namespace quelto::pipewire
