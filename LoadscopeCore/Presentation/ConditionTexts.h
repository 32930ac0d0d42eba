// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/ScanHistory.h"

#include <span>
#include <string>
#include <vector>

/// How the version and the model of a tool are told: what tells two scans apart that cannot be compared.
/// Names of tools and models come from outside; what is told here may be shown as it is.
namespace loadscope::ConditionTexts {

/// Stands where the difference from a scan with another model would.
inline constexpr const char* otherModel = "other model";

/// Stands behind the date of a record that a clock which was wrong has dated.
inline constexpr const char* datedAhead = " (in the future)";

/// For a mark in a chart: the new version, or which model became which.
[[nodiscard]] std::string label(const ScanChange& change);

/// The same where there is less room.
[[nodiscard]] std::string shortLabel(const ScanChange& change);

/// The version and the model of a scan, and from what they changed: one line, or two when something changed;
/// none when neither is known.
[[nodiscard]] std::vector<std::string> lines(const RecordedScan& scan, std::span<const ScanChange> changes);

} // namespace loadscope::ConditionTexts
