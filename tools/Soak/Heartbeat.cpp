// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Heartbeat.h"

#include "tools/Soak/Journal.h"

#include <algorithm>
#include <array>
#include <csignal>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include <sanitizer/common_interface_defs.h>
#else
#include <execinfo.h>
#include <unistd.h>
#endif

namespace loadscope::soak {
namespace {

constexpr int beatMilliseconds = 50;
constexpr std::chrono::seconds lookEvery{1};
constexpr std::chrono::seconds patienceForStack{20};

std::atomic<bool> isPrinted{false};

void printOwnStack(int) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    __sanitizer_print_stack_trace();
#else
    std::array<void*, 60> frames{};
    backtrace_symbols_fd(frames.data(), backtrace(frames.data(), static_cast<int>(frames.size())),
                         STDERR_FILENO);
#endif
    isPrinted = true;
}

/// Has the thread say where it is; a thread that cannot even do that is left alone after a while.
void printStackOf(pthread_t thread) {
    struct sigaction action {};
    action.sa_handler = printOwnStack;
    sigaction(SIGUSR1, &action, nullptr);
    pthread_kill(thread, SIGUSR1);
    const auto deadline = std::chrono::steady_clock::now() + patienceForStack;
    while (!isPrinted && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
}

} // namespace

Heartbeat::Heartbeat(std::chrono::seconds limit) : last_(Clock::now().time_since_epoch().count()) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { beat(); });
    timer_.start(beatMilliseconds);
    thread_ = std::thread([this, limit] { watch(limit); });
}

Heartbeat::~Heartbeat() {
    {
        const std::lock_guard guard(mutex_);
        ended_ = true;
    }
    wakeUp_.notify_all();
    thread_.join();
}

void Heartbeat::beat() {
    const Clock::duration now = Clock::now().time_since_epoch();
    const auto pause = std::chrono::duration_cast<std::chrono::milliseconds>(now - Clock::duration(last_));
    longest_ = std::max<std::int64_t>(longest_, pause.count());
    last_ = now.count();
}

void Heartbeat::watch(std::chrono::seconds limit) {
    std::unique_lock lock(mutex_);
    while (!wakeUp_.wait_for(lock, lookEvery, [this] { return ended_; })) {
        if (Clock::now().time_since_epoch() - Clock::duration(last_) <= limit) continue;
        printStackOf(uiThread_);
        Journal::current().violated("the UI thread has not answered for " + std::to_string(limit.count()) +
                                    " s");
    }
}

} // namespace loadscope::soak
