// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

TEST(ProbeError, WordsEveryCase) {
    struct Case {
        ProbeError error;
        std::string caseName;
        std::string headline;
        std::string detail;
    };
    const std::vector<Case> cases{
        {ProbeError::RepositoryUnreadable{"/src/app"}, "repositoryUnreadable",
         "This folder could not be read.",
         "/src/app exists but its contents could not be listed. macOS may be blocking access — allow "
         "Loadscope under System Settings → Privacy & Security → Files & Folders (or move the repository "
         "outside a protected folder) — or the folder may have been moved or deleted since it was chosen. "
         "Nothing was measured and none of your Claude allowance was used."},
        {ProbeError::CLINotFound{{"/Users/u/.local/bin/claude", "/opt/homebrew/bin/claude",
                                  "/usr/local/bin/claude", "zsh -lc 'command -v claude'"}},
         "cliNotFound", "Could not find the claude command.",
         "Looked in:\n  • /Users/u/.local/bin/claude\n  • /opt/homebrew/bin/claude\n"
         "  • /usr/local/bin/claude\n  • zsh -lc 'command -v claude'"},
        {ProbeError::UnreadableOutput{"\n garbage \n"}, "unreadableOutput",
         "The probe session returned output this app could not read.", "garbage"},
        {ProbeError::UnreadableOutput{""}, "unreadableOutput",
         "The probe session returned output this app could not read.", "(no output)"},
        {ProbeError::NoTranscript{"/Users/u/.claude/projects"}, "noTranscript",
         "The probe session produced no readable token usage.",
         "No session transcript was found under /Users/u/.claude/projects, and the CLI reported no usable "
         "startup usage. Nothing was measured."},
        {ProbeError::SessionFailed{"  overloaded"}, "sessionFailed", "The probe session reported an error.",
         "overloaded"},
        {ProbeError::MultiTurnUsageOnly{3}, "multiTurnUsageOnly",
         "The probe session did not produce a startup total.",
         "No session transcript was found, and the CLI usage block covers 3 turns. That block accumulates "
         "across turns, so it double-counts cached tokens and cannot be shown as the startup total. Nothing "
         "was measured — try again."},
        {ProbeError::NotAuthenticated{}, "notAuthenticated", "Claude Code is not signed in.",
         "Run `claude` in Terminal and sign in, then scan again. This app never handles Claude credentials."},
        {ProbeError::TimedOut{}, "timedOut", "The probe session took longer than 5 minutes.",
         "Nothing was measured. Try again, or try a smaller repository."},
        {ProbeError::UnknownTurnCount{}, "unknownTurnCount",
         "The probe session did not produce a startup total.",
         "No session transcript was found, and the CLI did not report how many turns its usage block covers. "
         "That block accumulates across turns, so it can only be trusted for a single-turn session. Nothing "
         "was measured — try again."},
        {ProbeError::UnreadableContextReport{}, "unreadableContextReport",
         "Claude Code's `/context` report could not be read.",
         "`/context` returned output with no token table this app recognises, and the session produced no "
         "usage figures either. Claude Code may have changed the report it prints. Nothing was measured."},
    };
    for (const auto& [error, caseName, headline, detail] : cases) {
        EXPECT_EQ(error.caseName(), caseName);
        EXPECT_EQ(error.headline(), headline);
        EXPECT_EQ(error.detail(), detail);
    }
}

TEST(ProbeError, CutsLongTextsByUserPerceivedCharacters) {
    std::string accented;
    for (int count = 0; count < 600; ++count)
        accented += "e\u0301";
    EXPECT_EQ(ProbeError::bounded(std::string(500, 'x') + "\n"), std::string(500, 'x'));
    EXPECT_EQ(ProbeError::bounded("  " + std::string(501, 'x')), std::string(500, 'x') + "…");
    EXPECT_EQ(ProbeError::bounded(accented), accented.substr(0, 1500) + "…");
    EXPECT_EQ(ProbeError::bounded("\u2003\n\t"), "(no output)");
    EXPECT_EQ(ProbeError::bounded("abc", 2), "ab…");
}

} // namespace
} // namespace loadscope
