// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanMeasurement.h"
#include "LoadscopeCore/Platform/Json.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// Reads the JSON that `loadscope scan --json` printed, by this or another version. Never throws; what a
/// report lacks is absent, what it has in another form than expected too.
namespace loadscope::ScanReportReader {

/// Why a text is no report; ends a sentence that begins with the file's name: "is not JSON.".
struct Unreadable {
    std::string reason;

    bool operator==(const Unreadable&) const = default;
};

[[nodiscard]] std::variant<ScanMeasurement, Unreadable> read(std::string_view text);

/// Why an object is no report of a scan, if it is none.
[[nodiscard]] std::optional<Unreadable> objection(const Json::Value& object);

} // namespace loadscope::ScanReportReader
