// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/ScanReport.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"

#include <algorithm>
#include <utility>

namespace loadscope {

std::vector<InstructionFileEstimate> ScanReport::filesLargestFirst() const {
    std::vector<InstructionFileEstimate> sorted = files();
    std::sort(sorted.begin(), sorted.end(), [](const auto& left, const auto& right) {
        return left.estimatedTokens != right.estimatedTokens ? left.estimatedTokens > right.estimatedTokens
                                                             : left.path < right.path;
    });
    return sorted;
}

double ScanReport::categoryShare(const SlabAttribution& row) const {
    return InstructionFileShare::fraction(row.tokens, total);
}

ScanReport ScanReportBuilder::build(const RepoSelection& selection, const ProbeResult& probe,
                                    const InstructionFileSet& files, const CodexScanOutcome& codex) {
    AttributionOutcome outcome =
        SlabAttributor::attribute(probe.authoritativeTotal, probe.selfReportedSlabs, files.localCategories());
    ScanReport report;
    report.repositoryName = selection.displayName;
    report.repositoryPath = selection.path;
    report.total = probe.authoritativeTotal;
    report.totalSource = probe.totalSource;
    report.sessionID = probe.sessionID;
    report.resolvedCLIPath = probe.resolvedCLIPath;
    report.duration = probe.duration;
    report.rows = std::move(outcome.rows);
    report.fileSet = files;
    report.band = OpinionBands::band(probe.authoritativeTotal, probe.contextWindow);
    report.contextWindow = probe.contextWindow;
    report.remainder = outcome.remainder;
    report.overAttributed = outcome.overAttributed;
    report.categoriesSelfReported = outcome.categoriesSelfReported;
    report.codex = codex;
    report.conditions = probe.conditions;
    return report;
}

} // namespace loadscope
