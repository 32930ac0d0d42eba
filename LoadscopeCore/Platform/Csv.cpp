// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Csv.h"

#include "LoadscopeCore/Platform/Text.h"

namespace loadscope {

std::string Csv::cell(std::string_view text) {
    std::string content = Text::repaired(text);
    if (!content.empty() && std::string_view("=+-@\t\r").find(content.front()) != std::string_view::npos)
        content.insert(content.begin(), '\'');
    if (content.find_first_of("\",\r\n") == std::string::npos) return content;
    std::string quoted = "\"";
    for (const char character : content) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string Csv::line(std::initializer_list<std::string> texts) {
    std::string line;
    for (const std::string& text : texts)
        line += (line.empty() ? "" : ",") + cell(text);
    return line + "\r\n";
}

} // namespace loadscope
