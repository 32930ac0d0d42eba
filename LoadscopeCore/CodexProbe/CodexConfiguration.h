// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UserFolders.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// What the user's `config.toml` of Codex says of a session, as far as it is of use here; nothing else of the
/// file is kept, and credentials are not in it. What the profile in use sets goes before the top level. A
/// file that is missing, no regular file, larger than a megabyte or not TOML says nothing. Never throws.
struct CodexConfiguration {
    static constexpr std::size_t maximumBytes = std::size_t{1} << 20;
    /// The provider that Codex has when the configuration names none; it is the one that needs a sign-in.
    static constexpr const char* defaultProvider = "openai";

    std::optional<std::string> model{};
    std::optional<std::int64_t> modelContextWindow{}; ///< positive
    std::optional<std::string> modelProvider{};
    std::optional<std::int64_t> projectDocMaxBytes{}; ///< not negative
    std::vector<std::string> projectDocFallbackFilenames{};
    std::optional<std::string> profile{};
    /// What marks the root of a project; absent when it does not say, none when every folder is its own.
    std::optional<std::vector<std::string>> projectRootMarkers{};
    bool replacesSystemPrompt = false; ///< the model's own is not what a session starts with

    /// A provider of the user's own, which may answer without a sign-in.
    [[nodiscard]] bool namesOwnProvider() const { return modelProvider && *modelProvider != defaultProvider; }

    [[nodiscard]] static CodexConfiguration parse(std::string_view toml);
    [[nodiscard]] static CodexConfiguration read(const std::string& path);

    /// $CODEX_HOME, else .codex in the home folder. Absent for a relative CODEX_HOME, which means another
    /// folder in each session.
    [[nodiscard]] static std::optional<std::string> folder(const Environment& environment,
                                                           const std::string& home);
    [[nodiscard]] static std::optional<std::string> folderForUser();

    /// config.toml in that folder.
    [[nodiscard]] static std::optional<std::string> path(const Environment& environment,
                                                         const std::string& home);

    [[nodiscard]] static CodexConfiguration forUser();

    bool operator==(const CodexConfiguration&) const = default;
};

} // namespace loadscope
