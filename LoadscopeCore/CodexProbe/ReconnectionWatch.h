// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace loadscope {

/// Follows the event stream of a running session, chunk by chunk, until the session has announced the last of
/// its reconnections. Keeps no more than one line of a sensible length.
class ReconnectionWatch {
public:
    /// True once: when the announcement is in what came so far.
    bool sawLast(std::span<const char> chunk);

private:
    void append(std::string_view part);

    std::string line_;
    bool isTooLong_ = false;
    bool isOver_ = false;
};

} // namespace loadscope
