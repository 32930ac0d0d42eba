// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace loadscope {

/// The user stopped the work. Passes through every layer untouched and is never turned into a `ProbeError`.
class CancellationError : public std::runtime_error {
public:
    CancellationError() : std::runtime_error("The operation was cancelled.") {}
};

} // namespace loadscope
