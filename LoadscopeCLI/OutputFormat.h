// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace loadscope {

/// In which form a command writes its result.
enum class OutputFormat { text, markdown, json, junit };

/// Adds --format with these forms, of which the first is the default, and, where `withFlag`, --json for
/// `--format json`. `format` must outlive the command.
void addFormatOption(CLI::App& command, OutputFormat& format, const std::vector<OutputFormat>& formats,
                     bool withFlag);

} // namespace loadscope
