// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// `loadscope diff`: what changed between two scans of a folder, or between two kept reports.
void addDiffCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
