// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Report/ScanReport.h"

namespace loadscope {

/// "Largest you can change": what of the total a person can switch off or shorten, where it is configured,
/// and what to copy for that. Changes nothing itself.
class ChangeableCard : public ReportSurface {
    Q_OBJECT

public:
    explicit ChangeableCard(const ScanReport& report, QWidget* parent = nullptr);

    /// Whether a report has anything that this card could show.
    [[nodiscard]] static bool isNeeded(const ScanReport& report);

private:
    void addGroup(const ScanReport& report, const ChangeableGroup& group);
};

} // namespace loadscope
