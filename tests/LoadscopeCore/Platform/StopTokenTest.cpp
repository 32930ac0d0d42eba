// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/StopToken.h"

#include <atomic>
#include <gtest/gtest.h>
#include <optional>

namespace loadscope {
namespace {

TEST(StopToken, TellsEveryCopyOnce) {
    StopSource source;
    const StopSource copy = source;
    const StopToken token = source.token();
    EXPECT_FALSE(StopToken().isStopRequested());
    EXPECT_FALSE(token.isStopRequested());
    int calls = 0;
    const StopCallback first(token, [&] { ++calls; });
    std::optional<StopCallback<std::function<void()>>> gone;
    gone.emplace(token, [&] { calls += 100; });
    gone.reset();
    EXPECT_TRUE(copy.requestStop());
    EXPECT_FALSE(source.requestStop());
    EXPECT_TRUE(token.isStopRequested());
    EXPECT_EQ(calls, 1);
    const StopCallback late(token, [&] { ++calls; });
    EXPECT_EQ(calls, 2) << "at once when it was requested before";
    const StopCallback never(StopToken(), [&] { ++calls; });
    EXPECT_EQ(calls, 2);
}

TEST(StopToken, LetsACallEndBeforeItsCallbackGoes) {
    StopSource source;
    std::atomic<bool> isInside = false;
    std::atomic<bool> goesOn = false;
    std::atomic<bool> hasEnded = false;
    std::optional<StopCallback<std::function<void()>>> callback;
    callback.emplace(source.token(), [&] {
        isInside = true;
        isInside.notify_all();
        goesOn.wait(false);
        hasEnded = true;
    });
    JoiningThread requester([&] { source.requestStop(); });
    isInside.wait(false);
    JoiningThread releaser([&] {
        goesOn = true;
        goesOn.notify_all();
    });
    callback.reset();
    EXPECT_TRUE(hasEnded);

    // Its own call may destroy it.
    StopSource other;
    std::optional<StopCallback<std::function<void()>>> suicidal;
    int calls = 0;
    const StopCallback before(other.token(), [&] { ++calls; });
    suicidal.emplace(other.token(), [&] { suicidal.reset(); });
    EXPECT_TRUE(other.requestStop());
    EXPECT_FALSE(suicidal);
    EXPECT_EQ(calls, 1);
}

TEST(StopToken, WakesWhoWaits) {
    std::mutex mutex;
    std::condition_variable changed;
    bool isReady = false;
    for (const bool stops : {true, false}) {
        isReady = false;
        StopSource source;
        bool result = stops;
        {
            JoiningThread waiting([&] {
                std::unique_lock lock(mutex);
                result = waitOrStop(changed, lock, source.token(), [&] { return isReady; });
            });
            if (stops) {
                source.requestStop();
            } else {
                const std::lock_guard lock(mutex);
                isReady = true;
                changed.notify_all();
            }
        }
        EXPECT_EQ(result, !stops);
    }
    std::unique_lock lock(mutex);
    StopSource requested;
    requested.requestStop();
    EXPECT_FALSE(waitOrStop(changed, lock, requested.token(), [] { return false; }));
    EXPECT_FALSE(
        waitOrStopFor(changed, lock, StopToken(), std::chrono::milliseconds(1), [] { return false; }));
    EXPECT_TRUE(lock.owns_lock());
}

TEST(StopToken, SurvivesStopsCallbacksAndWaitsAtTheSameTime) {
    for (int round = 0; round < 200; ++round) {
        StopSource source;
        std::atomic<int> calls = 0;
        std::vector<JoiningThread> threads;
        for (int i = 0; i < 3; ++i)
            threads.emplace_back([&] {
                for (int turn = 0; turn < 10; ++turn)
                    const StopCallback callback(source.token(), [&] { ++calls; });
                std::mutex mutex;
                std::condition_variable changed;
                std::unique_lock lock(mutex);
                waitOrStop(changed, lock, source.token(), [] { return false; });
            });
        threads.emplace_back([&] { source.requestStop(); });
        threads.clear();
        EXPECT_TRUE(source.isStopRequested());
    }
}

TEST(JoiningThread, IsStoppedAndJoinedWhenItGoesOrIsReplaced) {
    const auto untilStopped = [](std::atomic<int>& ended) {
        return [&ended](const StopToken& stop) {
            std::mutex mutex;
            std::condition_variable changed;
            std::unique_lock lock(mutex);
            waitOrStop(changed, lock, stop, [] { return false; });
            ++ended;
        };
    };
    std::atomic<int> ended = 0;
    {
        JoiningThread thread(untilStopped(ended));
        thread = JoiningThread(untilStopped(ended));
        EXPECT_EQ(ended, 1);
        JoiningThread moved = std::move(thread);
        EXPECT_FALSE(thread.joinable());
        EXPECT_TRUE(moved.requestStop());
        moved.join();
        EXPECT_EQ(ended, 2);
        thread = JoiningThread(untilStopped(ended));
    }
    EXPECT_EQ(ended, 3);
    EXPECT_FALSE(JoiningThread().joinable());
}

} // namespace
} // namespace loadscope
