// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/SearchPath.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/LoginShell.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"

#include <algorithm>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <unistd.h>

namespace loadscope::SearchPath {
namespace {

constexpr const char* variable = "PATH";
/// Where a shell looks when nobody says.
constexpr const char* usualFolders = "/usr/local/bin:/usr/bin:/bin";

/// What the shell said. It holds no search path before it was asked, nor after it was asked in vain.
class Answer {
public:
    void set(std::optional<std::string> path) {
        const std::lock_guard lock(mutex_);
        asked_ = true;
        if (path) path_ = std::move(path);
    }
    void forget() {
        const std::lock_guard lock(mutex_);
        asked_ = false;
        path_.reset();
    }
    [[nodiscard]] std::optional<std::string> path() const {
        const std::lock_guard lock(mutex_);
        return path_;
    }
    [[nodiscard]] SearchPathSource source() const {
        const std::lock_guard lock(mutex_);
        if (path_) return SearchPathSource::shell;
        return asked_ ? SearchPathSource::shellDidNotAnswer : SearchPathSource::inherited;
    }

private:
    mutable std::mutex mutex_;
    bool asked_ = false;
    std::optional<std::string> path_;
};

Answer& answer() {
    static Answer theOne;
    return theOne;
}

} // namespace

bool wasStartedFromTerminal() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (isatty(stream) == 1) return true;
    return FileDescriptor(open("/dev/tty", O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)).isOpen();
}

void askShell(StopToken stop) {
    auto path = ProcessCancellation::run(std::move(stop), [] {
        return LoginShell::answer(LoginShell::userShell(), LoginShell::Start::interactive,
                                  R"('printf' '%s' "$PATH")", shellTimeoutSeconds, shellKillGraceSeconds);
    });
    if (path && folders(*path).empty()) path.reset();
    answer().set(std::move(path));
}

SearchPathSource source() { return answer().source(); }

std::string current() {
    if (auto path = answer().path()) return *std::move(path);
    const Environment own = UserFolders::environment();
    const auto found = own.find(variable);
    return found == own.end() ? std::string() : found->second;
}

std::vector<std::string> folders(std::string_view path) {
    std::vector<std::string> result;
    while (!path.empty()) {
        std::string_view folder = path.substr(0, path.find(':'));
        path.remove_prefix(std::min(folder.size() + 1, path.size()));
        while (folder.size() > 1 && folder.ends_with('/'))
            folder.remove_suffix(1);
        if (folder.starts_with('/') && std::ranges::find(result, folder) == result.end())
            result.emplace_back(folder);
    }
    return result;
}

Environment environmentFor(const std::string& executable) {
    Environment environment = UserFolders::environment();
    if (source() == SearchPathSource::inherited) return environment;
    std::string path = current();
    if (path.empty()) path = usualFolders;
    const std::string folder = FilePath::parent(executable);
    const bool canStandInPath = folder.starts_with('/') && folder.find(':') == std::string::npos;
    if (canStandInPath && path != folder && !path.starts_with(folder + ':')) path.insert(0, folder + ':');
    environment[variable] = std::move(path);
    return environment;
}

void forgetShell() { answer().forget(); }

} // namespace loadscope::SearchPath
