// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// LoadscopeWindowCost ROUNDS IDLE_SECONDS OURS EMPTY FOLDER: what the window costs beside an empty one of the
// same toolkit: time to its first picture, memory and wake-ups when nothing happens. Both run in turn. Prints
// one line of six fields with tabs between them per figure; exits 2 when a goal is missed.
#include "benchmarks/Figures.h"
#include "benchmarks/WindowProcess.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace loadscope {
namespace {

using Figures::median;
using Figures::number;

constexpr double firstFrameGoal = 1.3;
constexpr double memoryGoal = 1.5;
constexpr int memoryRounds = 3;

struct Idle {
    double residentMegabytes = 0;
    double proportionalMegabytes = 0;
    double wakeUps = 0;
};

/// The same figure of both programs, a value for each round.
struct Pair {
    std::vector<double> ours;
    std::vector<double> empty;
};

bool printRatio(const std::string& what, const Pair& pair, double goal) {
    const double ratio = median(pair.ours) / median(pair.empty);
    const bool holds = ratio <= goal;
    std::cout << what << '\t' << number(median(pair.ours), 1) << '\t' << number(median(pair.empty), 1) << '\t'
              << number(ratio, 2) << "\t<= " << number(goal, 1) << '\t' << (holds ? "yes" : "NO")
              << std::endl;
    return holds;
}

/// Tells how much of a ratio no window with words in it could save; has no goal.
void printFloor(const std::string& what, double ours, double reference) {
    std::cout << what << '\t' << number(ours, 1) << '\t' << number(reference, 1) << '\t'
              << number(ours / reference, 2) << "\t-\t-" << std::endl;
}

/// The most that any round saw: one that wakes up now and then is not idle.
bool printWakeUps(const std::string& what, const Pair& pair) {
    const double ours = *std::max_element(pair.ours.begin(), pair.ours.end());
    const double empty = *std::max_element(pair.empty.begin(), pair.empty.end());
    std::cout << what << '\t' << number(ours, 0) << '\t' << number(empty, 0) << "\t-\t0\t"
              << (ours == 0 ? "yes" : "NO") << std::endl;
    return ours == 0;
}

double firstFrameMilliseconds(const std::vector<std::string>& program, const std::string& preload) {
    const WindowProcess process(program, preload);
    const std::optional<double> seconds = process.secondsToFirstFrame();
    if (!seconds) throw std::runtime_error("A window did not come up.");
    return *seconds * 1000;
}

Idle idleOf(const std::vector<std::string>& program, const std::string& preload,
            std::chrono::seconds period) {
    const WindowProcess process(program, preload);
    if (!process.secondsToFirstFrame()) throw std::runtime_error("A window did not come up.");
    if (!process.waitUntilIdle()) throw std::runtime_error("A window did not come to rest.");
    const std::int64_t before = process.wakeUps();
    std::this_thread::sleep_for(period);
    constexpr double megabyte = 1e6;
    return {static_cast<double>(process.memory("Rss")) / megabyte,
            static_cast<double>(process.memory("Pss")) / megabyte,
            static_cast<double>(process.wakeUps() - before)};
}

int measure(int rounds, std::chrono::seconds period, const std::vector<std::string>& ours,
            const std::vector<std::string>& empty) {
    const std::string preload = LOADSCOPE_FIRST_FRAME;
    const std::vector<std::string> withText{empty.front(), "One line of text"};
    Pair frames;
    std::vector<double> textFrames;
    for (int round = 0; round <= rounds; ++round) {
        const double first = firstFrameMilliseconds(ours, preload);
        const double second = firstFrameMilliseconds(empty, preload);
        const double third = firstFrameMilliseconds(withText, preload);
        if (round == 0) continue; // warms the caches
        frames.ours.push_back(first);
        frames.empty.push_back(second);
        textFrames.push_back(third);
    }
    Pair resident;
    Pair proportional;
    Pair wakeUps;
    for (int round = 0; round < memoryRounds; ++round) {
        for (const bool isOurs : {true, false}) {
            const Idle idle = idleOf(isOurs ? ours : empty, preload, period);
            const auto side = isOurs ? &Pair::ours : &Pair::empty;
            (resident.*side).push_back(idle.residentMegabytes);
            (proportional.*side).push_back(idle.proportionalMegabytes);
            (wakeUps.*side).push_back(idle.wakeUps);
        }
    }
    bool holds = printRatio("first frame (ms)", frames, firstFrameGoal);
    printFloor("the same beside one line of text", median(frames.ours), median(textFrames));
    holds = printRatio("memory at rest, resident (MB)", resident, memoryGoal) && holds;
    holds = printRatio("memory at rest, proportional (MB)", proportional, memoryGoal) && holds;
    holds = printWakeUps("wake-ups of an idle window in " + std::to_string(period.count()) + " s", wakeUps) &&
            holds;
    return holds ? 0 : 2;
}

} // namespace
} // namespace loadscope

int main(int argumentCount, char** arguments) {
    if (argumentCount != 6) return 1;
    const int rounds = std::max(1, std::atoi(arguments[1]));
    const std::chrono::seconds period(std::max(1, std::atoi(arguments[2])));
    try {
        return loadscope::measure(rounds, period, {arguments[3], arguments[5]}, {arguments[4]});
    } catch (const std::runtime_error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
