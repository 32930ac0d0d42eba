// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/OpenCommand.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <CLI/CLI.hpp>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <system_error>
#include <unistd.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#endif

namespace loadscope {
namespace {

constexpr const char* windowProgram = "loadscope-app";

/// Where the window may stand, seen from the folder of this program.
#if defined(__APPLE__)
constexpr std::array windowPlaces{"Loadscope.app/Contents/MacOS/Loadscope",
                                  "../Loadscope.app/Contents/MacOS/Loadscope",
                                  "/Applications/Loadscope.app/Contents/MacOS/Loadscope"};
#else
constexpr std::array windowPlaces{windowProgram};
#endif

constexpr const char* examples = R"(Examples:
  loadscope open               the current folder
  loadscope open ~/src/app
  loadscope open --recent 1    the folder that was scanned last)";

/// The folder that holds this program, if the system tells.
std::optional<std::string> ownFolder() {
#if defined(__APPLE__)
    char path[4096];
    std::uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) != 0) return std::nullopt;
    return FilePath::parent(FilePath::resolved(path));
#else
    std::error_code error;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return std::nullopt;
    return FilePath::parent(path.string());
#endif
}

struct Options {
    std::string folder = ".";
    std::size_t recent = 0; ///< counted from 1; 0 when it was not asked for
};

/// The folder to open; says why when there is none.
std::optional<std::string> folderFor(const Options& options, Terminal& errors) {
    if (options.recent == 0) {
        auto folder = absoluteFolder(options.folder);
        if (!folder) showFailure(errors, "The current folder is gone.", "");
        return folder;
    }
    const auto folders = ScanHistory::recentFolders(
        ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load(), options.recent);
    if (folders.size() >= options.recent) return folders[options.recent - 1].path;
    showFailure(errors, "No folder was scanned that long ago.", "`loadscope leaderboard` lists them.");
    return std::nullopt;
}

ExitCode open(const Options& options) {
    Terminal errors(STDERR_FILENO);
    const auto folder = folderFor(options, errors);
    if (!folder) return ExitCode::failure;
    if (!hasDisplay()) {
        showFailure(errors, "There is no display to open a window on.",
                    "Use `loadscope scan` to measure a folder here.");
        return ExitCode::failure;
    }
    const auto program = findWindowProgram();
    if (!program) {
        showFailure(
            errors, "Could not find the loadscope-app command.",
            "It is neither beside this program nor on the search path. Use `loadscope scan` instead.");
        return ExitCode::failure;
    }
    startWindow(*program, folder);
    showFailure(errors, "The window could not be started.", *program + ": " + std::strerror(errno));
    return ExitCode::failure;
}

} // namespace

bool hasDisplay() {
#if defined(__APPLE__)
    return true;
#else
    const auto isSet = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
#endif
}

std::optional<std::string> findWindowProgram() {
    if (const auto folder = ownFolder()) {
        for (const char* const place : windowPlaces) {
            std::string candidate = FilePath::joined(*folder, place);
            if (FilePath::isExecutableFile(candidate)) return candidate;
        }
    }
    const char* searched = std::getenv("PATH");
    std::istringstream folders(searched == nullptr ? "" : searched);
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string candidate = FilePath::joined(folder, windowProgram);
        if (folder.starts_with('/') && FilePath::isExecutableFile(candidate)) return candidate;
    }
    return std::nullopt;
}

void startWindow(const std::string& program, const std::optional<std::string>& folder) {
    std::signal(SIGPIPE, SIG_DFL);
    execl(program.c_str(), program.c_str(), folder ? folder->c_str() : nullptr, nullptr);
}

void addOpenCommand(CLI::App& app, ExitCode& exitCode) {
    CLI::App* command = app.add_subcommand("open", "Open the window with a folder chosen");
    auto options = std::make_shared<Options>();
    CLI::Option* const folder =
        command->add_option("FOLDER", options->folder, "Folder to choose (the current one)");
    command->add_option("--recent", options->recent, "The Nth of the folders that were scanned last")
        ->option_text("N")
        ->check(CLI::Range(std::size_t{1}, ScanHistoryStore::maximumScans))
        ->excludes(folder);
    command->footer(examples);
    command->callback([options, &exitCode] { exitCode = open(*options); });
}

} // namespace loadscope
