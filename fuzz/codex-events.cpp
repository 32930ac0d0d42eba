// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/CodexProbe/CodexSessionText.h"
#include "LoadscopeCore/CodexProbe/ReconnectionWatch.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// Searching the whole stream finds what reading it line by line does.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    std::optional<CodexOutputParser::TokenCount> first;
    for (LineBreaks::Walker lines(text); !first && lines.advance();)
        first = CodexOutputParser::firstTokenCount(lines.line());
    require(CodexOutputParser::firstTokenCount(text) == first);
    require(!CodexProbeRunner::unreadableDetail(1, text, 3).empty());
    std::optional<std::string> lastError;
    std::optional<std::string_view> complaint;
    for (LineBreaks::Walker lines(text); lines.advance();) {
        if (auto message = CodexSessionText::errorMessage(lines.line())) lastError = std::move(message);
        const std::string_view line = LineBreaks::trimmedLine(lines.line());
        if (!complaint && line.starts_with("error:")) complaint = line;
    }
    require(CodexSessionText::complaint(text) == complaint);
    // An escape may spell the kind of an event in a way that no tool does.
    require(text.find("\\u") != std::string_view::npos || CodexSessionText::lastError(text) == lastError);
    require(CodexOutputParser::header(text).contextWindow.value_or(1) > 0);
    ReconnectionWatch whole;
    ReconnectionWatch halves;
    const bool seen = whole.sawLast(text);
    const bool seenFirst = halves.sawLast(text.substr(0, size / 2));
    require(seen == (seenFirst || halves.sawLast(text.substr(size / 2))));
    return 0;
}
