// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexInstructions.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// What a text is with which a session of Codex starts.
enum class CodexItemKind {
    systemPrompt, ///< of the model
    tools,        ///< definitions, which only some models get as an item
    skills,
    permissions,
    instructions, ///< AGENTS.md of the user and of the project
    environment,
    prompt, ///< what a measured session is asked
    other
};

inline constexpr std::array allCodexItemKinds{CodexItemKind::systemPrompt, CodexItemKind::tools,
                                              CodexItemKind::skills,       CodexItemKind::permissions,
                                              CodexItemKind::instructions, CodexItemKind::environment,
                                              CodexItemKind::prompt,       CodexItemKind::other};

/// The case's name as scripts see it, for example "systemPrompt".
[[nodiscard]] std::string_view rawValue(CodexItemKind kind);

/// All texts of one kind, by their size alone.
struct CodexItem {
    CodexItemKind kind = CodexItemKind::other;
    std::int64_t byteCount = 0;

    [[nodiscard]] std::int64_t estimatedTokens() const;
    bool operator==(const CodexItem&) const = default;
};

/// What Codex tells, without a session, of what one would start with, and the instruction files as they lie
/// on the disk. Every number of tokens is an estimate from a size. Plain value; holds no text of an item.
struct CodexItems {
    static constexpr const char* notTold = "This version of Codex does not tell.";
    static constexpr const char* tookTooLong = "Codex took too long to tell.";

    std::vector<CodexItem> items{};              ///< in the order of the kinds, each kind once
    std::string reason{};                        ///< why there are no items; empty when there are
    std::optional<std::string> model{};          ///< that of the session, as far as it can be told
    std::optional<std::int64_t> contextWindow{}; ///< of that model, by the list of models
    CodexInstructions instructions{};
    std::optional<CodexInstructions::File> personalInstructions{};

    [[nodiscard]] bool areTold() const { return !items.empty(); }
    [[nodiscard]] std::int64_t estimatedTokens() const;

    [[nodiscard]] static CodexItems unavailable(std::string reason);

    bool operator==(const CodexItems&) const = default;
};

} // namespace loadscope
