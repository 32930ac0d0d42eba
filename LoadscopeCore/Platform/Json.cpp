// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Json.h"

#include "LoadscopeCore/Platform/DecimalNumber.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <nlohmann/json.hpp>
#include <vector>

namespace loadscope {

namespace {

/// Whether the text is fit for the parser, which has no bound on nesting and takes a NUL byte for the end of
/// the text. Broken texts may pass; the parser refuses them.
bool isParserSafe(std::string_view text, Json::Extent extent) {
    const bool isBounded = extent == Json::Extent::ofAReport;
    if (isBounded && text.size() > Json::maximumSize) return false;
    std::size_t parts = 0;
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
            if (!inString && isBounded && ++parts > Json::maximumParts) return false;
            break;
        case ',':
        case ':':
            if (!inString && isBounded && ++parts > Json::maximumParts) return false;
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

std::optional<Json::Value> parsed(std::string_view text) {
    try {
        Json::Value value = Json::Value::parse(text, nullptr, false);
        if (value.is_discarded()) return std::nullopt;
        return value;
    } catch (const std::exception&) { // no memory for it
        return std::nullopt;
    }
}

/// Builds a document, but for the elements of one list.
class ListSplitter : public nlohmann::json_sax<Json::Value> {
public:
    ListSplitter(std::string_view outerKey, std::string_view innerKey, Json::ElementReader& reader)
        : outerKey_(outerKey), innerKey_(innerKey), reader_(reader) {}

    [[nodiscard]] Json::Value document() && { return std::move(document_); }

    bool null() override { return scalar({}); }
    bool boolean(bool value) override { return scalar(value); }
    bool number_integer(std::int64_t value) override { return scalar(value); }
    bool number_unsigned(std::uint64_t value) override { return scalar(value); }
    bool number_float(double value, const std::string& /*text*/) override { return scalar(value); }
    bool string(std::string& value) override { return scalar(value); }
    bool binary(Json::Value::binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override { return open(Json::Value::object()); }
    bool start_array(std::size_t /*size*/) override { return open(Json::Value::array()); }
    bool end_array() override { return close(); }

    bool key(std::string& value) override {
        key_ = value;
        if (depth_ == 1) outer_ = value == outerKey_;
        if (depth_ == 2) inner_ = value == innerKey_;
        return true;
    }

    bool end_object() override {
        if (isInList() && depth_ == elementDepth) reader_.endElement();
        return close();
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const Json::Value::exception& /*error*/) override {
        return false;
    }

private:
    static constexpr std::size_t listDepth = 3; // inside the array
    static constexpr std::size_t elementDepth = 4;

    [[nodiscard]] bool isInList() const { return isList_ && depth_ >= listDepth; }

    bool scalar(Json::Value value) {
        if (isInList()) {
            if (depth_ == elementDepth && isObject_) reader_.field(key_, std::move(value));
        } else {
            place(std::move(value));
        }
        return true;
    }

    bool open(Json::Value container) {
        if (isInList()) {
            if (depth_ == elementDepth && isObject_) reader_.field(key_, {});
            if (depth_ == listDepth) isObject_ = container.is_object();
        } else {
            const bool isArray = container.is_array();
            open_.push_back(place(std::move(container)));
            isList_ = depth_ == 2 && isArray && outer_ && inner_ && open_[1]->is_object();
            if (isList_) reader_.beginList();
        }
        ++depth_;
        return true;
    }

    bool close() {
        --depth_;
        if (isInList()) return true;
        isList_ = false;
        open_.pop_back();
        return true;
    }

    Json::Value* place(Json::Value value) {
        if (open_.empty()) return &(document_ = std::move(value));
        if (open_.back()->is_array()) return &open_.back()->emplace_back(std::move(value));
        return &((*open_.back())[key_] = std::move(value));
    }

    const std::string_view outerKey_;
    const std::string_view innerKey_;
    Json::ElementReader& reader_;
    Json::Value document_;
    std::vector<Json::Value*> open_;
    std::string key_;
    std::size_t depth_ = 0;
    bool outer_ = false;
    bool inner_ = false;
    bool isList_ = false;   ///< the list is open
    bool isObject_ = false; ///< its current element
};

/// Copies a text and puts what every parser can read in the place of what this one refuses although the
/// grammar allows it: escapes of half a surrogate pair become U+FFFD, numbers beyond a double the largest
/// one.
class Mender {
public:
    explicit Mender(std::string_view text) : text_(text) {}

    /// Nothing when there was nothing to mend.
    std::optional<std::string> mend() {
        bool inString = false;
        while (position_ < text_.size()) {
            const char character = text_[position_];
            if (character == '"') inString = !inString;
            if (inString && character == '\\') {
                copyEscape();
            } else if (!inString && (character == '-' || isDigit(character))) {
                copyNumber();
            } else {
                copy(1);
            }
        }
        return changed_ ? std::optional(std::move(mended_)) : std::nullopt;
    }

private:
    static constexpr std::size_t escapeSize = 6; // of \uXXXX

    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    void copy(std::size_t size) {
        mended_ += text_.substr(position_, size);
        position_ += size;
    }

    /// The value of the \uXXXX at an offset, if one stands there.
    [[nodiscard]] std::optional<unsigned> escapedUnit(std::size_t offset) const {
        if (offset + escapeSize > text_.size() || text_[offset] != '\\' || text_[offset + 1] != 'u')
            return std::nullopt;
        unsigned unit = 0;
        const char* const last = text_.data() + offset + escapeSize;
        const auto [end, error] = std::from_chars(last - 4, last, unit, 16);
        return error == std::errc() && end == last ? std::optional(unit) : std::nullopt;
    }

    void copyEscape() {
        const auto isIn = [](std::optional<unsigned> unit, unsigned first, unsigned last) {
            return unit && *unit >= first && *unit <= last;
        };
        const auto unit = escapedUnit(position_);
        if (isIn(unit, 0xD800, 0xDBFF) && isIn(escapedUnit(position_ + escapeSize), 0xDC00, 0xDFFF)) {
            copy(2 * escapeSize);
        } else if (isIn(unit, 0xD800, 0xDFFF)) {
            mended_ += "\\ufffd";
            position_ += escapeSize;
            changed_ = true;
        } else {
            copy(2);
        }
    }

    void copyNumber() {
        const std::size_t end = std::min(text_.find_first_not_of("+-.eE0123456789", position_), text_.size());
        const std::string_view number = text_.substr(position_, end - position_);
        const auto value = decimalNumber(number);
        if (!value || !std::isinf(*value)) return copy(number.size());
        mended_ += number.starts_with('-') ? "-1e308" : "1e308";
        position_ = end;
        changed_ = true;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::string mended_;
    bool changed_ = false;
};

} // namespace

std::optional<Json::Value> Json::parse(std::string_view text, Extent extent) {
    if (!isParserSafe(text, extent)) return std::nullopt;
    if (auto value = parsed(text)) return value;
    const auto mended = Mender(text).mend();
    return mended ? parsed(*mended) : std::nullopt;
}

std::optional<Json::Value> Json::parseObject(std::string_view text) {
    std::optional<Value> value = parse(Text::trimmed(text));
    if (!value || !value->is_object()) return std::nullopt;
    return value;
}

std::optional<Json::Value> Json::parseObject(std::string_view text, std::string_view outerKey,
                                             std::string_view innerKey, ElementReader& reader) {
    const std::string_view trimmed = Text::trimmed(text);
    if (!isParserSafe(trimmed, Extent::ofAReport)) return std::nullopt;
    const auto read = [&](std::string_view document) -> std::optional<Value> {
        try {
            ListSplitter splitter(outerKey, innerKey, reader);
            if (!Value::sax_parse(document, &splitter)) return std::nullopt;
            Value value = std::move(splitter).document();
            return value.is_object() ? std::optional(std::move(value)) : std::nullopt;
        } catch (const std::exception&) { // no memory for it
            return std::nullopt;
        }
    };
    if (auto value = read(trimmed)) return value;
    const auto mended = Mender(trimmed).mend();
    return mended ? read(*mended) : std::nullopt;
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
