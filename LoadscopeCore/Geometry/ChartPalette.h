// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace loadscope {

/// Number of colours that series are told apart by; more series than that begin anew.
inline constexpr std::size_t chartPaletteSize = 5;

} // namespace loadscope
