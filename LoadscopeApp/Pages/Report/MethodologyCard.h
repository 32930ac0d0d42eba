// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/ScanReport.h"

namespace loadscope {

/// How the numbers of a report were obtained.
class MethodologyCard : public ReportSurface {
    Q_OBJECT

public:
    explicit MethodologyCard(const ScanReport& report, QWidget* parent = nullptr);
};

} // namespace loadscope
