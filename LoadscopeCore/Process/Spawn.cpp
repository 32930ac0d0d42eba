// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/Spawn.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// glibc has one of the two calls from 2.29 on, the other from 2.34 on; macOS both in its own way.
#if !defined(__GLIBC__)
#define LOADSCOPE_SPAWNS_IN_ONE_CALL
#elif __GLIBC_PREREQ(2, 34) // in a line of its own: elsewhere not even its parentheses can be read
#define LOADSCOPE_SPAWNS_IN_ONE_CALL
#endif

namespace loadscope::Spawn {
namespace {

#ifdef LOADSCOPE_SPAWNS_IN_ONE_CALL
/// Owns the attributes and file actions of one spawn.
class Setup {
public:
    Setup() {
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_init(&actions_);
    }
    ~Setup() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    Setup(const Setup&) = delete;
    Setup& operator=(const Setup&) = delete;

    void useFreshSignalsAndSession() {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
        flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
        posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
    }

    void connectStreams(int output, int error) {
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        if (error >= 0)
            posix_spawn_file_actions_adddup2(&actions_, error, STDERR_FILENO);
        else
            posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }

    void changeFolder(const std::string& folder) {
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }

    void closeEverythingElse() {
#ifdef __GLIBC__
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
#endif
    }

    int spawn(const Request& request, pid_t& identifier) const {
        return posix_spawn(&identifier, request.executable.c_str(), &actions_, &attributes_,
                           request.arguments, request.environment);
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};
#endif

// What follows runs between fork and exec: nothing but calls that are safe in a signal handler, since another
// thread may have held any lock when the process was copied.

bool open(const char* path, int flags, int wanted) {
    const int descriptor = ::open(path, flags);
    if (descriptor < 0) return false;
    if (descriptor == wanted) return true;
    const bool isThere = dup2(descriptor, wanted) == wanted;
    close(descriptor);
    return isThere;
}

bool connect(const Request& request) {
    if (!open("/dev/null", O_RDONLY, STDIN_FILENO)) return false;
    if (dup2(request.output, STDOUT_FILENO) < 0) return false;
    return request.error >= 0 ? dup2(request.error, STDERR_FILENO) >= 0
                              : open("/dev/null", O_WRONLY, STDERR_FILENO);
}

void useFreshSignals() {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        sigaction(signal, &action, nullptr); // of those that cannot be changed there is nothing to change
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void becomeProgram(const Request& request, const std::vector<int>& others, int failures) {
    if (setsid() >= 0 && connect(request) && (!request.folder || chdir(request.folder->c_str()) == 0)) {
        for (const int descriptor : others)
            fcntl(descriptor, F_SETFD, FD_CLOEXEC); // closed by what follows, unless that fails
        useFreshSignals();
        execve(request.executable.c_str(), request.arguments, request.environment);
    }
    const int failure = errno;
    while (write(failures, &failure, sizeof failure) < 0 && errno == EINTR) {
    }
    _exit(127);
}

/// The descriptors that are open now. Those that others open meanwhile are closed on exec by themselves.
std::vector<int> openDescriptors() {
    std::vector<int> descriptors;
    DIR* const folder = opendir("/proc/self/fd");
    if (folder == nullptr) {
        for (int descriptor = STDERR_FILENO + 1; descriptor < 1024; ++descriptor)
            descriptors.push_back(descriptor);
        return descriptors;
    }
    while (const dirent* entry = readdir(folder)) {
        const std::string_view name = entry->d_name;
        int descriptor = -1; // of "." and ".."
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        if (descriptor > STDERR_FILENO) descriptors.push_back(descriptor);
    }
    closedir(folder);
    return descriptors;
}

} // namespace

int byFork(const Request& request, pid_t& identifier) {
    int ends[2];
    if (pipe(ends) != 0) return errno;
    const FileDescriptor failures(ends[0]);
    FileDescriptor reporter(ends[1]);
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    const std::vector<int> others = openDescriptors();
    // No handler of this process may run in the copy.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = fork();
    if (child == 0) becomeProgram(request, others, reporter.get());
    const int failed = child < 0 ? errno : 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (child < 0) return failed;
    reporter = {};
    int failure = 0;
    ssize_t count = 0;
    do {
        count = read(failures.get(), &failure, sizeof failure);
    } while (count < 0 && errno == EINTR);
    if (count != sizeof failure) { // nothing to report: the program runs
        identifier = child;
        return 0;
    }
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return failure;
}

int start(const Request& request, pid_t& identifier) {
#ifdef LOADSCOPE_SPAWNS_IN_ONE_CALL
    Setup setup;
    setup.useFreshSignalsAndSession();
    setup.connectStreams(request.output, request.error);
    if (request.folder) setup.changeFolder(*request.folder);
    setup.closeEverythingElse();
    return setup.spawn(request, identifier);
#else
    return byFork(request, identifier);
#endif
}

} // namespace loadscope::Spawn
