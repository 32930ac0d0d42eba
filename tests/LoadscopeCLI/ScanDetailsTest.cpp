// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/JsonSchema.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <map>
#include <set>

namespace loadscope {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A home folder whose repository has servers, agents, a rule that no size estimate finds and a file that the
/// tool does not load.
class ScanDetails : public testing::Test {
protected:
    ScanDetails() {
        writeFile(home_.repository() + "/.mcp.json",
                  R"({"mcpServers": {
  "database": { "command": "database-server", "env": { "TOKEN": "a-secret" } },
  "issues": { "command": "issue-server" }
}})");
        for (const std::string agent : {"reviewer", "translator"})
            writeFile(home_.repository() + "/.claude/agents/" + agent + ".md", agent);
        writeFile(home_.repository() + "/.claude/rules/api.md", std::string(360, 'r'));
        writeFile(home_.repository() + "/AGENTS.md", std::string(80, 'a'));
    }

    [[nodiscard]] CommandRun scan(std::vector<std::string> arguments, const std::string& behaviour) const {
        arguments.insert(arguments.begin(), "scan");
        return home_.run(arguments, {"LOADSCOPE_DEMO_CLAUDE=" + behaviour});
    }

    DemoHome home_;
};

/// "members=tokens" of each table, in the report's order; "*" marks one whose members are on demand.
std::string sums(const nlohmann::json& report) {
    struct Table {
        std::size_t members = 0;
        std::int64_t tokens = 0;
        std::set<bool> onDemand;
    };
    std::vector<std::string> order;
    std::map<std::string, Table> tables;
    for (const auto& member : report["details"]["members"]) {
        const std::string name = member["table"];
        if (!tables.contains(name)) order.push_back(name);
        Table& table = tables[name];
        ++table.members;
        table.tokens += member["tokens"].get<std::int64_t>();
        table.onDemand.insert(member["onDemand"].get<bool>());
    }
    std::string text;
    for (const std::string& name : order)
        text += name + (tables[name].onDemand.contains(true) ? "* " : " ") +
                std::to_string(tables[name].members) + "=" + std::to_string(tables[name].tokens) + "; ";
    return text;
}

TEST_F(ScanDetails, ListEveryMemberOfEachForm) {
    const std::string files = "Memory Files 5=3568; ";
    const std::string skills = "Skills 9=1480; ";
    const std::string agents = "Custom Agents 2=264; ";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"ok", "MCP Tools 9=10969; " + agents + files + skills},
        {"mcp-deferred", "MCP Tools* 9=10969; " + agents + files + skills},
        {"version-2.1.50", "MCP Tools 9=0; " + agents + files + "Skills 2=813; "},
        {"plugin", "MCP Tools 12=16332; Custom Agents 3=305; " + files + "Skills 10=1500; "},
        {"odd-tables",
         "MCP Tools 9=10969; " + agents + files + skills + "Hooks 2=24; Output Styles 1=1500; "},
        {"many-members", "MCP Tools 5000=60000; " + agents + files + skills},
        {"hostile-names", "MCP Tools 9=10969; Custom Agents 10=336; " + files + skills},
        {"no-categories", "MCP Tools 9=10969; " + agents + files + skills},
        {"version-2.0.70", "MCP Tools 9=10969; " + agents + files + skills},
        {"version-2.0.0", "Memory Files 1=312; "},
    };
    for (const auto& [behaviour, expected] : cases)
        EXPECT_EQ(sums(scan({"--json", "--no-history"}, behaviour).json()), expected) << behaviour;
}

TEST_F(ScanDetails, TellWhoKnowsOfAFile) {
    const auto report = scan({"--json"}, "ok").json();
    const auto& files = report["files"]["repository"];
    ASSERT_EQ(files.size(), 3U);
    std::map<std::string, nlohmann::json> reported;
    for (const auto& file : files)
        reported[file["path"].get<std::string>().substr(home_.repository().size())] = file["reportedTokens"];
    EXPECT_EQ(reported["/CLAUDE.md"], 1100);
    EXPECT_EQ(reported["/notes.md"], 1700);
    EXPECT_TRUE(reported["/AGENTS.md"].is_null());
    EXPECT_EQ(report["loadedElsewhere"], nlohmann::json::parse(R"([{"path": ")" + home_.repository() +
                                                               R"(/.claude/rules/api.md", "group": "Project",
                                                               "tokens": 100, "precision": "exact"}])"));
    EXPECT_EQ(report["onDemand"], nlohmann::json::parse(R"([{"name": "System tools", "tokens": 9800}])"));
    EXPECT_EQ(report["reserved"],
              nlohmann::json::parse(R"([{"name": "Autocompact buffer", "tokens": 33000}])"));
    const std::string text = scan({}, "ok").output;
    EXPECT_THAT(text,
                HasSubstr("\nOn demand, not counted: 9,800 (system tools)\nReserved: 33,000 autocompact "
                          "buffer · Free: "));
    EXPECT_THAT(text, HasSubstr("reported by Claude Code · loaded, not found here         " +
                                home_.repository() + "/.claude/rules/api.md\n"));
    EXPECT_THAT(text, HasSubstr("estimated from its size · found, not listed by the tool  " +
                                home_.repository() + "/AGENTS.md\n"));
}

