// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

/// Asks the user's shell, which knows a search path that a program started from the desktop does not. Every
/// lookup is blocking, bounded by its time-out, its `killGraceSeconds` and two seconds for the reader, and
/// honours the `ProcessCancellation` that is current on this thread: a cancel kills the shell at once, and
/// the lookup throws `CancellationError`.
namespace loadscope::LoginShell {

/// "/bin/zsh" when it is there, else the user's own shell from the password database, else "/bin/sh".
[[nodiscard]] std::string path();

/// The shell that the user's terminals start: $SHELL when that is an executable, else the one of the password
/// database, else "/bin/zsh", else "/bin/sh".
[[nodiscard]] std::string userShell();

/// Standard output of `shell -lc command`, run with the application's own environment and folder; nothing
/// when it cannot be started, exits with another status than 0, takes longer than `timeoutSeconds` or prints
/// something that is not UTF-8.
[[nodiscard]] std::optional<std::string> output(const std::string& shell, const std::string& command,
                                                double timeoutSeconds, double killGraceSeconds);

enum class Start {
    login,      ///< reads the start-up files of a login
    interactive ///< those and the ones of a terminal, though it has none
};

/// What `command` prints, found between two markers: what start-up files print before and after it does not
/// count, nor does the exit status. Nothing when the shell cannot be started, takes longer than
/// `timeoutSeconds`, does not come to the end of the command or answers something that is not UTF-8.
[[nodiscard]] std::optional<std::string> answer(const std::string& shell, Start start,
                                                const std::string& command, double timeoutSeconds,
                                                double killGraceSeconds);

} // namespace loadscope::LoginShell
