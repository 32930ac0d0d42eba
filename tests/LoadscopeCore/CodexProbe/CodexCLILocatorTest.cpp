// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"

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

TEST(CodexCLILocator, SearchesLikeItsTwinInPlacesOfItsOwn) {
    const std::vector<Search> searches{
        {"the first place wins",
         {},
         {"/usr/local/bin/codex", "/opt/homebrew/bin/codex"},
         {},
         "/opt/homebrew/bin/codex"},
        {"npm's folder before home",
         {},
         {"/Users/u/.npm-global/bin/codex", "/Users/u/.local/bin/codex"},
         {},
         "/Users/u/.npm-global/bin/codex"},
        {"an override keeps its spaces", " /my/codex", {" /my/codex"}, {}, " /my/codex"},
        {"the shell's answer is trimmed", {}, {"/n/codex"}, "/n/codex\n", "/n/codex"},
        {"two lines are no path", {}, {"/n/codex"}, "Welcome\n/n/codex\n", {}},
        {"an answer that is not executable", {}, {}, "/n/codex", {}},
        {"nothing at all", {}, {}, {}, {}},
    };
    for (const auto& [name, override, executables, shellAnswer, expected] : searches) {
        const auto found = CodexCLILocator::locate(
            override, "/Users/u", [&](const std::string& path) { return executables.contains(path); },
            [&] { return shellAnswer; });
        EXPECT_EQ(found.path, expected) << name;
    }
    EXPECT_EQ(CodexCLILocator::searchedPaths("  ", "/Users/u"),
              (std::vector<std::string>{"/Users/u/.npm-global/bin/codex", "/Users/u/.local/bin/codex",
                                        "/opt/homebrew/bin/codex", "/usr/local/bin/codex",
                                        "zsh -lc 'command -v codex'"}));
}

} // namespace
} // namespace loadscope
