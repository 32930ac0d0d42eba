// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include "tests/Support/Testing.h"

namespace {

using namespace std::chrono;

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
    EXPECT_EQ(each(LocaleFormat::grouped, 0, 999, 1000, 45'000, -1234567), "0 999 1,000 45,000 -1,234,567");
    EXPECT_EQ(each(LocaleFormat::compact, 0, 950, 3100, 30'000, 200'000, 272'000, 1'000'000, 1'500'000),
              "0 950 3.1K 30K 200K 272K 1M 1.5M");
    EXPECT_EQ(LocaleFormat::date(evening), "Nov 16, 2026");
    EXPECT_EQ(LocaleFormat::monthAndDay(evening), "Nov 16");
    EXPECT_EQ(plainBlanks(LocaleFormat::dateAndTime(evening)), "Nov 16, 2026 at 8:31 PM");
    EXPECT_FALSE(LocaleFormat::isRightToLeft());
}

TEST(LocaleFormat, TakesTheLocaleFromTheEnvironment) {
    using Setting = std::optional<std::string>;
    const auto written = [](const Setting& all, const Setting& numeric, const Setting& time,
                            const char* lang) {
        const PlainEnvironment plain;
        const ScopedEnvironment first("LC_ALL", all), second("LC_NUMERIC", numeric), third("LC_TIME", time),
            last("LANG", lang);
        return plainBlanks(LocaleFormat::grouped(45'000) + " " + LocaleFormat::date(evening));
    };
    const std::string english = "Nov 16, 2026", german = "16. Nov. 2026";
    EXPECT_EQ(written({}, {}, {}, "de_DE.UTF-8@euro"), "45.000 " + german);
    EXPECT_EQ(written("", {}, {}, "de_DE"), "45.000 " + german);
    EXPECT_EQ(written({}, {}, {}, "C.UTF-8"), "45,000 " + english);
    EXPECT_EQ(written({}, {}, {}, "POSIX"), "45,000 " + english);
    EXPECT_EQ(written({}, {}, {}, "xx_YY.UTF-8"), "45,000 " + english);
    EXPECT_EQ(written({}, "de_DE.UTF-8", {}, "en_US.UTF-8"), "45.000 " + english);
    EXPECT_EQ(written({}, {}, "de_DE.UTF-8", "en_US.UTF-8"), "45,000 " + german);
    EXPECT_EQ(written("C", "de_DE", "de_DE", "de_DE"), "45,000 " + english);
    EXPECT_EQ(written({}, {}, {}, "sr_RS@latin"), "45.000 16. nov 2026.");
    EXPECT_EQ(written({}, {}, {}, "sr_RS@other"), "45.000 16. нов 2026.");
    EXPECT_EQ(written({}, {}, {}, "uz_UZ.UTF-8@cyrillic"), "45 000 16 ноя, 2026");
}

TEST(LocaleFormat, PutsTheSignWhereTheLocaleHasItAndNoMarkElsewhere) {
    const auto written = [](const char* locale) {
        LocaleFormat::setLocale(locale);
        return plainBlanks(LocaleFormat::signedGrouped(-1900) + " | " + LocaleFormat::signedGrouped(4120) +
                           " | " + LocaleFormat::compact(200'000));
    };
    EXPECT_EQ(written("en_US"), "-1,900 | +4,120 | 200K");
    EXPECT_EQ(written("de_DE"), "-1.900 | +4.120 | 200.000");
    EXPECT_EQ(written("sv_SE"), "−1 900 | +4 120 | 200 tn");
    EXPECT_EQ(written("ja_JP"), "-1,900 | +4,120 | 20万");
    EXPECT_EQ(written("hi_IN"), "-1,900 | +4,120 | 2 लाख");
    EXPECT_EQ(written("ar_EG"), "\u061c-١٬٩٠٠ | \u061c+٤٬١٢٠ | ٢٠٠ ألف");
    EXPECT_EQ(written("he_IL"), "\u200e-1,900 | \u200e+4,120 | 200K");
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
    {
        const LocaleFormat::EnglishScope english, nested;
        EXPECT_EQ(LocaleFormat::grouped(45'000) + LocaleFormat::date(evening), "45,000Nov 17, 2026");
    }
    EXPECT_EQ(LocaleFormat::grouped(45'000), "45.000");
    LocaleFormat::setLocale("");
    EXPECT_EQ(LocaleFormat::date(evening), "Nov 17, 2026");
}

TEST(LocaleFormat, WritesOneDecimalAsCDoes) {
    const PlainEnvironment plain;
    const ScopedEnvironment german("LC_ALL", "de_DE.UTF-8");
    EXPECT_EQ(each(LocaleFormat::oneDecimal, 0, 0.25, 0.35, 99.95, -0.04, HUGE_VAL, NAN),
              "0.0 0.2 0.3 100.0 -0.0 inf nan");
    EXPECT_EQ(LocaleFormat::oneDecimal(-std::numeric_limits<double>::max()).size(), 1U + 309U + 2U);
}

} // namespace
