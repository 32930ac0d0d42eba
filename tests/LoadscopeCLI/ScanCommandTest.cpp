// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Process/LoginShell.h"
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

namespace {

/// Runs all cases at once: most of them wait.
template <typename Case>
std::vector<CommandRun> runAll(const std::vector<Case>& cases,
                               const std::function<CommandRun(const Case&)>& run) {
    std::vector<std::future<CommandRun>> running;
    for (const Case& item : cases)
        running.push_back(std::async(std::launch::async, run, std::cref(item)));
    std::vector<CommandRun> runs;
    for (auto& future : running)
        runs.push_back(future.get());
    return runs;
}

TEST(ScanCommand, FailsInTheWordsOfEachFailure) {
    struct Case {
        const char* behaviour;
        const char* name;
        const char* headline;
        const char* detail;
    };
    constexpr const char* unreadable = "The probe session returned output this app could not read.";
    constexpr const char* couldNotCount = "Claude Code could not count its startup context.";
    constexpr const char* noTotal = "The probe session did not produce a startup total.";
    const std::vector<Case> cases{
        {"signed-out", "notAuthenticated", "Claude Code is not signed in.", "Run `claude` in a terminal"},
        {"auth-error", "notAuthenticated", "Claude Code is not signed in.", "Run `claude` in a terminal"},
        {"auth-error-text", "notAuthenticated", "Claude Code is not signed in.", "and sign in, then scan"},
        {"is-error", "sessionFailed", "The probe session reported an error.", "The service is overloaded."},
        {"is-error-empty", "sessionFailed", "The probe session reported an error.",
         "The session reported is_error."},
        {"not-json", "unreadableOutput", unreadable, "{\"type\":\"result\""},
        {"two-documents", "unreadableOutput", unreadable, "…"},
        {"no-session", "unreadableOutput", unreadable, "{\"type\":\"result\""},
        {"empty", "unreadableOutput", unreadable, "(no output)"},
        {"binary", "unreadableOutput", unreadable, "(no output)"},
        {"crash", "unreadableOutput", unreadable, "{\"type\":\"result\","},
        {"flood-both", "unreadableOutput", unreadable, "again and again and again\n"},
        {"empty-report", "unreadableContextReport", "Claude Code's `/context` report could not be read.",
         "no token table this app recognises"},
        {"no-table", "unreadableContextReport", "Claude Code's `/context` report could not be read.",
         "Claude Code may have changed the report it prints."},
        {"no-usage", "noTranscript", "The probe session produced no readable token usage.",
         "/.claude/projects, and the CLI reported no usable startup usage."},
        {"multi-turn", "multiTurnUsageOnly", noTotal, "the CLI usage block covers 3 turns."},
        {"unknown-turns", "unknownTurnCount", noTotal, "did not report how many turns"},
        {"cannot-count", "incompleteContextReport", couldNotCount,
         "Its report has no \"System prompt\" row and gives 0 tokens for 4 memory files, and its total is "
         "1500 tokens. "
         "Usually the computer is offline or the sign-in has expired: run `claude` in a terminal and look. "
         "Nothing was "
         "recorded."},
        {"estimated", "incompleteContextReport", couldNotCount,
         " tokens. It estimated instead of counting. Usually "},
        {"version-1.0.88", "unreadableContextReport", "Claude Code's `/context` report could not be read.",
         "This version of Claude Code (1.0.88) cannot report its startup context; update it."},
    };
    const DemoHome home;
    const auto runs = runAll<Case>(cases, [&](const Case& item) {
        return home.run({"scan", "--json"}, {std::string("LOADSCOPE_DEMO_CLAUDE=") + item.behaviour});
    });
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].behaviour);
        EXPECT_EQ(runs[i].exitCode, 1);
        EXPECT_THAT(runs[i].errors, StartsWith(std::string(cases[i].headline) + '\n'));
        const auto json = runs[i].json();
        ASSERT_TRUE(json.contains("error")) << runs[i].output;
        EXPECT_EQ(json["schemaVersion"], 1);
        EXPECT_EQ(json["error"]["case"], cases[i].name);
        EXPECT_EQ(json["error"]["headline"], cases[i].headline);
        const std::string detail = json["error"]["detail"];
        EXPECT_THAT(detail, HasSubstr(cases[i].detail));
        if (detail.find('\x1b') == std::string::npos) {
            EXPECT_EQ(runs[i].errors, std::string(cases[i].headline) + '\n' + detail + '\n');
        } else {
            EXPECT_THAT(runs[i].errors, AllOf(HasSubstr("\\x1b[?25l"), Not(HasSubstr("\x1b"))));
        }
    }
    EXPECT_THAT(home.run({"history", "--json"}).json()["scans"], IsEmpty());
}

