// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/RepositoryCheck.h"
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/Geometry/TreemapLayout.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Instructions/InstructionFileScanner.h"
#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/PipeDrain.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "benchmarks/Comparison.h"
#include "benchmarks/SampleTexts.h"
#include "benchmarks/SampleTrees.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string_view>
#include <thread>
#include <vector>

namespace loadscope {
namespace {

constexpr const char* gigabyte = "1073741824";

std::string readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::string text(static_cast<std::size_t>(file.tellg()), '\0');
    file.seekg(0);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

/// Ends the program when a measured piece did not do its work.
void require(bool done, const char* what) {
    if (done) return;
    std::cerr << "Nothing to measure: " << what << '\n';
    std::exit(1);
}

Comparison treemap() {
    const std::vector<double> weights = Samples::weights(100'000);
    return {"treemap of 100,000 weights / std::sort of them",
            [weights] { require(TreemapLayout::layout(weights).size() == weights.size(), "treemap"); },
            [weights] {
                std::vector<double> sorted = weights;
                std::sort(sorted.begin(), sorted.end(), std::greater<>());
                require(sorted.front() >= sorted.back(), "sort");
            },
            3,
            0,
            31};
}

/// The reference makes a text of each cell, which is the least that a reading of a table does.
Comparison details() {
    const std::string text = Samples::contextDetails(1'000'000);
    return {"1 MB of members / split into texts of its cells",
            [text] { require(ContextDetailsParser::parse(text).members.size() > 10'000, "details"); },
            [text] {
                std::vector<std::string> cells;
                for (std::size_t from = 0, to = 0; from < text.size(); from = to + 1) {
                    to = std::min(text.find_first_of("|\n", from), text.size());
                    cells.push_back(text.substr(from, to - from));
                }
                require(cells.size() > 30'000, "cells");
            },
            3,
            0,
            31};
}

Comparison drain() {
    return {
        "1 GB from a child / cat > /dev/null",
        [] {
            ChildProcess child({.executable = "/usr/bin/head", .arguments = {"-c", gigabyte, "/dev/zero"}});
            child.launch();
            std::size_t bytes = 0;
            PipeDrain::run(std::move(child.standardOutput()), ReaderDeadline(),
                           [&](std::span<const char> chunk) { bytes += chunk.size(); });
            child.wait();
            require(std::to_string(bytes) == gigabyte, "drain");
        },
        [] {
            runProgram({"sh", "-c", std::string("head -c ") + gigabyte + " /dev/zero | cat > /dev/null"});
        },
        1.3,
        0,
        7};
}

Comparison transcriptSearch(const TemporaryFolder& folder) {
    const std::string root = folder.path("projects");
    const std::string session = Samples::fillWithTranscripts(root, 50'000);
    return {"transcript among 50,000 / find -name",
            [=] { require(TranscriptLocator::find(session, root).has_value(), "transcript"); },
            [=] {
                runProgram({"find", root, "-name", session + ".jsonl"});
            },
            1,
            0,
            15};
}

Comparison imports(const TemporaryFolder& folder) {
    const std::string repository = folder.path("imports");
    const std::vector<std::string> paths = Samples::fillWithImports(repository, 256);
    const std::string home = folder.path("empty-home");
    return {"scan of 256 imports / open and read them",
            [=] {
                const InstructionFileSet files =
                    InstructionFileScanner(home, home + "/.claude").scan(repository);
                require(files.allFiles().size() == paths.size(), "imports");
            },
            [=] {
                for (const std::string& path : paths) {
                    require(!readAll(path).empty(), "import");
                }
            },
            1.5,
            0,
            31};
}

Comparison eventStream(const TemporaryFolder& folder, std::size_t megabytes) {
    const std::string path =
        writeFile(folder.path("events.jsonl"), Samples::eventStream(megabytes * 1'000'000));
    return {std::to_string(megabytes) + " MB of events / grep -m1",
            [=] { require(CodexOutputParser::firstTokenCount(readAll(path)).has_value(), "usage event"); },
            [=] {
                runProgram({"grep", "-m1", "turn.completed", path});
            },
            0,
            0,
            5};
}

Comparison readiness() {
    return {"readiness of both tools / their status commands at once",
            [] { require(ReadinessChecker::check({}).claude == ToolReadiness::ready, "readiness"); },
            [] {
                runProgram({"sh", "-c",
                            "\"$HOME/.local/bin/claude\" auth status --json & "
                            "\"$HOME/.local/bin/codex\" login status 2> /dev/null & wait"});
            },
            0,
            0,
            15};
}

/// The tool as a scan starts it.
void runTool(const std::string& repository) {
    std::vector<std::string> command = {std::getenv("HOME") + std::string("/.local/bin/claude")};
    const std::vector<std::string> arguments = ProbeRunner::claudeArguments(ProbeRunner::probePrompt);
    command.insert(command.end(), arguments.begin(), arguments.end());
    runProgram(command, repository);
}

Comparison wholeScan(const TemporaryFolder& folder) {
    const std::string repository = folder.path("scanned");
    Samples::fillWithImports(repository, 32);
    return {"loadscope scan / the tool alone",
            [=] {
                runProgram({LOADSCOPE_COMMAND, "scan", repository, "--json", "--no-history", "--skip-check"});
            },
            [=] { runTool(repository); },
            1.01,
            0.010,
            11};
}

Comparison severalScans(const TemporaryFolder& folder) {
    std::vector<std::string> repositories;
    for (int i = 0; i < 8; ++i) {
        repositories.push_back(folder.path("several/" + std::to_string(i)));
        Samples::fillWithImports(repositories.back(), 4);
    }
    std::vector<std::string> command = {LOADSCOPE_COMMAND, "scan", "--jobs", "2", "--skip-check"};
    command.insert(command.end(), repositories.begin(), repositories.end());
    return {"loadscope scan of 8 folders, 2 at a time / two loops of the tool",
            [=] { runProgram(command); },
            [=] {
                const auto half = [&](std::size_t first) {
                    for (std::size_t i = first; i < repositories.size(); i += 2)
                        runTool(repositories[i]);
                };
                std::thread other([&] { half(1); });
                half(0);
                other.join();
            },
            1.1,
            0,
            5};
}

/// `check`, which is to cost what its own reads cost, however large the repository is.
Comparison check(const TemporaryFolder& folder) {
    const std::string repository = folder.path("checked");
    const std::vector<std::string> paths = Samples::fillWithImports(repository, 256);
    Samples::fillWithTranscripts(repository + "/src", 50'000);
    return {"check of 256 imports among 50,000 files / open and read them",
            [=] {
                const RepositoryCheck result = RepositoryCheck::of(repository, Budget());
                require(result.files.allFiles().size() == paths.size(), "check");
            },
            [=] {
                for (const std::string& path : paths) {
                    require(!readAll(path).empty(), "checked file");
                }
            },
            1.5,
            0,
            31};
}

Comparison diff(const TemporaryFolder& folder) {
    const std::string before = writeFile(folder.path("before.json"), Samples::scanReport(5'000, 0));
    const std::string after = writeFile(folder.path("after.json"), Samples::scanReport(5'000, 7));
    return {"loadscope diff of two reports of 5,000 members",
            [=] {
                runProgram({LOADSCOPE_COMMAND, "diff", before, after});
            },
            {},
            0,
            0.030,
            31};
}

/// Of records that are all new, into a history that is not there.
Comparison import(const std::string& what, const std::string& home, std::vector<std::string> files) {
    std::vector<std::string> command = {LOADSCOPE_COMMAND, "history", "import"};
    command.insert(command.end(), files.begin(), files.end());
    return {"loadscope history import of " + what,
            [=] {
                std::filesystem::remove_all(home + "/.local/share/Loadscope");
                runProgram(command);
            },
            {},
            0,
            0.050,
            15};
}

Comparison importHistory(const TemporaryFolder& folder) {
    const std::string file =
        writeFile(folder.path("history.json"), ScanHistoryFile::encode(Samples::history(200, 20)));
    return import("200 records", folder.path("home"), {file});
}

Comparison importReports(const TemporaryFolder& folder) {
    std::vector<std::string> files;
    for (int i = 0; i < 200; ++i)
        files.push_back(
            writeFile(folder.path("reports/" + std::to_string(i) + ".json"), Samples::scanReport(20, i)));
    return import("200 reports", folder.path("home"), files);
}

/// Points this process and its children at a home folder of their own.
void useHome(const std::string& home) {
    setenv("HOME", home.c_str(), 1);
    unsetenv("CLAUDE_CONFIG_DIR");
    unsetenv("XDG_DATA_HOME");
}

} // namespace

int run(std::string_view chosen, std::size_t eventMegabytes) {
    const TemporaryFolder folder;
    useHome(makeFolder(folder.path("home")));
    Samples::fillWithTools(folder.path("home"), LOADSCOPE_STAND_INS);
    bool allHold = true;
    const auto compare = [&](std::string_view name, const std::function<Comparison()>& make) {
        if (chosen.empty() || chosen == name) allHold = runComparison(make()) && allHold;
    };
    compare("treemap", treemap);
    compare("details", details);
    compare("drain", drain);
    compare("transcript", [&] { return transcriptSearch(folder); });
    compare("imports", [&] { return imports(folder); });
    compare("events", [&] { return eventStream(folder, eventMegabytes); });
    compare("readiness", readiness);
    compare("scan", [&] { return wholeScan(folder); });
    compare("several", [&] { return severalScans(folder); });
    compare("check", [&] { return check(folder); });
    compare("diff", [&] { return diff(folder); });
    compare("import", [&] { return importHistory(folder); });
    compare("reports", [&] { return importReports(folder); });
    return allHold ? 0 : 2;
}

} // namespace loadscope

/// LoadscopeRatios [NAME] [MEGABYTES]: one comparison or all; how long the event stream is.
int main(int count, char** arguments) {
    const std::string_view chosen = count > 1 ? arguments[1] : "";
    const std::size_t megabytes = count > 2 ? std::strtoul(arguments[2], nullptr, 10) : 50;
    return loadscope::run(chosen == "all" ? "" : chosen, megabytes);
}
