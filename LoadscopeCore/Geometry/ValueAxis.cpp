// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/ValueAxis.h"

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <algorithm>
#include <array>

namespace loadscope::ValueAxis {
namespace {

/// The smallest round step that covers the maximum in the given number of intervals, or, where that would
/// pass the maximum, the largest round step below it.
std::int64_t roundStep(std::int64_t maximum, std::int64_t intervals) {
    constexpr std::int64_t largestPower = 1'000'000'000'000'000'000; // of ten within 64 bits
    const std::int64_t least = maximum / intervals + (maximum % intervals != 0 ? 1 : 0);
    std::int64_t step = 1;
    for (std::int64_t power = 1;; power *= 10) {
        for (const std::int64_t factor : std::array<std::int64_t, 3>{1, 2, 5}) {
            if (power * factor > maximum) return step;
            step = power * factor;
            if (step >= least) return step;
        }
        if (power == largestPower) return step;
    }
}

} // namespace

double fraction(std::int64_t value, std::int64_t maximum) {
    return unitClamped(static_cast<double>(value) / static_cast<double>(std::max<std::int64_t>(maximum, 1)));
}

std::vector<ValueTick> ticks(std::int64_t maximum, std::size_t intervals) {
    maximum = std::max<std::int64_t>(maximum, 1);
    const std::int64_t step =
        roundStep(maximum, static_cast<std::int64_t>(std::clamp<std::size_t>(intervals, 1, 10)));
    std::vector<ValueTick> ticks;
    for (std::int64_t i = 0; i <= maximum / step; ++i) {
        ticks.push_back({i * step, LocaleFormat::compact(i * step), fraction(i * step, maximum)});
    }
    return ticks;
}

} // namespace loadscope::ValueAxis
