// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/FilesPresentation.h"

#include "LoadscopeCore/ClaudeProbe/CountSum.h"
#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include <algorithm>

namespace loadscope::FilesPresentation {
namespace {

/// Whether the tool tells of any file, so that the list has numbers of two kinds.
bool hasReported(const ScanReport& report) {
    return !report.memoryFiles.reported.empty() || !report.memoryFiles.loadedElsewhere.empty();
}

std::string tokenWord(const PreciseCount& count, const char* kind) {
    return DetailsPresentation::tokens(count) + " " + kind + (count.tokens == 1 ? "token" : "tokens");
}

File found(const ScanReport& report, const InstructionFileEstimate& file, InstructionFileTier tier) {
    const auto reported = report.reportedTokens(file);
    const bool isMarked = hasReported(report);
    const PreciseCount estimate{file.estimatedTokens,
                                isMarked ? CountPrecision::about : CountPrecision::exact};
    const PreciseCount count = reported.value_or(estimate);
    File shown{file.path,
               count,
               DetailsPresentation::tokens(count),
               InstructionFileShare::text(count.tokens, report.total),
               InstructionFileSet::categoryName(tier) + " · " + LocaleFormat::grouped(file.byteCount) +
                   " bytes on disk",
               tokenWord(count, reported ? "" : "estimated ")};
    if (reported) {
        shown.tip += " · " + reportedLabel(report);
        shown.detail += " · " + reportedLabel(report) + " · " + DetailsPresentation::tokens(estimate);
    }
    if (isMarked) shown.detail += std::string(reported ? " " : " · ") + DetailsPresentation::estimatedBySize;
    if (!reported && !report.details.members.empty())
        shown.detail += std::string(" · ") + DetailsPresentation::foundNotListed;
    shown.tip += " · " + shown.share;
    return shown;
}

File loaded(const ScanReport& report, const ContextMember& member) {
    const PreciseCount count{member.tokens, member.precision};
    const std::string source = reportedLabel(report) + " · " + DetailsPresentation::loadedElsewhere;
    const std::string share = InstructionFileShare::text(member.tokens, report.total);
    return {member.name,
            count,
            DetailsPresentation::tokens(count),
            share,
            (member.group.empty() ? std::string() : member.group + " · ") + source,
            tokenWord(count, "") + " · " + source + " · " + share,
            false};
}

} // namespace

std::string reportedLabel(const ScanReport& report) {
    return std::string(DetailsPresentation::reported) + (report.conditions.isEstimate ? " (estimate)" : "");
}

std::vector<File> files(const ScanReport& report) {
    std::vector<File> list;
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const InstructionFileEstimate& file : report.fileSet.files(tier))
            list.push_back(found(report, file, tier));
    for (const ContextMember& member : report.memoryFiles.loadedElsewhere)
        list.push_back(loaded(report, member));
    std::ranges::stable_sort(list, [](const File& left, const File& right) {
        return left.count.tokens != right.count.tokens ? left.count.tokens > right.count.tokens
                                                       : left.path < right.path;
    });
    return list;
}

std::string countTitle(const ScanReport& report) {
    return hasReported(report) ? "Tokens" : "Estimated tokens";
}

std::string treemapCaption(const ScanReport& report) {
    return hasReported(report)
               ? "Tile sizes use the counts that Claude Code reports, and estimated token counts "
                 "where it reports none."
               : "Tile sizes use estimated token counts.";
}

std::optional<std::string> twoNumbersNote(const ScanReport& report) {
    if (report.memoryFiles.reported.empty()) return {};
    CountSum reported;
    SaturatingSum estimated;
    for (const InstructionFileEstimate& file : report.files()) {
        const auto count = report.reportedTokens(file);
        if (!count) continue;
        reported.add(*count);
        estimated.add(file.estimatedTokens);
    }
    const std::size_t files = report.memoryFiles.reported.size();
    const bool isOne = files == 1;
    return "For the " +
           (isOne ? "one file" : LocaleFormat::grouped(static_cast<std::int64_t>(files)) + " files") +
           " with both numbers Claude Code reports " + DetailsPresentation::tokens(reported.value()) +
           " tokens; the estimate from " + (isOne ? "its size" : "their sizes") + " is " +
           LocaleFormat::grouped(estimated.value()) +
           ". The estimate takes four bytes for a token, whatever the text; the rows of the breakdown keep "
           "it.";
}

} // namespace loadscope::FilesPresentation
