// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>

/// Strict reading of JSON that comes from outside. Never throws, whatever the text holds. A source file that
/// looks into a `Value` includes <nlohmann/json.hpp> itself, so that the many files which only pass one on
/// stay quick to compile.
namespace loadscope::Json {

using Value = nlohmann::json;

/// How much of a document is read. Values take many times the memory of their text.
enum class Extent {
    ofAReport, ///< up to `maximumSize` bytes and `maximumParts` parts: far more than any tool has to say
    any        ///< whatever its size: for a file of our own
};

/// The one JSON document that the whole text holds, or nothing. No comments, no trailing text. Nesting beyond
/// `maximumDepth` counts as unreadable, so that later recursive uses of the value are safe. An escape of half
/// a surrogate pair reads as U+FFFD, a number beyond what a double holds as one beyond every integer.
[[nodiscard]] std::optional<Value> parse(std::string_view text, Extent extent = Extent::ofAReport);

/// `parse` after trimming white space, when the top level is an object.
[[nodiscard]] std::optional<Value> parseObject(std::string_view text);

/// Takes the objects of a long list as they are read. Plain values of fields only: an array or an object in
/// a field counts as null.
class ElementReader {
public:
    virtual ~ElementReader() = default;
    /// The list begins; one that came before under the same key counts for nothing.
    virtual void beginList() = 0;
    /// A field of the current object; of one with this key the last one counts.
    virtual void field(std::string_view key, Value value) = 0;
    virtual void endElement() = 0;
};

/// `parseObject` for a document with one long list: the elements of the array under `outerKey` and, in that
/// object, `innerKey` go to `reader` in place of being kept, those that are objects; the array stays behind,
/// empty. Only when a document is given back, what the reader got belongs to it.
[[nodiscard]] std::optional<Value> parseObject(std::string_view text, std::string_view outerKey,
                                               std::string_view innerKey, ElementReader& reader);

/// The value of a key, or null when `object` is not an object or lacks it.
[[nodiscard]] const Value* member(const Value& object, std::string_view key);

/// The member if it is an object.
[[nodiscard]] const Value* objectMember(const Value& object, std::string_view key);

/// The number of a JSON number with an integral value that fits 64 bits (2.0 counts, 2.5 and true do not).
[[nodiscard]] std::optional<std::int64_t> integral(const Value* value);

constexpr int maximumDepth = 512;
constexpr std::size_t maximumSize = 16'000'000;
constexpr std::size_t maximumParts = 500'000; ///< the brackets, commas and colons between strings

} // namespace loadscope::Json
