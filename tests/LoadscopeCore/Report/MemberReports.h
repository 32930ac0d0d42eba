// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <string>
#include <utility>

namespace loadscope::testing {

/// A report of the tool: total, window and categories as "name=count" lines, then tables as they are.
[[nodiscard]] inline std::string contextText(const std::string& total,
                                             const std::vector<std::pair<std::string, std::string>>& rows,
                                             const std::string& tables) {
    std::string text = "**Model:** claude-sonnet-5\n**Tokens:** " + total +
                       " / 200k (1%)\n\n### Estimated usage by category\n\n"
                       "| Category | Tokens | Percentage |\n|---|---|---|\n";
    for (const auto& [name, count] : rows)
        text.append("| ").append(name).append(" | ").append(count).append(" | 1% |\n");
    return text + "\n" + tables;
}

/// The report of a scan of /home/dev/src/app that found `files`.
[[nodiscard]] inline ScanReport reportOf(const std::string& contextText,
                                         const InstructionFileSet& files = {}) {
    ProbeResult probe;
    probe.details = ContextDetailsParser::parse(contextText);
    probe.selfReportedSlabs = ContextBreakdownParser::categories(contextText);
    if (const auto totals = ContextBreakdownParser::reportedTotals(contextText)) {
        probe.authoritativeTotal = totals->total;
        probe.contextWindow = totals->window;
    }
    return ScanReportBuilder::build(RepoSelection("/home/dev/src/app"), probe, files,
                                    CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason));
}

inline const std::string toolsHead = "### MCP Tools\n\n| Tool | Server | Tokens |\n|---|---|---|\n";
inline const std::string agentsHead =
    "### Custom Agents\n\n| Agent Type | Source | Tokens |\n|---|---|---|\n";
inline const std::string filesHead = "### Memory Files\n\n| Type | Path | Tokens |\n|---|---|---|\n";
inline const std::string skillsHead = "### Skills\n\n| Skill | Source | Tokens |\n|---|---|---|\n";

} // namespace loadscope::testing
