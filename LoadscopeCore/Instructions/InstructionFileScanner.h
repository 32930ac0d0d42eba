// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace loadscope {

/// Finds the instruction files on the real file system: the personal file, the repository's own files and
/// those of the folders above it, with their `@` imports. A file is opened once, only to find its imports,
/// and its contents are never kept. Bounded by the depth of imports, 256 followed imports and 64 folders.
/// Plain value; any number of scans may run at once.
class InstructionFileScanner : public InstructionFileScanning {
public:
    static constexpr int defaultMaxImportDepth = 5;
    static constexpr int maximumFollowedImports = 256;
    static constexpr std::size_t maximumParsedBytes = 4'000'000;

    explicit InstructionFileScanner(std::string home, int maxImportDepth = defaultMaxImportDepth);

    InstructionFileSet scan(const std::string& repository) override;

private:
    std::string home_;
    int maxImportDepth_;
};

/// The `@` imports of a text: which lines may hold them and what they point to.
namespace InstructionImports {

/// Tokens that follow an "@" at the start of the line or after white space.
[[nodiscard]] std::vector<std::string> importTokens(std::string_view line);

/// Numbers of the lines that closed code fences hide, fence lines included.
[[nodiscard]] std::set<std::size_t> fencedLineIndices(const std::vector<std::string_view>& lines);

/// Standardized paths that a file's text imports, in order, duplicates included. `folder` is the folder of
/// the file.
[[nodiscard]] std::vector<std::string> targets(std::string_view text, const std::string& folder,
                                               const std::string& home);

} // namespace InstructionImports

/// Folders above `repository` up to and including `home`, nearest first; none when it does not lie below it.
[[nodiscard]] std::vector<std::string> ancestorDirectories(const std::string& repository,
                                                           const std::string& home);

/// True when the standardized path is `root` or lies below it.
[[nodiscard]] bool isUnder(std::string_view path, std::string_view root);

} // namespace loadscope
