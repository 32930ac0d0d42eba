// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Whether a report's numbers were counted. Without its counting service the tool still prints a tidy report:
/// older versions leave out what they could not count, newer ones put a third of the characters in its place.
namespace loadscope::ReportTrust {

enum class Verdict {
    counted,
    incomplete, ///< whole categories are missing and what is listed was not counted
    estimated,  ///< every memory file is a third of its characters
    cannotTell, ///< too few memory files to tell counting from estimating
};

struct Finding {
    Verdict verdict = Verdict::cannotTell;
    /// What tells it, as the beginning of a sentence about the report; empty unless incomplete or estimated.
    std::string reason;
};

/// The size of a file that the report lists, in UTF-16 code units: as it is, and without white space at its
/// ends.
struct CharacterCounts {
    std::int64_t whole = 0;
    std::int64_t trimmed = 0;
};
using CharacterCounter = std::function<std::optional<CharacterCounts>(const std::string& path)>;

/// Judges a report by its loaded categories and its members. Blocking as far as `counter` is, which is asked
/// for no more than 64 files.
[[nodiscard]] Finding judge(const std::vector<SelfReportedSlab>& categories, const ContextDetails& details,
                            const CharacterCounter& counter);

/// Counts a regular file of at most 4 MB on disk; nothing for anything else. Keeps nothing of its contents.
[[nodiscard]] std::optional<CharacterCounts> charactersOnDisk(const std::string& path);

} // namespace loadscope::ReportTrust
