// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Comparison/ScanMeasurement.h"

#include <string>
#include <variant>

namespace loadscope {

/// The JSON of an earlier scan that the user names on the command line.
namespace KeptReport {

/// Why it cannot be used, as a sentence that a terminal may show.
struct Unusable {
    std::string sentence;
};

[[nodiscard]] std::variant<ScanMeasurement, Unusable> read(const std::string& path);

} // namespace KeptReport
} // namespace loadscope
