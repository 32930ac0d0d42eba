// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Charts/ChartPicture.h"

namespace loadscope {

class BarChart;
class ChartLegend;
class ComparePresentation;

/// The categories of all repositories in one chart.
class CombinedCard : public ReportSurface {
    Q_OBJECT

public:
    explicit CombinedCard(const ComparePresentation& presentation);

    [[nodiscard]] ChartPicture picture() const;

private:
    BarChart* chart_;
    ChartLegend* legend_;
};

} // namespace loadscope
