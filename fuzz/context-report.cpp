// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <regex>
#include <string>

using namespace loadscope;

namespace {

/// The total line as a regular expression: too slow and too deep for real texts, right for short ones.
std::optional<ContextBreakdownParser::Totals> totalsByExpression(std::string_view text) {
    static const std::regex pattern(R"(Tokens:[\s*]*([0-9.,]+[kKmM]?)[\s*]*/[\s*]*([0-9.,]+[kKmM]?))");
    std::cmatch match;
    if (!std::regex_search(text.data(), text.data() + text.size(), match, pattern)) return std::nullopt;
    const auto total = ContextBreakdownParser::tokenCount(match[1].str());
    if (!total) return std::nullopt;
    return ContextBreakdownParser::Totals{*total, ContextBreakdownParser::tokenCount(match[2].str())};
}

} // namespace

/// Counts are never negative, rows have names, and the matcher agrees with the expression it stands for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    const ContextBreakdown breakdown = ContextBreakdownParser::parse(text);
    require(breakdown.reportedTotal.value_or(0) >= 0 && breakdown.contextWindow.value_or(0) >= 0);
    for (const auto& row : breakdown.categories)
        require(!row.name.empty() && row.tokens >= 0);

    const bool isASCII = std::ranges::all_of(text, [](char byte) { return byte >= 0; });
    if (isASCII && size <= 500)
        require(ContextBreakdownParser::reportedTotals(text) == totalsByExpression(text));
    return 0;
}
