// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/MissingInterpreter.h"

#include "tests/Support/Testing.h"

namespace {

TEST(MissingInterpreter, IsNamedInTheWordsOfEachSystem) {
    const std::vector<std::pair<const char*, std::optional<std::string>>> cases{
        {"env: 'node': No such file or directory\n", "node"},
        {"warning: x\nenv: \u2018node\u2019: No such file or directory", "node"},
        {"/usr/bin/env: \u201enode\u201c: Datei oder Verzeichnis nicht gefunden", "node"},
        {"env: can't execute 'node': No such file or directory", "node"},
        {"env: node: No such file or directory", "node"},
        {"/x/claude: /opt/node: bad interpreter: No such file or directory", "/opt/node"},
        {"bash: line 1: /x/claude: /opt/node: bad interpreter: Permission denied", "/opt/node"},
        {"zsh: /x/claude: bad interpreter: /opt/node: no such file or directory", "/opt/node"},
        {"/x/claude: 3: exec: node: not found", "node"},
        {"environment: 'x': No such file", {}},
        {"env: ", {}},
        {"env: ': ", {}},
        {"claude: node: not found", {}},
        {"", {}}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(MissingInterpreter::inErrorText(text), expected) << text;
}

} // namespace
