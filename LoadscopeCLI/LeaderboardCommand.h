// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// Adds `leaderboard`: the repositories by their newest total.
void addLeaderboardCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
