// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>

namespace loadscope::soak {

/// What was done so far. There is one for the whole program, because a crash and a sanitizer's report must
/// find it too. Safe to use from every thread.
class Journal {
public:
    static constexpr std::size_t remembered = 50;

    static Journal& current();

    void start(std::uint64_t seed);
    /// A new action of this kind; `tell` adds to its line what exactly is done.
    void begin(const std::string& kind);
    void tell(const std::string& detail);
    /// Counts something that is shown in the summary, for example a scan that was cancelled.
    void count(const std::string& what);
    [[nodiscard]] std::int64_t actions() const;

    /// Something is wrong: says what, with the seed and the last actions, and ends the program with 1.
    [[noreturn]] void violated(const std::string& what) noexcept;

    /// Prints the seed and the last actions, as far as they can be had.
    void printLast() noexcept;
    void printSummary() const;

private:
    struct Entry {
        std::int64_t number = 0;
        double seconds = 0; ///< since the start
        std::string text;
    };

    mutable std::mutex mutex_;
    std::uint64_t seed_ = 0;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::int64_t actions_ = 0;
    std::deque<Entry> last_;
    std::map<std::string, std::int64_t> kinds_;
    std::map<std::string, std::int64_t> counts_;
};

/// Has a crash and a sanitizer's report followed by the last actions.
void printLastActionsOnCrash();

} // namespace loadscope::soak
