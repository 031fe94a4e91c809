// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/picture/ScalePlan.h"

#include <algorithm>
#include <cmath>

namespace quelto {

namespace {

constexpr int RowWeightSum = 65535;
constexpr int ColumnWeightSum = 16384;

struct Filter {
    int taps = 0;
    std::vector<int> first;
    /// `taps` weights per output position, with a sum of 1.
    std::vector<double> weights;
};

/// The part of a source position that is inside the output position from begin to end.
double overlap(double begin, double end, int position)
{
    return std::max(0.0, std::min(end, position + 1.0) - std::max(begin, static_cast<double>(position)));
}

Filter makeFilter(int source, int output)
{
    const double ratio = static_cast<double>(source) / output;
    const bool shrinks = source >= output;
    // With ratios such as 4:3, edges fall on whole positions; rounding errors must not move them to the next one.
    constexpr double Epsilon = 1e-9;
    Filter result;
    if (shrinks) {
        for (int position = 0; position < output; ++position) {
            const double begin = position * ratio;
            const double overlapped = std::ceil(begin + ratio - Epsilon) - std::floor(begin + Epsilon);
            result.taps = std::max(result.taps, static_cast<int>(overlapped));
        }
    } else {
        result.taps = std::min(2, source);
    }
    for (int position = 0; position < output; ++position) {
        const double begin = position * ratio;
        const double centre = std::clamp(begin + ratio / 2 - 0.5, 0.0, source - 1.0);
        const int first = static_cast<int>(std::floor(shrinks ? begin + Epsilon : centre));
        result.first.push_back(std::clamp(first, 0, source - result.taps));
        for (int tap = result.first.back(); tap < result.first.back() + result.taps; ++tap) {
            result.weights.push_back(shrinks ? overlap(begin, begin + ratio, tap) / ratio
                                             : std::max(0.0, 1.0 - std::abs(centre - tap)));
        }
    }
    return result;
}

/// Scales the weights to integers with exactly this sum, so that a uniform area keeps its colour.
std::vector<int> quantize(const double* weights, int count, int sum)
{
    std::vector<int> result;
    double cumulative = 0;
    int assigned = 0;
    for (int index = 0; index < count; ++index) {
        cumulative += weights[index];
        const int total = index + 1 == count ? sum : static_cast<int>(std::lround(std::min(cumulative, 1.0) * sum));
        result.push_back(total - assigned);
        assigned = total;
    }
    return result;
}

} // namespace

RowPlan RowPlan::make(int source, int output)
{
    auto filter = makeFilter(source, output);
    RowPlan plan{.taps = filter.taps, .first = std::move(filter.first)};
    for (int row = 0; row < output; ++row) {
        for (const int weight : quantize(filter.weights.data() + row * filter.taps, filter.taps, RowWeightSum)) {
            plan.weights.push_back(static_cast<std::uint16_t>(weight));
        }
    }
    return plan;
}

ColumnPlan ColumnPlan::make(int source, int output)
{
    auto filter = makeFilter(source, output);
    ColumnPlan plan{.pairs = (filter.taps + 1) / 2, .first = std::move(filter.first)};
    plan.weights.resize(static_cast<std::size_t>(output) * static_cast<std::size_t>(plan.pairs));
    for (int column = 0; column < output; ++column) {
        auto weights = quantize(filter.weights.data() + column * filter.taps, filter.taps, ColumnWeightSum);
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
