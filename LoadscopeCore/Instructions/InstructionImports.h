// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The `@` imports of an instruction file's text: which lines may hold them and what they point to. Views
/// refer to the caller's bytes. Thread-safe.
namespace loadscope::InstructionImports {

/// The lines of the text, empty ones included, without the line feed that ends each and a carriage return
/// directly before it.
[[nodiscard]] std::vector<std::string_view> lines(std::string_view text);

/// For each line whether a closed code fence hides it; the two fence lines are hidden as well. A fence that
/// is never closed hides nothing.
[[nodiscard]] std::vector<bool> fencedLines(const std::vector<std::string_view>& lines);

/// What follows an "@" at the start of the line or behind white space, without the punctuation that ends a
/// sentence or closes a bracket.
[[nodiscard]] std::vector<std::string_view> importTokens(std::string_view line);

/// The standardized path that a token of a file in `folder` points to; empty for a lone tilde.
[[nodiscard]] std::string target(std::string_view token, std::string_view folder, std::string_view home);

/// Hands each target of the text to `visit`, in order and duplicates included, until it returns false.
void visitTargets(std::string_view text, std::string_view folder, std::string_view home,
                  const std::function<bool(const std::string& target)>& visit);

} // namespace loadscope::InstructionImports
