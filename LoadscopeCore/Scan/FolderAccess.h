// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

#include <optional>
#include <string>

/// Checks, before any tool is started, that a folder can be listed.
namespace loadscope::FolderAccess {

/// Nothing when the folder can be listed, else `RepositoryUnreadable` with its path. Blocking: call it on a
/// worker thread.
[[nodiscard]] std::optional<ProbeError> check(const std::string& repository);

} // namespace loadscope::FolderAccess
