// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// One run of a coding tool as a child process: its environment, its bounds, and what it wrote. Any number of
/// runs may be under way at once.
namespace loadscope::ToolRun {

inline constexpr double defaultTimeoutSeconds = 300;
inline constexpr double defaultKillGraceSeconds = 5;
inline constexpr double defaultReaderGraceSeconds = 5;
inline constexpr std::size_t defaultMostBytesKept = 64'000'000;
/// For a tool that has little to say.
inline constexpr std::size_t fewBytesKept = 1'000'000;
/// Of a session whose output was cut at that, and cannot be read.
inline constexpr const char* tooMuchOutput =
    "The tool printed more than 64 MB, which is too much to be read.";

/// How one child ended and everything that it wrote. A text whose bytes are not UTF-8 is empty.
struct Execution {
    std::int32_t exitCode = 0; ///< exit status, or the number of the signal that ended the child
    std::string standardOutput;
    std::string standardError;
    bool timedOut = false;        ///< the time limit fired and a signal ended the child
    bool readersTimedOut = false; ///< an output was still open when its reader gave up
    bool limitFired = false;      ///< the time limit fired, however the child ended
    bool hasDropped = false;      ///< there was more output than was kept
};

struct Limits {
    double timeoutSeconds = defaultTimeoutSeconds;
    double killGraceSeconds = defaultKillGraceSeconds;
    double readerGraceSeconds = defaultReaderGraceSeconds;
    std::size_t mostBytesKept = defaultMostBytesKept; ///< of each output
};

/// Sees the standard output while the child runs, on the reader's thread. Seconds that it returns bring the
/// end of the time limit nearer: to that long from now.
using OutputWatcher = std::function<std::optional<double>(std::span<const char> chunk)>;

/// Runs one child of `tool` in `repository` within `limits` and collects what it writes. Blocking. Honours
/// the `ProcessCancellation` that is current on this thread. Throws `ProbeError` (`UnreadableOutput`) when
/// the child, or the interpreter of its script, cannot be started and `CancellationError` when it was
/// cancelled. The child, its descriptors and its threads are gone on return.
[[nodiscard]] Execution execute(const std::string& cli, const std::vector<std::string>& arguments,
                                const std::string& repository, ProbeEnvironment::Tool tool,
                                const Limits& limits, const ProbeEnvironment::Options& environment = {},
                                const OutputWatcher& watcher = {});

} // namespace loadscope::ToolRun
