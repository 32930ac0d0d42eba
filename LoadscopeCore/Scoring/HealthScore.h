// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The illustrative score: how much of the band scale a total leaves free.
namespace loadscope::HealthScore {

/// 0 to 100.
[[nodiscard]] int value(std::int64_t total);

} // namespace loadscope::HealthScore
