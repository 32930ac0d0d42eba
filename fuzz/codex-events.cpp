// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
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
    return 0;
}
