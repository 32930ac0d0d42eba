// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/DecimalNumber.h"

#include <fast_float/fast_float.h>
#include <system_error>

namespace loadscope {

std::optional<double> decimalNumber(std::string_view text) {
    if (text.find_first_not_of("+-.eE0123456789") != std::string_view::npos) return std::nullopt;
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto result = fast_float::from_chars(text.data(), end, number);
    // Its versions differ in whether they call what is out of range an error; the number is the same.
    const bool isNumber = result.ec == std::errc() || result.ec == std::errc::result_out_of_range;
    return isNumber && result.ptr == end ? std::optional(number) : std::nullopt;
}

} // namespace loadscope
