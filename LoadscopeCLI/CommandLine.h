// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

namespace loadscope {

/// Runs the command `loadscope` with the arguments of `main` and returns its exit code. Never throws.
int runCommandLine(int argumentCount, const char* const* arguments);

} // namespace loadscope
