// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The instruction files that a session of Codex loads for a folder: one of each folder from the project's
/// root down to it, root first, together cut at a limit of bytes. Known from the disk alone, no tool is
/// started. Plain value; a file's contents are looked at only to tell whether it is blank, and never kept.
struct CodexInstructions {
    static constexpr std::int64_t defaultLimitBytes = 32'768;

    struct File {
        std::string path;
        std::int64_t byteCount = 0;
        std::int64_t readBytes = 0; ///< of its beginning

        [[nodiscard]] std::int64_t cutBytes() const { return byteCount - readBytes; }
        bool operator==(const File&) const = default;
    };

    std::vector<File> files{};
    std::int64_t limitBytes = defaultLimitBytes;
    /// The first file that cannot be read: Codex reads none of the others on account of it.
    std::optional<std::string> unreadablePath{};

    [[nodiscard]] std::int64_t totalBytes() const;
    [[nodiscard]] std::int64_t readBytes() const;
    /// The files that are not read to their end.
    [[nodiscard]] std::vector<File> cut() const;

    /// Blocking, as asking for a file's attributes is. Opens nothing but regular files.
    [[nodiscard]] static CodexInstructions find(const std::string& folder,
                                                const CodexConfiguration& configuration);

    /// The user's own file in the folder of the configuration; it comes in addition and does not count
    /// against the limit.
    [[nodiscard]] static std::optional<File> personal(const std::string& configurationFolder);

    bool operator==(const CodexInstructions&) const = default;
};

} // namespace loadscope
