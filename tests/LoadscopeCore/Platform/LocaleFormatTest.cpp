// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include "tests/Support/Testing.h"

namespace {

using namespace std::chrono;

using Numbers = std::vector<std::pair<std::int64_t, std::string>>;
using Decimals = std::vector<std::pair<double, std::string>>;

constexpr Timestamp evening = sys_days(year{2026} / 11 / 17) + hours(1) + minutes(31);

/// A process without any setting of locale, west of Greenwich.
struct PlainEnvironment {
    ScopedEnvironment all{"LC_ALL", std::nullopt};
    ScopedEnvironment numeric{"LC_NUMERIC", std::nullopt};
    ScopedEnvironment time{"LC_TIME", std::nullopt};
    ScopedEnvironment lang{"LANG", std::nullopt};
    ScopedEnvironment zone{"TZ", "America/New_York"};
};

/// ICU writes some blanks as no-break or narrow ones, which differ between its versions.
std::string plainBlanks(std::string text) {
    for (const std::string blank : {"\u202f", "\u00a0", "\u2009"}) {
        for (std::size_t at = 0; (at = text.find(blank)) != std::string::npos;)
            text.replace(at, blank.size(), " ");
    }
    return text;
}

TEST(LocaleFormat, WritesEnglishByDefault) {
    const PlainEnvironment plain;
    const Numbers grouped = {
        {0, "0"}, {999, "999"}, {1000, "1,000"}, {45'000, "45,000"}, {-1234567, "-1,234,567"}};
    for (const auto& [number, text] : grouped)
        EXPECT_EQ(LocaleFormat::grouped(number), text);
    const Numbers compact = {{0, "0"},          {950, "950"},      {3100, "3.1K"},    {30'000, "30K"},
                             {200'000, "200K"}, {272'000, "272K"}, {1'000'000, "1M"}, {1'500'000, "1.5M"}};
    for (const auto& [number, text] : compact)
        EXPECT_EQ(LocaleFormat::compact(number), text);
    EXPECT_EQ(LocaleFormat::date(evening), "Nov 16, 2026");
    EXPECT_EQ(LocaleFormat::monthAndDay(evening), "Nov 16");
    EXPECT_EQ(plainBlanks(LocaleFormat::dateAndTime(evening)), "Nov 16, 2026 at 8:31 PM");
    EXPECT_FALSE(LocaleFormat::isRightToLeft());
}

TEST(LocaleFormat, TakesTheLocaleFromTheEnvironment) {
    struct Case {
        std::optional<std::string> all, numeric, time, lang;
        std::string number, date;
    };
    const std::string english = "Nov 16, 2026";
    const std::string german = "16. Nov. 2026";
    const std::vector<Case> cases = {{{}, {}, {}, "de_DE.UTF-8@euro", "45.000", german},
                                     {{}, {}, {}, "C.UTF-8", "45,000", english},
                                     {{}, {}, {}, "xx_YY.UTF-8", "45,000", english},
                                     {"", {}, {}, "de_DE", "45.000", german},
                                     {{}, "de_DE.UTF-8", {}, "en_US.UTF-8", "45.000", english},
                                     {{}, {}, "de_DE.UTF-8", "en_US.UTF-8", "45,000", german},
                                     {"C", "de_DE", "de_DE", "de_DE", "45,000", english},
                                     {{}, {}, {}, "sr_RS@latin", "45.000", "16. nov 2026."}};
    for (const Case& entry : cases) {
        const PlainEnvironment plain;
        const ScopedEnvironment all("LC_ALL", entry.all);
        const ScopedEnvironment numeric("LC_NUMERIC", entry.numeric);
        const ScopedEnvironment time("LC_TIME", entry.time);
        const ScopedEnvironment lang("LANG", entry.lang);
        EXPECT_EQ(LocaleFormat::grouped(45'000), entry.number) << *entry.lang;
        EXPECT_EQ(plainBlanks(LocaleFormat::date(evening)), entry.date) << *entry.lang;
    }
}

TEST(LocaleFormat, PutsTheSignWhereTheLocaleHasItAndNoMarkElsewhere) {
    struct Case {
        std::string locale, fall, rise, window;
    };
    const std::vector<Case> cases = {{"en_US", "-1,900", "+4,120", "200K"},
                                     {"de_DE", "-1.900", "+4.120", "200.000"},
                                     {"sv_SE", "−1 900", "+4 120", "200 tn"},
                                     {"ja_JP", "-1,900", "+4,120", "20万"},
                                     {"hi_IN", "-1,900", "+4,120", "2 लाख"},
                                     {"ar_EG", "\u061c-١٬٩٠٠", "\u061c+٤٬١٢٠", "٢٠٠ ألف"},
                                     {"he_IL", "\u200e-1,900", "\u200e+4,120", "200K"}};
    for (const Case& entry : cases) {
        LocaleFormat::setLocale(entry.locale);
        EXPECT_EQ(plainBlanks(LocaleFormat::signedGrouped(-1900)), entry.fall) << entry.locale;
        EXPECT_EQ(plainBlanks(LocaleFormat::signedGrouped(4120)), entry.rise) << entry.locale;
        EXPECT_EQ(plainBlanks(LocaleFormat::compact(200'000)), entry.window) << entry.locale;
    }
    EXPECT_EQ(LocaleFormat::signedGrouped(0), "\u200e+0");
    LocaleFormat::setLocale("");
}

TEST(LocaleFormat, PrefersTheFixedLocaleAndFollowsTheTimeZone) {
    const PlainEnvironment plain;
    LocaleFormat::setLocale("he");
    EXPECT_TRUE(LocaleFormat::isRightToLeft());
    LocaleFormat::setLocale("de-DE");
    EXPECT_EQ(LocaleFormat::grouped(45'000), "45.000");
    const ScopedEnvironment zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(plainBlanks(LocaleFormat::dateAndTime(evening)), "17. Nov. 2026 um 10:31");
    LocaleFormat::setLocale("");
    EXPECT_EQ(LocaleFormat::date(evening), "Nov 17, 2026");
}

TEST(LocaleFormat, WritesOneDecimalAsCDoes) {
    const PlainEnvironment plain;
    const ScopedEnvironment german("LC_ALL", "de_DE.UTF-8");
    const Decimals cases = {{0, "0.0"},      {0.25, "0.2"},     {0.35, "0.3"}, {99.95, "100.0"},
                            {-0.04, "-0.0"}, {HUGE_VAL, "inf"}, {NAN, "nan"}};
    for (const auto& [number, text] : cases)
        EXPECT_EQ(LocaleFormat::oneDecimal(number), text);
    EXPECT_EQ(LocaleFormat::oneDecimal(-std::numeric_limits<double>::max()).size(), 1U + 309U + 2U);
}

} // namespace
