// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

/// Asks the user's login shell, which knows a search path that a program started from the desktop does not.
namespace loadscope::LoginShell {

/// "/bin/zsh" when it is there, else the user's own shell from the password database, else "/bin/sh".
[[nodiscard]] std::string path();

/// Standard output of `shell -lc command`, run with the application's own environment and folder; nothing
/// when it cannot be started, exits with another status than 0, takes longer than `timeoutSeconds` or prints
/// something that is not UTF-8. Blocking, not cancellable; bounded by the time-out, `killGraceSeconds` and
/// two seconds for the reader. Not run while a `Closing` lives.
[[nodiscard]] std::optional<std::string> output(const std::string& shell, const std::string& command,
                                                double timeoutSeconds, double killGraceSeconds);

/// The end of the program: while one lives, lookups under way are killed and new ones find nothing, so that
/// nobody waits for a shell whose start-up files hang. May be made on any thread; only one at a time.
class Closing {
public:
    Closing();
    ~Closing();
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
};

} // namespace loadscope::LoginShell
