// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Report/ScanReport.h"

#include <cstddef>
#include <list>
#include <memory>
#include <string>

namespace loadscope {

/// The newest report of each folder that was scanned since the program was started, in memory alone: names
/// of members are never written anywhere. Those of the folders that were scanned longest ago go first when
/// there are too many or they take too much. For use by one thread.
class KeptReports {
public:
    static constexpr std::size_t maximumReports = 20;
    static constexpr std::size_t maximumBytes = 200'000'000;

    struct Kept {
        std::shared_ptr<const ScanReport> report;
        std::shared_ptr<const RecordedScan> previous; ///< with which it was compared; may be null
    };

    explicit KeptReports(std::size_t bytes = maximumBytes) : bytes_(bytes) {}

    /// In place of an earlier one of the same folder. The newest is kept however large it is.
    void keep(Kept kept);

    /// That of a folder; null when there is none.
    [[nodiscard]] const Kept* find(const std::string& repositoryPath) const;

    [[nodiscard]] std::size_t count() const { return reports_.size(); }

    /// What a report takes in memory, roughly.
    [[nodiscard]] static std::size_t sizeOf(const ScanReport& report);

private:
    std::size_t bytes_;
    std::list<Kept> reports_; ///< newest first
};

} // namespace loadscope
