// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Screenshots/Stage.h"

#include <vector>

namespace loadscope::screenshots {

/// The Trends and Compare pages over prepared histories, from a few records to the most that are kept.
[[nodiscard]] std::vector<Scene> historyScenes();

/// The same pages where histories are odd: clocks that ran backwards, one moment, many years, no totals at
/// all.
[[nodiscard]] std::vector<Scene> historyEdgeScenes();

} // namespace loadscope::screenshots
