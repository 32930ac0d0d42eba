// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Components/PageFrame.h"
#include "LoadscopeCore/History/RecordedScan.h"

#include <vector>

namespace loadscope {

class ScanEmptyState;

/// The Compare page: repositories ranked per tool, and their latest scans side by side.
class CompareView : public PageFrame {
    Q_OBJECT

public:
    explicit CompareView(QWidget* parent = nullptr);

    /// `history` is oldest first.
    void refresh(const std::vector<RecordedScan>& history);

private:
    ScanEmptyState* empty_;
};

} // namespace loadscope
