// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

/// Starts a program in a session of its own: with nothing to read, default signals, and no descriptor but its
/// standard ones. Thread-safe.
namespace loadscope::Spawn {

struct Request {
    const std::string& executable;
    char* const* arguments = nullptr;         ///< the first is its name; null behind the last
    char* const* environment = nullptr;       ///< likewise
    int output = -1;                          ///< above the standard three
    int error = -1;                           ///< likewise; what is written is dropped when it is negative
    const std::optional<std::string>& folder; ///< to start in
};

/// Starts it and sets `identifier`; else the error number of what failed. Where the C library can do all of
/// it in one call that call does, else `byFork`.
[[nodiscard]] int start(const Request& request, pid_t& identifier);

/// The same for C libraries that cannot change the folder or close descriptors for a program that they start:
/// those before glibc 2.34. Costs a copy of this process's page tables.
[[nodiscard]] int byFork(const Request& request, pid_t& identifier);

} // namespace loadscope::Spawn
