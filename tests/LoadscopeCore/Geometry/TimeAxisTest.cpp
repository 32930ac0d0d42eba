// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TimeAxis.h"

#include "LoadscopeCore/Geometry/Shapes.h"
#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"
#include "tests/Support/Testing.h"

namespace {

using std::chrono::seconds;

std::string labels(const TimeAxis& axis, std::size_t count) {
    std::string text;
    double last = -1;
    for (const TimeTick& tick : axis.ticks(count)) {
        EXPECT_TRUE(tick.fraction > last && tick.fraction <= 1) << tick.label;
        last = tick.fraction;
        text += (text.empty() ? "" : " | ") + tick.label;
    }
    return text;
}

TEST(TimeAxis, ChoosesDaysWeeksMonthsOrYearsBySpanAndRoom) {
    struct Case {
        std::string name;
        Timestamp first;
        Timestamp last;
        std::size_t count;
        std::string expected;
    };
    const Timestamp start = localTime(2026, 10, 12, 9);
    const Case cases[] = {
        {"one scan", start, start, 6, "Oct 12"},
        {"same second", start, start + std::chrono::milliseconds(400), 6, "Oct 12"},
        {"two hours", start, start + seconds(7200), 6, "Oct 12"},
        {"overnight", start, start + seconds(86400), 6, "Oct 12 | Oct 13"},
        {"four days", start, localTime(2026, 10, 16), 6, "Oct 13 | Oct 14 | Oct 15 | Oct 16"},
        {"forty days", start, localTime(2026, 11, 21), 8,
         "Oct 13 | Oct 20 | Oct 27 | Nov 3 | Nov 10 | Nov 17"},
        {"forty days, narrow", start, localTime(2026, 11, 21), 3, "Oct 13 | Oct 27 | Nov 10"},
        {"over New Year", localTime(2026, 11, 20), localTime(2027, 3, 2), 5, "Dec 1 | Jan 1 | Feb 1 | Mar 1"},
        {"a year", start, localTime(2027, 10, 12), 5,
         "Jan 1, 2027 | Apr 1, 2027 | Jul 1, 2027 | Oct 1, 2027"},
        {"years apart", start, localTime(2040, 1, 2), 4, "Jan 1, 2030 | Jan 1, 2035 | Jan 1, 2040"},
        {"a clock at 1970", localTime(1970, 1, 2), localTime(2026, 1, 2), 4,
         "Jan 1, 1980 | Jan 1, 2000 | Jan 1, 2020"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(labels(TimeAxis(std::vector{c.last, c.first}), c.count), c.expected) << c.name;
    }
}

TEST(TimeAxis, FindsTheDateUnderAPlaceAgain) {
    const Timestamp start = localTime(2026, 10, 12);
    const std::vector<std::vector<Timestamp>> lists = {
        {start},
        {start, start + seconds(2)},
        {start + std::chrono::hours(90000), start},
        {Timestamp::min(), Timestamp::max()},
        {Timestamp::max()},
    };
    for (const auto& dates : lists) {
        const TimeAxis axis(dates);
        for (const double place : {0.0, 0.25, 0.5, 1.0}) {
            EXPECT_LE(std::abs(axis.fraction(axis.date(place)) - place),
                      dates[0] == Timestamp::max() ? 0.5 : 1e-6);
        }
        for (const std::size_t count : {0U, 1U, 2U, 12U}) {
            EXPECT_LE(axis.ticks(count).size(), std::max<std::size_t>(count, 1));
        }
        EXPECT_EQ(axis.date(-3), axis.date(0));
        EXPECT_EQ(axis.date(NAN), axis.date(0));
    }
}

} // namespace
