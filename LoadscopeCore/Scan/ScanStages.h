// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scan/ScanModel.h"

#include <functional>
#include <stop_token>
#include <string>
#include <variant>

/// The stages of one scan, from the folder check to the report, top to bottom on the calling worker thread.
namespace loadscope::ScanStages {

inline constexpr const char* folderStage = "Checking folder access…";
inline constexpr const char* claudeStage = "Reading Claude startup context…";
inline constexpr const char* codexStage = "Measuring Codex context…";
inline constexpr const char* filesStage = "Counting local instruction files…";

struct Cancelled {};

struct Failure {
    ProbeError error;
};

/// What one scan measures, and how.
struct Request {
    RepoSelection selection;
    ProbeSettings settings;
    bool includeCodex = false;
};

using Outcome = std::variant<ScanReport, Failure, Cancelled>;

/// Runs the stages in order and announces each from the second on before it begins. Looks for a stop between
/// the stages. Never throws: an error that is neither a `ProbeError` nor a cancellation becomes
/// `UnreadableOutput` with its description.
[[nodiscard]] Outcome perform(const Request& request, const ScanModel::Collaborators& collaborators,
                              const std::function<void(std::string stage)>& announce,
                              const std::stop_token& stop);

} // namespace loadscope::ScanStages
