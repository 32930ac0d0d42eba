// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Soak/Dice.h"
#include "tools/Soak/HistoryWatch.h"
#include "tools/Soak/SoakHome.h"

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <sys/types.h>
#include <vector>

namespace loadscope::soak {

/// The command `loadscope`, run beside the window in the same home folder. UI thread only.
class Commands {
public:
    static constexpr std::size_t maximum = 3; ///< at a time

    Commands(const SoakHome& home, HistoryWatch& history);
    ~Commands();

    /// Starts one with random arguments; tells them. Nothing when enough of them run.
    std::string start(Dice& dice);

    /// Ends those that have run for long or are out of luck, and looks at the results of those that ended.
    void tend();

    [[nodiscard]] bool areRunning() const { return !running_.empty(); }
    [[nodiscard]] std::set<pid_t> processes() const;

private:
    struct Run;

    void finish(Run& run);

    const SoakHome& home_;
    HistoryWatch& history_;
    std::vector<std::unique_ptr<Run>> running_;
};

} // namespace loadscope::soak
