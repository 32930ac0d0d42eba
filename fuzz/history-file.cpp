// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// What can be read can be written, and read again to the same file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto decoded = ScanHistoryFile::decode(fuzzInput(bytes, size));
    if (const auto* scans = std::get_if<std::vector<RecordedScan>>(&decoded)) {
        const std::string text = ScanHistoryFile::encode(*scans);
        const auto again = ScanHistoryFile::decode(text);
        const auto* same = std::get_if<std::vector<RecordedScan>>(&again);
        require(same != nullptr && ScanHistoryFile::encode(*same) == text);
    }
    return 0;
}
