// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/Shapes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace loadscope {

/// The ring of a breakdown: one sector per row of tokens, clockwise from 12 o'clock. The value axis runs once
/// around the ring from 0 to the sum of the positive rows; rows without tokens have a place in the list and
/// no sector.
class DonutGeometry {
public:
    static constexpr double innerRadiusRatio = 0.62;
    static constexpr double angularGap = 1.5;     ///< degrees between two sectors
    static constexpr double dimmedOpacity = 0.35; ///< of the others while one sector is selected

    struct Slice {
        std::int64_t upperBound = 0; ///< running sum of the positive tokens up to this row
        double startAngle = 0;       ///< degrees, of the painted sector
        double sweep = 0;            ///< degrees; 0 for a row without tokens
        bool operator==(const Slice&) const = default;
    };

    DonutGeometry() = default;

    /// A ring as large as the rectangle allows, centred in it. `reveal` runs from 0 (nothing) to 1 (the whole
    /// ring) while the sectors grow in.
    DonutGeometry(std::span<const std::int64_t> tokens, RectF bounds, double reveal = 1);

    /// Running sums of the positive rows; they stop at the largest 64-bit number.
    [[nodiscard]] static std::vector<std::int64_t> upperBounds(std::span<const std::int64_t> tokens);

    /// False when no row has tokens: there is nothing to draw.
    [[nodiscard]] bool hasSlices() const { return total() >= 1; }

    [[nodiscard]] const std::vector<Slice>& slices() const { return slices_; }
    [[nodiscard]] PointF center() const { return center_; }
    [[nodiscard]] double outerRadius() const { return outerRadius_; }
    [[nodiscard]] double innerRadius() const { return outerRadius_ * innerRadiusRatio; }

    /// The first slice that ends beyond the position on the value axis.
    [[nodiscard]] std::optional<std::size_t> sliceAt(std::int64_t position) const;

    /// Position on the value axis under a point of the ring; nothing off the ring.
    [[nodiscard]] std::optional<std::int64_t> positionAt(PointF point) const;

    [[nodiscard]] std::optional<std::size_t> sliceAt(PointF point) const;

    /// The middle of a sector's band, for a focus ring or a description on screen.
    [[nodiscard]] PointF middleOf(std::size_t slice) const;

private:
    [[nodiscard]] std::int64_t total() const { return slices_.empty() ? 0 : slices_.back().upperBound; }

    std::vector<Slice> slices_;
    PointF center_;
    double outerRadius_ = 0;
};

} // namespace loadscope
