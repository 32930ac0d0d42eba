// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "tests/Support/Testing.h"

#include <deque>

namespace {

using ProbeEnvironment::Tool;

TEST(ProbeEnvironment, DropsOnlyWhatWouldRedirectTheChild) {
    struct Case {
        Tool tool;
        Environment base;
        Environment expected;
    };
    const Environment busy{
        {"PATH", "/bin"},           {"CLAUDECODE", "1"},        {"CLAUDE_CODE_OAUTH_TOKEN", "t"},
        {"CLAUDE_CODE_X", "1"},     {"ANTHROPIC_API_KEY", "k"}, {"ANTHROPIC_OTHER", "m"},
        {"CLAUDE_CONFIG_DIR", "/c"}};
    Environment forClaude = busy;
    for (const auto* name : {"CLAUDECODE", "CLAUDE_CODE_X", "ANTHROPIC_API_KEY"})
        forClaude.erase(name);
    const Environment similar{{"claude_code_x", "1"}, {"CLAUDE_CODE", "2"}, {"CLAUDECODE2", "3"}};
    const std::vector<Case> cases{
        {Tool::claude, busy, forClaude},
        {Tool::codex, busy, {{"PATH", "/bin"}, {"ANTHROPIC_OTHER", "m"}}},
        {Tool::claude, similar, similar},
        {Tool::claude, {{"CLAUDE_CONFIG_DIR", "c"}}, {{"CLAUDE_CONFIG_DIR", "/w/c"}}},
        {Tool::claude, {{"CLAUDE_CONFIG_DIR", "  "}}, {}}};
    for (const auto& [tool, base, expected] : cases)
        EXPECT_EQ(ProbeEnvironment::childEnvironment(tool, base, "/w"), expected);
}

TEST(ProbeEnvironment, HoldsForTheSessionsOfBothTools) {
    struct Variable {
        const char* name;
        const char* value;
        bool reachesClaude, reachesCodex;
    };
    const Variable variables[] = {{"CLAUDECODE", "1", false, false},
                                  {"ANTHROPIC_BASE_URL", "https://other", false, false},
                                  {"ANTHROPIC_API_KEY", "key", false, false},
                                  {"ANTHROPIC_AUTH_TOKEN", "token", false, false},
                                  {"CLAUDE_CODE_USE_BEDROCK", "1", false, false},
                                  {"CLAUDE_CODE_", "1", false, false},
                                  {"CLAUDE_CODE_OAUTH_TOKEN", "own", true, false},
                                  {"CLAUDE_CONFIG_DIR", "/own", true, false},
                                  {"CLAUDECODE_X", "1", true, true},
                                  {"ANTHROPIC_MODEL", "opus", true, true}};
    const TemporaryFolder home;
    std::deque<ScopedEnvironment> set;
    set.emplace_back("HOME", home.path());
    for (const Variable& variable : variables)
        set.emplace_back(variable.name, variable.value);
    // Each runs once more beside its session, to be asked for its version; the session waits for that.
    const std::string script = "#!/bin/sh\nenv >\"$HOME/$$\" && mv \"$HOME/$$\" \"$0 $1\"\n"
                               "until [ -e \"$0 --version\" ]; do sleep 0.01; done\n";
    for (const char* tool : {"claude", "codex"})
        writeExecutable(home.path(std::string(".local/bin/") + tool), script);

    EXPECT_THROW(ProbeRunner::forUser().run(home.path(), {}, {}), ProbeError) << "it prints no report";
    std::ignore = CodexProbe().run(home.path(), {});
    for (const char* run : {"claude -p", "claude --version", "codex exec", "codex --version"}) {
        const std::string environment = "\n" + readFile(home.path(std::string(".local/bin/") + run));
        const bool isClaude = std::string_view(run).starts_with("claude");
        for (const auto& [name, value, reachesClaude, reachesCodex] : variables) {
            const std::string line = std::string("\n") + name + "=" + value + "\n";
            EXPECT_EQ(environment.find(line) != std::string::npos, isClaude ? reachesClaude : reachesCodex)
                << name << " and " << run;
        }
    }
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

    const Environment alternative{{"CLAUDE_CONFIG_DIR", "~/alt"}}, blank{{"CLAUDE_CONFIG_DIR", "  "}};
    EXPECT_EQ(TranscriptLocator::defaultProjectsRoot("/h", {}), "/h/.claude/projects");
    EXPECT_EQ(TranscriptLocator::defaultProjectsRoot("/h", alternative), "/Users/u/alt/projects");
    EXPECT_EQ(TranscriptLocator::defaultProjectsRoot("/h", blank), "/h/.claude/projects");
    EXPECT_EQ(TranscriptLocator::configFolder("/h", alternative), "/Users/u/alt");
    EXPECT_EQ(TranscriptLocator::configFolder("/h", blank), "/h/.claude");
    EXPECT_EQ(TranscriptLocator::configFolder("/h", {{"CLAUDE_CONFIG_DIR", "c"}}),
              UserFolders::current() + "/c");
}

} // namespace
