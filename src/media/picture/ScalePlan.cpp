// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/ScalePlan.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

constexpr int RowWeightSum = 65535;
constexpr int ColumnWeightSum = 16384;

struct Shares {
    int taps = 0;
    std::vector<int> first;
    /// Taps values for each output position, which add up to 1.
    std::vector<double> values;
};

/// How much of the source position lies in the output position that reaches from begin to end.
double overlap(double begin, double end, int position)
{
    return std::max(0.0, std::min(end, position + 1.0) - std::max(begin, static_cast<double>(position)));
}

Shares shares(int source, int output)
{
    const double ratio = static_cast<double>(source) / output;
    const bool shrinks = source >= output;
    // Ratios such as 4:3 meet whole positions that rounding must not push over the edge.
    constexpr double Edge = 1e-9;
    Shares result;
    if (shrinks) {
        for (int position = 0; position < output; ++position) {
            const double begin = position * ratio;
            const double touched = std::ceil(begin + ratio - Edge) - std::floor(begin + Edge);
            result.taps = std::max(result.taps, static_cast<int>(touched));
        }
    } else {
        result.taps = std::min(2, source);
    }
    for (int position = 0; position < output; ++position) {
        const double begin = position * ratio;
        const double centre = std::clamp(begin + ratio / 2 - 0.5, 0.0, source - 1.0);
        const int first = static_cast<int>(std::floor(shrinks ? begin + Edge : centre));
        result.first.push_back(std::clamp(first, 0, source - result.taps));
        for (int tap = result.first.back(); tap < result.first.back() + result.taps; ++tap) {
            result.values.push_back(shrinks ? overlap(begin, begin + ratio, tap) / ratio
                                            : std::max(0.0, 1.0 - std::abs(centre - tap)));
        }
    }
    return result;
}

/// Whole numbers in proportion to the shares that add up to the sum exactly, so that a plain area keeps its colour.
std::vector<int> quantised(const double* values, int count, int sum)
{
    std::vector<int> result;
    double reached = 0;
    int given = 0;
    for (int index = 0; index < count; ++index) {
        reached += values[index];
        const int upTo = index + 1 == count ? sum : static_cast<int>(std::lround(std::min(reached, 1.0) * sum));
        result.push_back(upTo - given);
        given = upTo;
    }
    return result;
}

} // namespace

RowPlan RowPlan::make(int source, int output)
{
    auto parts = shares(source, output);
    RowPlan plan{.taps = parts.taps, .first = std::move(parts.first)};
    for (int row = 0; row < output; ++row) {
        for (const int weight : quantised(parts.values.data() + row * parts.taps, parts.taps, RowWeightSum)) {
            plan.weights.push_back(static_cast<std::uint16_t>(weight));
        }
    }
    return plan;
}

ColumnPlan ColumnPlan::make(int source, int output)
{
    auto parts = shares(source, output);
    ColumnPlan plan{.pairs = (parts.taps + 1) / 2, .first = std::move(parts.first)};
    plan.weights.resize(static_cast<std::size_t>(output) * static_cast<std::size_t>(plan.pairs));
    for (int column = 0; column < output; ++column) {
        auto weights = quantised(parts.values.data() + column * parts.taps, parts.taps, ColumnWeightSum);
        weights.resize(static_cast<std::size_t>(plan.pairs) * 2, 0);
        for (int pair = 0; pair < plan.pairs; ++pair) {
            auto& entry = plan.weights[plan.indexOf(column, pair)];
            for (std::size_t value = 0; value < entry.size(); ++value) {
                entry[value] = static_cast<std::int16_t>(weights[static_cast<std::size_t>(pair) * 2 + value % 2]);
            }
        }
    }
    return plan;
}

} // namespace quelto
