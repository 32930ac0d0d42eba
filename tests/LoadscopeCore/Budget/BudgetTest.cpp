// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/BudgetCheck.h"
#include "LoadscopeCore/Budget/PathPattern.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace loadscope {
namespace {

using BudgetFile::Contents;
using BudgetFile::Failure;
using Unit = Budget::Unit;

std::string reasonOf(const std::variant<Contents, Failure>& result) {
    const auto* failure = std::get_if<Failure>(&result);
    return failure == nullptr ? "read" : failure->reason;
}

TEST(BudgetFile, ReadsEveryLimitAndPassesUnknownKeysOver) {
    const auto result = BudgetFile::parse(R"({
  "$schema": {"a": [{"b": 1}]},
  "maxTokens": 30000,
  "maxIncrease": 0,
  "categories": {"MCP tools": 6000},
  "servers": {"github": 4000},
  "files": {"docs/**": 5000, "CLAUDE.md": {"bytes": 8192}, "a": {"tokens": 7}},
  "codexInstructionBytes": 32768,
  "later": {"maxTokens": {"x": [1, {"y": 2}]}}
})");
    ASSERT_EQ(reasonOf(result), "read");
    const auto& contents = std::get<Contents>(result);
    EXPECT_EQ(contents.budget.maxTokens, 30'000);
    EXPECT_EQ(contents.budget.maxIncrease, 0);
    EXPECT_EQ(contents.budget.codexInstructionBytes, 32'768);
    EXPECT_EQ(contents.budget.categories, (std::vector<Budget::Named>{{"MCP tools", 6'000}}));
    EXPECT_EQ(contents.budget.servers, (std::vector<Budget::Named>{{"github", 4'000}}));
    EXPECT_EQ(contents.budget.files,
              (std::vector<Budget::Named>{{"docs/**", 5'000}, {"CLAUDE.md", 8'192, Unit::bytes}, {"a", 7}}));
    EXPECT_EQ(contents.warnings,
              (std::vector<std::string>{"Line 9: the key \"later\" is not known and is passed over."}));
}

TEST(BudgetFile, NamesTheLineAndTheKeyOfWhatIsWrong) {
    const std::string whole = "must be a whole number of at least 0, not ";
    const std::pair<std::string, std::string> cases[] = {
        {"", "is empty."},
        {" \n ", "is empty."},
        {"{\n\"maxTokens\": 1,\n}", "line 3: this is not JSON."},
        {"{} {}", "line 1: this is not JSON."},
        {"[1]", "line 1: a budget is a JSON object, not a list."},
        {"7", "line 1: a budget is a JSON object, not a number."},
        {"{\n\n\"maxTokens\": -1}", "line 3: \"maxTokens\" " + whole + "-1."},
        {"{\"maxTokens\": 1.5}", "line 1: \"maxTokens\" " + whole + "the number 1.5."},
        {"{\"maxTokens\": 9223372036854775808}",
         "line 1: \"maxTokens\" " + whole + "a number beyond 64 bits."},
        {"{\"maxTokens\": \"30k\"}", "line 1: \"maxTokens\" " + whole + "a text."},
        {"{\"maxTokens\": {}}", "line 1: \"maxTokens\" " + whole + "an object."},
        {"{\"maxTokens\": null}", "line 1: \"maxTokens\" " + whole + "null."},
        {"{\"categories\": 5}", "line 1: \"categories\" must be an object of names and limits."},
        {"{\"categories\":\n{\"A\":\ntrue}}", "line 3: \"categories.A\" " + whole + "true or false."},
        {"{\"servers\": {\"a\": {\"tokens\": 1}}}", "line 1: \"servers.a\" " + whole + "an object."},
        {"{\"files\": {\"a\": {\"lines\": 1}}}",
         "line 1: \"files.a.lines\" is neither \"tokens\" nor \"bytes\"."},
        {"{\"files\": {\"a\": {}}}", "line 1: \"files.a\" has no \"tokens\" and no \"bytes\"."},
        {"{\"files\": {\"../a\": 1}}",
         "line 1: \"files.../a\" is no pattern of paths within the repository."},
        {"{\"files\": {\"/etc/passwd\": 1}}",
         "line 1: \"files./etc/passwd\" is no pattern of paths within the repository."},
        {"{\"files\": {\"\\u001b[2J\": -1}}", "line 1: \"files.\\x1b[2J\" " + whole + "-1."},
    };
    for (const auto& [text, reason] : cases)
        EXPECT_EQ(reasonOf(BudgetFile::parse(text)), reason) << text;
    EXPECT_NE(reasonOf(BudgetFile::parse(std::string(300'000, '['))), "read");
}

TEST(BudgetFile, IsAFileOfTheRepositoryItself) {
    const TemporaryFolder folder;
    const std::string path = folder.path(Budget::fileName);
    const auto ofRepository = [&] { return BudgetFile::ofRepository(folder.path()); };
    EXPECT_FALSE(ofRepository());
    writeFile(folder.path("elsewhere.json"), R"({"maxTokens": 1})");
    std::filesystem::create_symlink(folder.path("elsewhere.json"), path);
    EXPECT_EQ(reasonOf(*ofRepository()), "is a link. A budget must be a file of the repository itself.");
    EXPECT_EQ(reasonOf(BudgetFile::load(path)), "read") << "the user may name a link";
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(reasonOf(*ofRepository()), "is not a file.");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(reasonOf(*ofRepository()), "is not a file.");
    std::filesystem::remove(path);
    writeFile(folder.path(Budget::fileName), std::string(10'000'000, ' '));
    EXPECT_EQ(reasonOf(*ofRepository()), "is larger than a budget can be (1 MB).");
}

TEST(PathPattern, MatchesNamesAndFolders) {
    const struct {
        const char* pattern;
        std::vector<const char*> matched, others;
    } cases[] = {
        {"CLAUDE.md", {"CLAUDE.md", "./CLAUDE.md"}, {"claude.md", "a/CLAUDE.md", "CLAUDE.mdx"}},
        {"*.md", {"a.md", ".md"}, {"a/b.md", "a.mdx"}},
        {"**/*.md", {"a.md", "a/b/c.md"}, {"a/b"}},
        {"docs/**", {"docs/a", "docs/a/b", "docs"}, {"doc/a"}},
        {"a/**/b?c/*", {"a/bxc/d", "a/x/y/bxc/d"}, {"a/bc/d", "a/bxc"}},
        {"**/**/x", {"x", "a/x"}, {"a/x/y"}},
        {"*a*b*", {"ab", "xaybz"}, {"ba"}},
    };
    for (const auto& c : cases) {
        for (const char* path : c.matched)
            EXPECT_TRUE(PathPattern(c.pattern).matches(path)) << c.pattern << ' ' << path;
        for (const char* path : c.others)
            EXPECT_FALSE(PathPattern(c.pattern).matches(path)) << c.pattern << ' ' << path;
    }
    std::string hostile;
    for (int i = 0; i < 2'000; ++i)
        hostile += "**/a*a*a*/";
    EXPECT_FALSE(PathPattern(hostile + "b").matches(std::string(3'000, 'a'))) << "and not in an age";
    for (const char* pattern : {"", "/a", "a/../b", "..", "./"})
        EXPECT_FALSE(PathPattern::isAllowed(pattern)) << pattern;
}

TEST(PathPattern, FindsFilesWithoutLeavingTheFolder) {
    const TemporaryFolder folder;
    writeFile(folder.path("outside/secret.md"), "123");
    writeFile(folder.path("in/docs/a.md"), "12345");
    writeFile(folder.path("in/docs/deep/b.md"), "1");
    writeFile(folder.path("in/.git/c.md"), "1");
    writeFile(folder.path("in/d.txt"), "1");
    std::filesystem::create_symlink(folder.path("outside"), folder.path("in/docs/link"));
    std::filesystem::create_symlink(folder.path("outside/secret.md"), folder.path("in/docs/secret.md"));
    const auto found = PathPattern("**/*.md").find(folder.path("in"));
    EXPECT_EQ(found.files, (std::vector<PathPattern::File>{{"docs/a.md", 5}, {"docs/deep/b.md", 1}}));
    EXPECT_TRUE(found.isComplete);
    EXPECT_EQ(PathPattern(".git/*").find(folder.path("in")).files.size(), 1U) << "named";
    EXPECT_TRUE(PathPattern("*").find(folder.path("nowhere")).files.empty());
}

TEST(BudgetCheck, HoldsEachLimitAgainstItsValue) {
    const TemporaryFolder folder;
    writeFile(folder.path("docs/a.md"), std::string(4'001, 'x'));
    writeFile(folder.path("docs/b.md"), std::string(8, 'x'));
    ScanMeasurement measurement;
    measurement.total = 30'000;
    measurement.categories = {{"System tools", 20'000}, {"MCP tools", 8'500}, {"Skills", 1'200}, {"A", 300}};
    measurement.members =
        std::vector<ContextMember>{{"MCP Tools", "github", "x", 4'000, CountPrecision::exact},
                                   {"MCP Tools", "github", "y", 900, CountPrecision::exact},
                                   {"Skills", "github", "z", 50, CountPrecision::exact}};
    ScanMeasurement before = measurement;
    before.total = 29'900;
    const ScanComparison since = ScanComparison::of(before, measurement);
    CodexInstructions codex;
    codex.files = {{"/r/AGENTS.md", 34'886, 32'768}};
    const BudgetCheck::Facts facts{folder.path(), &measurement, &since, &codex};
    Budget budget{.maxTokens = 30'000,
                  .maxIncrease = 0,
                  .categories = {{"mcp TOOLS", 8'499}, {"Absent", 1}},
                  .servers = {{"github", 4'899}, {"absent", 0}},
                  .files = {{"docs/*", 1'003}, {"docs/*", 4'009, Unit::bytes}, {"nothing/*", 0}},
                  .codexInstructionBytes = 34'886};
    std::vector<std::string> told;
    for (const BudgetResult& result : BudgetCheck::results(budget, facts)) {
        std::string line = result.name + ' ' + (result.value ? std::to_string(*result.value) : "-") +
                           (result.isExceeded() ? " exceeded" : "") + (result.isEstimate ? " estimated" : "");
        for (const auto& reason : result.reasons)
            line += ", " + reason.name + ' ' + std::to_string(reason.value);
        told.push_back(line);
    }
    EXPECT_EQ(told, (std::vector<std::string>{
                        " 30000, System tools 20000, MCP tools 8500, Skills 1200", // inclusive
                        " 100",                                                    // within rounding
                        "mcp TOOLS 8500 exceeded, x 4000, y 900",
                        "Absent -",
                        "github 4900 exceeded, x 4000, y 900",
                        "absent -",
                        "docs/* 1003 estimated, docs/a.md 1001, docs/b.md 2",
                        "docs/* 4009, docs/a.md 4001, docs/b.md 8",
                        "nothing/* - estimated",
                        " 34886, /r/AGENTS.md 34886",
                    }));
    EXPECT_EQ(BudgetCheck::results(budget, {.repository = folder.path()}).size(), 3U)
        << "without a scan: the files alone";
}

} // namespace
} // namespace loadscope
