// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

namespace CLI {
class App;
}

namespace loadscope {

/// Adds `scan`: measures one folder. The exit code arrives in `exitCode`, which must outlive the app.
void addScanCommand(CLI::App& app, ExitCode& exitCode);

} // namespace loadscope
