// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scan/ScanBatch.h"

#include <cstddef>
#include <string>
#include <vector>

/// What is told of the scans of several folders. Numbers are written in the user's locale.
namespace loadscope::ScanBatchTexts {

/// "Waiting", the stage of a running scan, "Stopping scan…", "Done", the headline of a failure or "Stopped".
[[nodiscard]] std::string state(const ScanBatch::Item& item);

/// "2 of 4 folders done" during a run; "3 of 4 folders measured, 1 failed" and "1 stopped" when all have
/// ended.
[[nodiscard]] std::string progress(const std::vector<ScanBatch::Item>& items);

/// What a run would do.
[[nodiscard]] std::string invitation(std::size_t repositories, std::size_t jobs);

/// The folder and what becomes of it, in one line.
[[nodiscard]] std::string spoken(const ScanBatch::Item& item);

/// "Cancel app"
[[nodiscard]] std::string cancelName(const ScanBatch::Item& item);

} // namespace loadscope::ScanBatchTexts
