// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

/// The share of one instruction file's estimate in the measured total.
namespace loadscope::InstructionFileShare {

/// 0 for a total below 1, else tokens ÷ total within 0 and 1.
[[nodiscard]] double fraction(std::int64_t tokens, std::int64_t total);

/// For example "12.5% of total".
[[nodiscard]] std::string text(std::int64_t tokens, std::int64_t total);

} // namespace loadscope::InstructionFileShare
