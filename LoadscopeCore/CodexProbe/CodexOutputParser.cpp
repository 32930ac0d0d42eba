// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/LineBreaks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

namespace loadscope::CodexOutputParser {

namespace {

constexpr std::array<std::string_view, 3> nestedKeys{"info", "payload", "msg"};

/// Finds the places in a stream at which a usage report may stand, without parsing it: the end of a key (or
/// of a text) "usage" or "total_token_usage", or an escape that could spell a letter of such a key. Every
/// other line is passed over, so a stream of hundreds of megabytes costs little more than a search.
class ReportFinder {
public:
    explicit ReportFinder(std::string_view text) : text_(text) {}

    /// Offset of the next such place at or after `from`, which never decreases between calls.
    std::size_t next(std::size_t from) {
        if (key_ < from || !started_) key_ = find("usage\"", from);
        if (escape_ < from || !started_) escape_ = nextLetterEscape(from);
        started_ = true;
        return std::min(key_, escape_);
    }

private:
    [[nodiscard]] std::size_t find(std::string_view needle, std::size_t from) const {
        if (from >= text_.size()) return text_.size();
        const void* found = ::memmem(text_.data() + from, text_.size() - from, needle.data(), needle.size());
        return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text_.data())
                     : text_.size();
    }

    /// Underscores and small letters are U+005F and U+0061 to U+007A.
    [[nodiscard]] std::size_t nextLetterEscape(std::size_t from) const {
        constexpr std::string_view escape = "\\u00";
        std::size_t offset = find(escape, from);
        while (offset + escape.size() < text_.size()) {
            const char digit = text_[offset + escape.size()];
            if (digit >= '5' && digit <= '7') return offset;
            offset = find(escape, offset + escape.size());
        }
        return text_.size();
    }

    std::string_view text_;
    std::size_t key_ = 0;
    std::size_t escape_ = 0;
    bool started_ = false;
};

/// The object, nested at any depth under the known keys, whose member `key` is an object.
const Json::Value* holderOf(std::string_view key, const Json::Value& object) {
    if (Json::objectMember(object, key)) return &object;
    for (const auto nestedKey : nestedKeys) {
        const Json::Value* nested = Json::objectMember(object, nestedKey);
        const Json::Value* holder = nested ? holderOf(key, *nested) : nullptr;
        if (holder) return holder;
    }
    return nullptr;
}

std::optional<std::int64_t> integerInText(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

std::optional<std::int64_t> truncated(double number) {
    constexpr double bound = 9223372036854775808.0;
    const double whole = std::trunc(number);
    if (!(whole >= -bound && whole < bound)) return std::nullopt;
    return static_cast<std::int64_t>(whole);
}

/// More lenient than `Json::integral`: fractions are cut off, booleans and texts of digits count.
std::optional<std::int64_t> integer(const Json::Value* value) {
    if (!value) return std::nullopt;
    if (value->is_boolean()) return value->get<bool>() ? 1 : 0;
    if (value->is_string()) return integerInText(value->get_ref<const std::string&>());
    if (value->is_number_float()) return truncated(value->get<double>());
    return Json::integral(value);
}

std::optional<TokenCount> countUnder(std::string_view key, const Json::Value& event) {
    const Json::Value* holder = holderOf(key, event);
    if (!holder) return std::nullopt;
    const auto tokens = integer(Json::member(*Json::objectMember(*holder, key), "input_tokens"));
    if (!tokens) return std::nullopt;
    return TokenCount{*tokens, integer(Json::member(*holder, "model_context_window"))};
}

std::optional<TokenCount> countInLine(std::string_view line) {
    const auto event = Json::parse(LineBreaks::trimmedLine(line));
    if (!event || !event->is_object()) return std::nullopt;
    const auto count = countUnder("total_token_usage", *event);
    return count ? count : countUnder("usage", *event);
}

/// The window of an event or of the object nested in it, when it is one.
std::optional<std::int64_t> windowIn(const Json::Value& event) {
    auto window = integer(Json::member(event, "model_context_window"));
    for (const auto nestedKey : nestedKeys) {
        const Json::Value* nested = window ? nullptr : Json::objectMember(event, nestedKey);
        if (nested) window = integer(Json::member(*nested, "model_context_window"));
    }
    return window && *window > 0 ? window : std::nullopt;
}

} // namespace

Header header(std::string_view jsonLines) {
    constexpr std::size_t mostBytes = 65'536;
    Header header;
    LineBreaks::Walker walker(jsonLines.substr(0, mostBytes));
    while (walker.advance() && !(header.model && header.contextWindow)) {
        const auto event = Json::parse(LineBreaks::trimmedLine(walker.line()));
        if (!event || !event->is_object()) continue;
        const Json::Value* const model = Json::member(*event, "model");
        if (!header.model && model && model->is_string() && !model->get_ref<const std::string&>().empty())
            header.model = model->get<std::string>();
        if (!header.contextWindow) header.contextWindow = windowIn(*event);
    }
    return header;
}

std::optional<TokenCount> firstTokenCount(std::string_view jsonLines) {
    ReportFinder reports(jsonLines);
    std::size_t position = 0;
    while (position < jsonLines.size()) {
        const std::size_t hit = reports.next(position);
        if (hit == jsonLines.size()) break;
        const std::size_t start = LineBreaks::lineStart(jsonLines, hit, position);
        const std::size_t end = LineBreaks::next(jsonLines, hit);
        if (auto count = countInLine(jsonLines.substr(start, end - start))) return count;
        position = end;
    }
    return std::nullopt;
}

} // namespace loadscope::CodexOutputParser
