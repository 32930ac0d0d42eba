// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// What every fuzz target needs: its input as a text, and a way to report that a property does not hold.
namespace loadscope {

inline std::string_view fuzzInput(const std::uint8_t* bytes, std::size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

inline void require(bool holds) {
    if (!holds) std::abort();
}

} // namespace loadscope
