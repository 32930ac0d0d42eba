// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/TokenEstimate.h"

#include <utility>

namespace loadscope {
namespace {

/// Category names by which a tool may report what the files of a tier cost, in normalised form.
std::vector<std::string> matchTerms(InstructionFileTier tier) {
    switch (tier) {
    case InstructionFileTier::repository:
        return {"projectinstructions", "repoinstructions", "projectmemory", "memoryfiles", "claudemd"};
    case InstructionFileTier::inherited:
        return {"projectinstructions", "repoinstructions",   "projectmemory", "inheritedinstructions",
                "ancestormemory",      "parentinstructions", "memoryfiles",   "claudemd"};
    case InstructionFileTier::personal:
        break;
    }
    return {"userinstructions", "usermemory",  "globalinstructions",
            "personalmemory",   "memoryfiles", "claudemd"};
}

} // namespace

std::string rawValue(InstructionFileTier tier) {
    switch (tier) {
    case InstructionFileTier::repository:
        return "repository";
    case InstructionFileTier::inherited:
        return "inherited";
    case InstructionFileTier::personal:
        break;
    }
    return "personal";
}

InstructionFileEstimate::InstructionFileEstimate(std::string path, std::int64_t byteCount)
    : path(std::move(path)), byteCount(byteCount), estimatedTokens(estimatedTokensForByteCount(byteCount)) {}

std::int64_t InstructionFileEstimate::estimatedTokensForByteCount(std::int64_t byteCount) {
    return TokenEstimate::ofBytes(byteCount);
}

const std::vector<InstructionFileEstimate>& InstructionFileSet::files(InstructionFileTier tier) const {
    switch (tier) {
    case InstructionFileTier::repository:
        return repositoryFiles;
    case InstructionFileTier::inherited:
        return inheritedFiles;
    case InstructionFileTier::personal:
        break;
    }
    return personalFiles;
}

std::vector<InstructionFileEstimate>& InstructionFileSet::files(InstructionFileTier tier) {
    return const_cast<std::vector<InstructionFileEstimate>&>(std::as_const(*this).files(tier));
}

std::vector<InstructionFileEstimate> InstructionFileSet::allFiles() const {
    std::vector<InstructionFileEstimate> all;
    all.reserve(repositoryFiles.size() + inheritedFiles.size() + personalFiles.size());
    for (const InstructionFileTier tier : allInstructionFileTiers) {
        all.insert(all.end(), files(tier).begin(), files(tier).end());
    }
    return all;
}

std::vector<LocalCategoryEstimate> InstructionFileSet::localCategories() const {
    std::vector<LocalCategoryEstimate> categories;
    for (const InstructionFileTier tier : allInstructionFileTiers) {
        SaturatingSum tokens;
        for (const InstructionFileEstimate& file : files(tier))
            tokens.add(file.estimatedTokens);
        if (tokens.value() < 1) continue;
        categories.push_back({categoryName(tier), tokens.value(), matchTerms(tier)});
    }
    return categories;
}

std::string InstructionFileSet::categoryName(InstructionFileTier tier) {
    switch (tier) {
    case InstructionFileTier::repository:
        return "Repository instructions";
    case InstructionFileTier::inherited:
        return "Inherited project instructions";
    case InstructionFileTier::personal:
        break;
    }
    return "Personal instructions";
}

} // namespace loadscope
