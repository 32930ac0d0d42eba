// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/InternetDate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

namespace loadscope::InternetDate {
namespace {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_seconds;

void appendPadded(std::string& text, std::int64_t number, int width) {
    std::array<char, 20> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto length = end - digits.data();
    if (length < width) text.append(static_cast<std::size_t>(width - length), '0');
    text.append(digits.data(), end);
}

/// The number that exactly these digits write, or -1.
int decimal(std::string_view digits) {
    int number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return -1;
        number = number * 10 + (digit - '0');
    }
    return number;
}

/// "Z", "+HH:MM" or "-HH:MM" as the time that the zone is ahead of UTC.
std::optional<seconds> zoneOffset(std::string_view zone) {
    if (zone == "Z") return seconds(0);
    if (zone.size() != 6 || (zone[0] != '+' && zone[0] != '-') || zone[3] != ':') return std::nullopt;
    const int hours = decimal(zone.substr(1, 2));
    const int minutes = decimal(zone.substr(4, 2));
    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59) return std::nullopt;
    const seconds ahead = std::chrono::hours(hours) + std::chrono::minutes(minutes);
    return zone[0] == '-' ? -ahead : ahead;
}

std::optional<sys_seconds> dateAndTime(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00T00:00:00";
    if (text.size() != shape.size()) return std::nullopt;
    for (std::size_t index = 0; index < shape.size(); ++index)
        if (shape[index] != '0' && shape[index] != text[index]) return std::nullopt;
    const int year = decimal(text.substr(0, 4));
    const int month = decimal(text.substr(5, 2));
    const int day = decimal(text.substr(8, 2));
    const int hour = decimal(text.substr(11, 2));
    const int minute = decimal(text.substr(14, 2));
    const int second = decimal(text.substr(17, 2));
    if (std::min({year, month, day, hour, minute, second}) < 0) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           seconds(second);
}

} // namespace

std::optional<Timestamp> parse(std::string_view text) {
    constexpr std::size_t zoneStart = 19;
    if (text.size() <= zoneStart) return std::nullopt;
    const std::optional<sys_seconds> local = dateAndTime(text.substr(0, zoneStart));
    const std::optional<seconds> offset = zoneOffset(text.substr(zoneStart));
    if (!local || !offset) return std::nullopt;
    const sys_seconds time = *local - *offset;
    // The finest clock covers fewer years than the text can name. Coarser ones, as macOS has, refuse the same
    // dates: a file of one computer is read alike by another.
    using FinestTimestamp = std::chrono::sys_time<std::chrono::nanoseconds>;
    if (time <= floor<seconds>(FinestTimestamp::min()) || time >= floor<seconds>(FinestTimestamp::max()))
        return std::nullopt;
    return Timestamp(time);
}

std::string text(Timestamp time) {
    const sys_seconds whole = floor<seconds>(time);
    const auto day = floor<std::chrono::days>(whole);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(whole - day);
    std::string written;
    const auto append = [&written](char before, std::int64_t number) {
        written += before;
        appendPadded(written, number, 2);
    };
    appendPadded(written, static_cast<int>(date.year()), 4);
    append('-', static_cast<unsigned>(date.month()));
    append('-', static_cast<unsigned>(date.day()));
    append('T', clock.hours().count());
    append(':', clock.minutes().count());
    append(':', clock.seconds().count());
    return written + 'Z';
}

} // namespace loadscope::InternetDate
