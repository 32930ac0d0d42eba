// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/LoopUIThread.h"

#include "LoadscopeCLI/ExitCode.h"
#include "LoadscopeCore/Process/ChildGroups.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace loadscope {
namespace {

/// Bytes of the wake pipe.
constexpr char postedByte = 'p';
constexpr char signalByte = 's';

volatile std::sig_atomic_t signalPipe = -1;
std::atomic<bool> wasAsked = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a handler changes it");

/// Only what a handler may do: the main thread reads the byte and acts. Who asks again does not want to wait
/// for what the first request has begun, which may hang.
void onSignal(int) {
    if (wasAsked.exchange(true)) {
        ChildGroups::killAll();
        ::_exit(static_cast<int>(ExitCode::interrupted));
    }
    const int before = errno;
    [[maybe_unused]] const ssize_t ignored = ::write(signalPipe, &signalByte, 1);
    errno = before;
}

void setHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

/// `nohup` ignores the hang-up for us; that stays.
bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

} // namespace

LoopUIThread::LoopUIThread() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    wakeRead_ = FileDescriptor(ends[0]);
    wakeWrite_ = FileDescriptor(ends[1]);
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    signalPipe = wakeWrite_.get();
    wasAsked = false;
    for (const int signal : signals)
        if (signal != SIGHUP || !isIgnored(SIGHUP)) setHandler(signal, onSignal);
}

LoopUIThread::~LoopUIThread() {
    for (const int signal : signals)
        if (!isIgnored(signal)) setHandler(signal, SIG_DFL);
    signalPipe = -1;
}

void LoopUIThread::post(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }
    // A full pipe will wake the loop anyway.
    [[maybe_unused]] const ssize_t ignored = ::write(wakeWrite_.get(), &postedByte, 1);
}

void LoopUIThread::run(const std::function<bool()>& done, const std::function<void()>& interrupted) {
    bool told = false;
    while (true) {
        runPosted();
        if (interrupted_ && !std::exchange(told, true)) interrupted();
        if (done()) return;
        waitForWake();
    }
}

void LoopUIThread::runPosted() {
    while (true) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty()) return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

void LoopUIThread::waitForWake() {
    pollfd wake{wakeRead_.get(), POLLIN, 0};
    while (poll(&wake, 1, -1) < 0 && errno == EINTR) {
    }
    std::array<char, 256> bytes{};
    ssize_t count = 0;
    while ((count = ::read(wakeRead_.get(), bytes.data(), bytes.size())) > 0)
        for (ssize_t i = 0; i < count; ++i)
            interrupted_ |= bytes[static_cast<std::size_t>(i)] == signalByte;
}

} // namespace loadscope
