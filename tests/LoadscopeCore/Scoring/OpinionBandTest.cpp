// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Scoring/HealthScore.h"
#include "tests/Support/Testing.h"

namespace {

TEST(OpinionBand, BelongsToHeavyAtBothBounds) {
    struct Bounds {
        std::optional<std::int64_t> window;
        std::int64_t heavyAt, excessiveAt;
    };
    const Bounds cases[] = {{{}, 30000, 60000},
                            {0, 30000, 60000},
                            {-5, 30000, 60000},
                            {200000, 30000, 60000},
                            {272000, 40800, 81600},
                            {1000000, 150000, 300000},
                            {3, 0, 1},
                            {10, 2, 3},
                            {1, 0, 0}};
    for (const Bounds& one : cases) {
        const auto name = [&](std::int64_t total) {
            return OpinionBands::rawValue(OpinionBands::band(total, one.window));
        };
        EXPECT_EQ(name(smallest) + name(one.heavyAt - 1) + name(one.heavyAt), "leanleanheavy") << one.heavyAt;
        EXPECT_EQ(name(one.excessiveAt) + name(one.excessiveAt + 1) + name(largest),
                  "heavyexcessiveexcessive");
    }
    EXPECT_EQ(OpinionBands::band(largest / 10, largest), OpinionBand::lean);
    EXPECT_EQ(OpinionBands::band(largest / 5, largest), OpinionBand::heavy);
    EXPECT_EQ(OpinionBands::band(largest, largest), OpinionBand::excessive);
}

TEST(OpinionBand, IsNamedAndParsed) {
    LocaleFormat::setLocale("en_US");
    std::string texts;
    for (const OpinionBand band : allOpinionBands) {
        EXPECT_EQ(OpinionBands::fromRawValue(OpinionBands::rawValue(band)), band);
        texts += OpinionBands::title(band) + " " + OpinionBands::range(band) + ". ";
    }
    EXPECT_EQ(OpinionBands::meaning(OpinionBand::heavy),
              "From 30,000 to 60,000 tokens; 15% to 30% of a reported context window.");
    EXPECT_EQ(texts, "Lean under 30,000. Heavy 30,000–60,000. Excessive over 60,000. ");
    EXPECT_STREQ(OpinionBands::opinionNote, "These bands are this app's opinion, not an industry standard.");
    EXPECT_FALSE(OpinionBands::fromRawValue("Lean"));
    EXPECT_EQ(WindowShare::line(45000, 200000), "22.5% of its 200K window.");
    EXPECT_EQ(WindowShare::line(1000001, 1000000), "100.0% of its 1M window.");
    EXPECT_EQ(WindowShare::line(-7, 272000), "0.0% of its 272K window.");
    EXPECT_FALSE(WindowShare::line(45000, 0));
    LocaleFormat::setLocale("");
}

TEST(HealthScore, SaysWhyItDisagreesWithTheBandAndOnlyThen) {
    struct Case {
        std::int64_t total;
        std::optional<std::int64_t> window;
        bool hasNote;
    };
    for (const Case& one : {Case{100'000, {}, false},
                            {100'000, 200'000, false},
                            {100'000, 1'000'000, true},
                            {20'000, 1'000'000, false},
                            {20'000, 50'000, true}}) {
        const auto note = HealthScore::scaleNote(one.total, OpinionBands::band(one.total, one.window));
        EXPECT_EQ(note.has_value(), one.hasNote) << one.total << " of " << one.window.value_or(0);
        if (!note) continue;
        EXPECT_EQ(*note,
                  "The score uses this fixed scale, while the band is judged against the reported context "
                  "window.");
    }
}

TEST(BandScale, GrowsInWholeStepsAndNeverOverflows) {
    struct Case {
        std::int64_t total, maximum;
        int score;
    };
    constexpr std::int64_t lastStep = largest / 30000 * 30000;
    const Case cases[] = {
        {smallest, 90000, 100},     {0, 90000, 100},     {1, 90000, 99},        {900, 90000, 99},
        {901, 90000, 98},           {30000, 90000, 66},  {45000, 90000, 50},    {60000, 90000, 33},
        {89999, 90000, 0},          {90000, 120000, 25}, {100000, 120000, 16},  {119999, 120000, 0},
        {120000, 150000, 19},       {200000, 210000, 4}, {largest, largest, 0}, {lastStep, largest, 0},
        {lastStep - 1, lastStep, 0}};
    for (const Case& one : cases) {
        EXPECT_EQ(BandScale::maximum(one.total), one.maximum) << one.total;
        EXPECT_EQ(HealthScore::value(one.total), one.score) << one.total;
    }
    EXPECT_EQ(BandScale::thresholdPosition(60000, 90000), 0.5);
    EXPECT_EQ(BandScale::thresholdPosition(200000, 0), 1);
    EXPECT_EQ(BandScale::position(smallest), 0);
}

} // namespace
