// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scoring/HealthScore.h"

#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <algorithm>

namespace loadscope::HealthScore {

int value(std::int64_t total) {
    const double freePercent = (1 - BandScale::position(total)) * 100;
    return std::clamp(static_cast<int>(freePercent), 0, 100);
}

} // namespace loadscope::HealthScore
