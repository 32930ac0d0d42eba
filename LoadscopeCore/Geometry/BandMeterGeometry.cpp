// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BandMeterGeometry.h"

#include "LoadscopeCore/Geometry/LabelRow.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <cstddef>

namespace loadscope {
namespace {

constexpr double labelGap = 8; ///< points between two labels of a row
constexpr double rowGap = 4;   ///< points between the bar and the rows below it

std::vector<std::optional<RectF>> rowOf(const std::vector<RowLabel>& labels, double width, double y,
                                        double height) {
    std::vector<std::optional<RectF>> rects(labels.size());
    const auto edges = placeLabelsInRow(labels, 0, width, labelGap);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (edges[i]) rects[i] = RectF{*edges[i], y, labels[i].width, height};
    }
    return rects;
}

} // namespace

BandMeterGeometry::BandMeterGeometry(std::int64_t total, OpinionBand active, double width,
                                     const TextMeasure& text)
    : markerPosition_(BandScale::position(total)) {
    width = usableLength(width);
    const double margin = std::min(markerDiameter / 2, width / 2);
    bar_ = {margin, 0, width - 2 * margin, barHeight};
    const std::array<double, 4> edges{
        bar_.x, bar_.x + bar_.width * BandScale::thresholdPosition(OpinionBands::heavyThreshold, total),
        bar_.x + bar_.width * BandScale::thresholdPosition(OpinionBands::excessiveThreshold, total),
        bar_.right()};

    std::vector<RowLabel> row;
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        const OpinionBand band = allOpinionBands[i];
        segments_[i] = {band, {edges[i], 0, edges[i + 1] - edges[i], barHeight}};
        labels_.push_back({band, OpinionBands::title(band), band == active, {}});
        row.push_back(
            {segments_[i].rect.center().x, text.width(labels_.back().text), band == active ? 1 : 0});
    }
    const double labelTop = barHeight + rowGap;
    const auto labelRects = rowOf(row, width, labelTop, text.lineHeight);
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        labels_[i].rect = labelRects[i];
    }

    ticks_ = {{OpinionBands::heavyThreshold, {}, edges[1], {}},
              {OpinionBands::excessiveThreshold, {}, edges[2], {}},
              {BandScale::maximum(total), {}, edges[3], {}}};
    row.clear();
    for (Tick& tick : ticks_) {
        tick.text = LocaleFormat::grouped(tick.value);
        row.push_back({tick.x, text.width(tick.text), tick.value == BandScale::maximum(total) ? 1 : 0});
    }
    const double tickTop = labelTop + text.lineHeight + rowGap;
    const auto tickRects = rowOf(row, width, tickTop, text.lineHeight);
    for (std::size_t i = 0; i < ticks_.size(); ++i) {
        ticks_[i].rect = tickRects[i];
    }
    height_ = tickTop + text.lineHeight;
}

PointF BandMeterGeometry::markerCenter(double position) const {
    return {bar_.x + bar_.width * unitClamped(position), bar_.y + bar_.height / 2};
}

} // namespace loadscope
