// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/rules/FillMode.h"

#include "base/language/T.h"

#include <algorithm>

namespace quelto {

namespace {

struct FillModeRow {
    QStringView rawValue;
    const char* label;
};

// In the order of the enumeration.
constexpr std::array<FillModeRow, allFillModes().size()> Rows{
    FillModeRow{u"blur", "Bulanık arka plan"},
    FillModeRow{u"crop", "Ortadan kırp"},
};

const FillModeRow& rowOf(FillMode mode)
{
    return Rows[static_cast<std::size_t>(mode)];
}

} // namespace

QString rawValue(FillMode mode)
{
    return rowOf(mode).rawValue.toString();
}

QString id(FillMode mode)
{
    return rawValue(mode);
}

QString label(FillMode mode)
{
    return T(rowOf(mode).label);
}

std::optional<FillMode> fillModeFromRawValue(QStringView value)
{
    const auto* found = std::ranges::find(Rows, value, &FillModeRow::rawValue);
    return found == Rows.end() ? std::nullopt : std::optional(allFillModes()[found - Rows.begin()]);
}

} // namespace quelto
