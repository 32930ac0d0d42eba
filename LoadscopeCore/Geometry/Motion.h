// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// Where an animation stands after some time, from 0 (its start) to 1 (its end).
namespace loadscope::Motion {

/// Quick start, slow end. `progress` is the elapsed share of the duration, from 0 to 1.
[[nodiscard]] double easeOut(double progress);

/// A spring that starts at rest: `response` is the seconds of one undamped oscillation, `damping` the share
/// of critical damping (1 and more never overshoot). May exceed 1 on its way.
[[nodiscard]] double spring(double seconds, double response, double damping);

/// Seconds after which the spring stays within a thousandth of its end.
[[nodiscard]] double springDuration(double response, double damping);

} // namespace loadscope::Motion
