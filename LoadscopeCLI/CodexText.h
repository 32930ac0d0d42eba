// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCLI/Terminal.h"
#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"

#include <string>

namespace loadscope {

/// What a measured session of Codex started with: its items and its instruction files, under an empty line
/// each. Empty when Codex was not measured.
[[nodiscard]] std::string codexItemsText(const CodexScanOutcome& outcome, const Terminal& terminal);

/// An estimate of Codex alone, for people. Ends with a line feed.
[[nodiscard]] std::string codexEstimateText(const std::string& repositoryName, const CodexItems& items,
                                            const Terminal& terminal);

} // namespace loadscope
