// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include "tests/Support/Testing.h"

namespace {

using CodexOutputParser::firstTokenCount;
using Count = std::optional<CodexOutputParser::TokenCount>;

Count count(std::int64_t tokens, std::optional<std::int64_t> window = {}) {
    return CodexOutputParser::TokenCount{tokens, window};
}

TEST(CodexOutputParser, TakesTheFirstUsageReport) {
    const std::string done = R"({"type":"turn.completed","usage":{"input_tokens":9876,"output_tokens":7}})";
    const std::string nested =
        R"({"payload":{"info":{"total_token_usage":{"input_tokens":"12"},"model_context_window":8}}})";
    const std::vector<std::pair<std::string, Count>> cases{
        {nested + "\n" + done, count(12, 8)},
        {"{\"msg\":{\"model_context_window\":9}}\n{\"msg\":{\"info\":null}}\n" + done + "\n" + nested,
         count(9876)},
        {R"({"usage":{"input_tokens":1},"info":{"total_token_usage":{"input_tokens":2}}})", count(2)},
        {R"({"usage":{"input_tokens":1},"total_token_usage":{"input_tokens":"4 2"},"model_context_window":8})",
         count(1, 8)},
        {"{\"usage\":{\"input_tokens\":\"\"}}\n" + done, count(9876)},
        {R"({"usage":{"input_tokens":1,"model_context_window":8}})", count(1)},
        {R"({"usage":{"input_tokens":1},"model_context_window":"4.5"})", count(1)},
        {R"({"msg":{"usage":{"input_tokens":3}},"payload":{"usage":{"input_tokens":2}},"info":{}})",
         count(2)},
        {R"({"usage":7,"msg":{"usage":{"input_tokens":3}}})", count(3)},
        {R"({"\u0075sage":{"input_tokens":1}})", count(1)},
        {R"({"usag\u0065":{"\u0069nput_tokens":1}})", count(1)},
        {"{\"text\":\"\\u001b[1m \\u00e9 \\u0061 \\\"usage\\\":{\\\"input_tokens\\\":1}\"}\n" + done,
         count(9876)},
        {"x\r\n" + done.substr(0, 10) + "\v{}\f\u0085\u2028 \t" + done + "\t \u2029" + nested, count(9876)},
        {"{\"usage\":{\"input_tokens\":1}\n" + done, count(9876)}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(firstTokenCount(text), expected) << text;
    for (const auto& text :
         {R"([{"usage":{"input_tokens":1}}])", R"({"info":[{"usage":{"input_tokens":1}}]})",
          R"({"item":{"usage":{"input_tokens":1}}})", R"({"usage":{"input_tokens":1}} WARNING)",
          "\u00a0{\"usage\":{\"input_tokens\":1}}", ""})
        EXPECT_EQ(firstTokenCount(text), std::nullopt) << text;
}

TEST(CodexOutputParser, ReadsIntegersGenerouslyButWhole) {
    const auto reading = [](const std::string& value) -> std::optional<std::int64_t> {
        const Count found = firstTokenCount("{\"usage\":{\"input_tokens\":" + value + "}}");
        return found ? std::optional(found->inputTokens) : std::nullopt;
    };
    for (const auto* value : {"42", "42.9", "4.2e1", "\"42\"", "\"+42\"", "\"0042\""})
        EXPECT_EQ(reading(value), 42) << value;
    for (const auto* value :
         {"\"\"", "\" 42\"", "\"4.0\"", "\"+-4\"", "\"+\"", "\"0x4\"", "null", "{}", "[1]", "1e30",
          "18446744073709551615", "\"9223372036854775808\"", "99999999999999999999999"})
        EXPECT_EQ(reading(value), std::nullopt) << value;
    EXPECT_EQ(reading("-2.9"), -2);
    EXPECT_EQ(reading("true"), 1);
    EXPECT_EQ(reading("false"), 0);
    EXPECT_EQ(reading("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
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
