// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/JsonSchema.h"

#include <csignal>
#include <future>
#include <gmock/gmock.h>

namespace loadscope {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string behaviour(const std::string& word) { return "LOADSCOPE_DEMO_CODEX=" + word; }

std::vector<std::string> kinds(const json& codex) {
    std::vector<std::string> list;
    for (const json& item : codex["items"])
        list.push_back(item["kind"]);
    return list;
}

std::vector<std::string> schemaProblems(const json& report) {
    return JsonSchema(json::parse(readFile(LOADSCOPE_SCHEMA))).problems(report);
}

/// What the stand-in's items say, each in words that stand nowhere else.
testing::Matcher<std::string> tellsNoText() {
    return AllOf(Not(HasSubstr("secret")), Not(HasSubstr("You are a stand-in")), Not(HasSubstr("xxxxxxxx")));
}

TEST(CodexItems, StandBesideTheMeasuredTotal) {
    const DemoHome home;
    writeFile(home.repository() + "/AGENTS.md", "secret rules");
    writeFile(home.path() + "/.codex/config.toml", "model = \"gpt-6-lab\"\nproject_doc_max_bytes = 5\n");
    const std::vector<std::string> newer{behaviour("turn-completed")};
    const json codex = home.run({"scan", "--include-codex", "--json"}, newer).json()["codex"];
    EXPECT_EQ(codex["status"], "measured");
    EXPECT_EQ(codex["contextWindow"], 500'000) << "of the list of models";
    EXPECT_EQ(codex["model"], "gpt-6-lab");
    EXPECT_EQ(kinds(codex), (std::vector<std::string>{"systemPrompt", "skills", "permissions", "instructions",
                                                      "environment", "prompt", "other"}));
    std::int64_t sum = codex["rest"];
    for (const json& item : codex["items"]) {
        EXPECT_EQ(item["estimatedTokens"], (item["bytes"].get<std::int64_t>() + 3) / 4);
        sum += item["estimatedTokens"].get<std::int64_t>();
    }
    EXPECT_EQ(sum, codex["total"]);
    const json chain = codex["instructions"];
    EXPECT_EQ(chain["limitBytes"], 5);
    EXPECT_EQ(chain["readBytes"], 5);
    ASSERT_EQ(chain["files"].size(), 1U);
    EXPECT_EQ(chain["files"][0]["path"], home.repository() + "/AGENTS.md");
    EXPECT_EQ(chain["files"][0]["bytes"], 12);

    const CommandRun text = home.run({"scan", "--include-codex"}, newer);
    EXPECT_THAT(text.output, AllOf(HasSubstr("% of its 500K window). Band: Lean.\n"),
                                   HasSubstr("\nCodex starts with   Tokens  Source\nSystem prompt "),
                                   HasSubstr("  estimated from its size\ntools and the rest ")));
    const json inside =
        home.run({"scan", "--include-codex", "--json"}, {behaviour("items-with-tools")}).json();
    EXPECT_EQ(kinds(inside["codex"])[1], "tools");
    EXPECT_THAT(schemaProblems(inside), IsEmpty());
    EXPECT_THAT(text.output + text.errors + codex.dump() + inside.dump(), tellsNoText());
    EXPECT_THAT(readFile(home.path() + "/.local/share/Loadscope/scan-history.json"),
                AllOf(tellsNoText(), Not(HasSubstr("AGENTS.md")), Not(HasSubstr("skills"))));
}

TEST(CodexItems, FailNoScanWhenTheyCannotBeHad) {
    const DemoHome home;
    const json whole = home.run({"scan", "--include-codex", "--json"}, {behaviour("turn-completed")}).json();
    std::vector<std::pair<std::string, std::future<CommandRun>>> runs;
    for (const char* const word :
         {"refuses-ephemeral", "items-refused", "items-not-json", "items-other-form", "items-hostile",
          "items-nested", "items-flood", "items-crash", "items-failed"})
        runs.emplace_back(word, std::async(std::launch::async, [&home, word] {
                              return home.run({"scan", "--include-codex", "--json"},
                                              {behaviour(word), "LOADSCOPE_DEMO_FLOOD_MB=70"});
                          }));
    for (auto& [word, future] : runs) {
        const CommandRun run = future.get();
        EXPECT_EQ(run.exitCode, 0) << word << run.errors;
        const json codex = run.json()["codex"];
        EXPECT_EQ(codex["total"], whole["codex"]["total"]) << word;
        EXPECT_THAT(schemaProblems(run.json()), IsEmpty()) << word;
        EXPECT_EQ(codex["items"], nullptr) << word;
        EXPECT_EQ(codex["rest"], nullptr) << word;
        EXPECT_EQ(codex["itemsReason"], "This version of Codex does not tell.") << word;
        EXPECT_THAT(run.output + run.errors, tellsNoText()) << word;
    }
    EXPECT_THAT(home.run({"scan", "--include-codex"}, {behaviour("items-refused")}).output,
                HasSubstr("\nCodex, item by item: This version of Codex does not tell.\n"));
}

TEST(CodexEstimate, NeedsNoSessionAndRecordsNothing) {
    const DemoHome home;
    home.removeTool("claude");
    const CommandRun text = home.run({"scan", "--codex-estimate"}, {behaviour("signed-out")});
    EXPECT_EQ(text.exitCode, 0) << text.errors;
    EXPECT_THAT(text.output, AllOf(HasSubstr(" tokens — an estimate from sizes, without a session.\n"),
                                   HasSubstr("nothing was measured or recorded, and no band is given"),
                                   HasSubstr("Codex starts the servers of its configuration for this"),
                                   HasSubstr("system prompt is not among the items"), Not(HasSubstr("Band")),
                                   Not(HasSubstr("Probe prompt")), Not(HasSubstr("tools and the rest"))));
    const CommandRun run =
        home.run({"scan", home.repository(), "--codex-estimate", "--json"}, {behaviour("items-with-tools")});
    const json codex = run.json()["codex"];
    EXPECT_EQ(run.json()["repositoryPath"], home.repository());
    EXPECT_EQ(codex["status"], "estimated");
    EXPECT_EQ(codex["contextWindow"], 500'000);
    EXPECT_FALSE(codex.contains("total"));
    EXPECT_THAT(schemaProblems(run.json()), IsEmpty());
    std::int64_t sum = 0;
    for (const json& item : codex["items"])
        sum += item["estimatedTokens"].get<std::int64_t>();
    EXPECT_EQ(codex["estimatedTokens"], sum);
    EXPECT_THAT(text.output + text.errors + run.output + run.errors, tellsNoText());
    EXPECT_THAT(home.run({"history", "--json"}).json()["scans"], IsEmpty());
}

TEST(CodexEstimate, SaysWhyThereIsNone) {
    const DemoHome home;
    const CommandRun refused = home.run({"scan", "--codex-estimate", "--json"}, {behaviour("items-refused")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.json()["error"]["case"], "codexNotEstimated");
    EXPECT_EQ(refused.errors,
              "Codex could not tell what it would load.\nThis version of Codex does not tell.\n");
    EXPECT_EQ(home.run({"scan", "--codex-estimate", home.path() + "/gone", "--json"}).json()["error"]["case"],
              "repositoryUnreadable");
    for (const char* const other : {"--include-codex", "--max-tokens=9", "--model=opus", "--wait-for-servers",
                                    "--keep-environment", "--accept-estimate", "--details", "--top=3"})
        EXPECT_EQ(home.run({"scan", "--codex-estimate", other}).exitCode, 2) << other;
    const CommandRun stopped =
        home.runAndSignal({"scan", "--codex-estimate"}, {behaviour("items-hang")}, "sleep", {SIGINT});
    EXPECT_EQ(stopped.exitCode, 130);
    EXPECT_EQ(stopped.errors, "Interrupted.\n");
    EXPECT_THAT(home.processes("codex"), IsEmpty());
    home.removeTool("codex");
    EXPECT_THAT(home.run({"scan", "--codex-estimate"}).errors, HasSubstr("Codex CLI not found"));
}

TEST(CodexEstimate, IsNotMadeUnasked) {
    const DemoHome home;
    const CommandRun run = home.run({"scan", "--json"}, {behaviour("items-hang")});
    EXPECT_EQ(run.json()["codex"],
              json::parse(R"({"status": "unavailable", "reason": "Codex was not included in this scan."})"));
}

} // namespace
} // namespace loadscope
