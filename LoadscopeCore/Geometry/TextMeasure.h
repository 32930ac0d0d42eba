// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

namespace loadscope {

/// How a layout learns the size of a text without knowing any font: whoever paints supplies it.
struct TextMeasure {
    std::function<double(std::string_view)> width; ///< points that the UTF-8 text takes on one line
    double lineHeight = 0;                         ///< points
};

} // namespace loadscope
