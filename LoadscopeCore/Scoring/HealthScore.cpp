// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/HealthScore.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <algorithm>

namespace loadscope::HealthScore {

int value(std::int64_t total) {
    const double freePercent = (1 - BandScale::position(total)) * 100;
    return std::clamp(static_cast<int>(freePercent), 0, 100);
}

std::string label(int score) { return std::to_string(score) + " of 100"; }

std::string meaning(std::int64_t total) {
    return label(value(total)) + " — how much of the " + LocaleFormat::grouped(BandScale::maximum(total)) +
           "-token band scale is still free.";
}

std::string origin(bool isEstimate) {
    return std::string("Derived from where the ") + (isEstimate ? "estimated" : "Claude-reported") +
           " total sits on the band scale. " + OpinionBands::opinionNote;
}

std::optional<std::string> scaleNote(std::int64_t total, OpinionBand band) {
    if (OpinionBands::band(total) == band) return {};
    return "The score uses this fixed scale, while the band is judged against the reported context window.";
}

} // namespace loadscope::HealthScore
