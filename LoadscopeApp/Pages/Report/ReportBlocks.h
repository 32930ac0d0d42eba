// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"

#include <memory>
#include <vector>

class QWidget;

namespace loadscope {

/// The blocks of a report from top to bottom, for whoever lays them out in a column.
[[nodiscard]] std::vector<QWidget*> reportBlocks(const std::shared_ptr<const ScanReport>& report,
                                                 const std::shared_ptr<const RecordedScan>& previous);

} // namespace loadscope
