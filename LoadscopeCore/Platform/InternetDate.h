// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <optional>
#include <string>
#include <string_view>

/// Dates as files and programs write them, the same in every locale. Thread-safe.
namespace loadscope::InternetDate {

/// For example 2026-11-16T20:31:31Z; parts of a second are dropped.
[[nodiscard]] std::string text(Timestamp time);

/// Of such a text with "Z" or an offset such as "+02:00"; nothing for any other text, a date that does not
/// exist, or one that a clock of nanoseconds cannot hold (before 1678 or after 2261).
[[nodiscard]] std::optional<Timestamp> parse(std::string_view text);

} // namespace loadscope::InternetDate
