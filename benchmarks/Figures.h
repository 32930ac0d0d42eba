// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <vector>

/// What the tables of the benchmarks are written with.
namespace loadscope::Figures {

/// The upper one of the two in the middle; `values` must not be empty.
[[nodiscard]] inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// With so many decimals, the same in every locale.
[[nodiscard]] inline std::string number(double value, int decimals = 2) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals);
    return {buffer.data(), end.ptr};
}

} // namespace loadscope::Figures
