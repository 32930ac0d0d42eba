// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace loadscope {

using Timestamp = std::chrono::system_clock::time_point;

/// Numbers and dates as the user's locale writes them. The locale comes from LC_ALL, LC_NUMERIC or LC_TIME,
/// and LANG; unset, C and POSIX mean en_US. Dates are in the user's time zone (TZ). Thread-safe, except
/// `setLocale`.
namespace LocaleFormat {

/// 45,000 in English.
[[nodiscard]] std::string grouped(std::int64_t number);

/// +4,120, -1,900 or +0 in English: always with the sign that the locale writes. It stands alone: in some
/// locales a mark of direction comes first, which puts the sign at the side where it belongs.
[[nodiscard]] std::string signedGrouped(std::int64_t number);

/// 200K, 1M, 1.5M in English.
[[nodiscard]] std::string compact(std::int64_t number);

/// Exactly one decimal with a full stop, whatever the locale: the C format "%.1f".
[[nodiscard]] std::string oneDecimal(double number);

/// Nov 16, 2026 in English.
[[nodiscard]] std::string date(Timestamp time);

/// Nov 16, 2026 at 8:31 PM in English: date, hour with AM/PM and minutes.
[[nodiscard]] std::string dateAndTime(Timestamp time);

/// Nov 16 in English.
[[nodiscard]] std::string monthAndDay(Timestamp time);

/// True when the locale is written from right to left.
[[nodiscard]] bool isRightToLeft();

/// Fixes the locale (an identifier such as "de_DE") for numbers and dates, or, when empty, goes back to the
/// environment's. Call it before other threads format anything.
void setLocale(std::string_view identifier);

/// As long as it lives this thread writes as in the United States: for what programs read, which is to be the
/// same everywhere.
class EnglishScope {
public:
    EnglishScope();
    ~EnglishScope();
    EnglishScope(const EnglishScope&) = delete;
    EnglishScope& operator=(const EnglishScope&) = delete;

private:
    bool before_;
};

} // namespace LocaleFormat
} // namespace loadscope
