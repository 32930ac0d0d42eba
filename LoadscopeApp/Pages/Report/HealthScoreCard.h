// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/ScanReport.h"

namespace loadscope {

/// The illustrative score with its gauge and what it means.
class HealthScoreCard : public ReportSurface {
    Q_OBJECT

public:
    explicit HealthScoreCard(const ScanReport& report, QWidget* parent = nullptr);
};

} // namespace loadscope
