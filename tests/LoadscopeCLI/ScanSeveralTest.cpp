// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace loadscope {
namespace {

using namespace testing;

/// Two folders beside the repository of the home, one with a budget.
class ScanSeveral : public Test {
protected:
    ScanSeveral() {
        makeFolder(first_);
        makeFolder(second_);
    }
    [[nodiscard]] std::size_t recorded() const {
        return home_.run({"history", "--json"}).json()["scans"].size();
    }

    DemoHome home_;
    const std::string first_ = home_.path() + "/src/first";
    const std::string second_ = home_.path() + "/src/second one";
};

TEST_F(ScanSeveral, TellsEachFolderAndGoesOnAfterAFailure) {
    const auto run = home_.run({"scan", first_, "/nowhere", second_, first_, "--jobs", "2", "--skip-check"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, AllOf(StartsWith("Repository"), ContainsRegex("\nfirst +20,100 +Lean +/"),
                                  ContainsRegex("\nnowhere +This folder could not be read"),
                                  HasSubstr("\nsecond one  ")));
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 4) << "a folder named twice is one";
    EXPECT_THAT(run.errors, StartsWith("nowhere: This folder could not be read."));
    EXPECT_EQ(recorded(), 2U);

    const auto json = home_.run({"scan", "--all", "--json"});
    EXPECT_EQ(json.exitCode, 0) << json.errors;
    const auto reports = json.json()["reports"];
    ASSERT_EQ(reports.size(), 2U) << "an array however few they are";
    EXPECT_EQ(reports[1]["repositoryName"], "second one");
    EXPECT_EQ(reports[1]["total"], 20'400);
    EXPECT_EQ(recorded(), 4U);

    std::filesystem::remove_all(first_);
    EXPECT_EQ(home_.run({"scan", "--all", "--json"}).json()["reports"].size(), 1U);
    std::filesystem::remove_all(second_);
    const auto none = home_.run({"scan", "--all"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(none.errors, HasSubstr("No folder of the history is still there."));

    writeFile(home_.path() + "/kept.json", json.output);
    EXPECT_THAT(home_.run({"history", "import", home_.path() + "/kept.json"}).output,
                HasSubstr("Took 0 scans; 2 were there already."));
}

TEST_F(ScanSeveral, HoldsEachAgainstItsOwnBudget) {
    writeFile(second_ + "/.loadscope.json", R"({"maxTokens": 100})");
    const auto run = home_.run({"scan", first_, second_, "--no-history"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.output, ContainsRegex("second one +20,400 +Over budget"));
    EXPECT_THAT(run.errors, StartsWith("second one: Over budget: The total"));
    EXPECT_EQ(home_.run({"scan", first_, second_, "--max-tokens", "1"}).exitCode, 3);
    EXPECT_EQ(home_.run({"scan", first_, second_, "--no-budget"}).exitCode, 0);
    EXPECT_EQ(home_.run({"scan", second_, "/nowhere"}).exitCode, 1) << "what could not be told goes first";
    EXPECT_THAT(home_.run({"scan", first_, second_, "--format", "markdown"}).output,
                AllOf(StartsWith("### "), HasSubstr("second one")));

    writeFile(second_ + "/.loadscope.json", "{");
    const auto broken = home_.run({"scan", first_, second_});
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_THAT(broken.errors, HasSubstr(second_));
    EXPECT_EQ(broken.output, "");

    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"--baseline", "x.json"}, {"--format", "junit"}, {"--codex-estimate"}}) {
        std::vector<std::string> arguments{"scan", first_, second_};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(home_.run(arguments).exitCode, 2) << wrong.front();
    }
}

} // namespace
} // namespace loadscope
