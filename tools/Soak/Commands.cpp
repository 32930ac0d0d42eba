// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Commands.h"

#include "LoadscopeCore/Process/ChildProcess.h"
#include "LoadscopeCore/Process/OutputCollector.h"
#include "tools/Soak/Journal.h"

#include <algorithm>
#include <csignal>
#include <nlohmann/json.hpp>
#include <optional>

namespace loadscope::soak {
namespace {

/// Of what one command prints.
constexpr std::size_t mostBytesKept = std::size_t{64} << 20;

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds longestRun{8};
/// After a signal: the child of a scan has its grace, and the machine may be busy.
constexpr std::chrono::seconds longestEnd{60};

std::string joined(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += argument + ' ';
    return line;
}

std::vector<std::string> scanArguments(const SoakHome& home, Dice& dice) {
    if (dice.oneIn(8)) return {"scan", "--codex-estimate", "--no-history", "--", home.anyFolder(dice)};
    std::vector<std::string> arguments{"scan"};
    for (const char* option : {"--json", "--include-codex", "--skip-check", "--no-history"})
        if (dice.oneIn(3)) arguments.emplace_back(option);
    if (dice.oneIn(4))
        arguments.insert(arguments.end(), {"--max-tokens", std::to_string(dice.below(60'000))});
    arguments.insert(arguments.end(), {"--", home.anyFolder(dice)});
    return arguments;
}

std::vector<std::string> anyArguments(const SoakHome& home, Dice& dice) {
    std::vector<std::string> arguments;
    switch (dice.below(10)) {
    case 0:
    case 1:
        arguments = {"history"};
        if (dice.oneIn(3)) arguments.insert(arguments.end(), {"--repository", home.goodFolder(dice)});
        break;
    case 2:
    case 3:
        arguments = {"leaderboard", "--tool", dice.oneIn(2) ? "claude" : "codex"};
        break;
    case 4:
        arguments = {"status"};
        break;
    case 5:
        return dice.oneIn(2) ? std::vector<std::string>{"history", "clear", "--yes"}
                             : std::vector<std::string>{"history", "clear"};
    default:
        return scanArguments(home, dice);
    }
    if (dice.oneIn(2)) arguments.emplace_back("--json");
    return arguments;
}

} // namespace

struct Commands::Run {
    Run(std::vector<std::string> given, std::string folder)
        : arguments(std::move(given)),
          child({.executable = LOADSCOPE_COMMAND,
                 .arguments = arguments,
                 .workingFolder = std::move(folder),
                 .environment = UserFolders::environment()}) {
        child.launch();
        output.emplace(child.standardOutput(), deadline, mostBytesKept);
        errors.emplace(child.standardError(), deadline, mostBytesKept);
    }

    [[nodiscard]] bool has(const char* argument) const {
        return std::ranges::find(arguments, argument) != arguments.end();
    }
    [[nodiscard]] bool clears() const { return has("clear"); }

    std::vector<std::string> arguments;
    ChildProcess child;
    std::shared_ptr<ReaderDeadline> deadline = std::make_shared<ReaderDeadline>();
    std::optional<OutputCollector> output;
    std::optional<OutputCollector> errors;
    Timestamp begin = std::chrono::system_clock::now();
    Clock::time_point signalAt = Clock::now() + longestRun;
    int signal = SIGINT;
    bool wasSignalled = false;
};

Commands::Commands(const SoakHome& home, HistoryWatch& history) : home_(home), history_(history) {}

Commands::~Commands() = default;

std::string Commands::start(Dice& dice) {
    if (running_.size() >= maximum) return "enough of them run";
    auto run = std::make_unique<Run>(anyArguments(home_, dice), home_.goodFolder(dice));
    if (run->clears()) history_.clearingBegins();
    if (dice.oneIn(4)) run->signalAt = Clock::now() + std::chrono::milliseconds(dice.below(2500));
    if (dice.oneIn(2)) run->signal = SIGTERM;
    running_.push_back(std::move(run));
    return joined(running_.back()->arguments);
}

void Commands::tend() {
    for (const auto& run : running_) {
        if (!run->child.isRunning()) {
            finish(*run);
        } else if (!run->wasSignalled && Clock::now() >= run->signalAt) {
            run->wasSignalled = true;
            kill(run->child.processIdentifier(), run->signal);
        } else if (Clock::now() >= run->signalAt + longestEnd) {
            Journal::current().violated("the command does not end on a signal: loadscope " +
                                        joined(run->arguments));
        }
    }
    std::erase_if(running_, [](const auto& run) { return !run->output; });
}

void Commands::finish(Run& run) {
    const ChildProcess::Termination end = run.child.wait();
    run.deadline->expireAt(Clock::now() + std::chrono::seconds(5));
    run.output->join();
    run.errors->join();
    const std::string output = run.output->takeBytes();
    const std::string errors = run.errors->takeBytes();
    run.output.reset();
    run.errors.reset();
    if (run.clears()) history_.clearingEnds();
    if (run.wasSignalled) history_.writerKilled();

    const std::string said = "loadscope " + joined(run.arguments) + "ended with " +
                             (end.bySignal ? "signal " : "") + std::to_string(end.status) + "\n" +
                             output.substr(0, 2000) + "\n" + errors.substr(0, 4000);
    const bool isKnownEnd = end.bySignal ? run.wasSignalled && end.status == run.signal
                                         : end.status <= 3 || (end.status == 130 && run.wasSignalled) ||
                                               (end.status == 143 && run.wasSignalled);
    if (!isKnownEnd || errors.find("Sanitizer") != std::string::npos) Journal::current().violated(said);
    if (run.has("--json") && !output.empty() && !nlohmann::json::accept(output))
        Journal::current().violated("not JSON: " + said);
    const bool isScan = run.arguments.front() == "scan";
    const bool measured = !end.bySignal && (end.status == 0 || end.status == 3);
    if (isScan && measured && !run.has("--no-history"))
        history_.expectStored(run.arguments.back(), run.begin);
    Journal::current().count("command: " + run.arguments.front() + (run.clears() ? " clear" : "") +
                             (end.bySignal ? ", signalled" : ", exit " + std::to_string(end.status)));
}

std::set<pid_t> Commands::processes() const {
    std::set<pid_t> all;
    for (const auto& run : running_)
        all.insert(run->child.processIdentifier());
    return all;
}

} // namespace loadscope::soak
