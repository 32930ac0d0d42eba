// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace loadscope {

/// What a source, its tokens and their callbacks share. For them alone.
class StopState {
public:
    /// One callback that waits to be called.
    class Entry {
    public:
        virtual ~Entry() = default;
        virtual void run() = 0;

    private:
        friend class StopState;
        bool* isGone_ = nullptr; ///< while it runs: set when it is destroyed meanwhile
    };

    bool request();
    [[nodiscard]] bool isRequested() const;
    /// False when a stop was requested already: the entry is not kept then.
    bool add(Entry& entry);
    /// Waits for an entry that another thread runs just now.
    void remove(Entry& entry);

private:
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    bool isRequested_ = false;
    std::vector<Entry*> entries_;
    Entry* running_ = nullptr;
    std::thread::id runner_;
};

/// Tells a function that it is to stop; made by a `StopSource`, or by itself for one that is never stopped.
/// Copies tell the same. The same as the standard library's, which not every platform's has. May be used from
/// any thread.
class StopToken {
public:
    StopToken() = default;

    [[nodiscard]] bool isStopRequested() const { return state_ != nullptr && state_->isRequested(); }

private:
    friend class StopSource;
    template <typename Callback>
    friend class StopCallback;
    explicit StopToken(std::shared_ptr<StopState> state) : state_(std::move(state)) {}

    std::shared_ptr<StopState> state_;
};

/// Requests stops; copies request the same one. May be used from any thread.
class StopSource {
public:
    StopSource() : state_(std::make_shared<StopState>()) {}

    [[nodiscard]] StopToken token() const { return StopToken(state_); }
    /// Runs the callbacks on this thread and returns when they have ended. False when it was requested
    /// before.
    bool requestStop() const { return state_->request(); }
    [[nodiscard]] bool isStopRequested() const { return state_->isRequested(); }

private:
    std::shared_ptr<StopState> state_;
};

/// Calls a function once when the stop is requested, on the thread that requests it, or at once on this one
/// when it was requested before. Its end waits for a call that another thread makes just now.
template <typename Callback>
class StopCallback : private StopState::Entry {
public:
    StopCallback(const StopToken& stop, Callback callback)
        : state_(stop.state_), callback_(std::move(callback)) {
        if (state_ != nullptr && !state_->add(*this)) callback_();
    }
    ~StopCallback() override {
        if (state_ != nullptr) state_->remove(*this);
    }
    StopCallback(const StopCallback&) = delete;
    StopCallback& operator=(const StopCallback&) = delete;

private:
    void run() override { callback_(); }

    std::shared_ptr<StopState> state_;
    Callback callback_;
};

/// What the waits below have in common: `wait` is given the condition under which they are over.
template <typename Condition, typename Wait>
bool waitOrStop(std::condition_variable& changed, std::unique_lock<std::mutex>& lock, const StopToken& stop,
                Condition condition, Wait wait) {
    std::mutex& mutex = *lock.mutex();
    lock.unlock(); // the callback takes it, perhaps at once
    {
        const StopCallback wake(stop, [&] {
            const std::lock_guard held(mutex); // else it could fall between the question and the wait
            changed.notify_all();
        });
        lock.lock();
        wait([&] { return condition() || stop.isStopRequested(); });
        lock.unlock(); // the callback's end is waited for
    }
    lock.lock();
    return condition();
}

/// Waits until the condition holds or a stop is requested; whether the condition holds then. `lock` is held
/// when the condition is asked and when it returns, and is let go in between, also at the beginning and the
/// end.
template <typename Condition>
bool waitOrStop(std::condition_variable& changed, std::unique_lock<std::mutex>& lock, const StopToken& stop,
                Condition condition) {
    return waitOrStop(changed, lock, stop, condition,
                      [&](const auto& isOver) { changed.wait(lock, isOver); });
}

/// The same, but no longer than `limit`.
template <typename Condition, typename Rep, typename Period>
bool waitOrStopFor(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                   const StopToken& stop, std::chrono::duration<Rep, Period> limit, Condition condition) {
    return waitOrStop(changed, lock, stop, condition,
                      [&](const auto& isOver) { changed.wait_for(lock, limit, isOver); });
}

/// A thread that is asked to stop and joined when it goes or another takes its place. The function may take a
/// `StopToken`. Making one throws `std::system_error` when no thread is to be had.
class JoiningThread {
public:
    JoiningThread() = default;

    template <typename Function>
    requires(!std::is_same_v<std::remove_cvref_t<Function>, JoiningThread>) explicit JoiningThread(
        Function function) {
        if constexpr (std::is_invocable_v<Function, StopToken>)
            thread_ = std::thread(std::move(function), stop_.token());
        else
            thread_ = std::thread(std::move(function));
    }

    ~JoiningThread() { end(); }
    JoiningThread(JoiningThread&& other) noexcept : stop_(other.stop_), thread_(std::move(other.thread_)) {}
    JoiningThread& operator=(JoiningThread&& other) noexcept {
        if (this == &other) return *this;
        end();
        stop_ = other.stop_;
        thread_ = std::move(other.thread_);
        return *this;
    }

    [[nodiscard]] bool joinable() const { return thread_.joinable(); }
    void join() { thread_.join(); }
    bool requestStop() { return stop_.requestStop(); }

private:
    void end() noexcept {
        if (!thread_.joinable()) return;
        stop_.requestStop();
        thread_.join();
    }

    StopSource stop_;
    std::thread thread_;
};

} // namespace loadscope
