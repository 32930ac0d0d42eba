// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Charts/ChartPicture.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <memory>

namespace loadscope {

class ChartLegend;
class TrendChart;

/// The chart of the Trends page with its legend and a sentence on how to read it.
class TrendChartCard : public ReportSurface {
    Q_OBJECT

public:
    explicit TrendChartCard(const std::shared_ptr<const TrendsPresentation>& presentation);

    [[nodiscard]] ChartPicture picture() const;

private:
    void showChosen();

    TrendChart* chart_;
    ChartLegend* legend_;
    QWidget* comparison_ = nullptr; ///< of the chosen scans, or how to choose them
};

} // namespace loadscope
