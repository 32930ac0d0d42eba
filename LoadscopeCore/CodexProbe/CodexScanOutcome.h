// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexItems.h"
#include "LoadscopeCore/Platform/UUID.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace loadscope {

/// A measured Codex session. `duration` in seconds.
struct CodexProbeResult {
    std::int64_t total = 0;
    std::optional<std::int64_t> contextWindow;
    double duration = 0;
    std::optional<std::string> toolVersion{}; ///< for example "0.169.0"
    std::optional<std::string> model{};
    bool keepsRecord = false;          ///< this version cannot be told to keep no record of the session
    std::optional<CodexItems> items{}; ///< asked for after the session; not recorded
    std::optional<UUID> id{};          ///< that of its record, recorded or not

    /// What the total leaves beside the items, never below 0; nothing when Codex does not tell them.
    [[nodiscard]] std::optional<std::int64_t> rest() const {
        if (!items || !items->areTold()) return std::nullopt;
        return std::max<std::int64_t>(total, items->estimatedTokens()) - items->estimatedTokens();
    }

    bool operator==(const CodexProbeResult&) const = default;
};

/// Codex was measured, or why it was not: the reason is shown unchanged.
class CodexScanOutcome {
public:
    static constexpr const char* notIncludedReason = "Codex was not included in this scan.";

    [[nodiscard]] static CodexScanOutcome measured(const CodexProbeResult& result) {
        return CodexScanOutcome(result);
    }
    [[nodiscard]] static CodexScanOutcome unavailable(std::string reason) {
        return CodexScanOutcome(std::move(reason));
    }

    /// The result when measured, else null.
    [[nodiscard]] const CodexProbeResult* result() const { return std::get_if<CodexProbeResult>(&value_); }

    /// The reason when unavailable, else null.
    [[nodiscard]] const std::string* reason() const { return std::get_if<std::string>(&value_); }

    bool operator==(const CodexScanOutcome&) const = default;

private:
    explicit CodexScanOutcome(std::variant<CodexProbeResult, std::string> value) : value_(std::move(value)) {}
    std::variant<CodexProbeResult, std::string> value_;
};

} // namespace loadscope
