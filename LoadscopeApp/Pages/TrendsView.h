// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Components/PageFrame.h"
#include "LoadscopeCore/History/RecordedScan.h"

#include <optional>
#include <string>
#include <vector>

namespace loadscope {

class ScanEmptyState;

/// The Trends page: how one repository's startup context has moved over its recorded scans.
class TrendsView : public PageFrame {
    Q_OBJECT

public:
    explicit TrendsView(QWidget* parent = nullptr);

    /// `history` is oldest first. `selectedRepositoryPath` is the folder chosen in the sidebar.
    void refresh(const std::vector<RecordedScan>& history,
                 const std::optional<std::string>& selectedRepositoryPath);

Q_SIGNALS:
    /// The recorded history shall be deleted.
    void clearRequested();

private:
    PageHeader* header_;
    ScanEmptyState* empty_;
};

} // namespace loadscope
