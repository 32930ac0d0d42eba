// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/MonotoneCurve.h"

#include <cstddef>

namespace loadscope {
namespace {

constexpr double smallestStep = 1e-6; // points; closer ones stand on one vertical line

CurveSegment straight(PointF from, PointF to) {
    const double dx = (to.x - from.x) / 3;
    const double dy = (to.y - from.y) / 3;
    return {{from.x + dx, from.y + dy}, {to.x - dx, to.y - dy}, to};
}

/// Slopes at the points of a run whose x values grow.
std::vector<double> tangents(std::span<const PointF> run) {
    std::vector<double> secants;
    for (std::size_t i = 0; i + 1 < run.size(); ++i) {
        secants.push_back((run[i + 1].y - run[i].y) / (run[i + 1].x - run[i].x));
    }
    std::vector<double> slopes(run.size());
    slopes.front() = secants.front();
    slopes.back() = secants.back();
    for (std::size_t i = 1; i < secants.size(); ++i) {
        const bool turns = secants[i - 1] * secants[i] <= 0;
        slopes[i] = turns ? 0 : (secants[i - 1] + secants[i]) / 2;
    }
    for (std::size_t i = 0; i < secants.size(); ++i) {
        if (secants[i] == 0) {
            slopes[i] = slopes[i + 1] = 0;
            continue;
        }
        const double steepness = std::hypot(slopes[i] / secants[i], slopes[i + 1] / secants[i]);
        if (steepness > 3) {
            slopes[i] *= 3 / steepness;
            slopes[i + 1] *= 3 / steepness;
        }
    }
    return slopes;
}

void appendRun(std::vector<CurveSegment>& curve, std::span<const PointF> run) {
    if (run.size() < 2) return;
    const std::vector<double> slopes = tangents(run);
    for (std::size_t i = 0; i + 1 < run.size(); ++i) {
        const PointF from = run[i];
        const PointF to = run[i + 1];
        const double third = (to.x - from.x) / 3;
        curve.push_back(
            {{from.x + third, from.y + slopes[i] * third}, {to.x - third, to.y - slopes[i + 1] * third}, to});
    }
}

} // namespace

std::vector<CurveSegment> monotoneCurve(std::span<const PointF> points) {
    std::vector<CurveSegment> curve;
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= points.size(); ++i) {
        if (i < points.size() && points[i].x - points[i - 1].x > smallestStep) continue;
        appendRun(curve, points.subspan(begin, i - begin));
        if (i < points.size()) curve.push_back(straight(points[i - 1], points[i]));
        begin = i;
    }
    return curve;
}

} // namespace loadscope
