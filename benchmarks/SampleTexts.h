// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Texts and records of a chosen size, shaped like those of real tools.
namespace loadscope::Samples {

/// What `/context` prints, with this many category rows.
[[nodiscard]] std::string contextReport(std::size_t categories);

/// A report of about this many bytes, nearly all of them members of its categories.
[[nodiscard]] std::string contextDetails(std::size_t bytes);

/// The result object that carries a report.
[[nodiscard]] std::string resultObject(const std::string& report);

/// A session transcript of about this many bytes whose first assistant message comes last.
[[nodiscard]] std::string transcript(std::size_t bytes);

/// An event stream of about this many bytes whose usage event comes last.
[[nodiscard]] std::string eventStream(std::size_t bytes);

/// Records of some repositories and both tools, oldest first.
[[nodiscard]] std::vector<RecordedScan> history(std::size_t records, std::size_t categories);

/// What `loadscope scan --json` prints of a context with this many members, each `growth` tokens larger.
[[nodiscard]] std::string scanReport(std::size_t members, std::int64_t growth);

/// Weights that differ up to a million-fold, always the same.
[[nodiscard]] std::vector<double> weights(std::size_t count);

} // namespace loadscope::Samples
