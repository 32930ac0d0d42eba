// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

using CodexOutputParser::firstTokenCount;
using Count = std::optional<CodexOutputParser::TokenCount>;

Count count(std::int64_t tokens, std::optional<std::int64_t> window = {}) {
    return CodexOutputParser::TokenCount{tokens, window};
}

TEST(CodexOutputParser, TakesTheFirstUsageReport) {
    struct Case {
        const char* name;
        std::string text;
        Count expected;
    };
    const std::string done = R"({"type":"turn.completed","usage":{"input_tokens":9876,"output_tokens":7}})";
    const std::vector<Case> cases{
        {"nested, counts as texts",
         R"({"type":"event","payload":{"info":{"total_token_usage":{"input_tokens":"12345","output_tokens":7},"model_context_window":272000}}})",
         count(12345, 272000)},
        {"at the top level", done, count(9876)},
        {"an older stream: a report without figures comes first",
         "{\"prompt\":\"hi\"}\n{\"msg\":{\"type\":\"task_started\",\"model_context_window\":272000}}\n"
         "{\"msg\":{\"type\":\"token_count\",\"info\":null}}\n"
         "{\"msg\":{\"info\":{\"total_token_usage\":{\"input_tokens\":11},\"model_context_window\":5}}}\n" +
             done,
         count(11, 5)},
        {"the total form before the other one",
         R"({"usage":{"input_tokens":1},"info":{"total_token_usage":{"input_tokens":2}}})", count(2)},
        {"the other form when the total one cannot be read",
         R"({"usage":{"input_tokens":1},"total_token_usage":{"input_tokens":"4 2"},"model_context_window":8})",
         count(1, 8)},
        {"the next line when neither can", "{\"usage\":{\"input_tokens\":\"\"}}\n" + done, count(9876)},
        {"a window inside the usage does not count",
         R"({"usage":{"input_tokens":1,"model_context_window":8}})", count(1)},
        {"a window that is no number", R"({"usage":{"input_tokens":1},"model_context_window":"4.5"})",
         count(1)},
        {"the first nested key that leads to one",
         R"({"msg":{"usage":{"input_tokens":3}},"payload":{"usage":{"input_tokens":2}},"info":{"x":1}})",
         count(2)},
        {"a usage that is no object is passed over", R"({"usage":7,"msg":{"usage":{"input_tokens":3}}})",
         count(3)},
        {"arrays are not searched",
         R"([{"usage":{"input_tokens":1}}])"
         "\n"
         R"({"info":[{"total_token_usage":{"input_tokens":1}}]})",
         {}},
        {"other keys are not followed", R"({"item":{"usage":{"input_tokens":1}}})", {}},
        {"escaped keys", R"({"\u0075sage":{"input_tokens":1}})", count(1)},
        {"a key escaped at its end", R"({"usag\u0065":{"\u0069nput_tokens":1}})", count(1)},
        {"escapes that spell nothing",
         "{\"text\":\"\\u001b[1m \\u00e9 \\u2028\"}\n{\"text\":\"\\u0061\"}\n" + done, count(9876)},
        {"words in a text",
         R"({"text":"\"usage\":{\"input_tokens\":1}"})"
         "\n" +
             done,
         count(9876)},
        {"every kind of line break",
         "x\r\n" + done.substr(0, 10) + "\v{}\f\u0085\u2028 \t" + done +
             "\t \u2029{\"usage\":{\"input_tokens\":5}}",
         count(9876)},
        {"a line that is cut off", "{\"usage\":{\"input_tokens\":1}\n" + done, count(9876)},
        {"text after the object", "{\"usage\":{\"input_tokens\":1}} WARNING\n", {}},
        {"spaces other than blanks around it", "\u00a0" + done, {}},
        {"nothing", "", {}},
    };
    for (const auto& [name, text, expected] : cases)
        EXPECT_EQ(firstTokenCount(text), expected) << name;
}

TEST(CodexOutputParser, ReadsIntegersGenerouslyButWhole) {
    const std::vector<std::pair<std::string, std::optional<std::int64_t>>> cases{
        {"42", 42},
        {"-3", -3},
        {"2.9", 2},
        {"-2.9", -2},
        {"1e3", 1000},
        {"true", 1},
        {"false", 0},
        {"\"42\"", 42},
        {"\"+42\"", 42},
        {"\"-42\"", -42},
        {"\"007\"", 7},
        {"\"\"", {}},
        {"\" 42\"", {}},
        {"\"4 2\"", {}},
        {"\"4.0\"", {}},
        {"\"+-4\"", {}},
        {"\"+\"", {}},
        {"\"0x4\"", {}},
        {"null", {}},
        {"{}", {}},
        {"[1]", {}},
        {"1e30", {}},
        {"18446744073709551615", {}},
        {"9223372036854775807", 9223372036854775807},
        {"\"9223372036854775808\"", {}},
        {"99999999999999999999999", {}}};
    for (const auto& [value, expected] : cases) {
        const auto found = firstTokenCount("{\"usage\":{\"input_tokens\":" + value + "}}");
        EXPECT_EQ(found ? std::optional(found->inputTokens) : std::nullopt, expected) << value;
    }
}

TEST(CodexOutputParser, SurvivesHostileStreams) {
    std::string nested = R"({"usage":{"input_tokens":1}})";
    for (int depth = 0; depth < 100; ++depth)
        nested = R"({"info":)" + nested + "}";
    std::string manyHits;
    for (int hit = 0; hit < 100'000; ++hit)
        manyHits += "usage\" ";
    EXPECT_EQ(firstTokenCount(nested), count(1));
    EXPECT_EQ(firstTokenCount(R"({"usage":)" + std::string(100'000, '[')), std::nullopt);
    EXPECT_EQ(firstTokenCount(manyHits + "\n" + nested), count(1)); // hours when each hit parsed the line
    EXPECT_EQ(firstTokenCount("usage\"\\u00"), std::nullopt);
}

} // namespace
} // namespace loadscope
