// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Json.h"

#include "LoadscopeCore/Platform/Text.h"

#include <cmath>
#include <exception>
#include <limits>
#include <nlohmann/json.hpp>

namespace loadscope {

namespace {

/// Whether the text is fit for the parser, which has no bound on nesting and takes a NUL byte for the end of
/// the text. Broken texts may pass; the parser refuses them.
bool isParserSafe(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t offset = 0; offset < text.size(); ++offset) {
        switch (text[offset]) {
        case '\0':
            return false;
        case '"':
            inString = !inString;
            break;
        case '\\':
            // The escaped character cannot end the string; a NUL there is refused by the parser itself.
            if (inString) ++offset;
            break;
        case '[':
        case '{':
            if (!inString && ++depth > Json::maximumDepth) return false;
            break;
        case ']':
        case '}':
            if (!inString) --depth;
            break;
        default:
            break;
        }
    }
    return true;
}

} // namespace

std::optional<Json::Value> Json::parse(std::string_view text) {
    if (!isParserSafe(text)) return std::nullopt;
    try {
        Value value = Value::parse(text, nullptr, false);
        if (value.is_discarded()) return std::nullopt;
        return value;
    } catch (const std::exception&) { // no memory for it
        return std::nullopt;
    }
}

std::optional<Json::Value> Json::parseObject(std::string_view text) {
    std::optional<Value> value = parse(Text::trimmed(text));
    if (!value || !value->is_object()) return std::nullopt;
    return value;
}

const Json::Value* Json::member(const Value& object, std::string_view key) {
    if (!object.is_object()) return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

const Json::Value* Json::objectMember(const Value& object, std::string_view key) {
    const Value* const value = member(object, key);
    return value != nullptr && value->is_object() ? value : nullptr;
}

std::optional<std::int64_t> Json::integral(const Value* value) {
    if (value == nullptr) return std::nullopt;
    if (value->is_number_unsigned()) {
        const auto number = value->get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    if (value->is_number_integer()) return value->get<std::int64_t>();
    if (!value->is_number_float()) return std::nullopt;
    // 2^63 and its negative are exact doubles; the largest 64-bit number is not.
    constexpr double bound = 9223372036854775808.0;
    const auto number = value->get<double>();
    if (!(number >= -bound && number < bound) || std::trunc(number) != number) return std::nullopt;
    return static_cast<std::int64_t>(number);
}

} // namespace loadscope
