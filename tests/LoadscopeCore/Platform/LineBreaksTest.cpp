// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LineBreaks.h"

#include "tests/Support/Testing.h"

namespace {

std::vector<std::string_view> walked(std::string_view text) {
    std::vector<std::string_view> lines;
    LineBreaks::Walker walker(text);
    while (walker.advance())
        lines.push_back(walker.line());
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
    using Lines = std::vector<std::string_view>;
    const std::vector<std::pair<std::string, Lines>> cases{
        {"a\nb\vc\fd\re\r\nf\u0085g\u2028h\u2029i", {"a", "b", "c", "d", "e", "f", "g", "h", "i"}},
        {"\n\r\n\n", {}},
        {"\na\n\nb", {"a", "b"}},
        {"a\x85z\xE2\x80z\xC2", {"a\x85z\xE2\x80z\xC2"}},
        {"\u00a8\u20a8\u2027x", {"\u00a8\u20a8\u2027x"}},
        {"\xE2\xC2\x85z", {"\xE2", "z"}}};
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(walked(text), lines) << testing::PrintToString(text);
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