TEST(ScanCommand, MeasuresWhatTheToolStillReports) {
    struct Case {
        const char* behaviour;
        const char* source;
        std::int64_t total; ///< 0: whatever the stand-in counts
        nlohmann::json window;
        bool reported = true;
        bool over = false;
    };
    const std::vector<Case> cases{
        {"ok", "contextCommand", 0, 200000},
        {"old-version", "contextCommand", 0, 200000},
        {"status-text", "contextCommand", 0, 200000},
        {"status-failed", "contextCommand", 0, 200000},
        {"key-in-settings", "contextCommand", 0, 200000},
        {"api-key", "contextCommand", 0, 200000},
        {"greeting", "contextCommand", 0, 200000},
        {"escape-prefix", "contextCommand", 0, 200000},
        {"verbose-array", "contextCommand", 0, 200000},
        {"no-autocompact", "contextCommand", 0, 200000},
        {"version-2.0.70", "contextCommand", 0, 200000},
        {"version-2.0.0", "contextCommand", 16000, 200000},
        {"no-total", "transcript", 23612, nullptr},
        {"no-total-usage", "cliUsage", 18003, nullptr, true, true},
        {"no-categories", "contextCommand", 0, 200000, false},
        {"no-window", "contextCommand", 0, nullptr},
        {"window-1m", "contextCommand", 0, 1000000},
        {"over-attributed", "contextCommand", 0, 200000, true, true},
        {"huge-counts", "contextCommand", 0, 200000, true, true},
        {"grandchild", "contextCommand", 0, 200000},
    };
    const DemoHome home;
    const auto runs = runAll<Case>(cases, [&](const Case& item) {
        return home.run({"scan", "--json"}, {std::string("LOADSCOPE_DEMO_CLAUDE=") + item.behaviour});
    });
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].behaviour);
        ASSERT_EQ(runs[i].exitCode, 0) << runs[i].errors;
        EXPECT_EQ(runs[i].errors, "");
        const auto json = runs[i].json();
        EXPECT_EQ(json["totalSource"], cases[i].source);
        EXPECT_EQ(json["contextWindow"], cases[i].window);
        EXPECT_EQ(json["categoriesSelfReported"], cases[i].reported);
        EXPECT_EQ(json["overAttributed"], cases[i].over);
        EXPECT_EQ(json["repositoryPath"], home.repository());
        EXPECT_EQ(json["resolvedCLIPath"], home.path() + "/.local/bin/claude");
        EXPECT_EQ(json["codex"]["reason"], "Codex was not included in this scan.");
        EXPECT_EQ(json["files"]["repository"].size(), 2U);
        EXPECT_EQ(json["files"]["inherited"][0]["estimatedTokens"], 500);
        EXPECT_EQ(json["files"]["personal"][0]["byteCount"], 400);
        std::int64_t sum = 0;
        for (const auto& row : json["rows"])
            sum += row["tokens"].get<std::int64_t>();
        EXPECT_EQ(sum == json["total"], !cases[i].over);
        EXPECT_EQ(json["total"], cases[i].total != 0 ? nlohmann::json(cases[i].total) : json["total"]);
    }
    for (const int left : home.processes("sleep"))
        kill(left, SIGKILL);
    EXPECT_EQ(home.run({"history", "--json"}).json()["scans"].size(), cases.size());
}

