// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/GaugeGeometry.h"

#include "LoadscopeCore/Geometry/Motion.h"

#include <algorithm>

namespace loadscope {

GaugeGeometry GaugeGeometry::make(RectF bounds, double thickness, double shownScore) {
    bounds.width = usableLength(bounds.width);
    bounds.height = usableLength(bounds.height);
    const double side = std::min(bounds.width, bounds.height);
    GaugeGeometry gauge;
    gauge.center = bounds.center();
    gauge.thickness = std::min(usableLength(thickness), side / 2);
    gauge.radius = (side - gauge.thickness) / 2;
    gauge.valueSweep = sweep * unitClamped(shownScore / maximum);
    return gauge;
}

double GaugeGeometry::countingValue(int score, double progress) { return score * Motion::easeOut(progress); }

} // namespace loadscope
