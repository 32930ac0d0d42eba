// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TimeAxis.h"

#include "tests/LoadscopeCore/Geometry/ShapeChecks.h"

namespace {

using std::chrono::hours, std::chrono::seconds, std::chrono::milliseconds;

TEST(TimeAxis, ChoosesDaysWeeksMonthsOrYearsBySpanAndRoom) {
    const Timestamp start = localTime(2026, 10, 12, 9);
    const auto labels = [&](Timestamp last, std::size_t count, std::optional<Timestamp> first = {}) {
        const std::vector<TimeTick> ticks = TimeAxis(std::vector{last, first.value_or(start)}).ticks(count);
        EXPECT_TRUE(std::ranges::is_sorted(ticks, std::less_equal<>(), &TimeTick::fraction));
        EXPECT_LE(ticks.back().fraction, 1);
        return listed(ticks, [](const TimeTick& tick) { return tick.label; });
    };
    EXPECT_EQ(labels(start, 6), "Oct 12; ");
    EXPECT_EQ(labels(start + milliseconds(400), 6), "Oct 12; ");
    EXPECT_EQ(labels(start + hours(2), 6), "Oct 12; ");
    EXPECT_EQ(labels(start + hours(24), 6), "Oct 12; Oct 13; ")
        << "the ends, where one midnight lies between";
    EXPECT_EQ(labels(start + hours(24), 1), "Oct 12; ");
    EXPECT_EQ(labels(localTime(2026, 10, 16), 6), "Oct 13; Oct 14; Oct 15; Oct 16; ");
    EXPECT_EQ(labels(localTime(2026, 10, 17), 3, localTime(2026, 10, 12, 0)), "Oct 12; Oct 14; Oct 16; ");
    EXPECT_EQ(labels(localTime(2026, 11, 21), 8), "Oct 13; Oct 20; Oct 27; Nov 3; Nov 10; Nov 17; ");
    EXPECT_EQ(labels(localTime(2026, 11, 21), 3), "Oct 13; Oct 27; Nov 10; ");
    EXPECT_EQ(labels(localTime(2027, 3, 2), 5, localTime(2026, 11, 20)), "Dec 1; Jan 1; Feb 1; Mar 1; ");
    EXPECT_EQ(labels(start + hours(24 * 330), 6), "Nov 1; Jan 1; Mar 1; May 1; Jul 1; Sep 1; ");
    EXPECT_EQ(labels(start + hours(24 * 330 + 1), 6),
              "Nov 1, 2026; Jan 1, 2027; Mar 1, 2027; May 1, 2027; Jul 1, 2027; Sep 1, 2027; ");
    EXPECT_EQ(labels(localTime(2027, 10, 12), 5), "Jan 1, 2027; Apr 1, 2027; Jul 1, 2027; Oct 1, 2027; ");
    EXPECT_EQ(labels(localTime(2029, 2, 1), 5),
              "Jan 1, 2027; Jul 1, 2027; Jan 1, 2028; Jul 1, 2028; Jan 1, 2029; ");
    EXPECT_EQ(labels(localTime(2040, 1, 2), 4), "Jan 1, 2030; Jan 1, 2035; Jan 1, 2040; ");
    EXPECT_EQ(labels(localTime(2026, 1, 2), 4, localTime(1970, 1, 2)),
              "Jan 1, 1980; Jan 1, 2000; Jan 1, 2020; ");
}

TEST(TimeAxis, FindsTheDateUnderAPlaceAgain) {
    const Timestamp start = localTime(2026, 10, 12);
    const std::vector<std::vector<Timestamp>> lists = {{start},
                                                       {start, start + seconds(2)},
                                                       {start + hours(90000), start},
                                                       {Timestamp::min(), Timestamp::max()},
                                                       {Timestamp::max()},
                                                       {}};
    for (const auto& dates : lists) {
        const TimeAxis axis(dates);
        for (const double place : {0.0, 0.25, 0.5, 1.0})
            EXPECT_LE(std::abs(axis.fraction(axis.date(place)) - place),
                      dates.size() == 1 && dates[0] != start ? 0.5 : 1e-6);
        for (const std::size_t count : {0U, 1U, 2U, 12U})
            EXPECT_LE(axis.ticks(count).size(), std::max<std::size_t>(count, 1));
        EXPECT_EQ(axis.date(-3), axis.date(0));
        EXPECT_EQ(axis.date(NAN), axis.date(0));
    }
    const TimeAxis moment(std::vector{start, start + milliseconds(999)});
    EXPECT_EQ(each([&](int after) { return moment.fraction(start + hours(after)); }, -13, -6, 0, 6, 12),
              "0 0.25 0.5 0.75 1");
    EXPECT_EQ(TimeAxis(std::vector{start, start + seconds(1)}).fraction(start), 0) << "two moments";
}

} // namespace