TEST(ScanCommand, TakesCodexAlongAndTellsWhyItCouldNot) {
    struct Case {
        std::vector<std::string> arguments;
        const char* behaviour;
        const char* text; ///< of the summary
    };
    const std::vector<Case> cases{
        {{"--include-codex"}, "ok", "% of its 272K window). Band: Lean."},
        {{"--include-codex"}, "turn-completed", "tokens — authoritative, reported by Codex CLI. Band: Lean."},
        {{"--include-codex"}, "on-stderr", "reported by Codex CLI ("},
        {{"--include-codex"}, "status-failed", "reported by Codex CLI ("},
        {{"--include-codex"}, "turn-failed", "Codex probe failed: codex exited with code 1 and reported no"},
        {{"--include-codex"}, "empty", "codex reported no token_count event. Reading additional input"},
        {{"--include-codex"},
         "signed-out",
         "Codex: not measured — Codex is not signed in. Run `codex login` in a terminal and sign in, then "
         "scan "
         "again."},
        {{"--include-codex"}, "own-provider", "Codex: not measured — Codex is not signed in."},
        {{"--include-codex", "--skip-check"}, "own-provider", "reported by Codex CLI. Band: Lean."},
        {{"--include-codex", "--skip-check"}, "signed-out", "Codex: not measured — Codex probe failed: "},
        {{"--include-codex"},
         "refuses-ephemeral",
         "\nThis version of Codex keeps a record of the session: it does not know the flag against it.\n"},
        {{"--include-codex"},
         "offline",
         "Codex: not measured — Codex probe failed: Reconnecting... 5/5 (stream disconnected before "
         "completion: "
         "failed to lookup address information: Try again).\n"},
        {{"--include-codex"}, "api-key-configured", "reported by Codex CLI. Band: Lean."},
        {{}, "signed-out", "Codex: not measured — Codex was not included in this scan."},
    };
    const DemoHome home;
    const auto run = [&](const Case& item) {
        std::vector<std::string> arguments{"scan"};
        arguments.insert(arguments.end(), item.arguments.begin(), item.arguments.end());
        return home.run(arguments, {std::string("LOADSCOPE_DEMO_CODEX=") + item.behaviour});
    };
    const auto runs = runAll<Case>(cases, run);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].behaviour);
        EXPECT_EQ(runs[i].exitCode, 0);
        EXPECT_EQ(runs[i].errors, "");
        EXPECT_THAT(runs[i].output, HasSubstr(cases[i].text));
    }
    makeFolder(home.path() + "/.codex");
    writeFile(home.path() + "/.codex/config.toml", "model_provider = \"lab\"\n");
    EXPECT_THAT(run({{"--include-codex"}, "own-provider", ""}).output, HasSubstr("reported by Codex CLI."));
    writeFile(home.path() + "/.codex/config.toml", "model = \"gpt-x\"\nmodel_context_window = 400000\n");
    EXPECT_THAT(run({{"--include-codex"}, "turn-completed", ""}).output, HasSubstr("% of its 400K window)"));
    home.removeTool("codex");
    const auto missing = home.run({"scan", "--include-codex", "--json"});
    EXPECT_EQ(missing.exitCode, 0);
    EXPECT_GT(missing.json()["total"], 0);
    EXPECT_EQ(missing.json()["codex"]["reason"],
              "Codex CLI not found — install `codex` to add a Codex column.");
}

TEST(ScanCommand, NamesEveryPlaceWhereItLookedForTheTool) {
    const auto fromShell =
        ClaudeCLILocator::loginShellPath(LoginShell::path(), ClaudeCLILocator::loginShellTimeoutSeconds);
    if (fromShell && !fromShell->empty()) GTEST_SKIP() << "a real tool is installed here";
    const DemoHome home;
    home.removeTool("claude");
    for (const char* check : {"--no-history", "--skip-check"}) {
        const auto run = home.run({"scan", check, "--json"});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.json()["error"]["case"], "cliNotFound");
        EXPECT_EQ(run.errors, "Could not find the claude command.\nLooked in:\n  • " + home.path() +
                                  "/.local/bin/claude\n  • /opt/homebrew/bin/claude\n"
                                  "  • /usr/local/bin/claude\n  • /usr/bin/claude\n  • /bin/claude\n"
                                  "  • " +
                                  FilePath::lastComponent(LoginShell::path()) + " -lc 'command -v claude'\n");
    }
}

TEST(ScanCommand, FindsAToolAndItsServersThatOnlyThePathNames) {
    const DemoHome home;
    const std::string folder = makeFolder(home.path() + "/my tools");
    home.moveTools(folder);
    writeFile(home.repository() + "/.mcp.json", "{\"command\": \"near\"}\n{\"command\": \"far\"}\n");
    writeExecutable(folder + "/near", "");
    const std::string mode = "LOADSCOPE_DEMO_CLAUDE=servers-in-path";
    const auto found = home.run({"scan", "--json"}, {"PATH=" + folder + ":/usr/bin:/bin", mode});
    ASSERT_EQ(found.exitCode, 0) << found.errors;
    EXPECT_EQ(found.json()["resolvedCLIPath"], folder + "/claude");
    writeExecutable(folder + "/far", "");
    const auto more = home.run({"scan", "--json"}, {"PATH=" + folder + ":/usr/bin:/bin", mode});
    EXPECT_GT(more.json()["total"], found.json()["total"]);

    writeExecutable(folder + "/claude", "#!/usr/bin/env no-such-node\n");
    const auto lost = home.run({"scan", "--skip-check"}, {"PATH=" + folder + ":/usr/bin:/bin"});
    EXPECT_EQ(lost.exitCode, 1);
    EXPECT_THAT(lost.errors, HasSubstr(folder + "/claude: its interpreter `no-such-node` was not found."));
}

