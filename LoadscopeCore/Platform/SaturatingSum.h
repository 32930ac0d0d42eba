// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

namespace loadscope {

/// Adds up counts that come from outside. Exact for any mix of signs and for more numbers than memory can
/// hold; only reading the value clamps it to 64 bits, so that the order of adding never matters.
class SaturatingSum {
public:
    constexpr void add(std::int64_t number) { exact_ += number; }
    constexpr void subtract(std::int64_t number) { exact_ -= number; }

    [[nodiscard]] constexpr std::int64_t value() const {
        using Limits = std::numeric_limits<std::int64_t>;
        if (exact_ > Limits::max()) return Limits::max();
        if (exact_ < Limits::min()) return Limits::min();
        return static_cast<std::int64_t>(exact_);
    }

private:
    __extension__ using Wide = __int128;
    Wide exact_ = 0;
};

} // namespace loadscope
