// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// Lets a closed window take its process with it, whatever its workers are at: a folder on a share that has
/// gone away may hold one of them for ever, and nothing ends that but the end of the process.
namespace loadscope::ClosingLimit {

/// From now on the process has a second to end by itself; then its children are killed and it ends with
/// `exitCode`.
void begin(int exitCode);

} // namespace loadscope::ClosingLimit
