// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the window tells of itself when it is asked for help.
namespace loadscope::HelpTexts {

/// A key of the window, or several that do the same, in the toolkit's portable form, and what it does.
struct Shortcut {
    std::vector<std::string_view> keys;
    std::string_view action;
};

/// In the order in which they are shown.
[[nodiscard]] const std::vector<Shortcut>& shortcuts();

/// The pages of the guide: the name of the file without its extension, and its title.
struct GuidePage {
    std::string_view name;
    std::string_view title;
};
[[nodiscard]] const std::vector<GuidePage>& guidePages();

/// "Loadscope 0.1.0"
[[nodiscard]] std::string aboutTitle();

/// What to put into a report of a fault: this program's version and those of its libraries, one per line.
/// `qtVersion` is that of the window's toolkit.
[[nodiscard]] std::string versions(std::string_view qtVersion);

} // namespace loadscope::HelpTexts
