// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "tests/Support/HistoryRecords.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace loadscope::screenshots {

using Categories = std::vector<RecordedCategory>;

/// Collects records; each gets an identifier of its own.
class History {
public:
    History& add(const std::string& name, Timestamp date, std::int64_t total, Categories categories = {},
                 const std::string& tool = RecordedScan::claudeTool) {
        scans_.push_back(
            record(static_cast<int>(scans_.size()) + 1, name, date, total, std::move(categories), tool));
        return *this;
    }
    History& window(std::int64_t tokens) {
        scans_.back().contextWindow = tokens;
        return *this;
    }
    History& by(const std::string& version, const std::string& model = {}) {
        scans_.back().toolVersion = version;
        if (!model.empty()) scans_.back().model = model;
        return *this;
    }
    History& path(const std::string& path) {
        scans_.back().repositoryPath = path;
        return *this;
    }
    [[nodiscard]] std::vector<RecordedScan> scans() const { return ScanHistoryStore::ordered(scans_); }

private:
    std::vector<RecordedScan> scans_;
};

inline Timestamp at(int dayNumber, int hour, int minute) {
    return day(dayNumber) + std::chrono::hours(hour) + std::chrono::minutes(minute);
}

} // namespace loadscope::screenshots
