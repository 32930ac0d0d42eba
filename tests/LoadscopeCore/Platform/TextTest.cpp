// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Text.h"

#include "tests/Support/Testing.h"

namespace {

using namespace std::string_literals;

using Sizes = std::vector<std::pair<std::string, std::size_t>>;

struct TextCase {
    std::string (*function)(std::string_view);
    std::string input, expected;
};

std::string trimmed(std::string_view text) { return std::string(Text::trimmed(text)); }

std::string trimmedAcross(std::string_view text) { return std::string(Text::trimmedHorizontally(text)); }

/// The parts of the text between "|".
std::vector<std::string> parts(std::string_view text) {
    std::vector<std::string> result(1);
    for (const char byte : text)
        byte == '|' ? result.emplace_back() : result.back() += byte;
    return result;
}

const std::string family = "👨‍👩‍👧‍👦";

TEST(Text, GivesTheExpectedText) {
    const std::vector<TextCase> cases = {
        {trimmed, " \t\r\n\v\f\u0085\u00a0\u2028\u3000", ""},
        {trimmed, "\u00a0\n x y \u2003\r\n", "x y"},
        {trimmed, "\u200bx\ufeff", "\u200bx\ufeff"},
        {trimmed, " \xA0 x \xC2 ", "\xA0 x \xC2"},
        {trimmedAcross, "\t \u00a0\nx\u2028 \u3000", "\nx\u2028"},
        {Text::lowercased, "CLAUDE.md ÀÉ Straße ΟΔΟΣ", "claude.md àé straße οδος"},
        {Text::lowercased, "@AZ[`az{", "@az[`az{"},
        {Text::lowercased, "É\xFFZ\xE2\x80", "é\xFFz\xE2\x80"},
        {Text::lettersAndNumbers, "MCP tools (½ é)_日本-Ⅷ\xFF🚀", "MCPtools½é日本Ⅷ"},
        {Text::visible, "\x1b]52;c;x\x07\n\t\r", "\\x1b]52;c;x\\x07\\n\\t\\r"},
        {Text::visible, "\x7f\u0080\u009b\u0085", "\\x7f\\u0080\\u009b\\u0085"},
        {Text::visible, "a\0\u2028\u2029"s, "a\\x00\\u2028\\u2029"},
        {Text::visible, "\u061c\u200e\u202e\u2066\u2069", "\\u061c\\u200e\\u202e\\u2066\\u2069"},
        {Text::visible, "\x9b\xE2\x82", "\\x9b\\xe2\\x82"},
        {Text::visible, family + " né 日本 שלום", family + " né 日本 שלום"},
        {Text::visibleLines, "a\n\u202e\r\n", "a\n\\u202e\\r\n"},
        {Text::repaired, "a\xE2\x82z\xED\xA0\x80", "a\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFD"}};
    for (const TextCase& entry : cases)
        EXPECT_EQ(entry.function(entry.input), entry.expected) << Text::visible(entry.input);
}

TEST(Text, TellsValidUTF8FromInvalid) {
    const std::vector<std::string> valid = {"", "a\0z"s, "é€😀", "\U0010FFFF"};
    const std::vector<std::string> invalid = {"\xC0\x80", "\xED\xA0\x80", "\x80", "\xF0\x9F\x98"};
    // A padding moves each case over the places where the search for ASCII works by blocks.
    for (std::size_t size = 0; size < 70; ++size) {
        const std::string padding(size, 'x');
        for (const std::string& text : valid)
            EXPECT_TRUE(Text::isValidUTF8(padding + text + padding)) << text;
        for (const std::string& text : invalid)
            EXPECT_FALSE(Text::isValidUTF8(padding + text + padding)) << Text::visible(text);
    }
}

TEST(Text, CountsAndCutsByUserPerceivedCharacters) {
    std::string marks = "e";
    for (int index = 0; index < 600; ++index)
        marks += "\u0301";
    const std::vector<std::string> cases = {"a|b",   "\r\n|\n|\r",  "e\u0301|x", "a|" + family,
                                            "🇩🇪|🇫🇷", "\xFF|\xE2|a", "각|각|日",  marks + "|b"};
    for (const std::string& characters : cases) {
        // Repeated, so that characters lie over the edges of what is looked at in one piece.
        for (const std::size_t repetitions : {1U, 300U}) {
            std::string text;
            std::vector<std::size_t> ends{0};
            for (std::size_t round = 0; round < repetitions; ++round) {
                for (const std::string& character : parts(characters))
                    ends.push_back((text += character).size());
            }
            EXPECT_EQ(Text::characterCount(text), ends.size() - 1) << characters;
            for (std::size_t count = 0; count < ends.size(); count += 1 + count / 3)
                EXPECT_EQ(Text::prefix(text, count).size(), ends[count]) << count;
            EXPECT_EQ(Text::prefix(text, ends.size()), text);
        }
    }
}

TEST(Text, OrdersByCodePointAfterNormalisation) {
    const std::vector<std::string> ranks = parts("|a|abc|b|f|z|é|é\xFF|각|\uFFFD|😀|\xFF");
    for (std::size_t left = 0; left < ranks.size(); ++left) {
        for (std::size_t right = left + 1; right < ranks.size(); ++right) {
            EXPECT_LT(Text::compareCanonically(ranks[left], ranks[right]), 0) << ranks[left];
            EXPECT_GT(Text::compareCanonically(ranks[right], ranks[left]), 0) << ranks[left];
        }
    }
    EXPECT_EQ(Text::compareCanonically("é\xFF각", "e\u0301\xFF\u1100\u1161\u11a8"), 0);
    EXPECT_LT(Text::compareCanonically("f", "e\u0301"), 0);
}

TEST(Text, MeasuresTerminalColumns) {
    const Sizes cases = {{"", 0},         {"abc", 3},  {"né", 2}, {"ne\u0301", 2}, {"日本", 4},
                         {"🚀", 2},        {family, 2}, {"🇩🇪", 2}, {"❤", 1},        {"❤\ufe0f", 2},
                         {"\u200b", 0},   {"각", 2},   {"ｱ", 1},  {"—…·", 3},      {"\xFF", 1},
                         {"परियोजना", 8}, {"अक्तू॰", 4}, {"น้ำ", 2}, {"ｶﾞ", 2},       {"\u1100\u1161\u11a8", 2}};
    for (const auto& [text, width] : cases)
        EXPECT_EQ(Text::terminalWidth(text), width) << text;
}

TEST(Text, SeesWhitespaceAtTheBeginning) {
    const Sizes cases = {{"", 0},       {"a ", 0},     {" a", 1},   {"\r\n", 1},
                         {"\u00a0", 2}, {"\u3000", 3}, {"\xC2", 0}, {"\xA0", 0}};
    for (const auto& [text, size] : cases) {
        std::size_t length = 99;
        EXPECT_EQ(Text::beginsWithWhitespace(text, length), size > 0) << text;
        EXPECT_EQ(length, size) << text;
    }
}

} // namespace
