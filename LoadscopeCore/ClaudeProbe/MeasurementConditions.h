// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeSettings.h"
#include "LoadscopeCore/Process/SearchPath.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// Space that a report counts into its total although nothing is loaded there.
struct ReservedSpace {
    std::string name;
    std::int64_t tokens = 0;

    bool operator==(const ReservedSpace&) const = default;
};

/// Under which conditions a total was measured: what makes two totals comparable, and what a reader must know
/// to trust one. Names of variables only, never values.
struct MeasurementConditions {
    std::string requestedModel = ProbeSettings::defaultModel;
    std::optional<std::string> model{};       ///< as the tool's report names it
    std::optional<std::string> toolVersion{}; ///< for example "2.1.330"
    bool waitedForServers = false;
    bool keptEnvironment = false;
    std::vector<std::string> removedVariables{}; ///< sorted names that were kept from the tool
    std::vector<std::string> keptVariables{};    ///< sorted names of the same kind that reached it
    SearchPathSource pathSource = SearchPathSource::inherited;
    bool isEstimate = false;                 ///< the tool estimated, and the user takes it all the same
    bool mayBeEstimate = false;              ///< counting may have failed, and the report cannot tell
    std::optional<ReservedSpace> takenOff{}; ///< subtracted from the total that the report prints

    bool operator==(const MeasurementConditions&) const = default;
};

} // namespace loadscope
