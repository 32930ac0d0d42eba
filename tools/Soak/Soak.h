// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Soak/Actions.h"
#include "tools/Soak/Heartbeat.h"
#include "tools/Soak/Processes.h"

#include <QElapsedTimer>

#include <limits>
#include <optional>

namespace loadscope::soak {

/// Does one random action after the other and looks again and again that nothing is wrong. From time to time
/// it lets everything come to rest: then nothing may be left of what went before.
class Soak {
public:
    struct Length {
        qint64 milliseconds = std::numeric_limits<qint64>::max();
        std::int64_t actions = std::numeric_limits<std::int64_t>::max();
    };

    Soak(Dice& dice, const SoakHome& home);

    /// Returns when the length is reached, whichever of both comes first.
    void run(const Length& length);
    void printSummary() const;

private:
    void act();
    void comeToRest();
    void awaitChildren();
    void measure();
    void print(const char* label, const Processes::Usage& usage) const;

    Heartbeat heartbeat_;
    Stage stage_;
    QElapsedTimer timer_;
    int rests_ = 0;
    std::optional<Processes::Usage> first_; ///< after the warm-up
    std::string firstDescriptors_;
    Processes::Usage peak_;
    Processes::Usage last_;
};

} // namespace loadscope::soak
