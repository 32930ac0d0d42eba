// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Soak/Heartbeat.h"

#include "tests/Soak/Journal.h"

#include <algorithm>

namespace loadscope::soak {
namespace {

constexpr int beatMilliseconds = 50;
constexpr std::chrono::seconds lookEvery{1};

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
        if (Clock::now().time_since_epoch() - Clock::duration(last_) > limit)
            Journal::current().violated("the UI thread has not answered for " +
                                        std::to_string(limit.count()) + " s");
    }
}

} // namespace loadscope::soak
