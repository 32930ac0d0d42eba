// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"

#include "LoadscopeCore/ClaudeProbe/ContextTable.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <set>

namespace loadscope {

namespace {

constexpr std::string_view modelMarker = "Model:";
constexpr std::size_t longestModel = 200;
/// How many lines one row may be spread over by line breaks in a name.
constexpr int mostLinesOfARow = 16;

/// Walks over the lines of a report. Only line feeds end a line here: other breaks are part of a name.
class DetailsReader {
public:
    explicit DetailsReader(std::string_view text) : rest_(text) {}

    ContextDetails read() {
        while (!rest_.empty()) {
            const std::string_view line = Text::trimmedHorizontally(takeLine());
            if (line.starts_with('#')) {
                beginSection(line);
            } else if (line.starts_with('|')) {
                readTableLine(line);
            } else if (line.empty()) {
                header_.reset();
                isInTable_ = false;
            } else if (!details_.model) {
                readModel(line);
            }
        }
        markOnDemand();
        return std::move(details_);
    }

private:
    std::string_view takeLine() {
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }

    void beginSection(std::string_view line) {
        heading_ = Text::trimmedHorizontally(line.substr(std::min(line.find_first_not_of('#'), line.size())));
        header_.reset();
        isInTable_ = false;
    }

    void readModel(std::string_view line) {
        const std::size_t marker = line.find(modelMarker);
        if (marker == std::string_view::npos) return;
        std::string model(line.substr(marker + modelMarker.size()));
        std::erase(model, '*');
        const std::string_view name = Text::prefix(Text::trimmed(model), longestModel);
        if (!name.empty()) details_.model = std::string(name);
    }

    void readTableLine(std::string_view line) {
        if (!isInTable_) {
            isInTable_ = true;
            isCategories_ = isCategoryHeader(line);
            header_ = isCategories_ ? std::nullopt : ContextTable::fromHeader(line);
            return;
        }
        if (isCategories_) {
            readCategory(line);
        } else if (header_) {
            readMember(line);
        }
    }

    static bool isCategoryHeader(std::string_view line) {
        const std::size_t start = line.find_first_not_of("| \t");
        return start != std::string_view::npos && Text::lowercased(line.substr(start, 8)) == "category";
    }

    /// A row whose name holds line feeds goes on over the next lines until it has its cells.
    std::string wholeRow(std::string_view line) {
        std::string row(line);
        for (int lines = 1; lines < mostLinesOfARow && !header_->isWhole(row); ++lines) {
            const std::string_view before = rest_;
            const std::string_view next = takeLine();
            if (next.empty() || next.starts_with('|')) {
                rest_ = before;
                break;
            }
            row.append("\n").append(next);
        }
        return row;
    }

    void readMember(std::string_view line) {
        auto row = header_->row(wholeRow(line));
        const auto count = row ? ContextDetailsParser::preciseCount(row->count) : std::nullopt;
        if (!count) return;
        details_.members.push_back({std::string(heading_), std::move(row->group), std::move(row->name),
                                    count->tokens, count->precision});
    }

    void readCategory(std::string_view line) {
        const auto row = ContextBreakdownParser::anyRow(line);
        if (!row) return;
        const auto kind = ContextBreakdownParser::kindOf(row->name);
        if (kind == ContextBreakdownParser::RowKind::loaded) {
            loaded_.insert(Text::lettersAndNumbers(Text::lowercased(row->name)));
        } else if (kind == ContextBreakdownParser::RowKind::deferred) {
            constexpr std::string_view suffix = "(deferred)";
            const std::string_view name(row->name.data(), row->name.size() - suffix.size());
            details_.deferred.push_back({std::string(Text::trimmedHorizontally(name)), row->tokens});
        } else if (kind == ContextBreakdownParser::RowKind::reserved) {
            details_.reserved.push_back(*row);
        } else if (kind == ContextBreakdownParser::RowKind::free && !details_.free) {
            details_.free = row->tokens;
        }
    }

    /// A table lists what is loaded and what is not alike; the categories tell which of the two it holds.
    void markOnDemand() {
        std::set<std::string> deferred;
        for (const SelfReportedSlab& category : details_.deferred)
            deferred.insert(Text::lettersAndNumbers(Text::lowercased(category.name)));
        if (deferred.empty()) return;
        std::string_view table;
        bool isOnDemand = false;
        for (ContextMember& member : details_.members) {
            if (member.table != table) {
                table = member.table;
                const std::string name = Text::lettersAndNumbers(Text::lowercased(table));
                isOnDemand = deferred.contains(name) && !loaded_.contains(name);
            }
            member.onDemand = isOnDemand;
        }
    }

    std::string_view rest_;
    std::string_view heading_;
    bool isInTable_ = false;
    bool isCategories_ = false;
    std::optional<ContextTable> header_;
    std::set<std::string> loaded_;
    ContextDetails details_;
};

} // namespace

std::string rawValue(CountPrecision precision) {
    constexpr std::array<const char*, 4> names{"exact", "rounded", "about", "below"};
    return names.at(static_cast<std::size_t>(precision));
}

std::optional<PreciseCount> ContextDetailsParser::preciseCount(std::string_view text) {
    text = Text::trimmedHorizontally(text);
    const auto marked = [&text](char mark) {
        if (!text.starts_with(mark)) return false;
        text.remove_prefix(1);
        return true;
    };
    const bool isAbout = marked('~');
    const bool isBelow = !isAbout && marked('<');
    const auto tokens = ContextBreakdownParser::tokenCount(text);
    if (!tokens) return std::nullopt;
    if (isAbout) return PreciseCount{*tokens, CountPrecision::about};
    if (isBelow) return PreciseCount{*tokens, CountPrecision::below};
    const bool isInThousands = text.find_first_of("kKmM.") != std::string_view::npos;
    return PreciseCount{*tokens, isInThousands ? CountPrecision::rounded : CountPrecision::exact};
}

ContextDetails ContextDetailsParser::parse(std::string_view text) { return DetailsReader(text).read(); }

} // namespace loadscope
