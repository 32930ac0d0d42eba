// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/FindTexts.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

namespace loadscope::FindTexts {

std::string count(std::size_t found, std::size_t rows) {
    const auto number = [](std::size_t value) {
        return LocaleFormat::grouped(static_cast<std::int64_t>(value));
    };
    if (rows == 0) return nothingOpen;
    if (found == 0) return "No name has this in it.";
    return number(found) + " of " + number(rows) + (rows == 1 ? " row" : " rows");
}

} // namespace loadscope::FindTexts
