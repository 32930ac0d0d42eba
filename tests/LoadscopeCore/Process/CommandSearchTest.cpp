// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/CommandSearch.h"

#include "tests/Support/Testing.h"

namespace {

TEST(CommandSearch, ReadsWhatShellsSayOfACommand) {
    const std::vector<std::pair<const char*, std::optional<std::string>>> cases{
        {"/usr/bin/tool\n", "/usr/bin/tool"},
        {"tool: aliased to /opt/x\n/usr/bin/tool\n", "/opt/x"},
        {"alias tool='/opt/a b/tool -v'\n/usr/bin/tool", "/usr/bin/tool"},
        {"tool='\\''/opt/a b/tool'\\'' -v'", std::nullopt},
        {R"(alias tool=''\''/opt/a b/tool'\'' -v')", "/opt/a b/tool"},
        {"tools='/opt/x'\ntool\n./tool\n", std::nullopt},
        {"tool=\"/opt/x\\", "/opt/x\\"},
        {"\n\n", std::nullopt}};
    for (const auto& [answer, expected] : cases)
        EXPECT_EQ(CommandSearch::pathInAnswer(answer, "tool"), expected) << answer;
}

} // namespace
