// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UserFolders.h"
#include "tests/Support/TemporaryFolder.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// How one run of the command ended and what it printed.
struct CommandRun {
    int exitCode = -1;
    std::string output;
    std::string errors;

    [[nodiscard]] nlohmann::json json() const { return nlohmann::json::parse(output, nullptr, false); }
};

/// A temporary home folder with the stand-in tools, a repository with instruction files, and the real command
/// started in it. Answers come without delay. Safe to use from several threads.
class DemoHome {
public:
    DemoHome();

    [[nodiscard]] const std::string& path() const { return home_.path(); }
    [[nodiscard]] const std::string& repository() const { return repository_; }

    /// Variables are "NAME=value"; they come on top of a small fixed environment.
    [[nodiscard]] CommandRun run(const std::vector<std::string>& arguments,
                                 const std::vector<std::string>& variables = {}) const;

    /// The same through `sh`, where "$0" is the command.
    [[nodiscard]] CommandRun runShell(const std::string& script,
                                      const std::vector<std::string>& variables = {}) const;

    /// On a terminal of 100 columns, where somebody has typed; everything that it printed is in `output`.
    [[nodiscard]] CommandRun runOnTerminal(const std::vector<std::string>& arguments,
                                           const std::vector<std::string>& variables = {},
                                           std::string_view typed = {}) const;

    /// The same through `sh`, where "$0" is the command.
    [[nodiscard]] CommandRun runShellOnTerminal(const std::string& script) const;

    /// Starts the command, waits until a process of this home runs `program`, sends the signals.
    [[nodiscard]] CommandRun runAndSignal(const std::vector<std::string>& arguments,
                                          const std::vector<std::string>& variables, std::string_view program,
                                          const std::vector<int>& signals) const;

    /// Processes that were started with this home folder and whose command line contains the text.
    [[nodiscard]] std::vector<int> processes(std::string_view text) const;

    void removeTool(std::string_view name) const;

    /// Moves all stand-ins to the folder.
    void moveTools(const std::string& folder) const;

private:
    [[nodiscard]] Environment environment(const std::vector<std::string>& variables) const;
    [[nodiscard]] CommandRun onTerminal(std::vector<std::string> command,
                                        const std::vector<std::string>& variables,
                                        std::string_view typed) const;

    TemporaryFolder home_;
    std::string repository_;
};

} // namespace loadscope
