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

std::string tokenWord(const PreciseCount& count, const char* kind) {
    return DetailsPresentation::tokens(count) + " " + kind + (count.tokens == 1 ? "token" : "tokens");
}

File found(const ScanReport& report, const InstructionFileEstimate& file, InstructionFileTier tier) {
    const auto reported = report.reportedTokens(file);
    const PreciseCount estimate{file.estimatedTokens,
                                hasReported(report) ? CountPrecision::about : CountPrecision::exact};
    const PreciseCount count = reported.value_or(estimate);
    File shown{.path = file.path, .count = count, .tokens = DetailsPresentation::tokens(count)};
    shown.share = InstructionFileShare::text(count.tokens, report.total);
    shown.place = InstructionFileSet::categoryName(tier);
    shown.detail = shown.place + " · " + LocaleFormat::grouped(file.byteCount) + " bytes on disk";
    if (reported) {
        shown.source = reportedLabel(report);
        shown.bySize = DetailsPresentation::tokens(estimate);
        shown.detail +=
            " · " + shown.source + " · " + shown.bySize + " " + DetailsPresentation::estimatedBySize;
    } else {
        if (hasReported(report)) shown.source = DetailsPresentation::estimatedBySize;
        if (!report.details.members.empty())
            shown.source +=
                (shown.source.empty() ? "" : " · ") + std::string(DetailsPresentation::foundNotListed);
        if (!shown.source.empty()) shown.detail += " · " + shown.source;
    }
    shown.tip = tokenWord(count, reported ? "" : "estimated ") + " · " +
                (reported ? shown.source + " · " : std::string()) + shown.share;
    return shown;
}

File loaded(const ScanReport& report, const ContextMember& member) {
    const PreciseCount count{member.tokens, member.precision};
    File shown{.path = member.name, .count = count, .tokens = DetailsPresentation::tokens(count)};
    shown.share = InstructionFileShare::text(member.tokens, report.total);
    shown.place = member.group;
    shown.source = reportedLabel(report) + " · " + DetailsPresentation::loadedElsewhere;
    shown.detail = (shown.place.empty() ? std::string() : shown.place + " · ") + shown.source;
    shown.tip = tokenWord(count, "") + " · " + shown.source + " · " + shown.share;
    shown.isFound = false;
    return shown;
}

} // namespace

std::string reportedLabel(const ScanReport& report) {
    return std::string(DetailsPresentation::reported) + (report.conditions.isEstimate ? " (estimate)" : "");
}

bool hasReported(const ScanReport& report) {
    return !report.memoryFiles.reported.empty() || !report.memoryFiles.loadedElsewhere.empty();
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

std::string shareNote(const ScanReport& report) {
    return std::string("Estimated tokens use 4 bytes per token. Share is calculated against the ") +
           (report.conditions.isEstimate ? "estimated" : "authoritative") + " total reported by Claude.";
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
