// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/ReconnectionWatch.h"

#include "LoadscopeCore/CodexProbe/CodexSessionText.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace loadscope {
namespace {

constexpr std::string_view announcement = "Reconnecting... ";
constexpr std::size_t longestLine = 65'536;

std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

/// "Reconnecting... 5/5 (…)", but not "Reconnecting... 4/5 (…)".
bool announcesLast(std::string_view message) {
    if (!message.starts_with(announcement)) return false;
    message.remove_prefix(announcement.size());
    const auto attempt = takeNumber(message);
    if (!attempt || !message.starts_with('/')) return false;
    message.remove_prefix(1);
    const auto attempts = takeNumber(message);
    return attempts && *attempts > 0 && *attempt >= *attempts;
}

bool isLastReconnection(std::string_view line) {
    if (line.find(announcement) == std::string_view::npos) return false;
    const auto message = CodexSessionText::errorMessage(line);
    return message && announcesLast(*message);
}

} // namespace

void ReconnectionWatch::append(std::string_view part) {
    isTooLong_ = isTooLong_ || line_.size() + part.size() > longestLine;
    if (isTooLong_) {
        line_.clear();
    } else {
        line_ += part;
    }
}

bool ReconnectionWatch::sawLast(std::span<const char> chunk) {
    std::string_view rest(chunk.data(), chunk.size());
    while (!isOver_) {
        const std::size_t end = rest.find('\n');
        append(rest.substr(0, end));
        if (end == std::string_view::npos) return false;
        isOver_ = isLastReconnection(line_);
        line_.clear();
        isTooLong_ = false;
        rest.remove_prefix(end + 1);
        if (isOver_) return true;
    }
    return false;
}

} // namespace loadscope
