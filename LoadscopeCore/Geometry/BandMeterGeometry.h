// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"
#include "LoadscopeCore/Geometry/TextMeasure.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The bar on which a total is set against the three bands, with its marker, the band titles and the scale's
/// numbers. Labels that would overlap are pushed apart, and dropped only when the width cannot hold them all.
class BandMeterGeometry {
public:
    static constexpr double barHeight = 16;
    static constexpr double markerDiameter = 12;
    static constexpr double springResponse = 0.4; ///< seconds
    static constexpr double springDamping = 0.82;

    struct Segment {
        OpinionBand band = OpinionBand::lean;
        RectF rect;
    };
    struct Label {
        OpinionBand band = OpinionBand::lean;
        std::string text;
        bool isActive = false;
        std::optional<RectF> rect; ///< nothing when there is no room for it
    };
    struct Tick {
        std::int64_t value = 0;
        std::string text;
        double x = 0; ///< the boundary that it names
        std::optional<RectF> rect;
    };

    BandMeterGeometry() = default;

    /// For a total whose band is `active`, in a column of this width. The bar leaves half a marker free at
    /// both ends, so that the marker never leaves the column.
    BandMeterGeometry(std::int64_t total, OpinionBand active, double width, const TextMeasure& text);

    [[nodiscard]] const RectF& bar() const { return bar_; }
    [[nodiscard]] const std::array<Segment, 3>& segments() const { return segments_; }
    [[nodiscard]] const std::vector<Label>& labels() const { return labels_; }
    [[nodiscard]] const std::vector<Tick>& ticks() const { return ticks_; }
    [[nodiscard]] double height() const { return height_; }

    /// Where the marker ends up, as a share of the bar.
    [[nodiscard]] double markerPosition() const { return markerPosition_; }

    /// The marker's centre when it stands at this share of the bar.
    [[nodiscard]] PointF markerCenter(double position) const;

private:
    RectF bar_;
    std::array<Segment, 3> segments_{};
    std::vector<Label> labels_;
    std::vector<Tick> ticks_;
    double markerPosition_ = 0;
    double height_ = 0;
};

} // namespace loadscope
