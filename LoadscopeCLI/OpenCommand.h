// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

#include <optional>
#include <string>
namespace CLI {
class App;
}

namespace loadscope {

/// Adds `open`: the window, with a folder chosen.
void addOpenCommand(CLI::App& app, ExitCode& exitCode);

/// Whether a window could be shown here.
[[nodiscard]] bool hasDisplay();

/// The program of the window: beside this one, else on the search path.
[[nodiscard]] std::optional<std::string> findWindowProgram();

/// Replaces this process by the window; returns only when it could not be started.
void startWindow(const std::string& program, const std::optional<std::string>& folder);

} // namespace loadscope
