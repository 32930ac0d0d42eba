// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/ScanHistory.h"

#include <string>
#include <string_view>
#include <vector>

/// The history for other programs: spreadsheets and scripts. Texts that are not UTF-8 are repaired.
namespace loadscope::ScanHistoryExport {

/// A table as RFC 4180 writes it, one line per record below a header. A text that a spreadsheet would take
/// for a formula gets an apostrophe in front.
[[nodiscard]] std::string csv(const std::vector<RecordedScan>& scans);

/// One object with "scans", each as in the history file and with its "band". Indented, without a line feed at
/// the end.
[[nodiscard]] std::string json(const std::vector<RecordedScan>& scans);

/// One object with the "tool" and its "entries" in the order given; what an entry lacks is null, as "trend"
/// and "delta" are between two models. Indented,
/// without a line feed at the end.
[[nodiscard]] std::string leaderboardJson(std::string_view tool,
                                          const std::vector<LeaderboardEntry>& entries);

} // namespace loadscope::ScanHistoryExport
