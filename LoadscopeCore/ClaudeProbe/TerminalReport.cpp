// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/TerminalReport.h"

#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "LoadscopeCore/Platform/Text.h"

#include <array>
#include <optional>
#include <vector>

namespace loadscope::TerminalReport {
namespace {

constexpr std::string_view totalsSeparator = " • ";
constexpr std::string_view itemMarker = "└ ";
/// The symbols of which the picture is made; the last one before a category is its own.
constexpr std::array<std::string_view, 5> symbols{"⛁", "⛀", "⛶", "⛝", "⛚"};

struct Row {
    std::string name;
    std::string group;
    std::string count;
};

struct Section {
    std::string heading;
    std::vector<Row> rows;
};

/// The text without escape sequences of the form ESC [ … letter.
std::string withoutEscapes(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\x1b') {
            plain += text[i];
            continue;
        }
        if (i + 1 >= text.size() || text[i + 1] != '[') continue;
        i += 2;
        while (i < text.size() && (text[i] < '@' || text[i] > '~'))
            ++i;
    }
    return plain;
}

/// What stands right of the picture.
std::string_view withoutPicture(std::string_view line) {
    line = Text::trimmedHorizontally(line);
    for (bool found = true; found;) {
        found = false;
        for (const std::string_view symbol : symbols) {
            if (!line.starts_with(symbol)) continue;
            line.remove_prefix(symbol.size());
            line = Text::trimmedHorizontally(line);
            found = true;
        }
    }
    return line;
}

/// "10.0k" of "10.0k tokens (5.0%)".
std::optional<std::string> countOf(std::string_view text) {
    const std::string_view count = text.substr(0, text.find(' '));
    if (!ContextBreakdownParser::tokenCount(count)) return std::nullopt;
    return std::string(count);
}

/// "System tools: 10.0k tokens (5.0%)"
std::optional<Row> categoryOf(std::string_view line) {
    const std::size_t colon = line.rfind(": ");
    if (colon == std::string_view::npos) return std::nullopt;
    auto count = countOf(line.substr(colon + 2));
    if (!count) return std::nullopt;
    return Row{std::string(line.substr(0, colon)), {}, *std::move(count)};
}

/// "└ User (/home/dev/.claude/CLAUDE.md): 189 tokens"
std::optional<Row> itemOf(std::string_view line) {
    auto row = categoryOf(line.substr(itemMarker.size()));
    if (!row || !row->name.ends_with(')')) return std::nullopt;
    const std::size_t parenthesis = row->name.find(" (");
    if (parenthesis == std::string::npos) return std::nullopt;
    row->group = row->name.substr(parenthesis + 2, row->name.size() - parenthesis - 3);
    row->name.resize(parenthesis);
    return row;
}

/// Reads the lines of the drawn form.
class Reader {
public:
    void read(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            readLine(Text::trimmedHorizontally(text.substr(0, end)));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    [[nodiscard]] bool hasTotals() const { return !totals_.empty(); }

    [[nodiscard]] std::string markdown() const {
        std::string text = "## Context Usage\n\n**Model:** " + model_ + "  \n**Tokens:** " + totals_ +
                           "\n\n### Categories\n\n| Category | Tokens | Percentage |\n|---|---|---|\n";
        for (const Row& row : categories_)
            text += "| " + row.name + " | " + row.count + " | |\n";
        for (const Section& section : sections_)
            append(text, section);
        return text;
    }

private:
    void readLine(std::string_view line) {
        if (line.starts_with(itemMarker)) {
            const auto row = itemOf(line);
            if (row && !sections_.empty()) sections_.back().rows.push_back(*row);
            return;
        }
        const std::string_view right = withoutPicture(line);
        if (readTotals(right)) return;
        if (right.size() < line.size()) {
            if (const auto row = categoryOf(right)) categories_.push_back(*row);
        } else if (const std::size_t dot = line.find(" · "); dot != std::string_view::npos) {
            sections_.push_back({std::string(line.substr(0, dot)), {}});
        }
    }

    /// "claude-x • 61k/200k tokens (30%)"
    bool readTotals(std::string_view line) {
        const std::size_t separator = line.find(totalsSeparator);
        if (hasTotals() || separator == std::string_view::npos) return false;
        const std::string_view numbers = line.substr(separator + totalsSeparator.size());
        const std::size_t slash = numbers.find('/');
        const std::size_t end = numbers.find(" tokens");
        if (slash == std::string_view::npos || end == std::string_view::npos || slash > end) return false;
        model_ = std::string(line.substr(0, separator));
        totals_ = std::string(numbers.substr(0, slash)) + " / " +
                  std::string(numbers.substr(slash + 1, end - slash - 1));
        return true;
    }

    static void append(std::string& text, const Section& section) {
        const std::string heading = Text::lowercased(section.heading);
        const bool isFiles = heading == "memory files";
        text += isFiles ? "\n### Memory Files\n\n| Type | Path | Tokens |\n|---|---|---|\n"
                : heading == "mcp tools"
                    ? "\n### MCP Tools\n\n| Tool | Server | Tokens |\n|---|---|---|\n"
                    : "\n### " + section.heading + "\n\n| Name | Source | Tokens |\n|---|---|---|\n";
        for (const Row& row : section.rows)
            text += "| " + row.name + " | " + row.group + " | " + row.count + " |\n";
    }

    std::string model_;
    std::string totals_;
    std::vector<Row> categories_;
    std::vector<Section> sections_;
};

} // namespace

std::string asMarkdown(std::string_view text) {
    if (ContextBreakdownParser::reportedTotals(text)) return std::string(text);
    const std::string plain = withoutEscapes(text);
    Reader reader;
    reader.read(plain);
    return reader.hasTotals() ? reader.markdown() : std::string(text);
}

} // namespace loadscope::TerminalReport
