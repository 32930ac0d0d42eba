// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/ScanReport.h"

namespace loadscope {

/// The measured total by category: a ring and a table that highlight the same row, and what has to be said
/// about them.
class BreakdownSection : public ReportSurface {
    Q_OBJECT

public:
    explicit BreakdownSection(const ScanReport& report, QWidget* parent = nullptr);

private:
    void addRows(const ScanReport& report);
    void addNotes(const ScanReport& report);
};

} // namespace loadscope
