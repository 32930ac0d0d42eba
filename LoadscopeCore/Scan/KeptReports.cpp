// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/KeptReports.h"

#include <algorithm>
#include <utility>

namespace loadscope {

std::size_t KeptReports::sizeOf(const ScanReport& report) {
    std::size_t bytes = sizeof(ScanReport);
    for (const ContextMember& member : report.details.members)
        bytes += sizeof member + member.table.size() + member.group.size() + member.name.size();
    for (const InstructionFileEstimate& file : report.files())
        bytes += sizeof file + file.path.size();
    for (const SlabAttribution& row : report.rows)
        bytes += sizeof row + row.name.size();
    for (const std::string& path : report.unreadablePaths())
        bytes += sizeof path + path.size();
    return bytes;
}

void KeptReports::keep(Kept kept) {
    const std::string path = kept.report->repositoryPath;
    reports_.remove_if([&](const Kept& other) { return other.report->repositoryPath == path; });
    reports_.push_front(std::move(kept));
    std::size_t count = 0;
    std::size_t bytes = 0;
    const auto isTooMuch = [&](const Kept& one) {
        bytes += sizeOf(*one.report);
        return ++count > 1 && (count > maximumReports || bytes > bytes_);
    };
    reports_.erase(std::find_if(reports_.begin(), reports_.end(), isTooMuch), reports_.end());
}

const KeptReports::Kept* KeptReports::find(const std::string& repositoryPath) const {
    const auto found = std::find_if(reports_.begin(), reports_.end(), [&](const Kept& kept) {
        return kept.report->repositoryPath == repositoryPath;
    });
    return found == reports_.end() ? nullptr : &*found;
}

} // namespace loadscope
