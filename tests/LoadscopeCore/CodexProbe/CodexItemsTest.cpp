// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexItems.h"

#include "LoadscopeCore/CodexProbe/CodexDebugOutput.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitFor.h"

#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

namespace loadscope {
namespace {

using nlohmann::json;

const std::string prompt = CodexProbeRunner::probePrompt;

json message(const std::vector<std::string>& texts, const char* saidToBe = nullptr) {
    json item = {{"type", "message"}, {"role", "developer"}, {"content", json::array()}};
    for (const std::string& text : texts)
        item["content"].push_back({{"type", "input_text"}, {"text", text}});
    if (saidToBe)
        item["internal_chat_message_metadata_passthrough"] = {{"content_item_kinds", {"other", saidToBe}}};
    return item;
}

json model(const std::string& name, const json& window, const std::string& systemPrompt) {
    return {{"slug", name}, {"context_window", window}, {"base_instructions", systemPrompt}};
}

/// "skills 12, other 7; gpt-x of 9" for what was told.
std::string told(const json& input, const json& models, const CodexDebugOutput::Session& session = {}) {
    const auto texts = CodexDebugOutput::promptInput(input.dump(), prompt);
    if (!texts) return "nothing";
    const auto list = CodexDebugOutput::models(json{{"models", models}}.dump());
    const CodexItems items = CodexDebugOutput::items(*texts, list, session);
    std::string text;
    for (const CodexItem& item : items.items)
        text += (text.empty() ? "" : ", ") + std::string(rawValue(item.kind)) + " " +
                std::to_string(item.byteCount);
    if (items.model || items.contextWindow) text += "; " + items.model.value_or("?");
    if (items.contextWindow) text += " of " + std::to_string(*items.contextWindow);
    return text;
}

const std::string skills = "<skills_instructions>\n## Skills\n</skills_instructions>";
const std::string permissions = "<permissions instructions>é</permissions instructions>";
const std::string agents = "# AGENTS.md instructions for /w\n\n<INSTRUCTIONS>\nx\n</INSTRUCTIONS>";
const std::string environment = "<environment_context></environment_context>";
const json models{model("gpt-a", 272'000, "You are A."), model("gpt-b", 500'000, "You are B, too."),
                  model("gpt-c", 500'000, "You are B, too."), model("gpt-d", 0, "")};

TEST(CodexDebugOutput, SizesEachTextByWhatItBeginsWith) {
    struct Case {
        const char* name;
        json input;
        std::string expected;
    };
    const std::string tools = R"([{"description":"é","name":"exec"}])";
    for (const Case& c : std::vector<Case>{
             {"each kind",
              {message({skills, permissions}), message({"<collaboration_mode>"}),
               message({agents, environment}), message({prompt})},
              "skills 54, permissions 55, instructions 65, environment 43, prompt 63, other 20"},
             {"two of a kind", {message({skills}), message({skills, "a", "bc"})}, "skills 108, other 3"},
             {"a part without a text",
              {{{"content", {7, {{"text", nullptr}}, {{"text", ""}}, {{"image", "x"}}, {{"text", "abc"}}}}}},
              "other 3"},
             {"tools", {{{"type", "additional_tools"}, {"tools", json::parse(tools)}}}, "tools 36"},
             {"its word for a system prompt",
              json::array({message({skills, "You are Z."}, "model.base_instructions")}),
              "systemPrompt 10, skills 54"},
             {"other words", json::array({message({skills, "You are Z."}, "user.text")}),
              "skills 54, other 10"},
             {"nothing but the prompt", json::array({message({prompt})}), "nothing"},
             {"no item", json::array(), "nothing"},
             {"items of other forms",
              {1, nullptr, {{"content", "text"}}, {{"tools", json::array()}}},
              "nothing"},
             {"an object", {{"items", {message({skills})}}}, "nothing"},
             {"a text", "skills", "nothing"}})
        EXPECT_EQ(told(c.input, json::array()), c.expected) << c.name;
}

TEST(CodexDebugOutput, RefusesWhatIsNoListOfItems) {
    const std::string whole = json::array({message({skills})}).dump();
    EXPECT_TRUE(CodexDebugOutput::promptInput(" \n" + whole + "\n", prompt));
    for (const std::string& text :
         {std::string(), std::string("error: unrecognized subcommand"), whole + whole, whole.substr(1),
          std::string(100'000, '['), "\x1b[2J" + whole, whole + '\0',
          "[\"" + std::string(17'000'000, 'x') + "\"]"}) {
        EXPECT_EQ(CodexDebugOutput::promptInput(text, prompt), std::nullopt) << text.substr(0, 50);
        EXPECT_TRUE(CodexDebugOutput::models(text).empty()) << text.substr(0, 50);
    }
    for (const char* const text : {R"({"models":7})", R"({"models":[7,{},{"slug":""},{"slug":null}]})", "[]"})
        EXPECT_TRUE(CodexDebugOutput::models(text).empty()) << text;
}

TEST(CodexDebugOutput, FindsTheModelItsSystemPromptAndItsWindow) {
    struct Case {
        const char* name;
        json input;
        CodexDebugOutput::Session session;
        const char* expected;
    };
    const json plain = json::array({message({skills})});
    for (const Case& c : std::vector<Case>{
             {"by name", plain, {"gpt-a"}, "systemPrompt 10, skills 54; gpt-a of 272000"},
             {"no name", plain, {}, "skills 54"},
             {"a name that is not listed", plain, {"gpt-9"}, "skills 54; gpt-9"},
             {"one without window and prompt", plain, {"gpt-d"}, "skills 54; gpt-d"},
             {"another prompt in the configuration", plain, {"gpt-a", true}, "skills 54; gpt-a of 272000"},
             {"by its prompt",
              json::array({message({"You are A.", skills})}),
              {},
              "systemPrompt 10, skills 54; gpt-a of 272000"},
             {"by its prompt against the configuration",
              json::array({message({"You are A.", skills})}),
              {"gpt-b"},
              "systemPrompt 10, skills 54; gpt-a of 272000"},
             {"by a prompt that two have",
              json::array({message({"You are B, too."})}),
              {},
              "systemPrompt 15; ? of 500000"},
             {"and by name",
              json::array({message({"You are B, too."})}),
              {"gpt-c"},
              "systemPrompt 15; gpt-c of 500000"},
             {"and by another name",
              json::array({message({"You are B, too."})}),
              {"gpt-a"},
              "systemPrompt 15; ? of 500000"}})
        EXPECT_EQ(told(c.input, models, c.session), c.expected) << c.name;
}

TEST(CodexItems, AreEstimatedAtFourBytesAToken) {
    CodexItems items;
    items.items = {{CodexItemKind::skills, 0},
                   {CodexItemKind::skills, 1},
                   {CodexItemKind::other, 8},
                   {CodexItemKind::other, 9}};
    EXPECT_EQ(items.estimatedTokens(), 0 + 1 + 2 + 3);
    items.items.assign(9, {CodexItemKind::other, std::numeric_limits<std::int64_t>::max()});
    EXPECT_EQ(items.estimatedTokens(), std::numeric_limits<std::int64_t>::max());
}

/// A home folder with a `codex` that measures a session and then does what the test says.
class CodexItemsOfATool : public testing::Test {
protected:
    void script(const std::string& onPromptInput,
                const std::string& onModels = "cat \"$HOME/models\"") const {
        writeFile(home.path("models"), json{{"models", models}}.dump());
        writeFile(home.path("input"), json{message({skills}), message({agents, prompt})}.dump());
        writeExecutable(home.path(".local/bin/codex"), R"(#!/bin/sh
case "$1 $2" in
exec*) printf '{"type":"turn.completed","usage":{"input_tokens":12345}}' ;;
'debug models') )" + onModels + R"( ;;
'debug prompt-input') )" + onPromptInput + R"( ;;
*) exit 1 ;;
esac)");
    }

    CodexProbeResult measure() {
        const auto outcome = probe.run(repository, {});
        EXPECT_NE(outcome.result(), nullptr);
        return outcome.result() ? *outcome.result() : CodexProbeResult();
    }

    const TemporaryFolder home;
    const std::string repository = makeFolder(home.path("repository"));
    CodexProbe probe{std::nullopt, 20};

private:
    const ScopedEnvironment environment_{"HOME", home.path()};
    const ScopedEnvironment codexHome_{"CODEX_HOME", home.path("codex")};
};

TEST_F(CodexItemsOfATool, AreAskedForInTheFolderAfterTheSession) {
    script("printf '%s\\n' \"$PWD\" \"$@\" >\"$HOME/call\"; echo WARNING >&2; cat \"$HOME/input\"");
    writeFile(home.path("codex/config.toml"), "model = \"gpt-a\"\nproject_doc_max_bytes = 3\n");
    writeFile(home.path("codex/AGENTS.md"), "mine");
    writeFile(repository + "/AGENTS.md", "ours");
    const CodexProbeResult result = measure();
    EXPECT_EQ(result.total, 12345);
    EXPECT_EQ(result.contextWindow, 272'000);
    EXPECT_EQ(result.model, "gpt-a");
    ASSERT_TRUE(result.items);
    EXPECT_EQ(result.items->reason, "");
    EXPECT_EQ(result.items->items, (std::vector<CodexItem>{{CodexItemKind::systemPrompt, 10},
                                                           {CodexItemKind::skills, 54},
                                                           {CodexItemKind::instructions, 65},
                                                           {CodexItemKind::prompt, 63}}));
    EXPECT_EQ(result.items->instructions.files,
              (std::vector<CodexInstructions::File>{{repository + "/AGENTS.md", 4, 3}}));
    EXPECT_EQ(result.items->personalInstructions->byteCount, 4);
    EXPECT_EQ(readFile(home.path("call")),
              repository +
                  "\ndebug\nprompt-input\n-c\nsandbox_mode=\"read-only\"\n-c\napproval_policy=\"never\"\n" +
                  prompt + "\n");
}

TEST_F(CodexItemsOfATool, ChangeNothingOfTheMeasurementWhenTheyCannotBeHad) {
    struct Case {
        const char* onPromptInput;
        const char* onModels;
        const char* reason;
        std::optional<std::int64_t> window;
    };
    const char* const list = "cat \"$HOME/models\"";
    writeFile(home.path("codex/config.toml"), "model = \"gpt-a\"\n");
    for (const Case& c : std::vector<Case>{
             {"echo \"error: unrecognized subcommand 'prompt-input'\" >&2; exit 2",
              "exit 2",
              CodexItems::notTold,
              {}},
             {"exit 1", list, CodexItems::notTold, 272'000},
             {"cat \"$HOME/input\"", "exit 1", "", {}},
             {"cat \"$HOME/input\"; exit 1", list, CodexItems::notTold, 272'000},
             {"cat \"$HOME/input\" >&2", list, CodexItems::notTold, 272'000},
             {"head -c 100000 /dev/urandom", "head -c 100000 /dev/urandom", CodexItems::notTold, {}},
             {"head -c 70000000 /dev/zero", "echo '[]'", CodexItems::notTold, {}},
             {"kill -SEGV $$", list, CodexItems::notTold, 272'000}}) {
        script(c.onPromptInput, c.onModels);
        const CodexProbeResult result = measure();
        EXPECT_EQ(result.total, 12345) << c.onPromptInput;
        EXPECT_EQ(result.contextWindow, c.window) << c.onPromptInput;
        ASSERT_TRUE(result.items);
        EXPECT_EQ(result.items->reason, c.reason) << c.onPromptInput;
        EXPECT_EQ(result.items->areTold(), result.items->reason.empty());
    }
}

TEST_F(CodexItemsOfATool, AreEstimatedWithoutASession) {
    script("cat \"$HOME/input\"");
    const CodexItems items = probe.estimate(repository, {});
    EXPECT_EQ(items.items,
              (std::vector<CodexItem>{{CodexItemKind::skills, 54}, {CodexItemKind::instructions, 65}}))
        << "no prompt and, without a model, no system prompt";
    script("exec sleep 60");
    EXPECT_EQ(CodexProbe({}, 0.3).estimate(repository, {}).reason, "Codex took too long to tell.");
    std::filesystem::remove(home.path(".local/bin/codex"));
    const ScopedEnvironment path("PATH", "/usr/bin:/bin");
    const ScopedEnvironment shell("SHELL", "/bin/false");
    EXPECT_EQ(probe.estimate(repository, {}).reason, CodexProbe::notInstalledReason);
}

TEST_F(CodexItemsOfATool, EndWithACancel) {
    script("touch \"$HOME/started\"; exec sleep 60");
    StopSource stop;
    auto items = std::async(std::launch::async, [&] { return probe.estimate(repository, stop.token()); });
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(home.path("started")); }));
    stop.requestStop();
    EXPECT_EQ(items.get().reason, "Codex probe failed: The operation was cancelled.");
}

} // namespace
} // namespace loadscope
