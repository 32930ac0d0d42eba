// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TimeAxis.h"

#include "LoadscopeCore/Geometry/Shapes.h"

#include <algorithm>
#include <ctime>
#include <optional>

namespace loadscope {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr double day = 24 * 60 * 60;
constexpr double spanWithYears = 330 * day; // longer, and a month and day may occur twice

/// From `earlier` to `later`; computed in doubles, as the difference of two 64-bit clocks can overflow.
double secondsBetween(Timestamp earlier, Timestamp later) {
    return Seconds(later.time_since_epoch()).count() - Seconds(earlier.time_since_epoch()).count();
}

/// Stops at the ends of the clock.
Timestamp advanced(Timestamp time, double seconds) {
    const double target = Seconds(time.time_since_epoch()).count() + seconds;
    if (target <= Seconds(Timestamp::min().time_since_epoch()).count()) return Timestamp::min();
    if (target >= Seconds(Timestamp::max().time_since_epoch()).count()) return Timestamp::max();
    // In four steps: from one end of the clock to the other is too far for one.
    const auto quarter = std::chrono::duration_cast<Timestamp::duration>(Seconds(seconds / 4));
    return time + quarter + quarter + quarter + quarter;
}

enum class Unit { day, month, year };

/// A distance between ticks. The calendar decides how long a month is; `seconds` is only to choose by.
struct Step {
    Unit unit;
    int count;
    double seconds;
};

constexpr Step days(int count) { return {Unit::day, count, count * day}; }
constexpr Step months(int count) { return {Unit::month, count, count * 30.4 * day}; }
constexpr Step years(int count) { return {Unit::year, count, count * 365.2 * day}; }

constexpr Step steps[] = {days(1),   days(2),   days(4),   days(7),   days(14), months(1),
                          months(2), months(3), months(6), years(1),  years(2), years(5),
                          years(10), years(20), years(50), years(100)};

/// The first midnight, first of a month or first of a year at or before a time, counts of months and years
/// aligned to the calendar.
std::tm floorOf(std::time_t time, const Step& step) {
    std::tm local{};
    localtime_r(&time, &local);
    local.tm_sec = local.tm_min = local.tm_hour = 0;
    if (step.unit != Unit::day) local.tm_mday = 1;
    if (step.unit == Unit::month) local.tm_mon -= local.tm_mon % step.count;
    if (step.unit == Unit::year) {
        local.tm_mon = 0;
        local.tm_year -= (local.tm_year + 1900) % step.count;
    }
    return local;
}

void advance(std::tm& local, const Step& step) {
    if (step.unit == Unit::day) local.tm_mday += step.count;
    if (step.unit == Unit::month) local.tm_mon += step.count;
    if (step.unit == Unit::year) local.tm_year += step.count;
}

std::optional<Timestamp> timestampOf(std::tm local) {
    local.tm_isdst = -1;
    const std::time_t time = std::mktime(&local);
    const auto seconds = static_cast<double>(time);
    const bool isOnTheClock = seconds > Seconds(Timestamp::min().time_since_epoch()).count() + 1 &&
                              seconds < Seconds(Timestamp::max().time_since_epoch()).count() - 1;
    if (time == -1 || !isOnTheClock) return std::nullopt;
    return std::chrono::system_clock::from_time_t(time);
}

} // namespace

TimeAxis::TimeAxis(std::span<const Timestamp> dates) {
    if (dates.empty()) return;
    const auto [first, last] = std::minmax_element(dates.begin(), dates.end());
    start_ = *first;
    end_ = *last;
    seconds_ = secondsBetween(*first, *last);
    isOneMoment_ = seconds_ < 1;
}

double TimeAxis::fraction(Timestamp date) const {
    if (isOneMoment_) return unitClamped(0.5 + secondsBetween(start_, date) / day);
    return unitClamped(secondsBetween(start_, date) / seconds_);
}

Timestamp TimeAxis::date(double fraction) const {
    if (isOneMoment_) return advanced(start_, (unitClamped(fraction) - 0.5) * day);
    return advanced(start_, unitClamped(fraction) * seconds_);
}

std::string TimeAxis::label(Timestamp date) const {
    return seconds_ > spanWithYears ? LocaleFormat::date(date) : LocaleFormat::monthAndDay(date);
}

std::vector<TimeTick> TimeAxis::ticksAtTheEnds(std::size_t maximumCount) const {
    if (isOneMoment_) return {tick(start_)};
    const TimeTick first = tick(start_);
    const TimeTick last = tick(end_);
    if (first.label == last.label || maximumCount < 2) return {first};
    return {first, last};
}

std::vector<TimeTick> TimeAxis::ticks(std::size_t maximumCount) const {
    if (isOneMoment_ || maximumCount < 2) return ticksAtTheEnds(maximumCount);
    const auto fits = [&](const Step& s) { return seconds_ / s.seconds < static_cast<double>(maximumCount); };
    const auto* step = std::find_if(std::begin(steps), std::end(steps), fits);
    if (step == std::end(steps)) return ticksAtTheEnds(maximumCount);

    std::vector<TimeTick> ticks;
    std::tm local = floorOf(std::chrono::system_clock::to_time_t(start_), *step);
    if (step->unit == Unit::day && timestampOf(local) < start_)
        local.tm_mday += 1; // as near to the start as can be
    // One tick may lie before the start, and a calendar's months differ in length: hence the two more rounds.
    for (std::size_t i = 0; i < maximumCount + 2 && ticks.size() < maximumCount; ++i, advance(local, *step)) {
        const std::optional<Timestamp> time = timestampOf(local);
        if (!time || *time < start_) continue;
        if (secondsBetween(start_, *time) > seconds_) break;
        ticks.push_back(tick(*time));
    }
    return ticks.size() < 2 ? ticksAtTheEnds(maximumCount) : ticks;
}

} // namespace loadscope
