// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanComparison.h"

#include <optional>
#include <string>
#include <vector>

/// How a comparison of two measurements is told: on the terminal, in Markdown, as JSON and in the window.
/// Names of tools, models, categories and members come from outside and stay as they are, except in Markdown.
namespace loadscope::DiffPresentation {

inline constexpr const char* withinRounding = "within rounding";
inline constexpr const char* tableTitle = "Changed categories";
inline constexpr const char* noCategoryChanged = "No category changed.";
inline constexpr const char* noMembers =
    "What is inside the categories is known only of scans that were kept as JSON.";

/// For example "25,200 → 30,000 tokens (+4,800, +19.0%)".
[[nodiscard]] std::string totalLine(const ScanComparison& comparison);

/// When, with which version and model: "Nov 12, 2026 at 8:31 PM · 2.1.330 · claude-opus-4-5"; what is not
/// known is left out. "unknown" when nothing is.
[[nodiscard]] std::string sideLine(const ScanMeasurement& side);

/// The two sides, each with its name: "Before: Nov 12, …".
[[nodiscard]] std::string beforeLine(const ScanComparison& comparison);
[[nodiscard]] std::string afterLine(const ScanComparison& comparison);

/// A plain sentence for each way in which the two are not alike.
[[nodiscard]] std::vector<std::string> warnings(const ScanComparison& comparison);

/// The number of one side; a dash where it is absent.
[[nodiscard]] std::string count(const std::optional<std::int64_t>& tokens);

/// "3 categories did not change."; empty for none.
[[nodiscard]] std::string unchangedLine(std::size_t categories);

/// For example "+4,500", "+4,500 (new)", "-120 (gone)", "+100 (within rounding)"; "no change".
[[nodiscard]] std::string change(const TokenChange& tokens);

/// "reported by Claude Code", "estimated from file sizes" or "derived".
[[nodiscard]] std::string source(FigureSource source);

/// For example "+4,800 since Nov 12: MCP tools +4,500, Skills +300" or "No change since Nov 12".
[[nodiscard]] std::string sinceLine(const ScanComparison& comparison);

/// For a comment below a pull request: a heading, the table of the categories, the members folded.
[[nodiscard]] std::string markdown(const ScanComparison& comparison);

/// One object of schema version 1, indented. The same in every locale.
[[nodiscard]] std::string json(const ScanComparison& comparison);

} // namespace loadscope::DiffPresentation
