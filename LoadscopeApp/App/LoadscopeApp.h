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
