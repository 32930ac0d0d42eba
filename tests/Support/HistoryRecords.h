// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"

#include <chrono>

namespace loadscope {

/// Midnight of that day of 2026, in UTC, counted from 1.
inline Timestamp day(int number) {
    return std::chrono::sys_days(std::chrono::year(2026) / 1 / 1) + std::chrono::days(number - 1);
}

/// A record of /src/NAME, with an identifier made from the number.
inline RecordedScan record(int number, const std::string& name, Timestamp date, std::int64_t total,
                           std::vector<RecordedCategory> categories = {},
                           const std::string& tool = RecordedScan::claudeTool) {
    const std::string digits = std::to_string(number);
    const std::string id = "00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits;
    return {.id = UUID::parse(id).value(),
            .repositoryName = name,
            .repositoryPath = "/src/" + name,
            .date = date,
            .total = total,
            .categories = std::move(categories),
            .tool = tool,
            .contextWindow = {}};
}

} // namespace loadscope
