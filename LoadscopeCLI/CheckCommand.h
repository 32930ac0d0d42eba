// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// `loadscope check`: what can be known of a folder without starting any tool.
void addCheckCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
