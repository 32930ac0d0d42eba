// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/ScanReport.h"

namespace loadscope {

/// What Claude Code loads: the verdict, the total, and its place in the context window or on the band scale.
class ClaudeCard : public ReportSurface {
    Q_OBJECT

public:
    explicit ClaudeCard(const ScanReport& report, QWidget* parent = nullptr);
};

} // namespace loadscope
