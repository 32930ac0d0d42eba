// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

namespace loadscope {

/// The open ring of the score: three quarters of a circle, open at the bottom, filled clockwise from the
/// lower left. The label stands in the opening.
struct GaugeGeometry {
    static constexpr double startAngle = 225; ///< degrees clockwise from 12 o'clock
    static constexpr double sweep = 270;
    static constexpr double maximum = 100;

    PointF center;
    double radius = 0; ///< of the middle of the stroke
    double thickness = 0;
    double valueSweep = 0; ///< degrees filled for the shown score

    /// `shownScore` is what the gauge shows at this moment; it is kept between 0 and 100.
    [[nodiscard]] static GaugeGeometry make(RectF bounds, double thickness, double shownScore);

    /// What a gauge that counts up shows after this share of its time: 0 at the start, exactly the score at
    /// the end.
    [[nodiscard]] static double countingValue(int score, double progress);
};

} // namespace loadscope
