// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/ExitCode.h"

#include <string>
#include <vector>

namespace loadscope {

/// `loadscope history import`: takes the records of reports and histories that are not there yet, and tells
/// how many. Ends with a failure when a file could not be read; the others are taken all the same.
[[nodiscard]] ExitCode importHistory(const std::vector<std::string>& files);

/// `loadscope history export`: writes the whole history as a history file, to the standard output when
/// `file` is empty. An empty history replaces no file.
[[nodiscard]] ExitCode exportHistory(const std::string& file);

} // namespace loadscope
