// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// A category and its tokens as a tool reported them.
struct SelfReportedSlab {
    std::string name;
    std::int64_t tokens = 0;

    bool operator==(const SelfReportedSlab&) const = default;
};

struct ContextBreakdown {
    std::optional<std::int64_t> reportedTotal;
    std::optional<std::int64_t> contextWindow;
    std::vector<SelfReportedSlab> categories;

    [[nodiscard]] bool isEmpty() const { return !reportedTotal && !contextWindow && categories.empty(); }
    bool operator==(const ContextBreakdown&) const = default;
};

/// Reads the human-oriented `/context` report: the total over the window, and the table of categories.
/// Tolerates Markdown decoration, is strict about numbers, and never fails: what cannot be read is absent.
namespace ContextBreakdownParser {

struct Totals {
    std::int64_t total = 0;
    std::optional<std::int64_t> window;
    bool operator==(const Totals&) const = default;
};

[[nodiscard]] ContextBreakdown parse(std::string_view text);

/// Total and window of the first "Tokens: total / window" in the text.
[[nodiscard]] std::optional<Totals> reportedTotals(std::string_view text);

/// Rows of the first table, in the order of the text; free and reserved space and deferred items are left
/// out.
[[nodiscard]] std::vector<SelfReportedSlab> categories(std::string_view text);

/// A count such as 18.4k, 1,234 or **8**; nothing for anything else, or beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> tokenCount(std::string_view text);

[[nodiscard]] std::optional<SelfReportedSlab> parseRow(std::string_view line);

/// What a row of the category table stands for, by its name.
enum class RowKind { loaded, deferred, reserved, free };
[[nodiscard]] RowKind kindOf(std::string_view name);

/// `parseRow` that leaves nothing out but the header and the rule below it.
[[nodiscard]] std::optional<SelfReportedSlab> anyRow(std::string_view line);

} // namespace ContextBreakdownParser
} // namespace loadscope
