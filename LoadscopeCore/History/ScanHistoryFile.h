// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Platform/Json.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The history file's format, apart from where it is kept.
namespace loadscope::ScanHistoryFile {

/// The only version that is written, and that can be read.
inline constexpr int schemaVersion = 1;

enum class Unreadable { corrupt, version };

/// The records of a file's text in file order, or why it cannot be read. Never throws.
[[nodiscard]] std::variant<std::vector<RecordedScan>, Unreadable> decode(std::string_view text);

/// One record as the file holds it, or nothing. Unknown members are passed over. Never throws.
[[nodiscard]] std::optional<RecordedScan> record(const Json::Value& object);

/// The whole file: indented, keys sorted, "/" escaped, dates in UTC to the second.
[[nodiscard]] std::string encode(const std::vector<RecordedScan>& scans);

/// For example 2026-11-16T20:31:31Z.
[[nodiscard]] std::string iso8601(Timestamp time);

} // namespace loadscope::ScanHistoryFile
