// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Our way of doing something beside the obvious way of doing it.
struct Comparison {
    std::string what;
    std::function<void()> ours;
    std::function<void()> reference;
    double factor = 0;  ///< ours may take this often the reference's time; 0 when nothing is promised of it
    double seconds = 0; ///< and this much more, or this much without a reference
    int rounds = 9;
};

/// Runs both ways, or ours alone where there is no reference, in turn, after one unmeasured round, and prints
/// a line of six fields with tabs between them: what, both medians in milliseconds, their ratio, the goal,
/// and whether it is met. Returns whether it is.
bool runComparison(const Comparison& comparison);

/// Runs a program without a shell, its output discarded, in a folder, and waits for it. Ends this program
/// when it cannot be started or fails: a comparison with a failure would be worthless.
void runProgram(const std::vector<std::string>& arguments, const std::string& folder = "/");

} // namespace loadscope
