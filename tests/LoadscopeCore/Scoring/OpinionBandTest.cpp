// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Scoring/HealthScore.h"

#include <gtest/gtest.h>
#include <limits>

namespace loadscope {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

TEST(OpinionBand, BelongsToHeavyAtBothBounds) {
    struct Case {
        std::int64_t total;
        std::optional<std::int64_t> window;
        OpinionBand band;
    };
    using enum OpinionBand;
    const Case cases[] = {
        {smallest, {}, lean},
        {29999, {}, lean},
        {30000, {}, heavy},
        {60000, {}, heavy},
        {60001, {}, excessive},
        {largest, {}, excessive},
        {29999, 0, lean},
        {60001, -5, excessive},
        {29999, 200000, lean},
        {30000, 200000, heavy},
        {60000, 200000, heavy},
        {60001, 200000, excessive},
        {149999, 1000000, lean},
        {150000, 1000000, heavy},
        {300000, 1000000, heavy},
        {300001, 1000000, excessive},
        {40799, 272000, lean},
        {40800, 272000, heavy},
        {81600, 272000, heavy},
        {81601, 272000, excessive},
        {-1, 3, lean},
        {0, 3, heavy},
        {1, 3, heavy},
        {2, 3, excessive},
        {1, 10, lean},
        {2, 10, heavy},
        {3, 10, heavy},
        {largest, largest, excessive},
        {largest / 10, largest, lean},
        {largest / 5, largest, heavy},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(OpinionBands::band(one.total, one.window), one.band)
            << one.total << " of " << one.window.value_or(-1);
    }
}

TEST(OpinionBand, IsNamedAndParsed) {
    LocaleFormat::setLocale("en_US");
    std::string texts;
    for (const OpinionBand band : allOpinionBands) {
        EXPECT_EQ(OpinionBands::fromRawValue(OpinionBands::rawValue(band)), band);
        texts += OpinionBands::rawValue(band) + "|" + OpinionBands::title(band) + "|" +
                 OpinionBands::range(band) + "\n";
    }
    EXPECT_EQ(texts, "lean|Lean|under 30,000\nheavy|Heavy|30,000–60,000\nexcessive|Excessive|over 60,000\n");
    for (const char* text : {"", "Lean", "lean ", "light"})
        EXPECT_FALSE(OpinionBands::fromRawValue(text)) << text;
    LocaleFormat::setLocale("");
}

TEST(BandScale, GrowsInWholeStepsAndNeverOverflows) {
    const std::pair<std::int64_t, std::int64_t> cases[] = {
        {smallest, 90000},
        {0, 90000},
        {1, 90000},
        {89999, 90000},
        {90000, 120000},
        {119999, 120000},
        {120000, 150000},
        {200000, 210000},
        {largest, largest},
        {largest / 30000 * 30000, largest},
        {largest / 30000 * 30000 - 1, largest / 30000 * 30000},
    };
    for (const auto& [total, maximum] : cases) {
        EXPECT_EQ(BandScale::maximum(total), maximum) << total;
        EXPECT_EQ(BandScale::position(total),
                  total < 0 ? 0 : static_cast<double>(total) / static_cast<double>(maximum));
    }
    EXPECT_EQ(BandScale::thresholdPosition(60000, 1), 60000 / 90000.0);
    EXPECT_EQ(BandScale::thresholdPosition(60000, 90000), 0.5);
    EXPECT_EQ(BandScale::thresholdPosition(200000, 0), 1);
    EXPECT_EQ(BandScale::thresholdPosition(-1, 0), 0);
}

TEST(HealthScore, TruncatesWhatTheScaleLeavesFree) {
    const std::pair<std::int64_t, int> cases[] = {
        {smallest, 100}, {-1, 100},    {0, 100},    {1, 99},      {900, 99},   {901, 98},
        {30000, 66},     {45000, 50},  {60000, 33}, {89999, 0},   {90000, 25}, {100000, 16},
        {119999, 0},     {120000, 19}, {200000, 4}, {largest, 0},
    };
    for (const auto& [total, score] : cases)
        EXPECT_EQ(HealthScore::value(total), score) << total;
}

TEST(WindowShare, RelatesATotalToAUsableWindow) {
    LocaleFormat::setLocale("en_US");
    EXPECT_EQ(WindowShare::line(45000, 200000), "22.5% of its 200K window.");
    EXPECT_EQ(WindowShare::line(1000001, 1000000), "100.0% of its 1M window.");
    EXPECT_EQ(WindowShare::line(-7, 272000), "0.0% of its 272K window.");
    for (const std::optional<std::int64_t>& window : {std::optional<std::int64_t>(), {0}, {-1}}) {
        EXPECT_FALSE(WindowShare::line(45000, window));
    }
    LocaleFormat::setLocale("");
}

} // namespace
} // namespace loadscope
