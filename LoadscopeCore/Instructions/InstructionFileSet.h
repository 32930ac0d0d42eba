// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

enum class InstructionFileTier {
    repository, ///< inside the repository folder
    inherited,  ///< in the folders above it, up to the home folder, and what they import
    personal,   ///< the user's personal file and what it imports
};

inline constexpr std::array allInstructionFileTiers{
    InstructionFileTier::repository, InstructionFileTier::inherited, InstructionFileTier::personal};

[[nodiscard]] std::string rawValue(InstructionFileTier tier);

/// One instruction file: its resolved path, its size on disk and an estimate of its tokens. Never its
/// contents.
struct InstructionFileEstimate {
    InstructionFileEstimate(std::string path, std::int64_t byteCount);

    std::string path;
    std::int64_t byteCount;
    std::int64_t estimatedTokens;

    /// Four bytes per token, rounded up; 0 below one byte.
    [[nodiscard]] static std::int64_t estimatedTokensForByteCount(std::int64_t byteCount);

    bool operator==(const InstructionFileEstimate&) const = default;
};

/// One local estimate offered to the attribution: `matchTerms` are normalised category names that it can
/// explain.
struct LocalCategoryEstimate {
    std::string name;
    std::int64_t tokens = 0;
    std::vector<std::string> matchTerms;

    bool operator==(const LocalCategoryEstimate&) const = default;
};

/// The instruction files that a session would load, by tier and in the order of their discovery.
struct InstructionFileSet {
    std::vector<InstructionFileEstimate> repositoryFiles;
    std::vector<InstructionFileEstimate> inheritedFiles;
    std::vector<InstructionFileEstimate> personalFiles;
    std::vector<std::string> unreadablePaths; ///< exist but may not be read; ascending, without duplicates

    [[nodiscard]] const std::vector<InstructionFileEstimate>& files(InstructionFileTier tier) const;
    [[nodiscard]] std::vector<InstructionFileEstimate>& files(InstructionFileTier tier);

    /// Every file: the repository's, then the inherited, then the personal ones.
    [[nodiscard]] std::vector<InstructionFileEstimate> allFiles() const;

    /// One estimate per tier that holds at least one token.
    [[nodiscard]] std::vector<LocalCategoryEstimate> localCategories() const;

    [[nodiscard]] static std::string categoryName(InstructionFileTier tier);

    bool operator==(const InstructionFileSet&) const = default;
};

/// Finds the instruction files of a folder. Blocking; cannot fail.
class InstructionFileScanning {
public:
    virtual ~InstructionFileScanning() = default;
    virtual InstructionFileSet scan(const std::string& repository) = 0;
};

} // namespace loadscope