TEST_F(ScanDetails, PrintTheMembersBelowTheirCategories) {
    const std::string all = scan({"--details"}, "ok").output;
    const auto report = scan({"--json"}, "ok").json();
    for (const auto& member : report["details"]["members"])
        EXPECT_THAT(all, HasSubstr(member["name"].get<std::string>() + "\n"));
    EXPECT_THAT(all, HasSubstr("11,000  32.1%  2 servers, 9 tools "));
    EXPECT_THAT(all, HasSubstr("  mcp__database__list_tables\n"));
    EXPECT_THAT(all, HasSubstr("\nLargest you can change\nServer "));
    EXPECT_THAT(all, HasSubstr("    claude mcp remove database --scope project\n"));
    EXPECT_THAT(all, Not(HasSubstr("a-secret")));
    const std::string top = scan({"--top", "1"}, "ok").output;
    EXPECT_THAT(top, HasSubstr("  3 more\n"));
    EXPECT_THAT(top, Not(HasSubstr("mcp__database__query")));
    EXPECT_THAT(scan({}, "ok").output, Not(HasSubstr("mcp__")));
    const std::string hostile = scan({"--details"}, "hostile-names").output;
    EXPECT_THAT(hostile, HasSubstr("\\x1b[31mred\\x1b]0;title\\x07\n"));
    EXPECT_THAT(hostile, HasSubstr("  a|b\n"));
    EXPECT_THAT(hostile, HasSubstr("  c|d\n"));
    for (const std::string wrong : {"-1", "x", ""})
        EXPECT_EQ(scan({"--top", wrong}, "ok").exitCode, 2) << wrong;
}

TEST_F(ScanDetails, NameTheServersThatAreMissing) {
    const std::string note =
        "2 configured servers are not in this report: they may have been too slow to start, "
        "or switched off. Missing: database, issues.";
    EXPECT_THAT(scan({}, "slow-server").output, HasSubstr("\n" + note + "\n"));
    EXPECT_EQ(scan({"--json"}, "slow-server").json()["notes"]["missingServers"], note);
    EXPECT_TRUE(scan({"--json"}, "ok").json()["notes"]["missingServers"].is_null());
}

TEST_F(ScanDetails, NeverReachTheHistory) {
    std::set<std::string> names{"api.md", "notes.md", ".mcp.json"};
    for (const std::string behaviour : {"ok", "plugin", "odd-tables", "slow-server", "mcp-deferred"}) {
        const auto report = scan({"--json"}, behaviour).json();
        for (const auto& member : report["details"]["members"]) {
            names.insert(member["name"]);
            if (member["table"] == "MCP Tools") names.insert(member["group"]);
        }
    }
    ASSERT_GT(names.size(), 25U);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.path() + "/.local/share")) {
        if (!entry.is_regular_file()) continue;
        ++files;
        const std::string bytes = readFile(entry.path());
        EXPECT_THAT(bytes, HasSubstr("System tools"));
        for (const std::string& name : names)
            EXPECT_EQ(bytes.find(name), std::string::npos) << name;
    }
    EXPECT_EQ(files, 1U);
}

TEST_F(ScanDetails, AgreeWithThePublishedSchema) {
    const JsonSchema schema(nlohmann::json::parse(readFile(LOADSCOPE_SCHEMA)));
    for (const std::string behaviour :
         {"mcp-deferred", "plugin", "odd-tables", "hostile-names", "huge-counts", "no-categories",
          "no-window", "over-attributed", "version-2.0.70", "version-2.0.0", "slow-server", "cannot-count"})
        EXPECT_THAT(schema.problems(scan({"--json", "--skip-check"}, behaviour).json()), IsEmpty())
            << behaviour;
    EXPECT_THAT(schema.problems(scan({"--json", "--include-codex"}, "ok").json()), IsEmpty());
    EXPECT_THAT(schema.problems(scan({"--json", "--codex-estimate"}, "ok").json()), IsEmpty());
    EXPECT_THAT(schema.problems(scan({"--json", "--accept-estimate"}, "estimated").json()), IsEmpty());
    EXPECT_THAT(schema.problems(scan({"--json", home_.repository(), "/nowhere"}, "ok").json()), IsEmpty());
    auto report = scan({"--json", "--no-history"}, "ok").json();
    report["details"]["members"][0]["precision"] = "guessed";
    EXPECT_THAT(schema.problems(report), Not(IsEmpty()));
    report.erase("details");
    EXPECT_THAT(schema.problems(report), Not(IsEmpty()));
}

} // namespace
} // namespace loadscope
