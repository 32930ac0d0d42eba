// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace loadscope {

/// How one measurement of Claude Code is to be made: what the user chose, and what is known about the
/// sign-in before it starts. Plain value; the defaults are those of a scan without any option.
struct ProbeSettings {
    static constexpr const char* defaultModel = "sonnet";

    std::string model = defaultModel; ///< handed to the tool as it is
    bool waitsForServers = false;     ///< the tool waits for servers that start slowly
    bool keepsEnvironment = false;    ///< sign-in variables reach the tool instead of being removed
    bool acceptsEstimate = false;     ///< a report that the tool estimated is taken, marked as such
    bool signInVerified = false;      ///< the sign-in check answered that the user is signed in

    bool operator==(const ProbeSettings&) const = default;
};

} // namespace loadscope
