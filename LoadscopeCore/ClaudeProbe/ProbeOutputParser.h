// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/Json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// Token counts of one usage block.
struct ProbeUsage {
    std::int64_t inputTokens = 0;
    std::int64_t cacheCreationInputTokens = 0;
    std::int64_t cacheReadInputTokens = 0;
    std::int64_t outputTokens = 0;

    /// What the model was sent: input, cache creation and cache read; saturates instead of overflowing.
    [[nodiscard]] std::int64_t startupTotal() const;

    /// From a usage object; nothing when it has none of the three input-side counts. Absent counts are 0.
    [[nodiscard]] static std::optional<ProbeUsage> from(const Json::Value& usage);

    bool operator==(const ProbeUsage&) const = default;
};

/// What a finished headless session reported. `sessionID` is never empty.
struct ProbeOutput {
    std::string sessionID;
    std::string result;
    std::optional<ProbeUsage> usage;
    std::optional<std::string> toolVersion{}; ///< when the output tells it

    bool operator==(const ProbeOutput&) const = default;
};

/// Reads the JSON that Claude Code prints at the end of a headless session: one result object, or with
/// "verbose" in the user's settings an array of events of which the last one of type "result" is that object.
/// Only `parse` fails, always with a `ProbeError`.
namespace ProbeOutputParser {

/// Throws `ProbeError` when the output is no usable result, reports an error, or says that the user is signed
/// out.
[[nodiscard]] ProbeOutput parse(std::string_view standardOutput, std::string_view standardError,
                                std::int32_t exitCode);

/// The JSON object that the whole text holds, surrounding white space aside.
[[nodiscard]] std::optional<Json::Value> jsonObject(std::string_view text);

/// "num_turns" of the result object, when it is an integral number.
[[nodiscard]] std::optional<std::int64_t> turns(std::string_view standardOutput);

/// True when the text carries one of the tool's own phrases for a missing or expired sign-in, in any letter
/// case.
[[nodiscard]] bool indicatesAuthenticationFailure(std::string_view text);

/// The text trimmed and cut to `limit` characters by the rule of `ProbeError::bounded`.
[[nodiscard]] std::string truncate(std::string_view text, std::size_t limit);

} // namespace ProbeOutputParser
} // namespace loadscope
