// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/UUID.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Report/ScanReport.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// One category total of a recorded scan.
struct RecordedCategory {
    std::string name;
    std::int64_t tokens = 0;

    bool operator==(const RecordedCategory&) const = default;
};

/// One tool's recorded measurement of one repository. Holds totals only: no file contents and no file paths
/// but the folder's own.
struct RecordedScan {
    static constexpr const char* claudeTool = "claude";
    static constexpr const char* codexTool = "codex";
    static constexpr std::chrono::hours clockTolerance{24};

    UUID id;
    std::string repositoryName;
    std::string repositoryPath; ///< groups the scans of one repository
    Timestamp date;
    std::int64_t total = 0;
    std::vector<RecordedCategory> categories; ///< in the report's row order; empty for Codex
    std::string tool = claudeTool;
    std::optional<std::int64_t> contextWindow;
    std::optional<std::string> toolVersion{}; ///< for example "2.1.330"; absent when the tool did not tell
    std::optional<std::string> model{};       ///< as the tool named it

    /// Banded with the record's own window.
    [[nodiscard]] OpinionBand band() const { return OpinionBands::band(total, contextWindow); }

    /// Dated more than a day after `now`: by a clock that was wrong.
    [[nodiscard]] bool isDatedAhead(Timestamp now) const { return date > now + clockTolerance; }

    /// The record without what no record may hold: names of categories that could be a path, words that are
    /// too long for a version or a model.
    [[nodiscard]] static RecordedScan recordable(RecordedScan scan);

    [[nodiscard]] static RecordedScan ofReport(const ScanReport& report, Timestamp date, UUID id);
    [[nodiscard]] static RecordedScan ofCodex(const CodexProbeResult& result, const RepoSelection& selection,
                                              Timestamp date, UUID id);

    bool operator==(const RecordedScan&) const = default;
};

/// Which category names may be recorded: whatever could be a path or a file name is withheld.
namespace RecordedCategoryName {

inline constexpr const char* withheld = "Other (name withheld)";
inline constexpr std::size_t maximumCharacters = 80;

/// The trimmed name, or `withheld`.
[[nodiscard]] std::string recorded(std::string_view name);

[[nodiscard]] bool looksLikeAPath(std::string_view name);

} // namespace RecordedCategoryName
} // namespace loadscope
