// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/ScanHistoryStore.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace loadscope {

/// A history whose disk takes as long as the test wants: one operation waits before it begins until the test
/// lets it go on.
class PausingStore : public ScanHistoryStore {
public:
    enum class Operation { none, load, append, clear };

    using ScanHistoryStore::ScanHistoryStore;
    ~PausingStore() override { goOn(); }

    /// From now on; call it before the operation can begin.
    void pauseIn(Operation operation) {
        const std::lock_guard lock(mutex_);
        paused_ = operation;
    }
    void goOn() {
        pauseIn(Operation::none);
        changed_.notify_all();
    }
    [[nodiscard]] bool isWaiting() {
        const std::lock_guard lock(mutex_);
        return waiting_ > 0;
    }

    std::vector<RecordedScan> load() override { return pass(Operation::load), ScanHistoryStore::load(); }
    std::vector<RecordedScan> append(const RecordedScan& scan) override {
        return pass(Operation::append), ScanHistoryStore::append(scan);
    }
    bool clear() override { return pass(Operation::clear), ScanHistoryStore::clear(); }

private:
    void pass(Operation operation) {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.wait(lock, [&] { return paused_ != operation; });
        --waiting_;
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    Operation paused_ = Operation::none;
    int waiting_ = 0;
};

/// Lets the store go on when a test ends early, too. Make it after the model, which waits for the store.
class LetGo {
public:
    explicit LetGo(PausingStore& store) : store_(store) {}
    ~LetGo() { store_.goOn(); }
    LetGo(const LetGo&) = delete;
    LetGo& operator=(const LetGo&) = delete;

private:
    PausingStore& store_;
};

} // namespace loadscope
