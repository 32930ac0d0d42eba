// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/ClaudeProbe/TerminalReport.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// Members and categories have names and counts that are not negative, of the report as it is and of what the
/// drawn form of it becomes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    const auto check = [](std::string_view report) {
        const ContextDetails details = ContextDetailsParser::parse(report);
        for (const ContextMember& member : details.members)
            require(!member.name.empty() && member.tokens >= 0);
        for (const auto* const list : {&details.deferred, &details.reserved}) {
            for (const SelfReportedSlab& slab : *list)
                require(slab.tokens >= 0);
        }
        require(!details.model || !details.model->empty());
    };
    check(text);
    check(TerminalReport::asMarkdown(text));
    return 0;
}
