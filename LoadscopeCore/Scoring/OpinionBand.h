// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// This application's opinion of a startup total: against fixed thresholds, or against a reported context
/// window.
enum class OpinionBand { lean, heavy, excessive };

inline constexpr std::array allOpinionBands{OpinionBand::lean, OpinionBand::heavy, OpinionBand::excessive};

namespace OpinionBands {

inline constexpr std::int64_t heavyThreshold = 30000;
inline constexpr std::int64_t excessiveThreshold = 60000;
inline constexpr std::int64_t referenceWindow = 200000; ///< 15% and 30% of it are the two thresholds
inline constexpr double heavyWindowFraction = 0.15;
inline constexpr double excessiveWindowFraction = 0.3;
inline constexpr const char* opinionNote = "These bands are this app's opinion, not an industry standard.";

/// The band of a total; against `window` when it is at least 1, else against the fixed thresholds. Both
/// bounds belong to Heavy.
[[nodiscard]] OpinionBand band(std::int64_t total, std::optional<std::int64_t> window = {});

[[nodiscard]] std::string rawValue(OpinionBand band);
[[nodiscard]] std::optional<OpinionBand> fromRawValue(std::string_view rawValue);

/// "Lean", "Heavy" or "Excessive".
[[nodiscard]] std::string title(OpinionBand band);

/// For example "30,000–60,000", in the user's locale.
[[nodiscard]] std::string range(OpinionBand band);

/// Where a band begins and ends, against the fixed thresholds and against a context window.
[[nodiscard]] std::string meaning(OpinionBand band);

} // namespace OpinionBands

/// The growing scale on which a band meter draws a total: 90,000, or the next multiple of 30,000 above the
/// total.
namespace BandScale {

inline constexpr std::int64_t normalMaximum = 90000;
inline constexpr std::int64_t step = 30000;

[[nodiscard]] std::int64_t maximum(std::int64_t total);

/// Place of the total on its own scale, within 0 and 1.
[[nodiscard]] double position(std::int64_t total);

/// Place of a threshold on the scale that belongs to `total`, within 0 and 1.
[[nodiscard]] double thresholdPosition(std::int64_t threshold, std::int64_t total);

} // namespace BandScale

/// Relates a total to a context window.
namespace WindowShare {

/// For example "22.5% of its 200K window."; nothing for a window below 1.
[[nodiscard]] std::optional<std::string> line(std::int64_t total, std::optional<std::int64_t> window);

/// For example "200K", in the user's locale.
[[nodiscard]] std::string compactWindow(std::int64_t window);

} // namespace WindowShare
} // namespace loadscope
