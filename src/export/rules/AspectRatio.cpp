// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/AspectRatio.h"

#include <algorithm>

namespace quelto {

namespace {

// In the order of the enumeration.
constexpr std::array<QStringView, allAspectRatios().size()> RawValues{u"16:9", u"9:16", u"1:1", u"4:5"};

} // namespace

QString rawValue(AspectRatio aspect)
{
    return RawValues[static_cast<std::size_t>(aspect)].toString();
}

QString id(AspectRatio aspect)
{
    return rawValue(aspect);
}

QString tag(AspectRatio aspect)
{
    return rawValue(aspect).replace(u':', u'x');
}

std::optional<AspectRatio> aspectRatioFromRawValue(QStringView value)
{
    const auto* found = std::ranges::find(RawValues, value);
    return found == RawValues.end() ? std::nullopt : std::optional(allAspectRatios()[found - RawValues.begin()]);
}

} // namespace quelto
