// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "tools/Soak/Dice.h"

#include <map>
#include <string>
#include <vector>

namespace loadscope::soak {

/// Watches the history file from outside: it must always be whole, and a record that was once seen in it, or
/// that the window holds for stored, must stay until it is trimmed, the history is cleared, or the soak
/// itself has damaged the file.
class HistoryWatch {
public:
    explicit HistoryWatch(std::string file) : file_(std::move(file)) {}

    /// Compares the file with what was confirmed; `shown` is the history that the window shows.
    void check(const std::vector<RecordedScan>& shown);

    /// The window or a command clears the history, or has ended.
    void clearingBegins();
    void clearingEnds();
    /// A command may have been killed while it wrote.
    void writerKilled() { ++killedWriters_; }

    /// Deletes, truncates, replaces or damages the file, or puts something else in its place; tells what.
    std::string tamper(Dice& dice);

    /// A scan of `repository` that ended well was begun at `begin`: its record must be among `records`,
    /// unless the history was disturbed since.
    void expectRecorded(const std::vector<RecordedScan>& records, const std::string& repository,
                        Timestamp begin);
    /// The same for the file, after a command.
    void expectStored(const std::string& repository, Timestamp begin);

    /// Nothing but the history and the files set aside may lie in its folder when no writer is at work.
    void checkFolder() const;

    [[nodiscard]] std::size_t recordCount() const { return recordCount_; }
    [[nodiscard]] std::size_t confirmedCount() const { return confirmed_.size(); }

private:
    void cleared();
    [[nodiscard]] bool isDisturbedSince(Timestamp time) const;
    void confirm(const std::vector<RecordedScan>& records);
    void requireConfirmed(const std::vector<RecordedScan>& stored);

    std::string file_;
    Timestamp disturbedAt_ = std::chrono::system_clock::now();
    bool mayBeBroken_ = false;
    int clearing_ = 0;
    int killedWriters_ = 0;
    std::size_t recordCount_ = 0;
    std::map<std::string, Timestamp> confirmed_; ///< by identifier
};

} // namespace loadscope::soak
