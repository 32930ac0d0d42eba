// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"

#include "LoadscopeCore/Process/ChildProcess.h"
#include "tests/Support/WaitFor.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <pty.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace loadscope {
namespace {

/// The command that was built with the tests, or another one that is to pass them.
std::string commandPath() {
    const char* const other = std::getenv("LOADSCOPE_TESTED_COMMAND");
    return other != nullptr ? other : LOADSCOPE_COMMAND;
}

std::string everything(int descriptor) {
    std::string text;
    std::array<char, 65536> bytes{};
    for (ssize_t count = 0; (count = read(descriptor, bytes.data(), bytes.size())) > 0;)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    return text;
}

/// A file of /proc, empty when it is gone or not ours to read. A process may end while it is read, which an
/// iterator over the file would throw.
std::string processFile(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

CommandRun finished(ChildProcess& child) {
    auto errors = std::async(std::launch::async, [&] { return everything(child.standardError().get()); });
    CommandRun run;
    run.output = everything(child.standardOutput().get());
    run.errors = errors.get();
    const auto termination = child.wait();
    run.exitCode = termination.bySignal ? -termination.status : termination.status;
    return run;
}

} // namespace

DemoHome::DemoHome() {
    const std::string bin = home_.path(".local/bin");
    std::filesystem::create_directories(bin);
    for (const std::string tool : {"claude", "codex"})
        writeExecutable(bin + '/' + tool, readFile(std::string(LOADSCOPE_DEMO_BIN "/") + tool));
    std::filesystem::create_directories(home_.path(".claude"));
    writeFile(home_.path(".claude/CLAUDE.md"), std::string(400, 'p'));
    repository_ = makeFolder(home_.path("src"));
    writeFile(repository_ + "/CLAUDE.md", std::string(2000, 'i'));
    repository_ = makeFolder(repository_ + "/app");
    writeFile(repository_ + "/CLAUDE.md", "See @notes.md\n" + std::string(3986, 'r'));
    writeFile(repository_ + "/notes.md", std::string(6000, 'n'));
}

Environment DemoHome::environment(const std::vector<std::string>& variables) const {
    Environment result{{"HOME", home_.path()},
                       {"XDG_DATA_HOME", home_.path(".local/share")},
                       {"PATH", "/usr/local/bin:/usr/bin:/bin"},
                       {"LC_ALL", "en_US.UTF-8"},
                       {"TERM", "xterm"},
                       {"TZ", "UTC"},
                       {"LOADSCOPE_DEMO_DELAY", "0"},
                       {"LOADSCOPE_DEMO_FLOOD_MB", "4"}};
    for (const std::string& variable : variables) {
        const auto equals = variable.find('=');
        result[variable.substr(0, equals)] = variable.substr(equals + 1);
    }
    return result;
}

CommandRun DemoHome::run(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& variables) const {
    ChildProcess child({.executable = commandPath(),
                        .arguments = arguments,
                        .workingFolder = repository_,
                        .environment = environment(variables)});
    child.launch();
    return finished(child);
}

CommandRun DemoHome::runShell(const std::string& script, const std::vector<std::string>& variables) const {
    ChildProcess child({.executable = "/bin/sh",
                        .arguments = {"-c", script, commandPath()},
                        .workingFolder = repository_,
                        .environment = environment(variables)});
    child.launch();
    return finished(child);
}

CommandRun DemoHome::runOnTerminal(const std::vector<std::string>& arguments,
                                   const std::vector<std::string>& variables, std::string_view typed) const {
    std::vector<std::string> command{commandPath()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return onTerminal(std::move(command), variables, typed);
}

CommandRun DemoHome::runShellOnTerminal(const std::string& script) const {
    return onTerminal({"/bin/sh", "-c", script, commandPath()}, {}, {});
}

CommandRun DemoHome::onTerminal(std::vector<std::string> command, const std::vector<std::string>& variables,
                                std::string_view typed) const {
    std::vector<std::string> settings;
    for (const auto& [name, value] : environment(variables))
        settings.push_back(name + '=' + value);
    const auto pointers = [](std::vector<std::string>& strings) {
        std::vector<char*> result;
        for (std::string& string : strings)
            result.push_back(string.data());
        result.push_back(nullptr);
        return result;
    };
    const auto argumentPointers = pointers(command);
    const auto settingPointers = pointers(settings);
    winsize size{.ws_row = 40, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        if (chdir(repository_.c_str()) == 0)
            execve(argumentPointers[0], argumentPointers.data(), settingPointers.data());
        _exit(127);
    }
    CommandRun run;
    if (write(terminal, typed.data(), typed.size()) < 0) return run;
    run.output = everything(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    close(terminal);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return run;
}

CommandRun DemoHome::runAndSignal(const std::vector<std::string>& arguments,
                                  const std::vector<std::string>& variables, std::string_view program,
                                  const std::vector<int>& signals) const {
    ChildProcess child({.executable = commandPath(),
                        .arguments = arguments,
                        .workingFolder = repository_,
                        .environment = environment(variables)});
    child.launch();
    if (!waitFor([&] { return !processes(program).empty(); })) return {-1, "", "the tool did not start"};
    for (const int signal : signals)
        kill(child.processIdentifier(), signal);
    return finished(child);
}

std::vector<int> DemoHome::processes(std::string_view text) const {
    std::vector<int> found;
    const std::string marker = "HOME=" + home_.path() + '\0';
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        if (processFile(entry.path() / "environ").find(marker) == std::string::npos) continue;
        if (processFile(entry.path() / "cmdline").find(text) != std::string::npos)
            found.push_back(std::stoi(name));
    }
    return found;
}

void DemoHome::removeTool(std::string_view name) const {
    std::filesystem::remove(home_.path(".local/bin/" + std::string(name)));
}

void DemoHome::moveTools(const std::string& folder) const {
    for (const std::string name : {"/claude", "/codex"})
        std::filesystem::rename(home_.path(".local/bin") + name, folder + name);
}

} // namespace loadscope
