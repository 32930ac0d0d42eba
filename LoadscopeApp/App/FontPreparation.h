// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"

namespace loadscope {

/// As long as it lives, the system's font configuration is read on a thread of its own; its end waits for the
/// rest. Lives while the toolkit connects to the display and mostly waits: afterwards the toolkit finds the
/// configuration read, which would otherwise delay the first picture by some 8 ms. Does nothing where the
/// toolkit does not use Fontconfig, and when no thread is to be had.
class FontPreparation {
public:
    FontPreparation();

private:
    JoiningThread thread_;
};

} // namespace loadscope
