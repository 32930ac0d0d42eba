// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ReportTrust.h"

#include "LoadscopeCore/ToolRun/ToolVersion.h"
#include "tests/Support/Testing.h"

namespace {

using ReportTrust::Verdict;

ContextMember file(const std::string& characters, std::int64_t tokens,
                   CountPrecision precision = CountPrecision::exact) {
    return {"Memory Files", "Project", characters, tokens, precision};
}

ContextMember agent(std::int64_t tokens) { return {"Custom Agents", "User", "writer", tokens}; }

/// The name of a file is its size; "x" cannot be read.
std::optional<ReportTrust::CharacterCounts> sizeInName(const std::string& path) {
    if (path == "x") return std::nullopt;
    const std::int64_t size = std::stoll(path);
    return ReportTrust::CharacterCounts{size, size - 2};
}

TEST(ReportTrust, TellsWhatWasNotCounted) {
    struct Case {
        std::string name;
        std::vector<std::string> categories;
        std::vector<ContextMember> members;
        Verdict verdict;
    };
    const std::vector<std::string> whole{"System prompt", "Memory files"};
    const auto rounded = CountPrecision::rounded;
    const std::vector<Case> cases{
        {"nothing could be counted", {"Skills"}, {file("900", 0), agent(0)}, Verdict::incomplete},
        {"nothing there to count", {"Skills"}, {}, Verdict::incomplete},
        {"another letter case", {"skills", "SYSTEM PROMPT"}, {file("900", 0)}, Verdict::counted},
        {"no tools row beside sixty skills",
         {"System prompt", "Skills"},
         {file("900", 210)},
         Verdict::counted},
        {"a counted agent", {"Skills"}, {file("900", 0), agent(3)}, Verdict::counted},
        {"categories of another kind", {"Alpha", "Beta tools"}, {}, Verdict::cannotTell},
        {"no table", {}, {}, Verdict::cannotTell},
        {"two thirds", whole, {file("883", 294), file("678", 226)}, Verdict::estimated},
        {"thirds of what is left when trimmed",
         whole,
         {file("885", 294), file("680", 226)},
         Verdict::estimated},
        {"thirds as closely as they are printed",
         whole,
         {file("4400", 1500, rounded), file("678", 226)},
         Verdict::estimated},
        {"not so close", whole, {file("4300", 1500, rounded), file("678", 226)}, Verdict::counted},
        {"one counted among estimates",
         whole,
         {file("883", 294), file("678", 226), file("600", 189)},
         Verdict::counted},
        {"one file of the size", whole, {file("883", 294), file("199", 66)}, Verdict::cannotTell},
        {"at the size", whole, {file("883", 294), file("200", 67)}, Verdict::estimated},
        {"the same file twice", whole, {file("883", 294), file("883", 294)}, Verdict::cannotTell},
        {"files that cannot be read", whole, {file("883", 294), file("x", 294)}, Verdict::cannotTell},
        {"only other tables", whole, {agent(294), agent(226)}, Verdict::cannotTell}};
    for (const auto& [name, categories, members, verdict] : cases) {
        std::vector<SelfReportedSlab> slabs;
        for (const std::string& category : categories)
            slabs.push_back({category, 100});
        ContextDetails details;
        details.members = members;
        EXPECT_EQ(ReportTrust::judge(slabs, details, sizeInName).verdict, verdict) << name;
    }
}

TEST(ReportTrust, SaysWhyAReportIsIncomplete) {
    const auto reason = [](std::vector<ContextMember> members) {
        ContextDetails details;
        details.members = std::move(members);
        return ReportTrust::judge({{"Skills", 100}}, details, sizeInName).reason;
    };
    EXPECT_THAT(reason({}), ::testing::EndsWith("no \"System prompt\" row"));
    EXPECT_THAT(reason({agent(0)}), ::testing::EndsWith(" and gives 0 tokens for 1 agent"));
    EXPECT_THAT(reason({file("900", 0), agent(0), agent(0)}),
                ::testing::EndsWith(" and gives 0 tokens for 1 memory file and 2 agents"));
}

TEST(ReportTrust, ReadsNoMoreThanSoManyFiles) {
    ContextDetails details;
    for (int i = 0; i < 5000; ++i)
        details.members.push_back(file(std::to_string(300 + i), 100 + i));
    int asked = 0;
    (void)ReportTrust::judge({{"System prompt", 1}}, details, [&](const std::string&) {
        ++asked;
        return std::optional<ReportTrust::CharacterCounts>();
    });
    EXPECT_EQ(asked, 64);
}

TEST(ReportTrust, CountsCharactersAsTheToolDoes) {
    const TemporaryFolder folder;
    const auto counts = [&](const std::string& text) {
        writeFile(folder.path("file"), text);
        const auto found = ReportTrust::charactersOnDisk(folder.path("file"));
        return found ? std::to_string(found->whole) + "/" + std::to_string(found->trimmed) : "none";
    };
    EXPECT_EQ(counts(" one\n"), "5/3");
    EXPECT_EQ(counts("日本語"), "3/3");
    EXPECT_EQ(counts("😀"), "2/2");
    EXPECT_EQ(ReportTrust::charactersOnDisk("relative"), std::nullopt);
    EXPECT_EQ(ReportTrust::charactersOnDisk(folder.path()), std::nullopt);
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(ReportTrust::charactersOnDisk(folder.path("fifo")), std::nullopt);
}

} // namespace
