// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"
#include "LoadscopeCLI/Terminal.h"

#include <string>

namespace loadscope {

/// Tells people why something failed: a headline and, unless empty, more lines below it.
void showFailure(Terminal& errors, const std::string& headline, const std::string& detail);

/// Says that a signal ended the command.
[[nodiscard]] ExitCode showInterrupted(Terminal& errors, const std::string& what);

/// Writes a result and says so when it could not be written. Returns `exitCode` if it was.
[[nodiscard]] ExitCode writeResult(const std::string& text, ExitCode exitCode = ExitCode::success);

} // namespace loadscope
