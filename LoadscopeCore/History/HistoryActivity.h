// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

namespace loadscope {

/// What is being done with the recorded history on the disk.
enum class HistoryActivity { none, loading, clearing };

} // namespace loadscope
