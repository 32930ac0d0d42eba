// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Markdown.h"

#include "LoadscopeCore/Platform/Text.h"

namespace loadscope::Markdown {
namespace {

/// Punctuation that begins nothing in any dialect of Markdown where it stands within a line.
bool isHarmless(char character) {
    constexpr std::string_view harmless = " -,;/()'?";
    const bool isPunctuation = (character > ' ' && character < '0') || (character > '9' && character < 'A') ||
                               (character > 'Z' && character < 'a') || (character > 'z' && character <= '~');
    return !isPunctuation || harmless.find(character) != std::string_view::npos;
}

/// Each mark that could mean something as the entity that shows it.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (isHarmless(character))
            result += character;
        else
            result += "&#" + std::to_string(static_cast<int>(character)) + ';';
    }
    return result;
}

} // namespace

std::string name(std::string_view text) {
    std::string visible = Text::visible(text);
    if (Text::characterCount(visible) > mostCharacters)
        visible = std::string(Text::prefix(visible, mostCharacters)) + "…";
    // Services look for mentions in all text that is not code, once its entities are resolved.
    return visible.empty() ? "" : "<code>" + escaped(visible) + "</code>";
}

std::string sentence(std::string_view text) {
    std::string result = Text::visible(text);
    std::string safe;
    for (const char character : result) {
        constexpr std::string_view dangerous = "|`@<>&[]*_~\\#:!$";
        if (dangerous.find(character) == std::string_view::npos)
            safe += character;
        else
            safe += "&#" + std::to_string(static_cast<int>(character)) + ';';
    }
    return safe;
}

std::string table(const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows) {
    if (rows.empty()) return {};
    const auto line = [](const auto& cells, const auto& textOf) {
        std::string text = "|";
        for (const auto& cell : cells)
            text += ' ' + std::string(textOf(cell)) + " |";
        return text + '\n';
    };
    std::string text = line(columns, [](const Column& column) { return column.title; });
    text += line(columns, [](const Column& column) { return column.isNumber ? "---:" : "---"; });
    for (const auto& row : rows)
        text += line(row, [](const std::string& cell) { return cell; });
    return text;
}

std::string folded(std::string_view summary, std::string_view content) {
    return "<details><summary>" + std::string(summary) + "</summary>\n\n" + std::string(content) +
           "\n</details>\n";
}

} // namespace loadscope::Markdown
