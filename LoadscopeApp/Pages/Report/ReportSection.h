// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <memory>

namespace loadscope {

/// The report in words, to be copied or saved.
class ReportSection : public CollapsibleSection {
    Q_OBJECT

public:
    explicit ReportSection(const std::shared_ptr<const ScanReport>& report, QWidget* parent = nullptr);

private:
    static QWidget* body(const std::shared_ptr<const ScanReport>& report);
};

} // namespace loadscope
