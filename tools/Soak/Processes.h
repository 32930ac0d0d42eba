// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <sys/types.h>
#include <vector>

/// What the system knows of this process and of those that it started.
namespace loadscope::soak::Processes {

struct Usage {
    int descriptors = 0;
    int threads = 0;
    std::int64_t residentBytes = 0;
};

/// Memory that the allocator keeps for later is given back first.
[[nodiscard]] Usage usage();

/// The targets of the open descriptors, sorted, one a line.
[[nodiscard]] std::string descriptorList();

struct Stray {
    pid_t process = 0;
    std::string commandLine; ///< empty for a zombie
    bool isZombie = false;
};

/// Zombies that are our own children, and processes that were started in the home folder `home`; without this
/// process and without `expected`.
[[nodiscard]] std::vector<Stray> strays(const std::string& home, const std::set<pid_t>& expected);

} // namespace loadscope::soak::Processes
