// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// Adds `status`: are the tools installed and signed in.
void addStatusCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
