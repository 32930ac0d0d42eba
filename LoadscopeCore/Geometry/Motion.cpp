// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/Motion.h"

#include "LoadscopeCore/Geometry/Shapes.h"

#include <cmath>
#include <numbers>

namespace loadscope::Motion {
namespace {

double angularFrequency(double response) { return 2 * std::numbers::pi / response; }

} // namespace

double easeOut(double progress) {
    const double left = 1 - unitClamped(progress);
    return 1 - left * left * left;
}

double spring(double seconds, double response, double damping) {
    if (!(seconds > 0)) return 0;
    if (!(response > 0)) return 1;
    const double omega = angularFrequency(response);
    const double ratio = std::min(damping, 1.0);
    const double decay = std::exp(-ratio * omega * seconds);
    if (ratio >= 1) return 1 - decay * (1 + omega * seconds);
    const double damped = omega * std::sqrt(1 - ratio * ratio);
    return 1 - decay * (std::cos(damped * seconds) + ratio * omega / damped * std::sin(damped * seconds));
}

double springDuration(double response, double damping) {
    if (!(response > 0 && damping > 0)) return 0;
    constexpr double timesToAThousandth =
        9.3; // covers the critically damped spring too, the slowest to settle
    return timesToAThousandth / (std::min(damping, 1.0) * angularFrequency(response));
}

} // namespace loadscope::Motion
