// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"

#include <nlohmann/json_fwd.hpp>

/// The member "codex" of the objects by which scripts read a scan.
namespace loadscope::CodexJson {

/// Measured, with its items as far as Codex tells them, or unavailable.
[[nodiscard]] nlohmann::ordered_json outcome(const CodexScanOutcome& outcome);

/// Items that were asked for without a session, which Codex told.
[[nodiscard]] nlohmann::ordered_json estimate(const CodexItems& items);

} // namespace loadscope::CodexJson
