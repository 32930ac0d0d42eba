// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <variant>

namespace loadscope {
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
    struct Case {
        const char* name;
        std::string standardOutput;
        std::string standardError;
        int exitCode;
        Outcome expected;
    };
    const auto unreadable = [](std::string text) {
        return ProbeError(ProbeError::UnreadableOutput{std::move(text)});
    };
    const std::string full =
        R"({"is_error":false,"result":"report","session_id":"abc","usage":{"input_tokens":3,)"
        R"("cache_creation_input_tokens":1000,"cache_read_input_tokens":20000,"output_tokens":50}})";
    const std::vector<Case> cases{
        {"a full result", full, "", 0, ProbeOutput{"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {"white space around, exit code 1", "\n\t " + full + "\u2003\n", "", 1,
         ProbeOutput{"abc", "report", ProbeUsage{3, 1000, 20000, 50}}},
        {"no usage", R"({"session_id":"abc","result":7})", "", 0, ProbeOutput{"abc", "", {}}},
        {"only output tokens", R"({"session_id":"abc","usage":{"output_tokens":5}})", "", 0,
         ProbeOutput{"abc", "", {}}},
        {"counts that are no integers",
         R"({"session_id":"a","usage":{"input_tokens":2.0,"cache_read_input_tokens":1.5,)"
         R"("cache_creation_input_tokens":true,"output_tokens":"4"}})",
         "", 0, ProbeOutput{"a", "", ProbeUsage{2, 0, 0, 0}}},
        {"a count beyond 64 bits",
         R"({"session_id":"a","usage":{"input_tokens":123456789012345678901234567890}})", "", 0,
         ProbeOutput{"a", "", {}}},
        {"is_error as a text", R"({"is_error":"true","session_id":"abc"})", "", 0,
         ProbeOutput{"abc", "", {}}},
        {"signed out", R"({"is_error":true,"result":"Not logged in · Please run /login"})", "", 1,
         ProbeError(ProbeError::NotAuthenticated{})},
        {"a bad key", R"({"is_error":true,"result":"INVALID API Key"})", "", 0,
         ProbeError(ProbeError::NotAuthenticated{})},
        {"another failure", R"({"is_error":true,"result":" overloaded\n","session_id":"a"})", "", 0,
         ProbeError(ProbeError::SessionFailed{" overloaded\n"})},
        {"a failure without words", R"({"is_error":true,"session_id":"a"})", "", 0,
         ProbeError(ProbeError::SessionFailed{"The session reported is_error."})},
        {"no session", " {\"result\":\"r\"} ", "", 0, unreadable("{\"result\":\"r\"}")},
        {"an empty session", R"({"session_id":""})", "", 0, unreadable(R"({"session_id":""})")},
        {"an array", "[" + full + "]", "", 0, unreadable(("[" + full + "]"))},
        {"an escape sequence before the object", "\x1b[?25l{}", "", 0, unreadable("\x1b[?25l{}")},
        {"two documents", "{} {}", "", 0, unreadable("{} {}")},
        {"an expired session", "oops", "Error: OAuth Session EXPIRED", 1,
         ProbeError(ProbeError::NotAuthenticated{})},
        {"the same with exit code 0", "oops", "Error: OAuth Session EXPIRED", 0, unreadable("oops")},
        {"a phrase is not joined over the two outputs", "run /login", "please", 1, unreadable("run /login")},
        {"only standard error", " \n", "cannot start\n", 1, unreadable("cannot start")},
        {"nothing at all", "", "", 0, unreadable("(no output)")},
        {"long output", std::string(2000, 'x'), "", 0, unreadable(std::string(500, 'x') + "…")},
    };
    for (const auto& [name, standardOutput, standardError, exitCode, expected] : cases)
        EXPECT_TRUE(parsed(standardOutput, standardError, exitCode) == expected) << name;
}

TEST(ProbeOutputParser, SurvivesHostileResults) {
    const std::string deep(100'000, '[');
    const std::vector<std::string> texts{deep,
                                         R"({"session_id":)" + deep,
                                         std::string(100'000, '{'),
                                         "{\"session_id\":\"\xff\"}",
                                         std::string("{}\0", 3),
                                         R"({"session_id":"\ud800"})",
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
} // namespace loadscope
