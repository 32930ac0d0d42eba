// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"
#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Which rows make a report's rows exceed its total.
enum class OverAttributionSource { cliReported, localEstimate, combined };

[[nodiscard]] std::string rawValue(OverAttributionSource source);

/// The sentences that explain a report. Pure functions; numbers are written in the user's locale. A total
/// that the tool estimated is called an estimate in each of them.
namespace ScanPresentation {

inline constexpr const char* splitsEstimateNote =
    "The category totals below are reported by Claude Code's `/context`; the file splits are estimates "
    "derived locally from file sizes.";

inline constexpr const char* completeLabel = "Scan complete";

/// "Heavy startup context", and that it is an estimate.
[[nodiscard]] std::string headline(const ScanReport& report);

/// Where the rows of the breakdown come from and what their shares are of.
[[nodiscard]] std::string breakdownDetail(const ScanReport& report);

/// When the scan was made, for a report that is shown again; nothing when it does not tell.
[[nodiscard]] std::optional<std::string> measuredLine(const ScanReport& report);

/// "12.3 seconds".
[[nodiscard]] std::string durationText(const ScanReport& report);

/// What stands below the total: who measured it, or that it is an estimate.
[[nodiscard]] std::string totalCaption(const ScanReport& report);

[[nodiscard]] std::string measurementNote(const ScanReport& report);
[[nodiscard]] std::string totalSourceLine(const ScanReport& report);
[[nodiscard]] std::optional<std::string> windowShareLine(const ScanReport& report);
[[nodiscard]] std::string bandVerdictLine(const ScanReport& report);

/// Where a row of the breakdown has its tokens from.
[[nodiscard]] std::string sourceLabel(const ScanReport& report, Provenance provenance);

/// Exactly six lines.
[[nodiscard]] std::vector<std::string> summaryLines(const ScanReport& report);

/// What "Copy Summary" puts on the clipboard: the six lines, an empty line and the measurement note.
[[nodiscard]] std::string copyableSummary(const ScanReport& report);

[[nodiscard]] std::optional<std::string> unreadableFilesNote(const ScanReport& report);
[[nodiscard]] OverAttributionSource overAttributionSource(const ScanReport& report);
[[nodiscard]] std::optional<std::string> overAttributionNote(const ScanReport& report);
[[nodiscard]] std::optional<std::string> unreportedCategoryFilesNote(const ScanReport& report);

} // namespace ScanPresentation

/// The sentences that explain a Codex measurement.
namespace CodexPresentation {

inline constexpr const char* toolName = "Codex CLI";
inline constexpr const char* measurementNote =
    "Measured: one `codex exec` session started in this folder; the number includes the probe prompt.";
inline constexpr const char* noBreakdownNote =
    "Codex reports a total and a context window, not a breakdown, so no categories are shown for it.";
inline constexpr const char* recordNote =
    "This version of Codex keeps a record of the session: it does not know the flag against it.";

[[nodiscard]] OpinionBand band(const CodexProbeResult& result);
[[nodiscard]] std::optional<std::string> windowShareLine(const CodexProbeResult& result);
[[nodiscard]] std::string summaryLine(const CodexScanOutcome& outcome);

/// What there is to know of a measured session beside its numbers.
[[nodiscard]] std::optional<std::string> note(const CodexScanOutcome& outcome);

/// Version and model, as far as Codex tells them.
[[nodiscard]] std::optional<std::string> versionLine(const CodexScanOutcome& outcome);

} // namespace CodexPresentation

/// Labels of recorded scans.
namespace RecordedScanPresentation {

inline constexpr const char* claudeToolLabel = "Claude Code";
inline constexpr const char* codexToolLabel = "Codex";

/// "Codex" for exactly "codex", "Claude Code" for anything else.
[[nodiscard]] std::string labelForTool(std::string_view tool);
[[nodiscard]] std::string toolLabel(const RecordedScan& scan);
[[nodiscard]] std::optional<std::string> windowShareLine(const RecordedScan& scan);

/// The window share line when there is one, else the range of the scan's band.
[[nodiscard]] std::string bandScaleCaption(const RecordedScan& scan);

/// The two largest categories in short and how many more there are; empty without any.
[[nodiscard]] std::string largestCategories(const RecordedScan& scan);

} // namespace RecordedScanPresentation
} // namespace loadscope
