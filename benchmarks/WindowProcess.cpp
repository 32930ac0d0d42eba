// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "benchmarks/WindowProcess.h"

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr int descriptorInChild = 9;
constexpr std::chrono::seconds patience(30);

std::int64_t nowInNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

/// The number in the lines "NAME: NUMBER…" of a file below /proc, added up; 0 when there is none.
std::int64_t sumOf(const std::filesystem::path& file, const std::string& ending) {
    std::ifstream lines(file);
    std::int64_t sum = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos && std::string_view(line).substr(0, colon).ends_with(ending))
            sum += std::strtoll(line.c_str() + colon + 1, nullptr, 10);
    }
    return sum;
}

std::vector<std::string> environmentFor(const std::string& preload) {
    std::vector<std::string> result{"LD_PRELOAD=" + preload, "QT_QPA_PLATFORM=xcb",
                                    "FIRST_FRAME_DESCRIPTOR=" + std::to_string(descriptorInChild)};
    for (char** entry = environ; *entry != nullptr; ++entry)
        result.emplace_back(*entry);
    return result;
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (const std::string& text : texts)
        result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

} // namespace

WindowProcess::WindowProcess(const std::vector<std::string>& arguments, const std::string& preload) {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) std::exit(1);
    frames_ = ends[0];
    const std::vector<std::string> environment = environmentFor(preload);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], descriptorInChild);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    startNanoseconds_ = nowInNanoseconds();
    const int failure = posix_spawn(&identifier_, arguments.front().c_str(), &actions, nullptr,
                                    pointers(arguments).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (failure == 0) return;
    std::cerr << "Cannot start " << arguments.front() << '\n';
    std::exit(1);
}

WindowProcess::~WindowProcess() {
    kill(identifier_, SIGKILL);
    waitpid(identifier_, nullptr, 0);
    close(frames_);
}

std::optional<double> WindowProcess::secondsToFirstFrame() const {
    pollfd wanted{frames_, POLLIN, 0};
    const int limit = static_cast<int>(std::chrono::milliseconds(patience).count());
    std::int64_t frame = 0;
    if (poll(&wanted, 1, limit) != 1 || read(frames_, &frame, sizeof frame) != sizeof frame) return {};
    return static_cast<double>(frame - startNanoseconds_) / 1e9;
}

bool WindowProcess::waitUntilIdle() const {
    const auto limit = std::chrono::steady_clock::now() + patience;
    std::int64_t before = -1;
    while (std::chrono::steady_clock::now() < limit) {
        const std::int64_t now = wakeUps();
        if (now == before) return true;
        before = now;
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
    return false;
}

std::int64_t WindowProcess::wakeUps() const {
    std::int64_t sum = 0;
    const std::filesystem::path threads = "/proc/" + std::to_string(identifier_) + "/task";
    std::error_code error;
    for (const auto& thread : std::filesystem::directory_iterator(threads, error))
        sum += sumOf(thread.path() / "status", "voluntary_ctxt_switches"); // of both kinds
    return sum;
}

std::int64_t WindowProcess::memory(const std::string& figure) const {
    return sumOf("/proc/" + std::to_string(identifier_) + "/smaps_rollup", figure) * 1024;
}

} // namespace loadscope
