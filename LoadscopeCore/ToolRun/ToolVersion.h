// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// Asks a tool for its version (`TOOL --version`) on a thread of its own, beside the tool's real work. The
/// destructor ends a question that has no answer yet.
class ToolVersion {
public:
    ToolVersion(std::string cli, ProbeEnvironment::Tool tool, ProbeEnvironment::Options environment = {});
    ~ToolVersion() = default;
    ToolVersion(const ToolVersion&) = delete;
    ToolVersion& operator=(const ToolVersion&) = delete;

    /// The answer when it has come, or comes within so many seconds; nothing when there is none.
    [[nodiscard]] std::optional<std::string> answer(double seconds = 0);

    /// The version in what a tool prints, such as "2.1.330" of "2.1.330 (Claude Code)" and "0.169.0" of
    /// "codex-cli 0.169.0"; nothing for anything else.
    [[nodiscard]] static std::optional<std::string> inText(std::string_view text);

    /// Its first three numbers, by which versions compare; nothing for a text that is no version.
    [[nodiscard]] static std::optional<std::array<int, 3>> numbers(std::string_view version);

private:
    std::mutex mutex_;
    std::condition_variable answered_;
    bool isAnswered_ = false;
    std::optional<std::string> version_;
    JoiningThread thread_; // last, so that it is joined first
};

} // namespace loadscope
