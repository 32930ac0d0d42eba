// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// One line of what a session of Codex starts with.
struct CodexItemLine {
    std::string name; ///< in this program's words
    std::int64_t tokens = 0;
    std::string source;
    bool isRest = false; ///< the last line of a measurement: what its total leaves

    bool operator==(const CodexItemLine&) const = default;
};

/// One instruction file of Codex and how much of it is read.
struct CodexFileLine {
    std::string path;
    std::string part; ///< "personal" or "project"
    std::int64_t readBytes = 0;
    std::int64_t byteCount = 0;

    bool operator==(const CodexFileLine&) const = default;
};

/// Everything that is shown of the items, beside a measured total or for themselves.
struct CodexItemsView {
    std::vector<CodexItemLine> lines; ///< empty when Codex does not tell
    std::vector<CodexFileLine> files; ///< in the order in which they are loaded
    std::vector<std::string> notes;   ///< why there are no lines, among other things

    bool operator==(const CodexItemsView&) const = default;
};

/// The words and lines for the items of Codex. Pure functions; numbers in sentences are written in the user's
/// locale. A number from a size is called an estimate in each of them.
namespace CodexItemsPresentation {

inline constexpr const char* estimateAction = "Estimate without a session";
inline constexpr const char* estimateStage = "Asking Codex what it would load…";
inline constexpr const char* serversNote =
    "Codex starts the servers of its configuration for this, as a session does. It uses no allowance.";
inline constexpr const char* estimateNote =
    "An estimate from sizes, at 4 bytes per token, without a session: nothing was measured or recorded, and "
    "no band is given. Tools count only as far as Codex tells them.";
inline constexpr const char* noSystemPromptNote =
    "The model's system prompt is not among the items: Codex and its configuration do not tell its size.";
inline constexpr const char* itemSource = "estimated from its size";
inline constexpr const char* restName = "tools and the rest";
inline constexpr const char* restSource = "derived: the total minus the estimates";
inline constexpr const char* failureHeadline = "Codex could not tell what it would load.";

inline constexpr const char* itemsTitle = "What a session starts with";
inline constexpr const char* itemColumn = "Item";
inline constexpr const char* tokensColumn = "Tokens";
inline constexpr const char* filesTitle = "Instruction files of Codex";
inline constexpr const char* fileColumn = "Instruction file";
inline constexpr const char* bytesColumn = "Bytes read";

[[nodiscard]] std::string name(CodexItemKind kind);

/// "~1,942"; what a total leaves is no estimate, but inherits theirs.
[[nodiscard]] std::string tokens(const CodexItemLine& line);

/// "2,118", or "1,000 of 2,118" for a file that is cut.
[[nodiscard]] std::string bytesRead(const CodexFileLine& file);

/// Beside a measured total: the last line is what that leaves, never below 0. Nothing when the session was
/// not followed by the question.
[[nodiscard]] std::optional<CodexItemsView> ofMeasurement(const CodexScanOutcome& outcome);

/// For themselves.
[[nodiscard]] CodexItemsView ofEstimate(const CodexItems& items);

/// For example "Codex: about 6,421 tokens — an estimate from sizes, without a session."; the reason when
/// Codex does not tell.
[[nodiscard]] std::string estimateLine(const CodexItems& items);

/// The model that a session would have and its window, as far as they can be told.
[[nodiscard]] std::optional<std::string> modelLine(const CodexItems& items);

} // namespace CodexItemsPresentation
} // namespace loadscope
