// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexItems.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/TokenEstimate.h"

namespace loadscope {

std::string_view rawValue(CodexItemKind kind) {
    switch (kind) {
    case CodexItemKind::systemPrompt:
        return "systemPrompt";
    case CodexItemKind::tools:
        return "tools";
    case CodexItemKind::skills:
        return "skills";
    case CodexItemKind::permissions:
        return "permissions";
    case CodexItemKind::instructions:
        return "instructions";
    case CodexItemKind::environment:
        return "environment";
    case CodexItemKind::prompt:
        return "prompt";
    case CodexItemKind::other:
        break;
    }
    return "other";
}

std::int64_t CodexItem::estimatedTokens() const { return TokenEstimate::ofBytes(byteCount); }

std::int64_t CodexItems::estimatedTokens() const {
    SaturatingSum sum;
    for (const CodexItem& item : items)
        sum.add(item.estimatedTokens());
    return sum.value();
}

CodexItems CodexItems::unavailable(std::string reason) {
    CodexItems none;
    none.reason = std::move(reason);
    return none;
}

} // namespace loadscope
