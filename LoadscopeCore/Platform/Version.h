// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The version of this program: one number for the command, the window and every package.
namespace loadscope::Version {

/// Such as "0.1.0".
[[nodiscard]] const char* number();

/// The libraries that the core runs with, one per line, such as "ICU 72.1\nnlohmann-json 3.11.2\n".
[[nodiscard]] std::string libraries();

} // namespace loadscope::Version
