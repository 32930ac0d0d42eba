// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionFileShare.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <algorithm>

namespace loadscope::InstructionFileShare {

double fraction(std::int64_t tokens, std::int64_t total) {
    if (total < 1) return 0;
    return std::clamp(static_cast<double>(tokens) / static_cast<double>(total), 0.0, 1.0);
}

std::string text(std::int64_t tokens, std::int64_t total) {
    return LocaleFormat::oneDecimal(fraction(tokens, total) * 100) + "% of total";
}

} // namespace loadscope::InstructionFileShare
