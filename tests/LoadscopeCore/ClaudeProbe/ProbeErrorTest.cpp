// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeError.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

TEST(ProbeError, BuildsItsTextsFromWhatItCarries) {
    const std::vector<std::pair<ProbeError, std::string>> cases{
        {ProbeError::CLINotFound{{"/u/.local/bin/claude", "zsh -lc 'command -v claude'"}},
         "Looked in:\n  • /u/.local/bin/claude\n  • zsh -lc 'command -v claude'"},
        {ProbeError::UnreadableOutput{""}, "(no output)"},
        {ProbeError::SessionFailed{"\n " + std::string(600, 'x')}, std::string(500, 'x') + "…"},
        {ProbeError::NoTranscript{"/p"},
         "No session transcript was found under /p, and the CLI reported no usable "
         "startup usage. Nothing was measured."}};
    for (const auto& [error, detail] : cases)
        EXPECT_EQ(error.detail(), detail) << error.caseName();
    EXPECT_NE(ProbeError(ProbeError::MultiTurnUsageOnly{3}).detail().find("covers 3 turns."),
              std::string::npos);
    EXPECT_EQ(ProbeError(ProbeError::TimedOut{}).headline(), "The probe session took longer than 5 minutes.");
    EXPECT_EQ(ProbeError(ProbeError::UnreadableContextReport{}).caseName(), "unreadableContextReport");
}

TEST(ProbeError, CutsLongTextsByUserPerceivedCharacters) {
    EXPECT_EQ(ProbeError::bounded("e\u0301e\u0301e\u0301", 3), "e\u0301e\u0301e\u0301");
    EXPECT_EQ(ProbeError::bounded("\u2003e\u0301e\u0301e\u0301\n", 2), "e\u0301e\u0301…");
    EXPECT_EQ(ProbeError::bounded("\u2003\n\t"), "(no output)");
}

} // namespace
} // namespace loadscope
