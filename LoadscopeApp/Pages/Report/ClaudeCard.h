// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/History/RecordedScan.h"

#include <memory>

namespace loadscope {

/// What Claude Code loads: the verdict, the total, and its place in the context window or on the band scale.
class ClaudeCard : public ReportSurface {
    Q_OBJECT

public:
    ClaudeCard(const ScanReport& report, const std::shared_ptr<const RecordedScan>& previous,
               QWidget* parent = nullptr);
};

} // namespace loadscope
