// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Json.h"

#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace std::string_literals;

std::string nested(std::size_t depth, std::string_view open, char close) {
    std::string text;
    for (std::size_t index = 0; index < depth; ++index)
        text += open;
    return text + "1" + std::string(depth, close);
}

TEST(Json, AcceptsExactlyOneStrictDocument) {
    const std::vector<std::string> accepted = {R"({"a":[2.5,"\u00e9\"]",null]})", " [] \n", "\"[[{\\\"{\"",
                                               nested(512, "[", ']'), nested(512, "{\"a\":", '}')};
    for (const std::string& text : accepted)
        EXPECT_TRUE(Json::parse(text)) << text.substr(0, 40);
    EXPECT_TRUE(Json::parse('"' + std::string(1000, '[') + '"'));
    const std::vector<std::string> refused = {
        "",        "{} {}", "{}x",  "{}\0"s,      "{}\0x"s,   "[\"\\\0\"]"s, "{\"a\":1,}", "[1] //",
        "{'a':1}", "[NaN]", "[01]", "[\"\xFF\"]", "[\"\n\"]", "[\"open",     "]]]]"};
    for (const std::string& text : refused)
        EXPECT_FALSE(Json::parse(text)) << text;
    for (const std::size_t depth : {513U, 1'000'000U})
        EXPECT_FALSE(Json::parse(nested(depth, "[", ']')) || Json::parse(nested(depth, "{\"a\":", '}')));
    EXPECT_FALSE(Json::parse(std::string(100'000, '[')));
}

TEST(Json, ReadsWhatAParserRefusesAlthoughTheGrammarAllowsIt) {
    const std::vector<std::pair<std::string, std::string>> cases{{R"("a\ud83d")", "a\uFFFD"},
                                                                 {R"("\ude00b")", "\uFFFDb"},
                                                                 {R"("\ud83d\ude00")", "😀"},
                                                                 {R"("\ud83d\ud83d\ude00")", "\uFFFD😀"},
                                                                 {R"("\ud83d\n\\ud83d")", "\uFFFD\n\\ud83d"},
                                                                 {R"("\uD83Dx 1e400")", "\uFFFDx 1e400"}};
    for (const auto& [text, expected] : cases) {
        const auto value = Json::parse(text);
        EXPECT_TRUE(value && *value == expected) << text;
    }
    const auto object = Json::parse(R"({"big":1e400,"low":-1e999,"small":1e-400,"total":7,"half":"\ud800"})");
    ASSERT_TRUE(object);
    EXPECT_EQ(Json::integral(Json::member(*object, "big")), std::nullopt);
    EXPECT_EQ(Json::integral(Json::member(*object, "low")), std::nullopt);
    EXPECT_EQ(Json::integral(Json::member(*object, "small")), 0);
    EXPECT_EQ(Json::integral(Json::member(*object, "total")), 7);
    for (const auto* text : {R"(["\ud8"])", R"(["\ud83d)", "[1e400", "[1e]", "[--1e400]"})
        EXPECT_FALSE(Json::parse(text)) << text;
}

TEST(Json, ReadsNoMoreThanAnyReportHas) {
    const auto array = [](std::size_t commas) {
        std::string text = "[\",,,,\",0";
        for (std::size_t count = 1; count < commas; ++count)
            text += ",0";
        return text + "]";
    };
    EXPECT_TRUE(Json::parse(array(Json::maximumParts - 1)));
    EXPECT_FALSE(Json::parse(array(Json::maximumParts)));
    EXPECT_TRUE(Json::parse(array(Json::maximumParts), Json::Extent::any));
    const std::string longest = '"' + std::string(Json::maximumSize - 2, 'x') + '"';
    EXPECT_TRUE(Json::parse(longest));
    EXPECT_FALSE(Json::parse(longest + ' '));
}

TEST(Json, ReadsMembersOnlyOfObjects) {
    const auto object = Json::parseObject(" \u00a0{\"o\":{\"n\":1},\"a\":[],\"z\":null}\r\n");
    ASSERT_TRUE(object);
    EXPECT_FALSE(Json::parseObject("[{}]"));
    EXPECT_EQ(Json::integral(Json::member(*Json::objectMember(*object, "o"), "n")), 1);
    EXPECT_EQ(Json::objectMember(*object, "a"), nullptr);
    EXPECT_TRUE(Json::member(*object, "z")->is_null());
    EXPECT_EQ(Json::member(*object, "none"), nullptr);
    EXPECT_EQ(Json::member(*Json::member(*object, "a"), "o"), nullptr);
}

TEST(Json, TakesIntegralNumbersThatFit) {
    const std::vector<std::pair<std::string, std::int64_t>> fitting = {{"0", 0},
                                                                       {"-7", -7},
                                                                       {"2.0", 2},
                                                                       {"-0.0", 0},
                                                                       {"1e3", 1000},
                                                                       {"9223372036854775807", INT64_MAX},
                                                                       {"-9223372036854775808", INT64_MIN},
                                                                       {"-9223372036854775808.0", INT64_MIN}};
    for (const auto& [text, number] : fitting)
        EXPECT_EQ(Json::integral(Json::member(Json::parse("{\"n\":" + text + "}").value(), "n")), number)
            << text;
    const std::vector<std::string> others = {"2.5",
                                             "true",
                                             "\"1\"",
                                             "null",
                                             "9223372036854775808",
                                             "18446744073709551616",
                                             "9223372036854775808.0",
                                             "1e300",
                                             "[1]"};
    for (const std::string& text : others)
        EXPECT_EQ(Json::integral(&Json::parse("[" + text + "]")->front()), std::nullopt) << text;
    EXPECT_EQ(Json::integral(nullptr), std::nullopt);
}

} // namespace
