// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/ScanReport.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"

#include <algorithm>
#include <utility>

namespace loadscope {

std::vector<InstructionFileEstimate> ScanReport::filesLargestFirst() const {
    struct Entry {
        std::int64_t tokens;
        InstructionFileEstimate file;
    };
    std::vector<Entry> entries;
    for (InstructionFileEstimate& file : files()) {
        const std::int64_t tokens = shownTokens(file).tokens;
        entries.push_back({tokens, std::move(file)});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return left.tokens != right.tokens ? left.tokens > right.tokens : left.file.path < right.file.path;
    });
    std::vector<InstructionFileEstimate> sorted;
    sorted.reserve(entries.size());
    for (Entry& entry : entries)
        sorted.push_back(std::move(entry.file));
    return sorted;
}

std::optional<PreciseCount> ScanReport::reportedTokens(const InstructionFileEstimate& file) const {
    const auto found = memoryFiles.reported.find(file.path);
    return found == memoryFiles.reported.end() ? std::nullopt : std::optional(found->second);
}

PreciseCount ScanReport::shownTokens(const InstructionFileEstimate& file) const {
    return reportedTokens(file).value_or(PreciseCount{file.estimatedTokens, CountPrecision::about});
}

double ScanReport::categoryShare(const SlabAttribution& row) const {
    return InstructionFileShare::fraction(row.tokens, total);
}

ScanReport ScanReportBuilder::build(const RepoSelection& selection, const ProbeResult& probe,
                                    const InstructionFileSet& files, const CodexScanOutcome& codex,
                                    const MemoryFileMatcher::PathResolver& resolver) {
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
    report.categories = SlabAttributor::merged(probe.selfReportedSlabs);
    report.details = probe.details;
    report.memoryFiles = MemoryFileMatcher::match(probe.details, files, selection.path, resolver);
    return report;
}

} // namespace loadscope
