// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "tests/Support/Testing.h"

#include <set>

namespace {

using Answer = std::optional<std::string>;
using Paths = std::vector<std::string>;

TEST(CLILocators, SearchTheOverrideThenThePlacesThenTheShell) {
    struct Case {
        const char* name;
        Answer override;
        std::set<std::string> executables;
        Answer shellAnswer;
        Answer expected; ///< nothing: not found
    };
    const Paths path{"/p", "/q"};
    const std::string home = "/u/.local/bin/", brew = "/opt/homebrew/bin/", local = "/usr/local/bin/";
    for (const std::string tool : {"claude", "codex"}) {
        const std::vector<Case> cases{
            {"the first place wins", {}, {local + tool, brew + tool}, {}, brew + tool},
            {"home before all", {}, {home + tool, brew + tool}, {}, home + tool},
            {"an override keeps its spaces", " /my", {" /my", home + tool}, {}, " /my"},
            {"an override that is not there", "/my", {local + tool}, {}, local + tool},
            {"the shell's answer is trimmed", {}, {"/n/x"}, "\n/n/x \r\n", "/n/x"},
            {"two lines are no path", {}, {"/n/x"}, "Welcome\n/n/x\n", {}},
            {"a place before the shell", {}, {local + tool, "/n/x"}, "/n/x", local + tool},
            {"an answer that is not executable", {}, {}, "/n/x", {}},
            {"a blank answer", {}, {""}, " \n", {}},
            {"no answer", {}, {}, {}, {}},
            {"a folder of the path", {}, {"/p/" + tool, "/q/" + tool}, "/n/x", "/p/" + tool},
            {"a place before the path", {}, {"/p/" + tool, local + tool}, {}, local + tool}};
        for (const Case& testCase : cases) {
            const auto isExecutable = [&](const auto& path) { return testCase.executables.contains(path); };
            const auto shell = [&] { return testCase.shellAnswer; };
            Answer found;
            try {
                found = tool == "codex"
                            ? CodexCLILocator::locate(testCase.override, "/u", isExecutable, shell, path).path
                            : ClaudeCLILocator::resolve(testCase.override, "/u", isExecutable, shell, path);
            } catch (const ProbeError& error) {
                EXPECT_TRUE(error.is<ProbeError::CLINotFound>()) << testCase.name;
            }
            EXPECT_EQ(found, testCase.expected) << tool << ": " << testCase.name;
        }
    }
}

TEST(CLILocators, NameEveryPlaceTheySearch) {
    EXPECT_EQ(ClaudeCLILocator::searchedPaths({}, "/u", {"/p", "/usr/local/bin", "/"}),
              (Paths{"/u/.local/bin/claude", "/opt/homebrew/bin/claude", "/usr/local/bin/claude", "/p/claude",
                     "/claude", "zsh -lc 'command -v claude'"}));
    EXPECT_EQ(CodexCLILocator::searchedPaths(" \u00a0\t", "/u"),
              (Paths{"/u/.npm-global/bin/codex", "/u/.local/bin/codex", "/opt/homebrew/bin/codex",
                     "/usr/local/bin/codex", "zsh -lc 'command -v codex'"}));
    try {
        std::ignore = ClaudeCLILocator::resolve(
            " /x ", "/u", [](const std::string&) { return false; }, [] { return std::nullopt; });
        ADD_FAILURE() << "found something";
    } catch (const ProbeError& error) {
        EXPECT_EQ(error, ProbeError(ProbeError::CLINotFound{
                             {" /x ", "/u/.local/bin/claude", "/opt/homebrew/bin/claude",
                              "/usr/local/bin/claude", "zsh -lc 'command -v claude'"}}));
    }
}

} // namespace
