// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexItems.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Asks Codex what a session in a folder would start with: no session, no account, no allowance, but it
/// starts the servers of the configuration as a session does. Plain value; any number may run at once.
struct CodexItemsReader {
    std::string cli;
    std::string prompt; ///< that of a measured session
    double timeoutSeconds = 0;
    CodexConfiguration configuration{};
    std::optional<std::string> configurationFolder{};

    /// `model` is that of the session, by its events or the configuration. Blocking; throws nothing but
    /// `CancellationError`: every other failure is the reason in the result.
    [[nodiscard]] CodexItems read(const std::string& repository, const std::optional<std::string>& model,
                                  const StopToken& stop) const;

    [[nodiscard]] static std::vector<std::string> modelsArguments();
    /// With what a measured session sets: it may only read, and asks for no approval.
    [[nodiscard]] static std::vector<std::string> promptInputArguments(std::string_view prompt);

private:
    struct Answer {
        std::optional<std::string> text;
        bool tookTooLong = false;
    };
    [[nodiscard]] Answer ask(const std::vector<std::string>& arguments, const std::string& repository,
                             const StopToken& stop) const;
    [[nodiscard]] CodexItems told(const std::string& repository, const std::optional<std::string>& model,
                                  const StopToken& stop) const;
};

} // namespace loadscope
