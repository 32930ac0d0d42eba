// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"

#include "LoadscopeCore/Platform/DecimalNumber.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace loadscope::ContextBreakdownParser {

namespace {

constexpr std::string_view totalMarker = "Tokens:";
constexpr double int64Bound = 9223372036854775808.0;

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Walks over one report line, one element of
/// `Tokens:[\s*]*([0-9.,]+[kKmM]?)[\s*]*/[\s*]*([0-9.,]+[kKmM]?)` at a time. Neighbouring elements share no
/// character, so taking as many as possible never has to be undone, and whatever was passed over cannot hold
/// another "Tokens:": the whole text is read once.
class TotalsMatcher {
public:
    TotalsMatcher(std::string_view text, std::size_t position) : text_(text), position_(position) {}

    [[nodiscard]] std::size_t position() const { return position_; }

    void skipDecoration() {
        std::size_t length = 1;
        while (position_ < text_.size()) {
            const char next = text_[position_];
            if (next == '*' || next == ' ') {
                ++position_;
            } else if (Text::beginsWithWhitespace(text_.substr(position_), length)) {
                position_ += length;
            } else {
                return;
            }
        }
    }

    /// Empty when no count stands here.
    std::string_view takeCount() {
        const std::size_t start = position_;
        while (position_ < text_.size() && isCountCharacter(text_[position_]))
            ++position_;
        if (position_ > start && position_ < text_.size() && isSuffix(text_[position_])) ++position_;
        return text_.substr(start, position_ - start);
    }

    bool takeSlash() {
        if (position_ == text_.size() || text_[position_] != '/') return false;
        ++position_;
        return true;
    }

private:
    static bool isCountCharacter(char character) {
        return isDigit(character) || character == '.' || character == ',';
    }
    static bool isSuffix(char character) {
        return character == 'k' || character == 'K' || character == 'm' || character == 'M';
    }

    std::string_view text_;
    std::size_t position_;
};

/// A plain decimal number such as 12, 1.5, 5. or .5; nothing for any other text.
std::optional<double> plainNumber(std::string_view text) {
    const auto digits = std::ranges::count_if(text, isDigit);
    const auto points = std::ranges::count(text, '.');
    if (digits == 0 || points > 1 || static_cast<std::size_t>(digits + points) != text.size())
        return std::nullopt;
    const auto number = decimalNumber(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

constexpr std::array<std::string_view, 3> reservedNames{"autocompact buffer", "compact buffer", "reserved"};

/// Name and count of a table row with at least three cells.
struct RowCells {
    std::string_view name;
    std::string_view count;
};

std::optional<RowCells> leadingCells(std::string_view line) {
    std::size_t cells = static_cast<std::size_t>(std::ranges::count(line, '|')) + 1;
    const auto takeCell = [&line] {
        const std::size_t bar = std::min(line.find('|'), line.size());
        const std::string_view cell = Text::trimmedHorizontally(line.substr(0, bar));
        line.remove_prefix(std::min(bar + 1, line.size()));
        return cell;
    };
    if (cells > 1 && Text::trimmedHorizontally(line.substr(line.rfind('|') + 1)).empty()) --cells;
    std::string_view name = takeCell();
    if (name.empty()) {
        --cells;
        name = takeCell();
    }
    if (cells < 3) return std::nullopt;
    return RowCells{name, takeCell()};
}

} // namespace

std::optional<std::int64_t> tokenCount(std::string_view text) {
    std::string number(Text::trimmedHorizontally(text));
    std::erase_if(number, [](char character) { return character == ',' || character == '*'; });
    if (number.empty()) return std::nullopt;

    double multiplier = 1;
    const char suffix = number.back();
    if (suffix == 'k' || suffix == 'K') multiplier = 1'000;
    if (suffix == 'm' || suffix == 'M') multiplier = 1'000'000;
    if (multiplier != 1) number.pop_back();

    const auto value = plainNumber(number);
    if (!value) return std::nullopt;
    const double rounded = std::round(multiplier * *value);
    if (rounded >= int64Bound) return std::nullopt;
    return static_cast<std::int64_t>(rounded);
}

std::optional<Totals> reportedTotals(std::string_view text) {
    std::size_t marker = text.find(totalMarker);
    while (marker != std::string_view::npos) {
        TotalsMatcher matcher(text, marker + totalMarker.size());
        matcher.skipDecoration();
        const std::string_view total = matcher.takeCount();
        matcher.skipDecoration();
        if (!total.empty() && matcher.takeSlash()) {
            matcher.skipDecoration();
            const std::string_view window = matcher.takeCount();
            if (!window.empty()) {
                const auto tokens = tokenCount(total);
                return tokens ? std::optional(Totals{*tokens, tokenCount(window)}) : std::nullopt;
            }
        }
        marker = text.find(totalMarker, matcher.position());
    }
    return std::nullopt;
}

std::vector<SelfReportedSlab> categories(std::string_view text) {
    std::vector<SelfReportedSlab> rows;
    bool tableSeen = false;
    LineBreaks::Walker walker(text);
    while (walker.advance()) {
        const std::string_view line = Text::trimmedHorizontally(walker.line());
        if (tableSeen && line.starts_with('#')) break;
        if (!line.starts_with('|')) continue;
        tableSeen = true;
        if (auto row = parseRow(line)) rows.push_back(std::move(*row));
    }
    return rows;
}

RowKind kindOf(std::string_view name) {
    const std::string lowercased = Text::lowercased(name);
    if (lowercased == "free space") return RowKind::free;
    if (lowercased.ends_with("(deferred)")) return RowKind::deferred;
    const bool isReserved = std::ranges::find(reservedNames, lowercased) != reservedNames.end();
    return isReserved ? RowKind::reserved : RowKind::loaded;
}

std::optional<SelfReportedSlab> anyRow(std::string_view line) {
    const auto cells = leadingCells(line);
    if (!cells || cells->name.empty()) return std::nullopt;
    const bool isAlignment = cells->name.find_first_not_of("-:") == std::string_view::npos;
    if (isAlignment || Text::lowercased(cells->name) == "category") return std::nullopt;
    const auto tokens = tokenCount(cells->count);
    if (!tokens) return std::nullopt;
    return SelfReportedSlab{std::string(cells->name), *tokens};
}

std::optional<SelfReportedSlab> parseRow(std::string_view line) {
    auto row = anyRow(line);
    if (row && kindOf(row->name) != RowKind::loaded) return std::nullopt;
    return row;
}

ContextBreakdown parse(std::string_view text) {
    ContextBreakdown breakdown;
    if (const auto totals = reportedTotals(text)) {
        breakdown.reportedTotal = totals->total;
        breakdown.contextWindow = totals->window;
    }
    breakdown.categories = categories(text);
    return breakdown;
}

} // namespace loadscope::ContextBreakdownParser
