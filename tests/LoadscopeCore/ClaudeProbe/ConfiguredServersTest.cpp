// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ConfiguredServers.h"

#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace loadscope {
namespace {

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += name + ";";
    return text;
}

TEST(ConfiguredServers, AreTheKeysOfOneObjectAndNothingElse) {
    struct Case {
        std::string text;
        std::string project;
        std::string expected;
    };
    const std::vector<Case> cases{
        {R"({"mcpServers": {"a": {"command": "x", "env": {"SECRET": "1"}}, "b c": {}}})", "", "a;b c;"},
        {R"({"a": [{"mcpServers": {"x": 1}}], "b": {"mcpServers": {"x": 1}}, "mcpServers": {"y": [{"z": {}}]}})",
         "", "y;"},
        {R"({"mcpServers": [{"x": 1}], "mcpServer": {"x": 1}})", "", ""},
        {R"([{"mcpServers": {"x": 1}}])", "", ""},
        {R"({"mcpServers": {"": 1, "é": 2}})", "", "é;"},
        {R"({"projects": {"/r": {"mcpServers": {"local": {}}}, "/s": {"mcpServers": {"other": {}}}}})", "/r",
         "local;"},
        {R"({"projects": {"/r": {"history": [{"mcpServers": {"x": 1}}]}}, "mcpServers": {"user": 1}})", "/r",
         ""},
        {R"({"mcpServers": {"a": 1}} trailing)", "", ""},
        {R"({"mcpServers": {"a": 1})", "", ""},
        {"", "", ""},
        {"\xff\xfe", "", ""},
        {std::string(200'000, '['), "", ""},
        {R"({"mcpServers": {")" + std::string(201, 'n') + R"(": 1}})", "", ""},
    };
    for (const auto& [text, project, expected] : cases)
        EXPECT_EQ(joined(ConfiguredServers::names(text, project)), expected) << text.substr(0, 100);
    std::string many = R"({"mcpServers": {)";
    for (int number = 0; number < 5000; ++number)
        many += (number == 0 ? "\"" : ",\"") + std::to_string(number) + "\":{}";
    EXPECT_EQ(ConfiguredServers::names(many + "}}").size(), ConfiguredServers::mostServers);
}

TEST(ConfiguredServers, AreReadFromTheFilesThatTheToolReads) {
    const TemporaryFolder folder;
    const std::string home = folder.path("home");
    const std::string repository = makeFolder(folder.path("src/app"));
    const auto named = [](const std::string& name) { return R"({"mcpServers": {")" + name + R"(": {}}})"; };
    writeFile(home + "/.claude.json", R"({"mcpServers": {"user": {}, "both": {}}, "projects": {")" +
                                          repository + R"(": {"mcpServers": {"local": {}}}}})");
    writeFile(home + "/.claude/settings.json", named("settings"));
    writeFile(repository + "/.mcp.json", named("both"));
    writeFile(repository + "/.claude/settings.json", "no JSON");
    ASSERT_EQ(mkfifo((repository + "/.claude/settings.local.json").c_str(), 0600), 0);
    const auto read = [&](const std::string& path, const std::string& config) {
        std::string text;
        for (const ConfiguredServer& server : ConfiguredServers::read(path, home, config))
            text +=
                server.scope + ":" + server.name + " in " + server.file.substr(folder.path().size()) + "\n";
        return text;
    };
    EXPECT_EQ(read(repository, home + "/.claude"), "local:local in /home/.claude.json\n"
                                                   "project:both in /src/app/.mcp.json\n"
                                                   "user:user in /home/.claude.json\n"
                                                   "user:both in /home/.claude.json\n"
                                                   ":settings in /home/.claude/settings.json\n");
    // The tool knows the folder by its real path.
    std::filesystem::create_directory_symlink(repository, folder.path("link"));
    EXPECT_TRUE(read(folder.path("link"), home + "/.claude").starts_with("local:local"));
    const std::string config = makeFolder(folder.path("elsewhere"));
    writeFile(config + "/.claude.json", named("moved"));
    EXPECT_EQ(read(repository, config),
              "project:both in /src/app/.mcp.json\nuser:moved in /elsewhere/.claude.json\n");
    writeFile(config + "/.claude.json", named("large") + std::string(ConfiguredServers::largestFile, ' '));
    EXPECT_EQ(read(repository, config), "project:both in /src/app/.mcp.json\n");
}

} // namespace
} // namespace loadscope
