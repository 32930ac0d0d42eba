// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace loadscope {

/// The double nearest to a decimal number such as 12, 1.5, .5 or -2e3, whatever the locale; beyond what a
/// double holds an infinity, below it 0. Nothing when the text holds anything else. Not every platform's
/// library reads doubles.
[[nodiscard]] std::optional<double> decimalNumber(std::string_view text);

} // namespace loadscope
