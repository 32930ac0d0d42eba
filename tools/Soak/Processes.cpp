// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Processes.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace loadscope::soak::Processes {
namespace {

namespace fs = std::filesystem;

/// What could be read: a process may end meanwhile, which an iterator over the file would throw.
std::string contents(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

int entries(const char* folder) {
    std::error_code error;
    const fs::directory_iterator all(folder, error);
    return error ? 0 : static_cast<int>(std::distance(fs::begin(all), fs::end(all)));
}

struct Status {
    char state = '?';
    pid_t parent = 0;
};

/// The name of the program is in brackets and may itself hold brackets and spaces.
std::optional<Status> statusOf(const fs::path& process) {
    const std::string text = contents(process / "stat");
    const std::size_t afterName = text.rfind(')');
    if (afterName == std::string::npos) return {};
    Status status;
    std::istringstream fields(text.substr(afterName + 1));
    fields >> status.state >> status.parent;
    return status;
}

} // namespace

Usage usage() {
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    malloc_trim(0);
#endif
    std::istringstream pages(contents("/proc/self/statm"));
    std::int64_t all = 0;
    std::int64_t resident = 0;
    pages >> all >> resident;
    // The listing itself holds one descriptor open.
    return {entries("/proc/self/fd") - 1, entries("/proc/self/task"), resident * sysconf(_SC_PAGESIZE)};
}

std::string descriptorList() {
    std::vector<std::string> targets;
    std::error_code error;
    for (fs::directory_iterator entry("/proc/self/fd", error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        targets.push_back(fs::read_symlink(entry->path(), gone).string());
    }
    std::sort(targets.begin(), targets.end());
    std::string list;
    for (const std::string& target : targets)
        list += "  " + target + '\n';
    return list;
}

std::vector<Stray> strays(const std::string& home, const std::set<pid_t>& expected) {
    const std::string marker = "HOME=" + home + '\0';
    std::vector<Stray> found;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        pid_t process = 0;
        const auto read = std::from_chars(name.data(), name.data() + name.size(), process);
        if (read.ec != std::errc() || process == getpid() || expected.contains(process)) continue;
        const auto status = statusOf(entry->path());
        if (!status) continue;
        const bool isZombie = status->state == 'Z';
        const bool isOurs = isZombie ? status->parent == getpid()
                                     : contents(entry->path() / "environ").find(marker) != std::string::npos;
        if (!isOurs) continue;
        std::string commandLine = contents(entry->path() / "cmdline");
        std::replace(commandLine.begin(), commandLine.end(), '\0', ' ');
        found.push_back({process, std::move(commandLine), isZombie});
    }
    return found;
}

} // namespace loadscope::soak::Processes
