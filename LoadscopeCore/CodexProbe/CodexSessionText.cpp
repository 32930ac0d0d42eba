// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexSessionText.h"

#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <nlohmann/json.hpp>

namespace loadscope::CodexSessionText {

std::optional<std::string> errorMessage(std::string_view line) {
    const auto event = Json::parse(LineBreaks::trimmedLine(line));
    const Json::Value* const type = event ? Json::member(*event, "type") : nullptr;
    const Json::Value* const message = event ? Json::member(*event, "message") : nullptr;
    if (!type || *type != "error" || !message || !message->is_string()) return std::nullopt;
    return message->get<std::string>();
}

std::optional<std::string> lastError(std::string_view output) {
    constexpr std::size_t mostBytesParsed = std::size_t{8} << 20;
    std::size_t parsed = 0;
    std::size_t end = output.size();
    while (parsed <= mostBytesParsed) {
        const std::size_t hit = output.substr(0, end).rfind("\"error\"");
        if (hit == std::string_view::npos) break;
        const std::size_t start = LineBreaks::lineStart(output, hit);
        const std::size_t lineEnd = LineBreaks::next(output, hit);
        if (auto message = errorMessage(output.substr(start, lineEnd - start))) return message;
        parsed += lineEnd - start;
        end = start;
    }
    return std::nullopt;
}

std::optional<std::string_view> complaint(std::string_view output) {
    constexpr std::string_view beginning = "error:";
    std::size_t position = 0;
    while (true) {
        const std::size_t hit = output.find(beginning, position);
        if (hit == std::string_view::npos) return std::nullopt;
        const std::size_t start = LineBreaks::lineStart(output, hit, position);
        const std::size_t end = LineBreaks::next(output, hit);
        const std::string_view line = LineBreaks::trimmedLine(output.substr(start, end - start));
        if (line.starts_with(beginning)) return line;
        position = end;
    }
}

bool refusesEphemeral(std::string_view output) {
    const auto line = complaint(output);
    return line && line->find("unexpected argument '--ephemeral'") != std::string_view::npos;
}

std::string lastLines(std::string_view output, std::size_t count) {
    std::string joined;
    std::size_t end = output.size();
    while (count > 0 && end > 0) {
        const std::size_t start = LineBreaks::lineStart(output, end);
        // Of a line without end no more is copied than a detail shows, and what tells that it goes on.
        const std::string_view line = Text::prefix(LineBreaks::trimmedLine(output.substr(start, end - start)),
                                                   ProbeError::detailLimit + 1);
        if (!line.empty()) {
            joined.insert(0, joined.empty() ? "" : "\n").insert(0, line);
            --count;
        }
        end = start - LineBreaks::sizeBefore(output, start);
    }
    return joined;
}

} // namespace loadscope::CodexSessionText
