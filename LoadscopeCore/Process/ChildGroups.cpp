// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/ChildGroups.h"

#include <array>
#include <atomic>
#include <csignal>

namespace loadscope::ChildGroups {
namespace {

using Slot = std::atomic<pid_t>;
static_assert(Slot::is_always_lock_free, "a handler reads it");

constinit std::array<Slot, 256> groups{};

/// Puts `after` in the place of the first `before`.
void exchange(pid_t before, pid_t after) noexcept {
    for (Slot& slot : groups) {
        pid_t expected = before;
        if (slot.compare_exchange_strong(expected, after)) return;
    }
}

} // namespace

void add(pid_t group) noexcept { exchange(0, group); }

void remove(pid_t group) noexcept { exchange(group, 0); }

void killAll() noexcept {
    for (const Slot& slot : groups)
        if (const pid_t group = slot.load(); group > 0) kill(-group, SIGKILL);
}

} // namespace loadscope::ChildGroups
