// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"
#include "LoadscopeCLI/ScanOptions.h"

namespace loadscope {

/// Scans several folders and prints one line for each, or the form that was asked for. Blocks until all have
/// ended or a signal has stopped them.
[[nodiscard]] ExitCode scanSeveral(const ScanOptions& options);

} // namespace loadscope
