// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// A child for the tests of the process runner: does exactly what its first argument names. A mode that lives
// on writes its process identifier to the file named by its second argument when it is ready.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

void writeAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) _exit(90);
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

void say(std::string_view text) { writeAll(STDOUT_FILENO, text.data(), text.size()); }

void flood(long long bytes, bool both) {
    const std::string block(65536, 'x');
    while (bytes > 0) {
        const auto count = static_cast<std::size_t>(bytes < 65536 ? bytes : 65536);
        writeAll(STDOUT_FILENO, block.data(), count);
        if (both) writeAll(STDERR_FILENO, block.data(), count);
        bytes -= static_cast<long long>(count);
    }
}

void announce(const char* path) {
    const std::string partial = std::string(path) + ".partial";
    FILE* file = std::fopen(partial.c_str(), "w");
    std::fprintf(file, "%d", static_cast<int>(getpid()));
    std::fclose(file);
    std::rename(partial.c_str(), path);
}

[[noreturn]] void liveOn() {
    alarm(60); // a test that goes wrong must not leave this behind for good
    while (true)
        pause();
}

/// A server in the same group, as tools start them: it ignores the polite signal and holds the pipe.
void startServer(const char* path) {
    if (fork() != 0) return;
    std::signal(SIGTERM, SIG_IGN);
    announce(path);
    liveOn();
}

void describeStart() {
    int ignored = 0;
    for (int signal = 1; signal < 32; ++signal) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) ++ignored;
    }
    sigset_t mask;
    sigprocmask(SIG_SETMASK, nullptr, &mask);
    int blocked = 0;
    for (int signal = 1; signal < 32; ++signal)
        blocked += sigismember(&mask, signal);
    int descriptors = 0;
    for (int descriptor = 0; descriptor < 4096; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0) ++descriptors;
    char byte = 0;
    const bool inputIsEmpty = read(STDIN_FILENO, &byte, 1) == 0;
    const bool ownSession = getsid(0) == getpid() && getpgrp() == getpid();
    std::printf("ignored=%d blocked=%d descriptors=%d emptyInput=%d ownSession=%d", ignored, blocked,
                descriptors, inputIsEmpty, ownSession);
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view mode = count > 1 ? arguments[1] : "";
    const char* argument = count > 2 ? arguments[2] : "";
    if (mode == "exit") return std::atoi(argument);
    if (mode == "flood") flood(std::atoll(argument), false);
    if (mode == "flood-both") flood(std::atoll(argument), true);
    if (mode == "describe") describeStart();
    if (mode == "invalid-error") {
        say("fine");
        writeAll(STDERR_FILENO, "\xff\xfe", 2);
    }
    if (mode == "live" || mode == "live-stubborn" || mode == "live-exit-zero") {
        if (mode == "live-stubborn") std::signal(SIGTERM, SIG_IGN);
        if (mode == "live-exit-zero") std::signal(SIGTERM, [](int) { _exit(0); });
        say("partial");
        announce(argument);
        liveOn();
    }
    if (mode == "stopped") {
        announce(argument);
        raise(SIGSTOP);
        liveOn();
    }
    if (mode == "close-and-live") {
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
        usleep(100'000);
        return 7;
    }
    if (mode == "leave-server") {
        say(count > 3 ? arguments[3] : "");
        startServer(argument);
        while (access(argument, F_OK) != 0)
            usleep(1000);
    }
    if (mode == "live-with-server") {
        startServer(argument);
        liveOn();
    }
    return 0;
}
