// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Text.h"

#include "LoadscopeCore/Platform/LineBreaks.h"
#include "tests/Support/Testing.h"

namespace {

using namespace std::string_literals;

std::string trimmed(std::string_view text) { return std::string(Text::trimmed(text)); }

/// The parts of the text between "|".
std::vector<std::string> parts(std::string_view text) {
    std::vector<std::string> result(1);
    for (const char byte : text)
        byte == '|' ? result.emplace_back() : result.back() += byte;
    return result;
}

const std::string family = "👨‍👩‍👧‍👦";

TEST(Text, IsTrimmedAndLowered) {
    EXPECT_EQ(trimmed(" \t\r\n\v\f\u0085\u00a0\u2028\u3000"), "");
    EXPECT_EQ(trimmed("\u00a0\n x y \u2003\r\n"), "x y");
    EXPECT_EQ(trimmed("\u200bx\ufeff"), "\u200bx\ufeff");
    EXPECT_EQ(trimmed(" \xA0 x \xC2 "), "\xA0 x \xC2");
    EXPECT_EQ(Text::trimmedHorizontally("\t \u00a0\nx\u2028 \u3000"), "\nx\u2028");
    EXPECT_EQ(Text::lowercased("CLAUDE.md ÀÉ Straße ΟΔΟΣ"), "claude.md àé straße οδος");
    EXPECT_EQ(Text::lowercased("@AZ[`az{"), "@az[`az{");
    EXPECT_EQ(Text::lowercased("É\xFFZ\xE2\x80"), "é\xFFz\xE2\x80");
    EXPECT_EQ(Text::lettersAndNumbers("MCP tools (½ é)_日本-Ⅷ\xFF🚀"), "MCPtools½é日本Ⅷ");
    const auto space = [](const std::string& text) {
        std::size_t length = 99;
        const bool begins = Text::beginsWithWhitespace(text, length);
        return (begins ? "" : "no ") + std::to_string(length);
    };
    EXPECT_EQ(each(space, "", "a ", " a", "\r\n", "\u00a0", "\u3000", "\xC2", "\xA0"),
              "no 0 no 0 1 1 2 3 no 0 no 0");
}

TEST(Text, IsShownWithoutWhatATerminalObeys) {
    EXPECT_EQ(Text::visible("\x1b]52;c;x\x07\n\t\r \x1f~"), "\\x1b]52;c;x\\x07\\n\\t\\r \\x1f~");
    EXPECT_EQ(Text::visible("\x7f\u0080\u009b\u0085\u009f\u00a0"), "\\x7f\\u0080\\u009b\\u0085\\u009f\u00a0");
    EXPECT_EQ(Text::visible("a\0\u2027\u2028\u2029\u2030"s), "a\\x00\u2027\\u2028\\u2029\u2030");
    EXPECT_EQ(Text::visible("\u061c\u200e\u202e\u2066\u2069"), "\\u061c\\u200e\\u202e\\u2066\\u2069");
    EXPECT_EQ(Text::visible("\x9b\xE2\x82"), "\\x9b\\xe2\\x82");
    EXPECT_EQ(Text::visible(family + " né 日本 שלום"), family + " né 日本 שלום");
    EXPECT_EQ(Text::visibleLines("a\n\u202e\r\n"), "a\n\\u202e\\r\n");
    EXPECT_EQ(Text::repaired("a\xE2\x82z\xED\xA0\x80"), "a\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFD");
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
    EXPECT_EQ(each(Text::terminalWidth, "", "abc", " ~", "\x7f\x1f", "né", "ne\u0301", "\u200b", "—…·",
                   "\xFF", "\xFF\u0301", "\ue000", "\u0378"),
              "0 3 2 0 2 2 0 3 1 1 1 1");
    EXPECT_EQ(each(Text::terminalWidth, "日本", "🚀", family, "🇩🇪", "🇦🇿", "🇿🇦", "🇩", "❤", "❤\ufe0e", "❤\ufe0f",
                   "１", "ｱ", "ｶﾞ"),
              "4 2 2 2 2 2 1 1 1 2 2 1 2");
    EXPECT_EQ(each(Text::terminalWidth, "각", "\u1100\u1161\u11a8", "परियोजना", "अक्तू॰", "น้ำ"), "2 2 8 4 2");
}

std::vector<std::string_view> walked(std::string_view text) {
    std::vector<std::string_view> lines;
    LineBreaks::Walker walker(text);
    while (walker.advance())
        lines.push_back(walker.line());
    EXPECT_TRUE(walker.line().empty());
    return lines;
}

std::vector<std::string_view> walkedFromTheEnd(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t end = text.size(); end > 0;) {
        const std::size_t start = LineBreaks::lineStart(text, end);
        if (start < end) lines.push_back(text.substr(start, end - start));
        end = start - LineBreaks::sizeBefore(text, start);
    }
    std::ranges::reverse(lines);
    return lines;
}

TEST(LineBreaks, PartTextsAtEveryBreakAndAtNothingElse) {
    const auto lines = [](const std::string& text) {
        return listed(walked(text), [](std::string_view line) { return Text::visible(line); });
    };
    EXPECT_EQ(lines("a\nb\vc\fd\re\r\nf\u0085g\u2028h\u2029i"), "a; b; c; d; e; f; g; h; i; ");
    EXPECT_EQ(lines("\n\r\n\n"), "");
    EXPECT_EQ(lines("\na\n\nb\tc\x0e"), "a; b\\tc\\x0e; ");
    EXPECT_EQ(lines("a\x85z\xE2\x80z\xC2"), "a\\x85z\\xe2\\x80z\\xc2; ");
    EXPECT_EQ(lines("\u00a8\u20a8\u2027x"), "\u00a8\u20a8\u2027x; ");
    EXPECT_EQ(lines("\xE2\xC2\x85z"), "\\xe2; z; ");
    EXPECT_EQ(each(LineBreaks::trimmedLine, " \ta b\t ", "\u00a0x", "a"), "a b \u00a0x a");
    EXPECT_EQ(LineBreaks::trimmedLine(" \t"), "");
    EXPECT_EQ(shown(LineBreaks::lineStart("a\nb", 3, 3), LineBreaks::lineStart("a\nb", 9),
                    LineBreaks::lineStart("a\nb", 1)),
              "3 2 0");
}

TEST(LineBreaks, GiveTheSameLinesFromBothEnds) {
    std::vector<std::string> texts{"", "\u2028", "a\r\nb\n\nc", "\x85\xA8\xE2\x80", "\xE2\xC2\x85z"};
    std::mt19937 random(7); // the same texts in every run
    const std::vector<std::string> pieces{"a", " ", "\n", "\r", "\u0085", "\u2028", "\u2029", "é", "€"};
    for (int text = 0; text < 200; ++text) {
        std::string& joined = texts.emplace_back();
        for (int piece = 0; piece < 12; ++piece)
            joined += pieces[random() % pieces.size()];
    }
    for (const auto& text : texts)
        EXPECT_EQ(walked(text), walkedFromTheEnd(text)) << testing::PrintToString(text);
}

} // namespace
