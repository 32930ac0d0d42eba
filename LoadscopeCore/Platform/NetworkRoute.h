// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// Whether this computer could reach others at all.
namespace loadscope::NetworkRoute {

/// True when the system knows a way to addresses beyond its own networks. Looks into the routing table only:
/// nothing is sent and nobody is asked, so a connection that is there but dead counts as one.
[[nodiscard]] bool exists();

} // namespace loadscope::NetworkRoute
