// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

/// The groups of the children that have not been reaped, so that a program which has to end at once leaves
/// none of them behind. Takes no lock; may be used on any thread.
namespace loadscope::ChildGroups {

/// One too many is not remembered.
void add(pid_t group) noexcept;
void remove(pid_t group) noexcept;

/// Kills every group. May be called by a signal's handler.
void killAll() noexcept;

} // namespace loadscope::ChildGroups
