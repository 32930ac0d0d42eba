// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <unicode/datefmt.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <utility>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

namespace loadscope {

namespace {

using icu::number::LocalizedNumberFormatter;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The first of the variables that is set, as POSIX ranks them; an empty one counts as unset.
std::string environmentLocale(const char* category) {
    for (const char* const name : {"LC_ALL", category, "LANG"}) {
        if (std::string value = variable(name); !value.empty()) return value;
    }
    return {};
}

bool isKnownLanguage(const icu::Locale& locale) {
    std::int32_t count = 0;
    const icu::Locale* const known = icu::Locale::getAvailableLocales(count);
    for (std::int32_t index = 0; index < count; ++index) {
        if (std::string_view(known[index].getLanguage()) == locale.getLanguage()) return true;
    }
    return false;
}

/// ICU's locale for a POSIX name such as "sr_RS.UTF-8@latin" or an identifier such as "de-DE". Names that
/// mean no language, and languages that ICU does not know, are written as in the United States.
icu::Locale localeNamed(const std::string& name) {
    const std::string base = name.substr(0, name.find_first_of(".@"));
    icu::Locale locale = icu::Locale::createFromName(base.c_str());
    if (base.empty() || base == "C" || base == "POSIX" || locale.isBogus() || !isKnownLanguage(locale))
        return icu::Locale::getUS();
    const std::size_t modifier = name.find('@');
    if (modifier == std::string::npos) return locale;
    // Of the modifiers only these change how numbers and dates are written.
    const std::string_view script = std::string_view(name).substr(modifier + 1);
    const char* const code = script == "latin" ? "Latn" : script == "cyrillic" ? "Cyrl" : nullptr;
    if (code == nullptr) return locale;
    return {locale.getLanguage(), code, locale.getCountry()};
}

/// What the formatters depend on. They are made anew when it changes.
struct Settings {
    std::string numbers;
    std::string dates;
    std::string timeZone;

    bool operator==(const Settings&) const = default;
};

std::unique_ptr<icu::DateFormat> dateFormat(icu::DateTimePatternGenerator& patterns, const char* skeleton,
                                            const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString pattern =
        patterns.getBestPattern(icu::UnicodeString::fromUTF8(skeleton), status);
    auto format = std::make_unique<icu::SimpleDateFormat>(pattern, locale, status);
    if (U_FAILURE(status)) return nullptr;
    // Not the default zone: ICU reads that from TZ once and for all.
    format->adoptTimeZone(icu::TimeZone::detectHostTimeZone());
    return format;
}

/// The formatters of one set of settings.
struct Formatters {
    explicit Formatters(Settings of);

