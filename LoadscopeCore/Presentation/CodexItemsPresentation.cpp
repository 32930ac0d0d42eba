// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <algorithm>

namespace loadscope::CodexItemsPresentation {
namespace {

CodexFileLine lineOf(const CodexInstructions::File& file, const char* part) {
    return {file.path, part, file.readBytes, file.byteCount};
}

} // namespace

std::string name(CodexItemKind kind) {
    switch (kind) {
    case CodexItemKind::systemPrompt:
        return "System prompt";
    case CodexItemKind::tools:
        return "Tool definitions";
    case CodexItemKind::skills:
        return "Skills";
    case CodexItemKind::permissions:
        return "Permissions";
    case CodexItemKind::instructions:
        return "AGENTS.md files";
    case CodexItemKind::environment:
        return "Environment";
    case CodexItemKind::prompt:
        return "Probe prompt";
    case CodexItemKind::other:
        break;
    }
    return "Others";
}

std::string tokens(const CodexItemLine& line) { return '~' + LocaleFormat::grouped(line.tokens); }

std::string bytesRead(const CodexFileLine& file) {
    const std::string whole = LocaleFormat::grouped(file.byteCount);
    return file.readBytes == file.byteCount ? whole : LocaleFormat::grouped(file.readBytes) + " of " + whole;
}

CodexItemsView ofEstimate(const CodexItems& items) {
    CodexItemsView view;
    for (const CodexItem& item : items.items)
        view.lines.push_back({name(item.kind), item.estimatedTokens(), itemSource});
    if (items.personalInstructions) view.files.push_back(lineOf(*items.personalInstructions, "personal"));
    for (const CodexInstructions::File& file : items.instructions.files)
        view.files.push_back(lineOf(file, "project"));
    const auto isSystemPrompt = [](const CodexItem& item) {
        return item.kind == CodexItemKind::systemPrompt;
    };
    if (!items.areTold())
        view.notes.push_back(items.reason);
    else if (std::ranges::none_of(items.items, isSystemPrompt))
        view.notes.emplace_back(noSystemPromptNote);
    if (items.instructions.unreadablePath)
        view.notes.push_back(
            "Codex reads none of the project's instruction files, because one cannot be read: " +
            *items.instructions.unreadablePath + ".");
    return view;
}

std::optional<CodexItemsView> ofMeasurement(const CodexScanOutcome& outcome) {
    const CodexProbeResult* const result = outcome.result();
    if (!result || !result->items) return std::nullopt;
    CodexItemsView view = ofEstimate(*result->items);
    if (view.lines.empty()) return view;
    const std::int64_t estimated = result->items->estimatedTokens();
    if (estimated > result->total)
        view.notes.push_back("The estimates add up to " + LocaleFormat::grouped(estimated) +
                             " tokens, more than the measured total.");
    view.lines.push_back({restName, result->rest().value_or(0), restSource, true});
    return view;
}

std::string estimateLine(const CodexItems& items) {
    if (!items.areTold()) return "Codex: not estimated — " + items.reason;
    return "Codex: about " + LocaleFormat::grouped(items.estimatedTokens()) +
           " tokens — an estimate from sizes, without a session.";
}

std::optional<std::string> modelLine(const CodexItems& items) {
    if (!items.areTold() || (!items.model && !items.contextWindow)) return std::nullopt;
    return "Model: " + items.model.value_or("not known") +
           (items.contextWindow ? "; its window: " + WindowShare::compactWindow(*items.contextWindow) : "") +
           ".";
}

} // namespace loadscope::CodexItemsPresentation
