// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "tests/Support/Testing.h"

#include <ctime>

namespace loadscope {

/// A font in which every byte is 6 points wide and a line 12 high.
inline TextMeasure sixPointText() {
    return {[](std::string_view text) { return 6.0 * static_cast<double>(text.size()); }, 12};
}

/// Sizes that a window may ask for while it is being built, and usual ones.
inline constexpr double awkwardLengths[] = {
    0, -1, 1, 40, 1000, 1e9, std::numeric_limits<double>::quiet_NaN()};

/// Calls `check` with every pair of them.
template <class Check>
void forAwkwardSizes(const Check& check) {
    for (const double width : awkwardLengths) {
        for (const double height : awkwardLengths)
            check(SizeF{width, height}, RectF{0, 0, usableLength(width), usableLength(height)});
    }
}

inline std::string shown(PointF p) { return ::shown(p.x) + "," + ::shown(p.y); }
inline std::string shown(const RectF& r) {
    return shown(PointF{r.x, r.y}) + " " + ::shown(r.width) + "x" + ::shown(r.height);
}

/// True when `inner` has finite edges and lies within `outer`, give or take rounding.
inline bool isWithin(const RectF& inner, const RectF& outer) {
    constexpr double tolerance = 1e-6;
    return std::isfinite(inner.x + inner.y + inner.width + inner.height) && inner.x >= outer.x - tolerance &&
           inner.y >= outer.y - tolerance && inner.right() <= outer.right() + tolerance &&
           inner.bottom() <= outer.bottom() + tolerance;
}

/// A time on the user's clock.
inline Timestamp localTime(int year, int month, int day, int hour = 12, int minute = 0) {
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&local));
}

} // namespace loadscope
