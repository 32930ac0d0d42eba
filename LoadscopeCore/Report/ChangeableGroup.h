// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"

#include <string>

namespace loadscope {

/// A part of the total that a person can switch off or shorten: a server of their settings, an instruction
/// file, a skill or an agent of their own.
struct ChangeableGroup {
    enum class Kind { server, instructionFile, skill, agent };

    Kind kind = Kind::server;
    std::string name; ///< as the settings spell it; the path of an instruction file
    PreciseCount count{};
    bool isEstimatedBySize = false; ///< else the tool's own count
    std::string file{};             ///< that names or holds it; empty when none was found
    std::string scope{};            ///< of a server's setting, in the tool's words

    bool operator==(const ChangeableGroup&) const = default;
};

} // namespace loadscope
