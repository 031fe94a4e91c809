// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pipewire/video/DmaBufOffers.h"

namespace quelto::pipewire {

DmaBufOffers::DmaBufOffers(std::vector<DmaBufFormat> formats)
    : m_formats(std::move(formats))
{
    removeEmpty();
}

bool DmaBufOffers::contains(std::uint32_t format, std::uint64_t modifier) const
{
    return std::ranges::any_of(m_formats, [&](const DmaBufFormat& offer) {
        return offer.format == format && std::ranges::find(offer.modifiers, modifier) != offer.modifiers.end();
    });
}

bool DmaBufOffers::remove(std::uint32_t format, std::uint64_t modifier)
{
    bool isRemoved = false;
    for (DmaBufFormat& offer : m_formats) {
        if (offer.format == format) {
            isRemoved = std::erase(offer.modifiers, modifier) > 0 || isRemoved;
        }
    }
    removeEmpty();
    return isRemoved;
}

void DmaBufOffers::removeEmpty()
{
    std::erase_if(m_formats, [](const DmaBufFormat& offer) { return offer.modifiers.empty(); });
}

} // namespace quelto::pipewire
