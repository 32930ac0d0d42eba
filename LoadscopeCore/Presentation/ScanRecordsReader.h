// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Presentation/ScanReportReader.h"

#include <cstddef>
#include <string_view>
#include <variant>
#include <vector>

/// Reads what can become records of the history: reports of `loadscope scan --json`, history files, and what
/// `loadscope history --json` prints. All or nothing: a text of which a part cannot be read is unreadable.
/// Never throws.
namespace loadscope::ScanRecordsReader {

/// What a text holds. Estimated totals are never recorded, only counted.
struct Contents {
    std::vector<RecordedScan> scans;
    std::size_t estimates = 0;

    bool operator==(const Contents&) const = default;
};

/// A report without an identifier gets one that only its content decides, so that it is known again.
[[nodiscard]] std::variant<Contents, ScanReportReader::Unreadable> read(std::string_view json);

} // namespace loadscope::ScanRecordsReader