TEST(ScanCommand, RefusesAFolderThatCannotBeListedBeforeAnyToolStarts) {
    const DemoHome home;
    for (const std::string folder : {"/nowhere/at all", "CLAUDE.md"}) {
        const auto run = home.run({"scan", folder, "--json"}, {"LOADSCOPE_DEMO_CLAUDE=hang"});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errors, StartsWith("This folder could not be read.\n"));
        EXPECT_EQ(run.json()["error"]["case"], "repositoryUnreadable");
    }
}

TEST(ScanCommand, ReadsPersonalInstructionsWhereTheToolDoes) {
    const DemoHome home;
    writeFile(home.path() + "/moved/CLAUDE.md", std::string(800, 'x'));
    writeFile(home.repository() + "/cfg/CLAUDE.md", std::string(4, 'x'));
    std::filesystem::create_symlink("moved", home.path() + "/alias");
    const std::string ordinary = home.path() + "/.claude/CLAUDE.md", moved = home.path() + "/moved/CLAUDE.md";
    const std::pair<std::string, std::string> cases[] = {
        {" ", ordinary}, {"~/moved/", moved}, {home.path() + "/alias", moved}, {"cfg", ""}};
    for (const auto& [value, personal] : cases) {
        const auto json =
            home.run({"scan", "--json", "--no-history", home.repository()}, {"CLAUDE_CONFIG_DIR=" + value})
                .json();
        ASSERT_TRUE(json.contains("files")) << value;
        const auto& files = json["files"];
        EXPECT_EQ(files["personal"].empty() ? "" : files["personal"][0]["path"].get<std::string>(), personal)
            << value;
        EXPECT_EQ(files["repository"][0]["path"] == home.repository() + "/cfg/CLAUDE.md", value == "cfg")
            << value;
    }
}

TEST(ScanCommand, HoldsTheTotalAgainstTheMaximum) {
    const DemoHome home;
    const std::int64_t total = home.run({"scan", "--json"}).json()["total"];
    const auto equal = home.run({"scan", "--max-tokens", std::to_string(total)});
    const auto above = home.run({"scan", "--json", "--max-tokens", std::to_string(total - 1)});
    EXPECT_EQ(equal.exitCode, 0);
    EXPECT_EQ(above.exitCode, 3);
    EXPECT_EQ(above.json()["total"], total);
    EXPECT_THAT(above.errors, HasSubstr("is above --max-tokens"));
}

TEST(ScanCommand, EndsItsChildWhenInterrupted) {
    struct Case {
        const char* name;
        std::vector<std::string> arguments;
        const char* behaviour;
        const char* program;
        int signal;
    };
    const std::vector<Case> cases{
        {"while the tool runs", {"scan"}, "CLAUDE=hang", "sleep", SIGINT},
        {"a tool that ignores the request", {"scan"}, "CLAUDE=ignore-term", "sleep", SIGTERM},
        {"while Codex runs", {"scan", "--include-codex"}, "CODEX=hang", "sleep", SIGHUP},
        {"while the sign-in is checked", {"scan"}, "CLAUDE=status-hang", "sleep", SIGINT},
        {"during a status", {"status"}, "CODEX=status-hang", "sleep", SIGINT},
        {"several folders",
         {"scan", ".", "/", "/usr", "--jobs", "2", "--skip-check"},
         "CLAUDE=hang",
         "sleep",
         SIGINT},
    };
    for (const Case& item : cases) {
        SCOPED_TRACE(item.name);
        const DemoHome home;
        const auto run = home.runAndSignal(item.arguments, {std::string("LOADSCOPE_DEMO_") + item.behaviour},
                                           item.program, {item.signal});
        EXPECT_EQ(run.exitCode, 130);
        EXPECT_EQ(run.output, "");
        EXPECT_THAT(run.errors, StartsWith("Interrupted"));
        EXPECT_TRUE(waitFor([&] { return home.processes("").empty(); }));
        EXPECT_THAT(home.run({"history", "--json"}).json()["scans"], IsEmpty());
    }
}

