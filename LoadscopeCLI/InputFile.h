// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <variant>

namespace loadscope {

/// A file that the user names on the command line.
namespace InputFile {

inline constexpr const char* standardInput = "-";

struct Unreadable {
    std::string reason; ///< ends a sentence that begins with the file's name: "does not exist."
};

/// The whole of a file, of a pipe, or, for "-", of the standard input; at most 16 MB of it. Waits for a pipe.
[[nodiscard]] std::variant<std::string, Unreadable> read(const std::string& path);

/// What a message calls it.
[[nodiscard]] std::string nameOf(const std::string& path);

} // namespace InputFile
} // namespace loadscope
