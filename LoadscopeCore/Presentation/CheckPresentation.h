// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/RepositoryCheck.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

/// How a check of a repository is told. Paths come from outside and stay as they are, except in Markdown.
namespace loadscope::CheckPresentation {

inline constexpr const char* estimateNote =
    "Estimates use 4 bytes per token. Nothing was started: what servers, skills and the tool itself load is "
    "not known here.";

/// For example "4 instruction files, about 1,942 tokens".
[[nodiscard]] std::string headline(const RepositoryCheck& check);

/// "Codex reads 32,768 of 34,886 bytes; the last 2,118 of AGENTS.md never reach it."; nothing when it reads
/// all.
[[nodiscard]] std::optional<std::string> codexCutNote(const CodexInstructions& instructions,
                                                      const std::string& repository);

/// What has to be said besides the lists: where imports lead, what could not be read, what Codex cuts off.
[[nodiscard]] std::vector<std::string> notes(const RepositoryCheck& check);

/// For a comment below a pull request: one heading, the budgets, the files folded.
[[nodiscard]] std::string markdown(const RepositoryCheck& check);

/// The object "codexInstructions" of a check and of a scan.
[[nodiscard]] nlohmann::ordered_json codexInstructions(const CodexInstructions& instructions);

/// One object of schema version 1, indented. The same in every locale.
[[nodiscard]] std::string json(const RepositoryCheck& check);

} // namespace loadscope::CheckPresentation
