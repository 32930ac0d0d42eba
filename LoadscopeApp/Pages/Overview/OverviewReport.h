// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/PageFrame.h"
#include "LoadscopeCore/History/RecordedScan.h"

#include <memory>

namespace loadscope {

class CodexCard;

/// Everything that one scan measured, in one column.
class OverviewReport : public PageFrame {
    Q_OBJECT

public:
    /// `report` must not be null; it is compared with `previous` where there is one.
    explicit OverviewReport(std::shared_ptr<const ScanReport> report,
                            const std::shared_ptr<const RecordedScan>& previous = {},
                            QWidget* parent = nullptr);

    [[nodiscard]] const std::shared_ptr<const ScanReport>& report() const { return report_; }
    [[nodiscard]] CodexCard* codexCard() const;

    /// Begins with a line that says when the scan was made: for a report that is shown again.
    void tellWhenMeasured();

private:
    std::shared_ptr<const ScanReport> report_;
};

} // namespace loadscope