TEST(ScanCommand, LivesThroughAHangUpThatItsCallerIgnores) {
    const DemoHome home;
    const std::string tool = home.path() + "/.local/bin/claude", real = home.path() + "/claude";
    std::filesystem::rename(tool, real);
    writeExecutable(tool, "#!/bin/sh\nkill -HUP $PPID\nexec \"$HOME/claude\" \"$@\"\n");
    EXPECT_EQ(home.runShell("trap '' HUP; exec \"$0\" scan").exitCode, 0) << "as under nohup";
    EXPECT_EQ(home.run({"scan"}).exitCode, 130);
}

TEST(ScanCommand, LaysOutRowsAndFilesLargestFirst) {
    const DemoHome home;
    const std::string text = home.run({"scan"}).output;
    const std::string claude = "reported by Claude Code's /context\n";
    const std::string local = "measured on disk at ~4 bytes/token (estimate)\n";
    EXPECT_EQ(
        text.substr(std::min(text.find("Category  "), text.size())),
        "Category                              Tokens  Share  Source\n"
        "System tools                          14,800  64.6%  " +
            claude + "System prompt                          3,100  13.5%  " + claude +
            "Repository instructions                2,500  10.9%  " + local +
            "Skills                                 1,500   6.6%  " + claude +
            "Inherited project instructions           500   2.2%  " + local +
            "Memory files (beyond local estimate)     300   1.3%  " + claude +
            "Personal instructions                    100   0.4%  " + local +
            "Unattributed                              79   0.3%  derived: total minus attributed\n"
            "Messages                                  21   0.1%  " +
            claude +
            "\nOn demand, not counted: 9,800 (system tools)\n"
            "Reserved: 33,000 autocompact buffer · Free: 144,100\n"
            "\nTokens  Share  By size  Tier        Source                   Instruction file\n"
            "  1.7k   7.4%   ~1,500  repository  reported by Claude Code  " +
            home.repository() + "/notes.md\n  1.1k   4.8%   ~1,000  repository  reported by Claude Code  " +
            home.repository() + "/CLAUDE.md\n   556   2.4%     ~500  inherited   reported by Claude Code  " +
            home.path() + "/src/CLAUDE.md\n   112   0.5%     ~100  personal    reported by Claude Code  " +
            home.path() +
            "/.claude/CLAUDE.md\n"
            "\nFor the 4 files with both numbers Claude Code reports 3.5k tokens; the estimate from their "
            "sizes "
            "is 3,100. The estimate takes four bytes for a token, whatever the text; the rows of the "
            "breakdown "
            "keep it.\n");
}

TEST(ScanCommand, EndsAtOnceWithItsChildrenAtTheSecondSignal) {
    const DemoHome home;
    // The thread sanitizer takes the threads that an end at once leaves behind for lost ones.
    const auto run = home.runAndSignal(
        {"scan"}, {"LOADSCOPE_DEMO_CLAUDE=ignore-term", "TSAN_OPTIONS=report_thread_leaks=0"}, "sleep",
        {SIGINT, SIGTERM});
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_EQ(run.errors, "") << "nothing is waited for, not even to say so";
    EXPECT_TRUE(waitFor([&] { return home.processes("").empty(); }));
}

TEST(ScanCommand, IsInterruptedWhileTheLoginShellIsAsked) {
    const DemoHome home;
    home.removeTool("claude");
    for (const char* profile : {"/.profile", "/.zprofile", "/.bash_profile"})
        writeFile(home.path() + profile, "trap '' TERM\nsleep 60\n");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(home.runAndSignal({"scan"}, {}, "sleep", {SIGINT}).exitCode, 130);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    EXPECT_TRUE(waitFor([&] { return home.processes("").empty(); }));
}

TEST(ScanCommand, ShowsControlCharactersHarmlesslyAndLeavesThemInJson) {
    const DemoHome home;
    const std::vector<std::string> hostile{"LOADSCOPE_DEMO_CLAUDE=hostile-names"};
    const auto text = home.run({"scan"}, hostile);
    EXPECT_THAT(text.output,
                AllOf(HasSubstr("esc\\x1b[31mred\\x1b]0;title\\x07  "), HasSubstr("\\u202etxt.live"),
                      HasSubstr("<img src=x><b>bold</b>"), Not(HasSubstr("\x1b")), Not(HasSubstr("\x07"))));
    const auto json = home.run({"scan", "--json"}, hostile).json();
    std::vector<std::string> names;
    for (const auto& row : json["rows"])
        names.push_back(row["name"]);
    EXPECT_THAT(names, testing::Contains("esc\x1b[31mred\x1b]0;title\x07"));
}

} // namespace
