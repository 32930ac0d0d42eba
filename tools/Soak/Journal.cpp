// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Journal.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LOADSCOPE_SOAK_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

namespace loadscope::soak {
namespace {

using Milliseconds = std::chrono::milliseconds;

/// A crash may have happened while the journal was being written.
constexpr Milliseconds patienceForLock{500};

} // namespace

Journal& Journal::current() {
    static Journal journal;
    return journal;
}

void Journal::start(std::uint64_t seed) {
    const std::lock_guard guard(mutex_);
    seed_ = seed;
    start_ = std::chrono::steady_clock::now();
}

void Journal::begin(const std::string& kind) {
    const std::lock_guard guard(mutex_);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
    last_.push_back({++actions_, elapsed.count(), kind});
    if (last_.size() > remembered) last_.pop_front();
    ++kinds_[kind];
}

void Journal::tell(const std::string& detail) {
    const std::lock_guard guard(mutex_);
    if (!last_.empty()) last_.back().text += " | " + detail;
}

void Journal::count(const std::string& what) {
    const std::lock_guard guard(mutex_);
    ++counts_[what];
}

std::int64_t Journal::actions() const {
    const std::lock_guard guard(mutex_);
    return actions_;
}

void Journal::violated(const std::string& what) noexcept {
    printLast();
    std::fprintf(stderr, "VIOLATION after %lld actions, seed %llu: %s\n", static_cast<long long>(actions_),
                 static_cast<unsigned long long>(seed_), what.c_str());
    std::fflush(nullptr);
    // Whatever still runs may be what is broken, so nothing is taken down in order.
    std::_Exit(EXIT_FAILURE);
}

void Journal::printLast() noexcept {
    bool isLocked = false;
    const auto deadline = std::chrono::steady_clock::now() + patienceForLock;
    while (!isLocked && std::chrono::steady_clock::now() < deadline)
        isLocked = mutex_.try_lock();
    std::fprintf(stderr, "The last actions, seed %llu:\n", static_cast<unsigned long long>(seed_));
    for (const Entry& entry : last_)
        std::fprintf(stderr, "%7lld %8.2f s  %s\n", static_cast<long long>(entry.number), entry.seconds,
                     entry.text.c_str());
    if (isLocked) mutex_.unlock();
}

void Journal::printSummary() const {
    const std::lock_guard guard(mutex_);
    std::printf("Actions: %lld\n", static_cast<long long>(actions_));
    for (const auto& [kind, count] : kinds_)
        std::printf("  %-28s %8lld\n", kind.c_str(), static_cast<long long>(count));
    std::puts("Outcomes:");
    for (const auto& [what, count] : counts_)
        std::printf("  %-28s %8lld\n", what.c_str(), static_cast<long long>(count));
}

void printLastActionsOnCrash() {
#ifdef LOADSCOPE_SOAK_SANITIZED
    __sanitizer_set_death_callback([] { Journal::current().printLast(); });
    const std::initializer_list<int> signals{SIGABRT};
#else
    const std::initializer_list<int> signals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
#endif
    for (const int signal : signals) {
        struct sigaction action {};
        action.sa_handler = [](int number) {
            std::fprintf(stderr, "CRASH by signal %d\n", number);
            Journal::current().printLast();
            std::raise(number);
        };
        // A second fault while printing ends the program.
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

} // namespace loadscope::soak
