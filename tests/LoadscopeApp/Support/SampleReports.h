// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/LoadscopeApp/Support/FakeTools.h"

#include "LoadscopeCore/Report/ScanReport.h"

#include <string>

namespace loadscope::testing {

[[nodiscard]] inline InstructionFileSet sampleFiles() {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/src/web-app/CLAUDE.md", 9'812},
                             {"/home/dev/src/web-app/docs/setup.md", 5'220},
                             {"/home/dev/src/web-app/docs/testing.md", 1'808}};
    files.personalFiles = {{"/home/dev/.claude/CLAUDE.md", 8'040},
                           {"/home/dev/.claude/rules/style.md", 3'460}};
    return files;
}

/// Files whose sizes differ a million-fold.
[[nodiscard]] inline InstructionFileSet manyFiles(int count) {
    InstructionFileSet files;
    for (int number = 0; number < count; ++number) {
        const std::int64_t bytes = number < 3 ? 40'000'000 / (number + 1) : 40 + number % 997 * 13;
        files.repositoryFiles.emplace_back(
            "/home/dev/src/monorepo/packages/package-" + std::to_string(number) + "/docs/CLAUDE.md", bytes);
    }
    return files;
}

/// A measurement whose report lists what is inside: as many tools as wanted on a few servers, and the rest.
[[nodiscard]] inline ProbeResult detailedResult(int tools = 42) {
    ProbeResult result = sampleResult();
    result.selfReportedSlabs.push_back({"Custom agents", 310});
    ContextDetails& details = result.details;
    const char* servers[] = {"github", "postgres", "browser", "a-server-with-a-long-name-that-goes-on"};
    for (int tool = 0; tool < tools; ++tool)
        details.members.push_back(
            {"MCP Tools", servers[tool * tool % 4],
             "tool_" + std::to_string(tool) + (tool % 9 == 8 ? "_with|a_<b>long</b>_name" : ""),
             1'500 / (tool + 2), CountPrecision::exact});
    const auto add = [&](const char* table, const char* group, const char* name, std::int64_t tokens,
                         CountPrecision precision = CountPrecision::exact) {
        details.members.push_back({table, group, name, tokens, precision});
    };
    add("Memory Files", "Project", "/home/dev/src/web-app/CLAUDE.md", 2'600, CountPrecision::rounded);
    add("Memory Files", "User", "/home/dev/.claude/CLAUDE.md", 2'100, CountPrecision::rounded);
    add("Memory Files", "Managed", "/etc/claude-code/CLAUDE.md", 912);
    add("Custom Agents", "Project", "reviewer", 180);
    add("Custom Agents", "Plugin", "planner", 130);
    add("Skills", "User", "release-notes", 160, CountPrecision::about);
    add("Skills", "Project", "migrate-database", 640);
    add("Skills", "Built-in", "pdf", 20, CountPrecision::below);
    details.deferred = {{"MCP tools", 52'300}, {"System tools", 19'500}};
    details.reserved = {{"Autocompact buffer", 33'000}};
    details.free = 134'800;
    return result;
}

/// Categories of every length of name, some without tokens and some with less than none.
[[nodiscard]] inline std::vector<SelfReportedSlab> manySlabs(int count) {
    std::vector<SelfReportedSlab> slabs;
    for (int number = 0; number < count; ++number) {
        std::string name = "Category " + std::to_string(number);
        if (number % 50 == 1) name += " " + std::string(300, 'n');
        if (number % 50 == 2) name += " <b>of words</b> that go on and on, far beyond what fits on a line";
        slabs.push_back({name, number % 10 == 9 ? -number : number % 10 == 8 ? 0 : 40'000 / (number + 1)});
    }
    return slabs;
}

[[nodiscard]] inline ScanReport
reportOf(const ProbeResult& probe, const InstructionFileSet& files = {},
         CodexScanOutcome codex = CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason)) {
    return ScanReportBuilder::build(RepoSelection("/home/dev/src/web-app"), probe, files, codex);
}

} // namespace loadscope::testing
