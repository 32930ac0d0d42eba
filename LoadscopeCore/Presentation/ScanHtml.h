// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <string>
#include <string_view>

/// A scan as a page to hand on.
namespace loadscope::ScanHtml {

/// For whom the page is made: a browser, or a printer, whose tables come in short pieces with columns of
/// fixed widths, since long ones take it long.
enum class Medium { screen, paper };

/// One file of its own: no scripts, no addresses, nothing to fetch; light or dark as its reader has it. The
/// total, the categories, what is inside, the instruction files and under which conditions it was measured.
/// Whatever names hold is shown as text. Numbers are written in the user's locale.
[[nodiscard]] std::string report(const ScanReport& report, Medium medium = Medium::screen);

/// A text with nothing in it that a reader could take for markup; control characters are written out.
[[nodiscard]] std::string escaped(std::string_view text);

} // namespace loadscope::ScanHtml
