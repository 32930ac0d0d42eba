// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/TipCard.h"
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <cstddef>
#include <vector>

class QPainter;

/// The looks of a trend chart, in the colours and fonts of the theme. Series are coloured by their entry in
/// the chart palette.
namespace loadscope::TrendChartPainter {

/// Axes, thresholds, lines and points: all that does not depend on the pointer.
void paint(QPainter& painter, const TrendChartGeometry& geometry, const std::vector<std::size_t>& palette);

/// A ring around a mark that was chosen.
void paintChosen(QPainter& painter, const TrendChartGeometry::Mark& mark,
                 const std::vector<std::size_t>& palette);

/// The rule through one mark and its point, larger than the others.
void paintSelection(QPainter& painter, const TrendChartGeometry& geometry,
                    const TrendChartGeometry::Mark& mark, const std::vector<std::size_t>& palette);

/// What stands above a mark, never broken.
[[nodiscard]] TipCard tooltip(const TrendsPresentation::Tooltip& tooltip);

} // namespace loadscope::TrendChartPainter
