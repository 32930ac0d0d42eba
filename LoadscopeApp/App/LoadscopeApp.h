// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace loadscope {

/// The application: its settings, its models and its one window, in the order in which they depend on each
/// other. Only one may exist.
class LoadscopeApp {
public:
    /// Exit codes of the process.
    enum ExitCode { done = 0, noDisplay = 1, wrongUsage = 2 };

    /// What the command line asks for.
    struct Arguments {
        std::optional<std::string> folder; ///< absolute
        std::optional<std::string> text;   ///< to print instead of opening the window
        ExitCode exitCode = done;          ///< with which to end after printing
    };
    /// Reads the arguments that the toolkit has left over.
    [[nodiscard]] static Arguments parse(int argumentCount, char** arguments);

    /// Ends the process with one clear message when there is no display to open a window on.
    LoadscopeApp(int& argumentCount, char** arguments);
    ~LoadscopeApp();
    LoadscopeApp(const LoadscopeApp&) = delete;
    LoadscopeApp& operator=(const LoadscopeApp&) = delete;

    /// Shows the window and runs until it is closed. A scan that is under way then is stopped and its child
    /// process ended before this returns.
    int run(const std::optional<std::string>& folder);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace loadscope
