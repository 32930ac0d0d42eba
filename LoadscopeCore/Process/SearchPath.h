// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Platform/UserFolders.h"

#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Where the search path of the tool came from.
enum class SearchPathSource {
    inherited,         ///< from whoever started this program: a terminal, say
    shell,             ///< the user's shell was asked
    shellDidNotAnswer, ///< it was asked in vain: the path is the inherited one
};

/// The folders in which the tools, and what they start, are looked for: those of this program's own `PATH`
/// until the user's shell has been asked, which knows more of them than a program that was started from the
/// desktop. One for the whole program; may be used on any thread.
namespace SearchPath {

inline constexpr double shellTimeoutSeconds = 5.0;
inline constexpr double shellKillGraceSeconds = 1.0;

/// Whether a terminal started this program: one of its standard streams is one, or it has a controlling one.
[[nodiscard]] bool wasStartedFromTerminal();

/// Asks the user's shell, as an interactive login shell without a terminal, and remembers what it says. An
/// earlier answer stays when it says nothing. Blocking, bounded by the time-out and the grace periods. Throws
/// `CancellationError` when `stop` was requested meanwhile.
void askShell(StopToken stop);

[[nodiscard]] SearchPathSource source();

/// The value of `PATH`; empty when there is none.
[[nodiscard]] std::string current();

/// The absolute folders of a value of `PATH`, in order, each once. Relative ones mean another folder wherever
/// one happens to be.
[[nodiscard]] std::vector<std::string> folders(std::string_view path);

/// The environment from which that of a child which runs `executable` is made: this program's own, and once
/// the shell was asked its path, with the executable's own folder in front.
[[nodiscard]] Environment environmentFor(const std::string& executable);

/// Back to this program's own `PATH`.
void forgetShell();

} // namespace SearchPath
} // namespace loadscope
