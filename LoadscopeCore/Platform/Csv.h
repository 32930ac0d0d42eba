// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/// Tables for spreadsheets, by RFC 4180.
namespace loadscope::Csv {

/// A cell of text: repaired UTF-8, harmless where a spreadsheet would take it for a formula, quoted where the
/// format asks for it.
[[nodiscard]] std::string cell(std::string_view text);

/// One line of cells, with its end.
[[nodiscard]] std::string line(std::initializer_list<std::string> texts);

} // namespace loadscope::Csv
