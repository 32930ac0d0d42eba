// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace loadscope {

struct ValueTick {
    std::int64_t value = 0;
    std::string label;   ///< compact, for example 20K
    double fraction = 0; ///< of the axis, from 0
    bool operator==(const ValueTick&) const = default;
};

/// An axis of tokens from 0 to a maximum, divided by round numbers.
namespace ValueAxis {

/// Ticks at multiples of 1, 2 or 5 times a power of ten, in at most `intervals` (1 to 10) steps. No label
/// needs more than two significant digits, which is all that compact notation shows. A maximum below 1 counts
/// as 1.
[[nodiscard]] std::vector<ValueTick> ticks(std::int64_t maximum, std::size_t intervals);

/// Place of a value on the axis, within 0 and 1.
[[nodiscard]] double fraction(std::int64_t value, std::int64_t maximum);

} // namespace ValueAxis
} // namespace loadscope
