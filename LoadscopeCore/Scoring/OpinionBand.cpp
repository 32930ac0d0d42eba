// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace loadscope {

namespace OpinionBands {
namespace {

OpinionBand bandBetween(std::int64_t total, std::int64_t heavyAt, std::int64_t excessiveAt) {
    if (total < heavyAt) return OpinionBand::lean;
    return total > excessiveAt ? OpinionBand::excessive : OpinionBand::heavy;
}

/// A fraction below 1 of a 64-bit window always fits 64 bits.
std::int64_t roundedShare(std::int64_t window, double fraction) {
    return std::llround(static_cast<double>(window) * fraction);
}

/// A whole number of percent.
std::string percent(double fraction) { return LocaleFormat::grouped(std::llround(fraction * 100)) + "%"; }

} // namespace

OpinionBand band(std::int64_t total, std::optional<std::int64_t> window) {
    if (!window || *window < 1) return bandBetween(total, heavyThreshold, excessiveThreshold);
    return bandBetween(total, roundedShare(*window, heavyWindowFraction),
                       roundedShare(*window, excessiveWindowFraction));
}

std::string rawValue(OpinionBand band) {
    switch (band) {
    case OpinionBand::lean:
        return "lean";
    case OpinionBand::heavy:
        return "heavy";
    case OpinionBand::excessive:
        break;
    }
    return "excessive";
}

std::optional<OpinionBand> fromRawValue(std::string_view text) {
    for (const OpinionBand band : allOpinionBands) {
        if (rawValue(band) == text) return band;
    }
    return {};
}

std::string title(OpinionBand band) {
    switch (band) {
    case OpinionBand::lean:
        return "Lean";
    case OpinionBand::heavy:
        return "Heavy";
    case OpinionBand::excessive:
        break;
    }
    return "Excessive";
}

std::string range(OpinionBand band) {
    const std::string lower = LocaleFormat::grouped(heavyThreshold);
    const std::string upper = LocaleFormat::grouped(excessiveThreshold);
    switch (band) {
    case OpinionBand::lean:
        return "under " + lower;
    case OpinionBand::heavy:
        return lower + "–" + upper;
    case OpinionBand::excessive:
        break;
    }
    return "over " + upper;
}

std::string meaning(OpinionBand band) {
    const std::string lower = LocaleFormat::grouped(heavyThreshold);
    const std::string upper = LocaleFormat::grouped(excessiveThreshold);
    const std::string lowerShare = percent(heavyWindowFraction);
    const std::string upperShare = percent(excessiveWindowFraction);
    const std::string ofWindow = " of a reported context window.";
    switch (band) {
    case OpinionBand::lean:
        return "Below " + lower + " tokens; below " + lowerShare + ofWindow;
    case OpinionBand::heavy:
        return "From " + lower + " to " + upper + " tokens; " + lowerShare + " to " + upperShare + ofWindow;
    case OpinionBand::excessive:
        break;
    }
    return "Above " + upper + " tokens; above " + upperShare + ofWindow;
}

} // namespace OpinionBands

namespace BandScale {
namespace {

double quotient(std::int64_t part, std::int64_t whole) {
    return std::clamp(static_cast<double>(part) / static_cast<double>(whole), 0.0, 1.0);
}

} // namespace

std::int64_t maximum(std::int64_t total) {
    if (total < 1) return normalMaximum;
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const std::int64_t steps = total / step + 1;
    return steps > largest / step ? largest : std::max(steps * step, normalMaximum);
}

double position(std::int64_t total) { return quotient(total, maximum(total)); }

double thresholdPosition(std::int64_t threshold, std::int64_t total) {
    return quotient(threshold, maximum(total));
}

} // namespace BandScale

namespace WindowShare {

std::optional<std::string> line(std::int64_t total, std::optional<std::int64_t> window) {
    if (!window || *window < 1) return {};
    const double fraction = static_cast<double>(total) / static_cast<double>(*window);
    const double percent = std::clamp(fraction, 0.0, 1.0) * 100;
    return LocaleFormat::oneDecimal(percent) + "% of its " + compactWindow(*window) + " window.";
}

std::string compactWindow(std::int64_t window) { return LocaleFormat::compact(window); }

} // namespace WindowShare
} // namespace loadscope
