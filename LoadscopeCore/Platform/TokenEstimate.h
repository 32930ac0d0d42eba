// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// How many tokens a text has by its size alone.
namespace loadscope::TokenEstimate {

inline constexpr std::int64_t bytesPerToken = 4;

/// Four bytes per token, rounded up; 0 below one byte.
[[nodiscard]] constexpr std::int64_t ofBytes(std::int64_t byteCount) {
    if (byteCount < 1) return 0;
    return (byteCount - 1) / bytesPerToken + 1;
}

} // namespace loadscope::TokenEstimate
