// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// Adds `history` and `history clear`: the recorded scans.
void addHistoryCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
