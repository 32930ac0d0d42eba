// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeEnvironment.h"

#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "tests/Support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

using ProbeEnvironment::Tool;

TEST(ProbeEnvironment, DropsOnlyWhatWouldRedirectTheChild) {
    struct Case {
        const char* name;
        Tool tool;
        Environment base;
        Environment expected;
    };
    const Environment busy{
        {"PATH", "/usr/bin"},        {"CLAUDECODE", "1"},         {"CLAUDE_CODE_OAUTH_TOKEN", "t"},
        {"CLAUDE_CODE_X", "1"},      {"ANTHROPIC_API_KEY", "k"},  {"ANTHROPIC_OTHER", "m"},
        {"ANTHROPIC_BASE_URL", "u"}, {"CLAUDE_CONFIG_DIR", "/c"}, {"ANTHROPIC_AUTH_TOKEN", "a"}};
    const std::vector<Case> cases{
        {"Claude keeps its sign-in",
         Tool::claude,
         busy,
         {{"PATH", "/usr/bin"},
          {"CLAUDE_CODE_OAUTH_TOKEN", "t"},
          {"ANTHROPIC_OTHER", "m"},
          {"CLAUDE_CONFIG_DIR", "/c"}}},
        {"Codex gets nothing of Claude", Tool::codex, busy, {{"PATH", "/usr/bin"}, {"ANTHROPIC_OTHER", "m"}}},
        {"names are matched exactly",
         Tool::claude,
         {{"claude_code_x", "1"}, {"CLAUDE_CODE", "2"}, {"CLAUDECODE2", "3"}, {"CLAUDE_CODE_", "4"}},
         {{"claude_code_x", "1"}, {"CLAUDE_CODE", "2"}, {"CLAUDECODE2", "3"}}},
        {"a relative folder is made absolute",
         Tool::claude,
         {{"CLAUDE_CONFIG_DIR", "cfg"}},
         {{"CLAUDE_CONFIG_DIR", "/w/cfg"}}},
        {"a blank folder is removed", Tool::claude, {{"CLAUDE_CONFIG_DIR", "  "}}, {}},
        {"nothing stays nothing", Tool::codex, {}, {}},
    };
    for (const auto& [name, tool, base, expected] : cases)
        EXPECT_EQ(ProbeEnvironment::childEnvironment(tool, base, "/w"), expected) << name;
}

TEST(TranscriptLocator, MakesConfigurationFoldersAbsolute) {
    const ScopedEnvironment home("HOME", "/Users/u");
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases{
        {"  ~/cfg \n", "/Users/u/cfg"},
        {"~", "/Users/u"},
        {"cfg/../other", "/w/other"},
        {"/a/./b/", "/a/b"},
        {" \t\n", {}},
        {"", {}},
        {"~nobody-of-that-name/x", "/w/~nobody-of-that-name/x"},
        {"../../..", "/"}};
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(TranscriptLocator::normalizedConfigDir(value, "/w"), expected) << value;

    const std::vector<std::pair<Environment, std::string>> roots{
        {{}, "/Users/u/.claude/projects"},
        {{{"CLAUDE_CONFIG_DIR", "~/alt"}}, "/Users/u/alt/projects"},
        {{{"CLAUDE_CONFIG_DIR", "  "}}, "/Users/u/.claude/projects"}};
    for (const auto& [environment, expected] : roots)
        EXPECT_EQ(TranscriptLocator::defaultProjectsRoot("/Users/u", environment), expected);
}

} // namespace
} // namespace loadscope
