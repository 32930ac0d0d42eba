// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <cstdint>
#include <optional>
#include <string>

/// The illustrative score: how much of the band scale a total leaves free.
namespace loadscope::HealthScore {

/// 0 to 100.
[[nodiscard]] int value(std::int64_t total);

/// "78 of 100", and the sentence about the score of a total.
[[nodiscard]] std::string label(int score);
[[nodiscard]] std::string meaning(std::int64_t total);
/// What the score is derived from, and that the bands are an opinion.
[[nodiscard]] std::string origin(bool isEstimate);

/// Why score and band say different things of a total, where its band, judged against a reported context
/// window, is not the one of the fixed scale.
[[nodiscard]] std::optional<std::string> scaleNote(std::int64_t total, OpinionBand band);

} // namespace loadscope::HealthScore
