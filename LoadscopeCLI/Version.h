// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace loadscope {

/// The version of Loadscope and of the libraries that it uses, one per line.
[[nodiscard]] std::string versionText();

} // namespace loadscope
