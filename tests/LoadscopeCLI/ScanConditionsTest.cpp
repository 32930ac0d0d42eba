// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/NetworkRoute.h"
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

namespace {

std::string behaviour(const char* word) { return std::string("LOADSCOPE_DEMO_CLAUDE=") + word; }

TEST(ScanConditions, AskForTheModelThatIsNamed) {
    const DemoHome home;
    const auto usual = home.run({"scan", "--json"}).json();
    EXPECT_EQ(usual["requestedModel"], "sonnet");
    EXPECT_EQ(usual["model"], "claude-sonnet-5");
    EXPECT_EQ(usual["toolVersion"], "2.1.330");
    const auto opus = home.run({"scan", "--model", "opus"});
    EXPECT_THAT(opus.output, AllOf(HasSubstr("` run (model opus) started in this folder"),
                                   HasSubstr("\nTool: Claude Code 2.1.330.\nModel: opus was asked for; the "
                                             "report names claude-opus-5.\n")));
    const auto refused = home.run({"scan", "--model=no\nmodel", "--json"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.json()["error"]["case"], "sessionFailed");
    EXPECT_THAT(refused.json()["error"]["detail"].get<std::string>(),
                HasSubstr("issue with the selected model (no\nmodel). It may not exist."));
}

TEST(ScanConditions, WaitForServersOnlyWhenAsked) {
    const DemoHome home;
    writeFile(home.repository() + "/.mcp.json", "{\"mcpServers\": {\"slow\": {\n\"command\": \"slow\"}}}");
    const auto without = home.run({"scan", "--json"}, {behaviour("slow-server")}).json();
    const auto with = home.run({"scan", "--wait-for-servers", "--json"}, {behaviour("slow-server")}).json();
    EXPECT_EQ(without["environment"]["waitedForServers"], false);
    EXPECT_EQ(with["environment"]["waitedForServers"], true);
    EXPECT_GT(with["total"], without["total"].get<std::int64_t>() + 5000);
    EXPECT_THAT(home.run({"scan", "--wait-for-servers"}).output, HasSubstr("\nServers: the tool was told"));
}

TEST(ScanConditions, PassTheSignInOnOnlyWhenAskedAndNeverShowIt) {
    const DemoHome home;
    const std::vector<std::string> byKey{behaviour("sign-in-by-key"), "ANTHROPIC_API_KEY=sk-secret",
                                         "CLAUDE_CODE_MAX_OUTPUT_TOKENS=12345"};
    const auto removed = home.run({"scan", "--json"}, byKey);
    EXPECT_EQ(removed.exitCode, 1);
    EXPECT_THAT(removed.errors, AllOf(HasSubstr("Claude Code is not signed in.\n"),
                                      HasSubstr("ANTHROPIC_API_KEY"), HasSubstr("--keep-environment")));
    const auto passedOn = home.run({"scan", "--keep-environment", "--json"}, byKey);
    ASSERT_EQ(passedOn.exitCode, 0) << passedOn.errors;
    const auto kept = passedOn.json()["environment"];
    EXPECT_EQ(kept["passedOn"], true);
    EXPECT_THAT(kept["removed"], IsEmpty());
    EXPECT_THAT(kept["kept"], Contains("ANTHROPIC_API_KEY"));
    const auto signedOut = home.run({"scan", "--keep-environment"}, {byKey[1], behaviour("signed-out")});
    EXPECT_THAT(signedOut.errors, Not(HasSubstr("ANTHROPIC_API_KEY"))) << "it was not removed";
    const auto usual = home.run({"scan"}, {byKey[1], byKey[2]});
    EXPECT_THAT(usual.output,
                HasSubstr("\nEnvironment: removed ANTHROPIC_API_KEY, CLAUDE_CODE_MAX_OUTPUT_TOKENS.\n"));
    for (const auto& run : {removed, passedOn, usual})
        EXPECT_THAT(run.output + run.errors, AllOf(Not(HasSubstr("sk-secret")), Not(HasSubstr("12345"))));
}

TEST(ScanConditions, TakeAnEstimateOnlyWhenAskedAndCallItOne) {
    const DemoHome home;
    EXPECT_EQ(home.run({"scan"}, {behaviour("estimated")}).exitCode, 1);
    const auto json = home.run({"scan", "--accept-estimate", "--json"}, {behaviour("estimated")}).json();
    EXPECT_EQ(json["estimated"], true);
    const auto text = home.run({"scan", "--accept-estimate", "--max-tokens", "9"}, {behaviour("estimated")});
    EXPECT_EQ(text.exitCode, 3);
    EXPECT_THAT(text.output, AllOf(HasSubstr(" tokens — an estimate, not counted, reported by Claude ("),
                                   HasSubstr("\nClaude Code estimated this total instead of counting it"),
                                   Not(HasSubstr("authoritative"))));
    EXPECT_THAT(text.errors, HasSubstr("The estimated total of "));
    EXPECT_EQ(home.run({"scan", "--accept-estimate"}, {behaviour("cannot-count")}).exitCode, 1)
        << "not even a guess";
    EXPECT_THAT(home.run({"history", "--json"}).json()["scans"], IsEmpty());
    EXPECT_EQ(home.run({"scan", "--accept-estimate", "--json"}).json()["estimated"], false);
}

TEST(ScanConditions, SayWhenItCannotBeToldWhetherTheToolCounted) {
    struct Case {
        const char* behaviour;
        const char* option;
        bool isVerified;
    };
    const DemoHome home;
    const std::string bare = makeFolder(home.path() + "/bare");
    writeFile(home.path() + "/.claude/CLAUDE.md", "Too short to tell anything.");
    for (const Case& one : {Case{"ok", "--json", true}, Case{"ok", "--skip-check", false},
                            Case{"old-version", "--json", false}}) {
        const auto json = home.run({"scan", bare, "--json", one.option}, {behaviour(one.behaviour)}).json();
        const bool mayBe = !one.isVerified || !NetworkRoute::exists();
        EXPECT_EQ(json["mayBeEstimated"], mayBe) << one.behaviour << one.option;
        EXPECT_EQ(json["notes"]["mayBeEstimate"].is_string(), mayBe);
    }
    const auto many = home.run({"scan", "--skip-check", "--json"}).json();
    EXPECT_EQ(many["mayBeEstimated"], false) << "longer files tell";
}

TEST(ScanConditions, SayWhatWasTakenOff) {
    const DemoHome home;
    const auto json = home.run({"scan", "--json"}, {behaviour("version-2.0.70")}).json();
    EXPECT_EQ(json["reservedTakenOff"],
              nlohmann::json::parse(R"({"name": "Autocompact buffer", "tokens": 45000})"));
    EXPECT_EQ(json["toolVersion"], "2.0.70");
    EXPECT_THAT(
        json["notes"]["reserve"].get<std::string>(),
        HasSubstr("includes 45,000 tokens of \"Autocompact buffer\", which is reserved space: taken off."));
}

} // namespace
