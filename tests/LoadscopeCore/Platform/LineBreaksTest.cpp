// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LineBreaks.h"

#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace loadscope {
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

TEST(LineBreaks, GiveTheSameLinesFromBothEndsAndAsAList) {
    std::vector<std::string> texts{"", "a", "a\r\nb\n\nc", "a\vb\fc\rd", "a\u0085b\u2028c\u2029", "\u2028",
                                   // bytes of breaks within other characters, and cut-off breaks
                                   "\u00a8\u20a8\u2027x\xC2", "\x85\xA8\xE2\x80", "\xE2\xC2\x85z"};
    std::mt19937 random(7); // the same texts in every run
    const std::vector<std::string> pieces{"a", " ", "\n", "\r", "\u0085", "\u2028", "\u2029", "é", "€"};
    for (int text = 0; text < 200; ++text) {
        std::string& joined = texts.emplace_back();
        for (int piece = 0; piece < 12; ++piece)
            joined += pieces[random() % pieces.size()];
    }
    for (const auto& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(walked(text), Text::lines(text));
        EXPECT_EQ(walkedFromTheEnd(text), Text::lines(text));
    }
}

} // namespace
} // namespace loadscope
