// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Where the search path came from, as scripts see it: "inherited", "shell" or "shellDidNotAnswer".
[[nodiscard]] std::string_view rawValue(SearchPathSource source);

/// The sentences that say under which conditions a total was measured. Pure functions. Names of models and
/// variables come from outside and stand in them as they are: whoever shows a sentence makes them visible.
namespace ConditionsPresentation {

[[nodiscard]] std::string measurementNote(const MeasurementConditions& conditions);

/// Version, model, search path, environment and servers: one sentence a line, none of them a warning.
[[nodiscard]] std::vector<std::string> lines(const MeasurementConditions& conditions);

[[nodiscard]] std::optional<std::string> estimateNote(const MeasurementConditions& conditions);
[[nodiscard]] std::optional<std::string> mayBeEstimateNote(const MeasurementConditions& conditions);
[[nodiscard]] std::optional<std::string> searchPathNote(const MeasurementConditions& conditions);
[[nodiscard]] std::optional<std::string> reserveNote(const ScanReport& report);

/// For a tool that is signed out: which variables might have signed it in, had they not been removed.
[[nodiscard]] std::optional<std::string> removedSignInNote(const std::vector<std::string>& names);

/// Those of the four notes that apply: what a reader must know to trust the total.
[[nodiscard]] std::vector<std::string> notes(const ScanReport& report);

} // namespace ConditionsPresentation
} // namespace loadscope
