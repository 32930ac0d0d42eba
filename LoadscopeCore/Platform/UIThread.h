// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace loadscope {

/// The thread that owns the models. A worker hands its results over with `post`; the function runs later on
/// that thread, in the order of posting. `post` may be called from any thread. Implemented over the event
/// loop of the window, by a small loop in the command and by a hand-cranked queue in tests.
class UIThread {
public:
    virtual ~UIThread() = default;
    virtual void post(std::function<void()> work) = 0;
};

} // namespace loadscope
