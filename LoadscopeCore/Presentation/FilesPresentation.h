// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/ScanReport.h"

#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The instruction files of a report as its list and its treemap show them: with the tool's own count where
/// there is one, else the estimate by size, each labelled where a report has both. Pure functions; paths come
/// from outside.
namespace FilesPresentation {

struct File {
    std::string path;
    PreciseCount count{}; ///< the tool's own, else the estimate
    std::string tokens{}; ///< the count as it is shown
    std::string share{};  ///< "1.4% of total"
    std::string place{};  ///< its tier, or the type that the tool gives it
    std::string source{}; ///< whose count it is, and who does not know of the file; empty without a list
    std::string bySize{}; ///< the estimate beside the tool's own count
    /// "Repository instructions · 1,942 bytes on disk · ~486 estimated from its size"
    std::string detail{};
    /// "541 tokens · reported by Claude Code · 1.4% of total"
    std::string tip{};
    bool isFound = true; ///< else the tool loaded it from a place that is not looked at here

    bool operator==(const File&) const = default;
};

/// The files that were found and those that the tool loaded from elsewhere, by count descending, then path.
[[nodiscard]] std::vector<File> files(const ScanReport& report);

/// Title of the column of counts, and the caption below the treemap.
[[nodiscard]] std::string countTitle(const ScanReport& report);
[[nodiscard]] std::string treemapCaption(const ScanReport& report);

/// Whether the tool tells of any file, so that the list has numbers of two kinds.
[[nodiscard]] bool hasReported(const ScanReport& report);

/// How the estimates are made and what the shares are of.
[[nodiscard]] std::string shareNote(const ScanReport& report);

/// How the two numbers of the files differ and why; absent when no file has two.
[[nodiscard]] std::optional<std::string> twoNumbersNote(const ScanReport& report);

/// "reported by Claude Code", for an estimated report with "(estimate)".
[[nodiscard]] std::string reportedLabel(const ScanReport& report);

} // namespace FilesPresentation
} // namespace loadscope
