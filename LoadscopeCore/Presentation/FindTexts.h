// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

/// What is told while rows are looked for.
namespace loadscope::FindTexts {

inline constexpr const char* purpose = "Find by name";
inline constexpr const char* close = "Close the search";
inline constexpr const char* nothingOpen = "No list is open here.";

/// "3 of 532 rows", or that no name has it.
[[nodiscard]] std::string count(std::size_t found, std::size_t rows);

} // namespace loadscope::FindTexts
