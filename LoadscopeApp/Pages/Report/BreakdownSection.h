// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/CategoryMembers.h"

#include <memory>

namespace loadscope {

class DonutChart;
class ReportTable;
struct BreakdownRows;

/// The measured total by category: a ring and a table that highlight the same row, and what has to be said
/// about them. Categories open to what the tool lists of them; an open one has its groups around its sector.
class BreakdownSection : public ReportSurface {
    Q_OBJECT

public:
    explicit BreakdownSection(const ScanReport& report, QWidget* parent = nullptr);

    /// The table of categories; null when the report has none.
    [[nodiscard]] ReportTable* table() const { return table_; }

private:
    void addRows(const ScanReport& report, const CategoryMembers& members);
    void connectRing(DonutChart* donut, ReportTable* table, const std::shared_ptr<BreakdownRows>& rows);
    void addBesides(const ScanReport& report, const CategoryMembers& members);
    void addNotes(const ScanReport& report);

    ReportTable* table_ = nullptr;
};

} // namespace loadscope
