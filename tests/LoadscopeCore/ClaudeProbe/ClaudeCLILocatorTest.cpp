// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

#include <gtest/gtest.h>
#include <set>

namespace loadscope {
namespace {

using Answer = std::optional<std::string>;

struct Search {
    const char* name;
    Answer override;
    std::set<std::string> executables;
    Answer shellAnswer;
    Answer expected; ///< nothing: not found
};

TEST(ClaudeCLILocator, SearchesTheOverrideThenThePlacesThenTheShell) {
    const std::vector<Search> searches{
        {"the first place wins",
         {},
         {"/usr/local/bin/claude", "/opt/homebrew/bin/claude"},
         {},
         "/opt/homebrew/bin/claude"},
        {"home before all",
         {},
         {"/Users/u/.local/bin/claude", "/opt/homebrew/bin/claude"},
         {},
         "/Users/u/.local/bin/claude"},
        {"an override", "/my/claude", {"/my/claude", "/usr/local/bin/claude"}, {}, "/my/claude"},
        {"an override that is not there",
         "/my/claude",
         {"/usr/local/bin/claude"},
         {},
         "/usr/local/bin/claude"},
        {"an override keeps its spaces", " /my/claude ", {" /my/claude "}, {}, " /my/claude "},
        {"the shell's answer is trimmed", {}, {"/n/claude"}, "\n/n/claude \r\n", "/n/claude"},
        {"two lines are no path", {}, {"/n/claude"}, "Welcome\n/n/claude\n", {}},
        {"a place before the shell",
         {},
         {"/usr/local/bin/claude", "/n/claude"},
         "/n/claude",
         "/usr/local/bin/claude"},
        {"an answer that is not executable", {}, {}, "/n/claude", {}},
        {"a blank answer", {}, {""}, " \n", {}},
        {"nothing at all", {}, {}, {}, {}},
    };
    for (const auto& [name, override, executables, shellAnswer, expected] : searches) {
        Answer found;
        try {
            found = ClaudeCLILocator::resolve(
                override, "/Users/u", [&](const std::string& path) { return executables.contains(path); },
                [&] { return shellAnswer; });
        } catch (const ProbeError& error) {
            EXPECT_TRUE(error.is<ProbeError::CLINotFound>()) << name;
        }
        EXPECT_EQ(found, expected) << name;
    }
}

TEST(ClaudeCLILocator, NamesEveryPlaceItSearched) {
    const std::vector<std::pair<Answer, std::vector<std::string>>> cases{
        {{}, {}}, {" \u00a0\t", {}}, {" /x ", {" /x "}}, {"\n", {"\n"}}};
    for (auto [override, expected] : cases) {
        expected.insert(expected.end(), {"/Users/u/.local/bin/claude", "/opt/homebrew/bin/claude",
                                         "/usr/local/bin/claude", "zsh -lc 'command -v claude'"});
        try {
            std::ignore = ClaudeCLILocator::resolve(
                override, "/Users/u", [](const std::string&) { return false; }, [] { return std::nullopt; });
            ADD_FAILURE() << "found something";
        } catch (const ProbeError& error) {
            EXPECT_EQ(error, ProbeError(ProbeError::CLINotFound{expected}));
        }
    }
}

} // namespace
} // namespace loadscope
