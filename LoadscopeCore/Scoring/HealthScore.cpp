// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/HealthScore.h"

#include <algorithm>

namespace loadscope::HealthScore {

int value(std::int64_t total) {
    const double freePercent = (1 - BandScale::position(total)) * 100;
    return std::clamp(static_cast<int>(freePercent), 0, 100);
}

std::optional<std::string> scaleNote(std::int64_t total, OpinionBand band) {
    if (OpinionBands::band(total) == band) return {};
    return "The score uses this fixed scale, while the band is judged against the reported context window.";
}

} // namespace loadscope::HealthScore
