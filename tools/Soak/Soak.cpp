// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Soak.h"

#include "LoadscopeApp/Cards/Sheet.h"
#include "tools/Soak/Journal.h"
#include "tools/Soak/Waiting.h"

#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace loadscope::soak {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::chrono::seconds longestPause{90};
constexpr std::int64_t allowedGrowth = std::int64_t{700} << 20; ///< freed memory is kept aside for a while
#else
constexpr std::chrono::seconds longestPause{30};
constexpr std::int64_t allowedGrowth = std::int64_t{160} << 20; ///< pictures of windows of every size
#endif

constexpr int warmUpRests = 8;
constexpr int restLimitMilliseconds = 150'000;
/// The toolkit's idle painting threads end after half a minute.
constexpr int threadLimitMilliseconds = 60'000;
/// What the toolkit opens late and keeps: fonts, its clipboard.
constexpr int allowedDescriptors = 4;
const std::string grandchild = "sleep 600 "; ///< left alone on purpose by everything but us

int weightOf(const std::vector<Action>& actions, bool userIsKept) {
    int sum = 0;
    for (const Action& action : actions)
        if (!userIsKept || !action.needsUser) sum += action.weight;
    return sum;
}

const Action& drawAction(Dice& dice, bool userIsKept) {
    const std::vector<Action>* lists[] = {&windowActions(), &pageActions(), &outerActions()};
    int sum = 0;
    for (const auto* list : lists)
        sum += weightOf(*list, userIsKept);
    int place = dice.below(sum);
    for (const auto* list : lists) {
        for (const Action& action : *list) {
            if (userIsKept && action.needsUser) continue;
            place -= action.weight;
            if (place < 0) return action;
        }
    }
    return outerActions().front();
}

void requireWithin(int limitMilliseconds, const char* what, const std::function<bool()>& condition) {
    if (!runEventsUntil(condition, limitMilliseconds))
        Journal::current().violated(std::string("does not come to rest: ") + what);
}

} // namespace

Soak::Soak(Dice& dice, const SoakHome& home) : heartbeat_(longestPause), stage_(dice, home) {
    timer_.start();
}

void Soak::run(const Length& length) {
    while (timer_.elapsed() < length.milliseconds && Journal::current().actions() < length.actions) {
        for (int count = stage_.dice.between(15, 50); count > 0; --count)
            act();
        comeToRest();
    }
}

void Soak::act() {
    Dice& dice = stage_.dice;
    const std::string behaviour = stage_.home.drawBehaviour(dice);
    const Action& action = drawAction(dice, Prompts::areUp());
    Journal::current().begin(action.kind);
    Journal::current().tell(action.perform(stage_));
    if (dice.oneIn(3)) runEvents(dice.below(dice.oneIn(8) ? 700 : 60));
    Journal::current().tell(behaviour);
    stage_.commands.tend();
    stage_.window->check();
}

void Soak::comeToRest() {
    Journal::current().begin("come to rest");
    LiveWindow& window = *stage_.window;
    if (stage_.dice.oneIn(2)) window.model().cancel();
    window.batch().cancelAll(); // each of its tools may take until its time limit, one after the other
    requireWithin(restLimitMilliseconds, "the window", [&] {
        Prompts::closeAll();
        if (auto* sheet = window.view().findChild<Sheet*>()) sheet->dismiss();
        stage_.commands.tend();
        return window.isAtRest() && !Prompts::areUp();
    });
    requireWithin(restLimitMilliseconds, "a command", [&] {
        stage_.commands.tend();
        return !stage_.commands.areRunning();
    });
    awaitChildren();
    window.check();
    stage_.history.checkFolder();
    measure();
}

void Soak::awaitChildren() {
    std::vector<Processes::Stray> strays;
    const bool areGone = runEventsUntil(
        [&] {
            strays = Processes::strays(stage_.home.path(), {});
            for (const Processes::Stray& stray : strays)
                if (stray.commandLine == grandchild) kill(stray.process, SIGKILL);
            return strays.empty();
        },
        restLimitMilliseconds);
    if (areGone) return;
    std::string what = "left behind:";
    for (const Processes::Stray& stray : strays)
        what +=
            ' ' + std::to_string(stray.process) + (stray.isZombie ? " (zombie) " : " ") + stray.commandLine;
    Journal::current().violated(what);
}

void Soak::measure() {
    const int spareThreads = QThread::idealThreadCount() + 1;
    ++rests_;
    last_ = Processes::usage();
    if (first_) {
        requireWithin(threadLimitMilliseconds, "the number of threads", [&] {
            last_ = Processes::usage();
            return last_.threads <= first_->threads + spareThreads;
        });
        // A cancelled run lets its pipes go shortly after the window has shown that it is over.
        const bool areClosed = runEventsUntil(
            [&] {
                last_ = Processes::usage();
                return last_.descriptors <= first_->descriptors + allowedDescriptors;
            },
            restLimitMilliseconds);
        if (!areClosed)
            Journal::current().violated("descriptors are left open. After the warm-up:\n" +
                                        firstDescriptors_ + "Now:\n" + Processes::descriptorList());
        if (last_.residentBytes > first_->residentBytes + allowedGrowth)
            Journal::current().violated("memory grows: " + std::to_string(first_->residentBytes >> 20) +
                                        " MB, now " + std::to_string(last_.residentBytes >> 20) + " MB");
    } else if (rests_ >= warmUpRests) {
        first_ = last_;
        firstDescriptors_ = Processes::descriptorList();
    }
    peak_.descriptors = std::max(peak_.descriptors, last_.descriptors);
    peak_.threads = std::max(peak_.threads, last_.threads);
    peak_.residentBytes = std::max(peak_.residentBytes, last_.residentBytes);
    constexpr int reportEvery = 10;
    if (rests_ % reportEvery != 0) return;
    std::printf("%8.0f s %8lld actions, %zu records, ", static_cast<double>(timer_.elapsed()) / 1000,
                static_cast<long long>(Journal::current().actions()), stage_.history.recordCount());
    print("at rest", last_);
    std::fflush(stdout);
}

void Soak::print(const char* label, const Processes::Usage& usage) const {
    std::printf("%s: %d descriptors, %d threads, %lld MB\n", label, usage.descriptors, usage.threads,
                static_cast<long long>(usage.residentBytes >> 20));
}

void Soak::printSummary() const {
    Journal::current().printSummary();
    std::printf("Rests: %d; records in the end: %zu, of them confirmed: %zu; longest pause of the UI thread: "
                "%lld ms\n",
                rests_, stage_.history.recordCount(), stage_.history.confirmedCount(),
                static_cast<long long>(heartbeat_.longest().count()));
    if (first_) print("After the warm-up", *first_);
    print("Peak at rest", peak_);
    print("At the end", last_);
}

} // namespace loadscope::soak
