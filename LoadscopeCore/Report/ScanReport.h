// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/CodexProbe/CodexInstructions.h"
#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"
#include "LoadscopeCore/Instructions/Attribution.h"
#include "LoadscopeCore/Instructions/InstructionFileSet.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/UUID.h"
#include "LoadscopeCore/Report/ChangeableGroup.h"
#include "LoadscopeCore/Report/MemoryFiles.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The complete, immutable result of one scan. Plain value; what a page shows beyond it is derived.
struct ScanReport {
    static constexpr const char* repositoryCategoryName = "Repository instructions";
    static constexpr const char* inheritedCategoryName = "Inherited project instructions";
    static constexpr const char* personalCategoryName = "Personal instructions";

    std::string repositoryName;
    std::string repositoryPath;
    std::int64_t total = 0; ///< tokens, as the tool reported them
    TotalSource totalSource = TotalSource::contextCommand;
    std::string sessionID;
    std::string resolvedCLIPath;
    double duration = 0; ///< seconds that the Claude Code probe took
    std::vector<SlabAttribution> rows;
    InstructionFileSet fileSet;
    OpinionBand band = OpinionBand::lean;
    std::optional<std::int64_t> contextWindow;
    std::int64_t remainder = 0;
    bool overAttributed = false;
    bool categoriesSelfReported = false;
    CodexScanOutcome codex = CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason);
    MeasurementConditions conditions{};               ///< of the Claude Code measurement
    std::vector<SelfReportedSlab> categories{};       ///< as the tool reported them, equal names joined
    ContextDetails details{};                         ///< what the tool's report lists below its categories
    MemoryFiles memoryFiles{};                        ///< that list beside the files that were found
    std::vector<ChangeableGroup> largestChangeable{}; ///< at most three, largest first
    std::vector<std::string> missingServers{};        ///< configured ones that the tool does not list
    std::optional<CodexInstructions>
        codexInstructions{};         ///< what Codex would read, known from the disk alone
    std::optional<UUID> id{};        ///< that of its record, recorded or not
    std::optional<Timestamp> date{}; ///< when the scan ended

    /// Every instruction file: the repository's, then the inherited, then the personal ones.
    [[nodiscard]] std::vector<InstructionFileEstimate> files() const { return fileSet.allFiles(); }
    [[nodiscard]] const std::vector<std::string>& unreadablePaths() const { return fileSet.unreadablePaths; }

    /// The tool's own count of a file that was found, if it lists it.
    [[nodiscard]] std::optional<PreciseCount> reportedTokens(const InstructionFileEstimate& file) const;

    /// The tool's own count of a file, else the estimate by its size.
    [[nodiscard]] PreciseCount shownTokens(const InstructionFileEstimate& file) const;

    /// The files by the tokens that are shown for them descending, ties by path ascending.
    [[nodiscard]] std::vector<InstructionFileEstimate> filesLargestFirst() const;

    /// The row's share of the total, within 0 and 1; 0 for a total below 1.
    [[nodiscard]] double categoryShare(const SlabAttribution& row) const;

    bool operator==(const ScanReport&) const = default;
};

namespace ScanReportBuilder {

/// Attributes the total into rows and bands it. Cannot fail; pure unless `resolver`, by which the tool's
/// memory files are compared with those that were found, asks the file system.
[[nodiscard]] ScanReport build(const RepoSelection& selection, const ProbeResult& probe,
                               const InstructionFileSet& files, const CodexScanOutcome& codex,
                               const MemoryFileMatcher::PathResolver& resolver = FilePath::standardized);

} // namespace ScanReportBuilder
} // namespace loadscope
