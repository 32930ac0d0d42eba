// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/CommandLine.h"

#include "LoadscopeCLI/CheckCommand.h"
#include "LoadscopeCLI/DiffCommand.h"
#include "LoadscopeCLI/ExitCode.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/HistoryCommand.h"
#include "LoadscopeCLI/LeaderboardCommand.h"
#include "LoadscopeCLI/OpenCommand.h"
#include "LoadscopeCLI/ScanCommand.h"
#include "LoadscopeCLI/StatusCommand.h"
#include "LoadscopeCore/Platform/Version.h"

#include <CLI/CLI.hpp>
#include <CLI/Version.hpp>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr const char* description =
    "Shows how many tokens of context an AI coding tool loads when a session starts in a folder,\n"
    "before you type anything. The number is the tool's own.";

constexpr const char* examples = R"(Examples:
  loadscope                      open the window
  loadscope scan                 measure the current folder
  loadscope scan --json          the same for scripts
  loadscope status               are the tools installed and signed in
  loadscope history              what was measured before
  loadscope leaderboard          which repositories load most
  loadscope diff                 what changed since the scan before
  loadscope check                budgets and instruction files, without starting a tool

`loadscope COMMAND --help` tells more about a command.)";

/// Help without the lists of what an option excludes: whoever gives both is told.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_opts(const CLI::Option* option) const override {
        const bool isFlag = option->get_items_expected_max() == 0;
        return isFlag && option->get_option_text().empty() ? std::string()
                                                           : CLI::Formatter::make_option_opts(option);
    }
};

/// A standard stream that the caller closed would be taken by the first file that is opened, and results
/// written into it.
void openMissingStreams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (fcntl(descriptor, F_GETFD) < 0) [[maybe_unused]]
            const int opened = open("/dev/null", O_RDWR);
}

std::string versionText() {
    return std::string("loadscope ") + Version::number() + '\n' + Version::libraries() +
           "CLI11 " CLI11_VERSION "\n";
}

int numberOf(ExitCode code) { return static_cast<int>(code); }

/// Without a command: the window where one can be shown, else the help.
ExitCode openWindowOrHelp(const CLI::App& app) {
    if (const auto program = hasDisplay() ? findWindowProgram() : std::nullopt)
        startWindow(*program, std::nullopt);
    return writeResult(app.help());
}

int run(int argumentCount, const char* const* arguments) {
    CLI::App app(description, "loadscope");
    app.formatter(std::make_shared<HelpFormatter>());
    ExitCode exitCode = ExitCode::success;
    app.set_version_flag("--version", versionText(), "Print the version and those of the libraries");
    app.footer(examples);
    app.require_subcommand(0, 1);
    addScanCommand(app, exitCode);
    addStatusCommand(app, exitCode);
    addHistoryCommand(app, exitCode);
    addLeaderboardCommand(app, exitCode);
    addDiffCommand(app, exitCode);
    addCheckCommand(app, exitCode);
    addOpenCommand(app, exitCode);
    try {
        app.parse(argumentCount, arguments);
        if (app.get_subcommands().empty()) exitCode = openWindowOrHelp(app);
        return numberOf(exitCode);
    } catch (const CLI::CallForHelp&) {
        return numberOf(writeResult(app.help()));
    } catch (const CLI::CallForVersion&) {
        return numberOf(writeResult(versionText()));
    } catch (const CLI::ParseError& error) {
        Terminal errors(STDERR_FILENO);
        showFailure(errors, error.what(), "Run with --help for more information.");
        return numberOf(ExitCode::wrongUsage);
    }
}

} // namespace

int runCommandLine(int argumentCount, const char* const* arguments) {
    openMissingStreams();
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(argumentCount, arguments);
    } catch (const std::exception& error) {
        Terminal errors(STDERR_FILENO);
        showFailure(errors, "Something unexpected went wrong.", error.what());
        return numberOf(ExitCode::failure);
    }
}

} // namespace loadscope
