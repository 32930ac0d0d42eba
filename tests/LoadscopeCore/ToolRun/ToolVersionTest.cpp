// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ToolVersion.h"

#include "tests/Support/Testing.h"

namespace {

TEST(ToolVersion, IsReadFromWhatAToolPrintsAndCompares) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases{
        {"2.1.330 (Claude Code)\n", "2.1.330"},
        {"codex-cli 0.169.0", "0.169.0"},
        {"codex 0.200.0-alpha.1", "0.200.0-alpha.1"},
        {"\x1b[31m2.1.3", std::nullopt},
        {"2.1", std::nullopt},
        {"2.1.", std::nullopt},
        {"", std::nullopt},
        {"99999999999.1.1", std::nullopt},
        {"1.2.3" + std::string(50, '0'), std::nullopt}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ToolVersion::inText(text), expected) << text;
    EXPECT_LT(ToolVersion::numbers("2.0.70"), ToolVersion::numbers("2.1.3"));
}

TEST(ToolVersion, IsWaitedForAsLongAsIsSaid) {
    const TemporaryFolder folder;
    const std::string go = folder.path("go");
    const std::string slow =
        "#!/bin/sh\nuntil [ -e '" + go + "' ]; do sleep 0.01; done\necho 2.1.330 \"$1\"; exit ";
    ToolVersion version(writeExecutable(folder.path("tool"), slow + "0\n"), ProbeEnvironment::Tool::claude);
    ToolVersion failing(writeExecutable(folder.path("other"), slow + "1\n"), ProbeEnvironment::Tool::claude);
    EXPECT_EQ(version.answer(), std::nullopt);
    writeFile(go, "");
    EXPECT_EQ(version.answer(50), "2.1.330");
    EXPECT_EQ(version.answer(), "2.1.330");
    EXPECT_EQ(failing.answer(50), std::nullopt);
}

} // namespace
