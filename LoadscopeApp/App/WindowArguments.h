// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace loadscope {

/// What the command line of the window asks for.
struct WindowArguments {
    /// Exit codes of the process.
    enum ExitCode { done = 0, noDisplay = 1, wrongUsage = 2 };

    std::optional<std::string> folder; ///< absolute
    bool choosesRecent = false;        ///< the folder that was scanned last, if there is one
    std::optional<std::string> text;   ///< to print instead of opening the window
    ExitCode exitCode = done;          ///< with which to end after printing

    /// Reads the arguments that the toolkit has left over.
    [[nodiscard]] static WindowArguments parse(int argumentCount, char** arguments);
};

} // namespace loadscope
