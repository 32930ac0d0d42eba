// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <functional>
#include <optional>
#include <string>

/// Checks, before any tool is started, that a folder can be listed.
namespace loadscope::FolderAccess {

using Check = std::function<std::optional<ProbeError>(const std::string& repository)>;

/// Nothing when the folder can be listed, else `RepositoryUnreadable` with its path. Blocking: call it on a
/// worker thread.
[[nodiscard]] std::optional<ProbeError> check(const std::string& repository);

/// Nothing when something is there, whatever it is and whether or not it may be read, else
/// `RepositoryUnreadable`. Blocking: call it on a worker thread.
[[nodiscard]] std::optional<ProbeError> checkPresence(const std::string& path);

/// The answer of `check`, or of another question, made on a thread of its own: a folder on a share that has
/// gone away may never answer, and nothing ends that. Throws `CancellationError` as soon as `stop` is
/// requested, and leaves the thread to itself then.
[[nodiscard]] std::optional<ProbeError> checkDetached(const std::string& repository, const StopToken& stop,
                                                      Check isListed = check);

} // namespace loadscope::FolderAccess
