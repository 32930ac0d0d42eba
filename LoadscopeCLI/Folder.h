// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace loadscope {

/// The folder that an argument names, absolute; without an argument the current one. Nothing when it is
/// relative to a current folder that is gone.
[[nodiscard]] std::optional<std::string> absoluteFolder(const std::string& argument);

} // namespace loadscope
