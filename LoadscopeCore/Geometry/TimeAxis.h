// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace loadscope {

struct TimeTick {
    Timestamp date;
    std::string label;
    double fraction = 0; ///< of the axis, from 0
};

/// An axis of dates from the earliest to the latest of some scans. When all lie within one second, they stand
/// in the middle of a day. Days begin at midnight in the user's time zone.
class TimeAxis {
public:
    TimeAxis() = default;
    explicit TimeAxis(std::span<const Timestamp> dates);

    /// Place of a date on the axis, within 0 and 1.
    [[nodiscard]] double fraction(Timestamp date) const;

    /// The date at a place of the axis, within its ends.
    [[nodiscard]] Timestamp date(double fraction) const;

    /// Ticks at whole days, weeks, months or years, the densest that are no more than `maximumCount`. Where
    /// fewer than two would show, the ends are named instead. Labels have the year only where month and day
    /// could mean two dates.
    [[nodiscard]] std::vector<TimeTick> ticks(std::size_t maximumCount) const;

    /// A tick's label, as it would be written on this axis.
    [[nodiscard]] std::string label(Timestamp date) const;

private:
    [[nodiscard]] TimeTick tick(Timestamp date) const { return {date, label(date), fraction(date)}; }
    [[nodiscard]] std::vector<TimeTick> ticksAtTheEnds(std::size_t maximumCount) const;

    Timestamp start_;
    Timestamp end_;
    double seconds_ = 0; ///< length of the axis
    bool isOneMoment_ = true;
};

} // namespace loadscope
