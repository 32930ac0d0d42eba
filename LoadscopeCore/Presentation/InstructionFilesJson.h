// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>

/// The instruction files as every command's JSON lists them.
namespace loadscope::InstructionFilesJson {

/// The tool's own count of a file, if it is known.
using Reported = std::function<std::optional<std::int64_t>(const InstructionFileEstimate& file)>;

/// An object with an array for each tier.
[[nodiscard]] nlohmann::ordered_json byTier(const InstructionFileSet& files, const Reported& reported = {});

} // namespace loadscope::InstructionFilesJson
