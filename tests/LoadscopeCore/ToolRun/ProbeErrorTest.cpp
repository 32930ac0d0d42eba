// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include "tests/Support/Testing.h"

namespace {

TEST(ProbeError, BuildsItsTextsFromWhatItCarries) {
    const std::vector<std::pair<ProbeError, std::string>> cases{
        {ProbeError::CLINotFound{{"/u/.local/bin/claude", "zsh -lc 'command -v claude'"}},
         "Looked in:\n  • /u/.local/bin/claude\n  • zsh -lc 'command -v claude'"},
        {ProbeError::UnreadableOutput{""}, "(no output)"},
        {ProbeError::SessionFailed{"\n " + std::string(600, 'x')}, std::string(500, 'x') + "…"},
        {ProbeError::NoTranscript{"/p"},
         "No session transcript was found under /p, and the CLI reported no usable "
         "startup usage. Nothing was measured."},
        {ProbeError::MultiTurnUsageOnly{3}, "No session transcript was found, and the CLI usage block covers "
                                            "3 turns. That block accumulates across "
                                            "turns, so it double-counts cached tokens and cannot be shown as "
                                            "the startup total. Nothing was measured — "
                                            "try again."},
        {ProbeError::UnknownTurnCount{}, "No session transcript was found, and the CLI did not report how "
                                         "many turns its usage block covers. That "
                                         "block accumulates across turns, so it can only be trusted for a "
                                         "single-turn session. Nothing was measured "
                                         "— try again."},
        {ProbeError::UnreadableContextReport{},
         "`/context` returned output with no token table this app recognises, and the session produced no "
         "usage "
         "figures either. Claude Code may have changed the report it prints. Nothing was measured."},
        {ProbeError::NotAuthenticated{{"ANTHROPIC_API_KEY", "CLAUDE_CODE_USE_BEDROCK"}},
         "Run `claude` in a terminal and sign in, then scan again. This app never handles Claude "
         "credentials. "
         "These "
         "variables were removed for the scan, so that it measures your own sign-in: ANTHROPIC_API_KEY, "
         "CLAUDE_CODE_USE_BEDROCK. `loadscope scan --keep-environment` passes them on."},
        {ProbeError::IncompleteContextReport{"Its report is odd", 34'800, true},
         "Its report is odd, and its total is 34800 tokens. It estimated instead of counting. Usually the "
         "computer "
         "is offline or the sign-in has expired: run `claude` in a terminal and look. Nothing was "
         "recorded."}};
    for (const auto& [error, detail] : cases)
        EXPECT_EQ(error.detail(), detail) << error.caseName();
    const std::string unreadable = ProbeError(ProbeError::RepositoryUnreadable{"/r"}).detail();
    EXPECT_TRUE(unreadable.starts_with("/r exists but its contents could not be listed. ")) << unreadable;
    EXPECT_TRUE(unreadable.ends_with("Nothing was measured and none of your Claude allowance was used."));
    const std::string signedOut = ProbeError(ProbeError::NotAuthenticated{}).detail();
    EXPECT_TRUE(signedOut.starts_with("Run `claude` in ")) << signedOut;
    EXPECT_TRUE(
        signedOut.ends_with(" and sign in, then scan again. This app never handles Claude credentials."));
    EXPECT_EQ(ProbeError(ProbeError::TimedOut{}).headline(), "The probe session took longer than 5 minutes.");
    EXPECT_EQ(ProbeError(ProbeError::UnreadableContextReport{}).caseName(), "unreadableContextReport");
}

TEST(ProbeError, CutsLongTextsByUserPerceivedCharacters) {
    EXPECT_EQ(ProbeError::bounded("e\u0301e\u0301e\u0301", 3), "e\u0301e\u0301e\u0301");
    EXPECT_EQ(ProbeError::bounded("\u2003e\u0301e\u0301e\u0301\n", 2), "e\u0301e\u0301…");
    EXPECT_EQ(ProbeError::bounded("\u2003\n\t"), "(no output)");
}

} // namespace
