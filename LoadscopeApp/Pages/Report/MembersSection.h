// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <QPointer>

#include <memory>

namespace loadscope {

class MemberTreemapView;
class ReportTable;

/// What the categories are made of, as tiles within tiles, and all of it to be copied.
class MembersSection : public CollapsibleSection {
    Q_OBJECT

public:
    explicit MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent = nullptr);

    /// Lets the rows of the table of categories and the tiles highlight each other. The table must be that of
    /// the same report.
    void connectRows(ReportTable* table);

private:
    void fill(const std::shared_ptr<const ScanReport>& report, QWidget* body);
    void link();

    QPointer<ReportTable> table_;
    MemberTreemapView* treemap_ = nullptr; ///< from the first time that the section is open

    MembersSection(const std::shared_ptr<const ScanReport>& report, QWidget* body, QWidget* parent);
};

} // namespace loadscope