    Settings settings;
    LocalizedNumberFormatter grouped;
    LocalizedNumberFormatter signedGrouped;
    LocalizedNumberFormatter compact;
    std::unique_ptr<icu::DateFormat> date;
    std::unique_ptr<icu::DateFormat> dateAndTime;
    std::unique_ptr<icu::DateFormat> monthAndDay;
};

Formatters::Formatters(Settings of) : settings(std::move(of)) {
    const icu::Locale dateLocale = localeNamed(settings.dates);
    const icu::Locale numberLocale = localeNamed(settings.numbers);
    grouped = icu::number::NumberFormatter::withLocale(numberLocale);
    signedGrouped = grouped.sign(UNUM_SIGN_ALWAYS);
    compact = icu::number::NumberFormatter::withLocale(numberLocale)
                  .notation(icu::number::Notation::compactShort());
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(dateLocale, status));
    if (U_FAILURE(status)) return;
    date = dateFormat(*patterns, "yMMMd", dateLocale);
    monthAndDay = dateFormat(*patterns, "MMMd", dateLocale);
    // Joined as long dates are, in English by "at".
    UErrorCode ignored = U_ZERO_ERROR;
    patterns->setDateTimeFormat(UDAT_MEDIUM, patterns->getDateTimeFormat(UDAT_LONG, ignored), ignored);
    dateAndTime = dateFormat(*patterns, "yMMMdjm", dateLocale);
}

/// ICU's date formats are not for several threads at a time.
std::mutex mutex;
std::optional<std::string> fixedLocale;
thread_local bool writesEnglish = false;

/// The formatters that fit the current settings; to be used under the lock.
Formatters& currentFormatters() {
    static std::unique_ptr<Formatters> ofTheUser;
    static std::unique_ptr<Formatters> english;
    std::unique_ptr<Formatters>& formatters = writesEnglish ? english : ofTheUser;
    const std::optional<std::string> fixed = writesEnglish ? "en_US" : fixedLocale;
    Settings settings;
    settings.numbers = fixed ? *fixed : environmentLocale("LC_NUMERIC");
    settings.dates = fixed ? *fixed : environmentLocale("LC_TIME");
    settings.timeZone = variable("TZ");
    if (!formatters || formatters->settings != settings)
        formatters = std::make_unique<Formatters>(std::move(settings));
    return *formatters;
}

/// Without the marks of direction that ICU adds for texts of the locale's own language: ours are English, and
/// show such a mark as the foreign character that it is.
icu::UnicodeString withoutMarks(icu::UnicodeString text) {
    for (const char16_t* const mark : {u"\u061c", u"\u200e", u"\u200f"})
        text.findAndReplace(mark, icu::UnicodeString());
    return text;
}

std::string formattedNumber(std::int64_t number, LocalizedNumberFormatter Formatters::*which) {
    const std::lock_guard lock(mutex);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = (currentFormatters().*which).formatInt(number, status).toString(status);
    if (U_FAILURE(status)) return std::to_string(number);
    std::string result;
    (which == &Formatters::signedGrouped ? text : withoutMarks(text)).toUTF8String(result);
    return result;
}

std::string formattedDate(Timestamp time, std::unique_ptr<icu::DateFormat> Formatters::*which) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const std::lock_guard lock(mutex);
    const std::unique_ptr<icu::DateFormat>& format = currentFormatters().*which;
    std::string result;
    if (!format) return result;
    icu::UnicodeString text;
    withoutMarks(format->format(Milliseconds(time.time_since_epoch()).count(), text)).toUTF8String(result);
    return result;
}

} // namespace

std::string LocaleFormat::grouped(std::int64_t number) {
    return formattedNumber(number, &Formatters::grouped);
}

std::string LocaleFormat::signedGrouped(std::int64_t number) {
    return formattedNumber(number, &Formatters::signedGrouped);
}

std::string LocaleFormat::compact(std::int64_t number) {
    return formattedNumber(number, &Formatters::compact);
}

std::string LocaleFormat::oneDecimal(double number) {
    // The largest double has 309 digits before its point.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 8> buffer{};
#if defined(__APPLE__)
    // Its library writes doubles only from version 13.3 on.
    const int size = snprintf_l(buffer.data(), buffer.size(), nullptr, "%.1f", number);
    return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size)) : std::string();
#else
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, 1);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string();
#endif
}

std::string LocaleFormat::date(Timestamp time) { return formattedDate(time, &Formatters::date); }

std::string LocaleFormat::dateAndTime(Timestamp time) {
    return formattedDate(time, &Formatters::dateAndTime);
}

std::string LocaleFormat::monthAndDay(Timestamp time) {
    return formattedDate(time, &Formatters::monthAndDay);
}

bool LocaleFormat::isRightToLeft() {
    const std::lock_guard lock(mutex);
    // Without the formatters: a window asks this before its first frame, and they take a while to make.
    return localeNamed(fixedLocale ? *fixedLocale : environmentLocale("LC_TIME")).isRightToLeft();
}

LocaleFormat::EnglishScope::EnglishScope() : before_(std::exchange(writesEnglish, true)) {}

LocaleFormat::EnglishScope::~EnglishScope() { writesEnglish = before_; }

void LocaleFormat::setLocale(std::string_view identifier) {
    const std::lock_guard lock(mutex);
    fixedLocale = identifier.empty() ? std::nullopt : std::optional<std::string>(identifier);
}

} // namespace loadscope
