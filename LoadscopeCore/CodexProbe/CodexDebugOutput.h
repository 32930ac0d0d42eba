// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexItems.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads what `codex debug models` and `codex debug prompt-input` print. Never fails on bad input; of the
/// texts in it only sizes and a hash, to tell two of them apart, are kept.
namespace loadscope::CodexDebugOutput {

struct TextMark {
    std::int64_t byteCount = 0;
    std::size_t hash = 0;

    [[nodiscard]] static TextMark of(std::string_view text);
    bool operator==(const TextMark&) const = default;
};

struct Model {
    std::string name;
    std::optional<std::int64_t> contextWindow{}; ///< positive
    TextMark systemPrompt{};

    bool operator==(const Model&) const = default;
};

/// One text of the input and what its beginning says that it is.
struct Text {
    CodexItemKind kind = CodexItemKind::other;
    TextMark mark{};

    bool operator==(const Text&) const = default;
};

/// Empty when the text is no list of models.
[[nodiscard]] std::vector<Model> models(std::string_view json);

/// Nothing when the text is no list of items, or one that holds nothing but `prompt`.
[[nodiscard]] std::optional<std::vector<Text>> promptInput(std::string_view json, std::string_view prompt);

/// What is known of the session that starts so.
struct Session {
    std::optional<std::string> model{}; ///< by its events or its configuration
    bool replacesSystemPrompt = false;  ///< the model's own is not what it starts with
};

/// The items by kind, the model and its window. The input of some models holds their system prompt, which
/// tells the model, too; for the others it comes from the list.
[[nodiscard]] CodexItems items(const std::vector<Text>& input, const std::vector<Model>& models,
                               const Session& session);

} // namespace loadscope::CodexDebugOutput
