// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"

#include "tests/Support/Testing.h"

namespace {

TEST(CodexConfiguration, TakesWhatTheProfileInUseSetsBeforeTheTopLevel) {
    const std::string top = "model = \"gpt-a\"\nmodel_context_window = 128_000\nmodel_provider = 'lab'\n";
    const std::string profiles = "[profiles.work]\nmodel = \"gpt-b\"\nmodel_provider = \"openai\"\n"
                                 "[profiles.\"at home\"]\nmodel_context_window = 64000\n"
                                 "[mcp_servers.x]\nmodel = \"no\"\ncommand = \"x\"\n";
    struct Case {
        std::string toml;
        CodexConfiguration expected;
        bool ownProvider = false;
    };
    const std::vector<Case> cases{
        {top + profiles, {"gpt-a", 128000, "lab"}, true},
        {"profile = \"work\"\n" + top + profiles, {"gpt-b", 128000, "openai", {}, {}, "work"}},
        {"profile = \"at home\"\n" + top + profiles, {"gpt-a", 64000, "lab", {}, {}, "at home"}, true},
        {"profile = \"gone\"\n" + top, {"gpt-a", 128000, "lab", {}, {}, "gone"}, true},
        {"profile = 7\nprofiles = 8\nmodel = \"\"\nmodel_provider = [\"lab\"]\n", {}},
        {"model_context_window = 0\nproject_doc_max_bytes = 0\n", {{}, {}, {}, 0}},
        {"model_context_window = 1e5\nproject_doc_max_bytes = -1\n", {}},
        {"model_context_window = \"128000\"\nmodel = true\n", {}},
        {"project_doc_max_bytes = 65536\nproject_doc_fallback_filenames = [\"CLAUDE.md\", 7, '', \"b c\"]\n",
         {{}, {}, {}, 65536, {"CLAUDE.md", "b c"}}},
        {"\xef\xbb\xbfmodel = \"模型\" # comment\r\n", {"模型"}},
        {"profile = \"~\u00e9\\u007e~\"\n[profiles.'~\u00e9~~']\nmodel = '~41 \u00e9'\n",
         {"~41 \u00e9", {}, {}, {}, {}, "~\u00e9~~"}},
        {"project_root_markers = []\ninstructions = 'x'",
         {{}, {}, {}, {}, {}, {}, std::vector<std::string>{}, true}},
        {"project_root_markers = ['.hg', 7]\nmodel_instructions_file = 'x'",
         {{}, {}, {}, {}, {}, {}, std::vector<std::string>{".hg"}, true}},
        {"project_root_markers = 'x'\ninstructions = ''", {}},
        {"notify = [[[[1]]]]\nmodel = \"gpt-a\"", {"gpt-a"}},
    };
    for (const Case& item : cases) {
        const auto configuration = CodexConfiguration::parse(item.toml);
        EXPECT_EQ(configuration, item.expected) << item.toml;
        EXPECT_EQ(configuration.namesOwnProvider(), item.ownProvider) << item.toml;
    }
}

TEST(CodexConfiguration, KnowsNothingOfWhatIsNoUsableFile) {
    const auto repeated = [](const std::string& text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text;
        return all;
    };
    const std::string model = "model = \"m\"\n";
    for (const auto& text :
         {model + "model = \"n\"\n", model + "=", model + "\xff\xfe", model + "a = \u00e9",
          model + "\u00e9 = 1", model + "[}", model + std::string(1, '\0'),
          model + "x = " + repeated("[", 100'000), model + "x = " + repeated("{a=", 100'000),
          model + repeated("a.", 200'000) + "a = 1", model + "[" + repeated("a.", 200'000) + "a]",
          model + repeated("[" + repeated("a.", 200) + "a]\n", 20), std::string("\0\1\2", 3)})
        EXPECT_EQ(CodexConfiguration::parse(text), CodexConfiguration()) << text.substr(0, 40);

    const std::string deep = repeated("a.", 240) + "a";
    EXPECT_EQ(CodexConfiguration::parse(model + "[" + deep + "]\n" + repeated(deep + " = [\n{ ", 7) +
                                        "a = 1" + repeated(" }]", 7))
                  .model,
              "m"); // as deep as it gets

    const TemporaryFolder folder;
    const std::string file = folder.path("config.toml");
    EXPECT_EQ(CodexConfiguration::read(file), CodexConfiguration());
    writeFile(file, model);
    EXPECT_EQ(CodexConfiguration::read(file).model, "m");
    writeFile(file, model + "# " + std::string(CodexConfiguration::maximumBytes, 'x'));
    EXPECT_EQ(CodexConfiguration::read(file), CodexConfiguration());
    EXPECT_EQ(CodexConfiguration::read(folder.path()), CodexConfiguration());
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(CodexConfiguration::read(folder.path("pipe")), CodexConfiguration());
}

TEST(CodexConfiguration, StandsInTheFolderThatTheEnvironmentNames) {
    using Path = std::optional<std::string>;
    EXPECT_EQ(CodexConfiguration::path({}, "/home/a"), "/home/a/.codex/config.toml");
    EXPECT_EQ(CodexConfiguration::path({{"CODEX_HOME", ""}}, "/home/a"), "/home/a/.codex/config.toml");
    EXPECT_EQ(CodexConfiguration::path({{"CODEX_HOME", "/c/"}}, "/home/a"), "/c/config.toml");
    EXPECT_EQ(CodexConfiguration::path({{"CODEX_HOME", "c"}}, "/home/a"), Path());
}

} // namespace
