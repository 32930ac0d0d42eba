// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"

#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>
#include <variant>

namespace {

using Outcome = std::variant<ProbeOutput, ProbeError>;

Outcome parsed(const std::string& standardOutput, const std::string& standardError = "", int exitCode = 0) {
    try {
        return ProbeOutputParser::parse(standardOutput, standardError, exitCode);
    } catch (const ProbeError& error) {
        return error;
    }
}

TEST(ProbeOutputParser, TurnsOutputIntoAResultOrTheErrorThatExplainsIt) {
    const std::string full =
        R"({"is_error":false,"result":"report","session_id":"abc","usage":{"input_tokens":3,)"
        R"("cache_creation_input_tokens":1000,"cache_read_input_tokens":20000,"output_tokens":50}})";
    const std::string odd = R"({"session_id":"a","result":7,"is_error":"true","usage":{"input_tokens":2.0,)"
                            R"("cache_read_input_tokens":1.5,"cache_creation_input_tokens":true}})";
    const std::vector<std::pair<std::string, ProbeOutput>> results{
        {full, {"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {"\n\t " + full + "\u2003\n", {"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {odd, {"a", "", ProbeUsage{2, 0, 0, 0}}},
        {R"({"session_id":"abc"})", {"abc", "", {}}},
        {"\x1b[?25l" + full, {"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {"Welcome, {you}\n[info] at home\n{ \n" + full.substr(1),
         {"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {R"([{"type":"result","session_id":"first"},{"type":"system","claude_code_version":"2.1.330"},)"
         R"({"type":"result","session_id":"last"},{"type":"event"},7])",
         {"last", "", {}, "2.1.330"}},
        {R"({"session_id":"abc","usage":{"output_tokens":5}})", {"abc", "", {}}},
        {R"({"session_id":"a","usage":{"input_tokens":123456789012345678901234567890}})", {"a", "", {}}}};
    for (const auto& [text, expected] : results)
        EXPECT_TRUE(parsed(text, "", 1) == Outcome(expected)) << text;

    struct Case {
        std::string standardOutput;
        std::string standardError;
        int exitCode;
        ProbeError::Case expected;
    };
    using Unreadable = ProbeError::UnreadableOutput;
    using Failed = ProbeError::SessionFailed;
    const ProbeError::NotAuthenticated signedOut;
    const std::vector<Case> failures{
        {R"({"is_error":true,"result":"Not logged in · Please run /login"})", "", 1, signedOut},
        {R"({"is_error":true,"result":"INVALID API Key"})", "", 0, signedOut},
        {R"({"is_error":true,"result":" overloaded\n"})", "", 0, Failed{" overloaded\n"}},
        {R"({"is_error":true,"session_id":"a"})", "", 0, Failed{"The session reported is_error."}},
        {" {\"result\":\"r\"} ", "", 0, Unreadable{"{\"result\":\"r\"}"}},
        {R"({"session_id":""})", "", 0, Unreadable{R"({"session_id":""})"}},
        {"[" + full + "]", "", 0, Unreadable{"[" + full + "]"}},
        {"\x1b[?25l{}", "", 0, Unreadable{"\x1b[?25l{}"}},
        {"{} {}", "", 0, Unreadable{"{} {}"}},
        {full + full, "", 0, Unreadable{full + full}},
        {full + " bye", "", 0, Unreadable{full + " bye"}},
        {std::string(70'000, ' ') + "x" + std::string(70'000, '[') + full, "", 0,
         Unreadable{"x" + std::string(499, '[') + "…"}},
        {"[]", "", 0, Unreadable{"[]"}},
        {"oops", "Error: OAuth Session EXPIRED", 1, signedOut},
        {"oops", "Error: OAuth Session EXPIRED", 0, Unreadable{"oops"}},
        {"run /login", "please", 1, Unreadable{"run /login"}},
        {" \n", "cannot start\n", 1, Unreadable{"cannot start"}},
        {"", "", 0, Unreadable{"(no output)"}},
        {std::string(2000, 'x'), "", 0, Unreadable{std::string(500, 'x') + "…"}}};
    for (const auto& [standardOutput, standardError, exitCode, expected] : failures) {
        const Outcome outcome = parsed(standardOutput, standardError, exitCode);
        const auto* error = std::get_if<ProbeError>(&outcome);
        EXPECT_TRUE(error && error->value() == expected) << standardOutput << standardError;
    }
}

TEST(ProbeOutputParser, SurvivesHostileResults) {
    const std::string deep(100'000, '[');
    const std::vector<std::string> texts{deep,
                                         R"({"session_id":)" + deep,
                                         std::string(100'000, '{'),
                                         "{\"session_id\":\"\xff\"}",
                                         std::string("{}\0", 3),
                                         "{\"a\":1e999}"};
    for (const auto& text : texts)
        EXPECT_TRUE(std::holds_alternative<ProbeError>(parsed(text))) << text.substr(0, 40);
}

TEST(ProbeUsage, SaturatesTheStartupTotal) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ((ProbeUsage{3, 1000, 20000, 50}.startupTotal()), 21003);
    EXPECT_EQ((ProbeUsage{most, most, 1, 0}.startupTotal()), most);
    EXPECT_EQ((ProbeUsage{least, -1, 0, 0}.startupTotal()), least);
    EXPECT_EQ((ProbeUsage{most, 10, -20, 0}.startupTotal()), most - 10);
}

} // namespace
