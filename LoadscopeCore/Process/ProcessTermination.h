// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

namespace loadscope {

class ChildProcess;

/// Ends a child and what it started in its group.
namespace ProcessTermination {

inline constexpr double checkIntervalSeconds = 0.05;
/// How long the rest of the group may outlive the child before it is killed.
inline constexpr double groupSettleSeconds = 0.2;

/// Asks the child's group to terminate and kills it when the child still runs after `graceSeconds`. Blocks
/// for at most that long and a check interval; when the child ends sooner, what is left of its group is
/// killed shortly after. Nothing when the child has ended.
void terminateThenKill(ChildProcess& child, double graceSeconds);

} // namespace ProcessTermination
} // namespace loadscope
