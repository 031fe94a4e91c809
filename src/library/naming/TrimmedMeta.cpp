// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/naming/ClipMeta.h"

namespace quelto {

ClipMeta ClipMeta::trimmed(double start, double end) const
{
    auto part = *this;
    part.events.clear();
    for (const auto& event : events) {
        if (start <= event.t && event.t <= end) {
            part.events.append({event.t - start, event.name});
        }
    }
    return part;
}

} // namespace quelto
