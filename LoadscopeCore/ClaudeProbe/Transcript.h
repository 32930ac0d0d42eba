// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"
#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include <optional>
#include <string>
#include <string_view>

namespace loadscope {

/// Where Claude Code keeps its session transcripts, and which file belongs to a session.
namespace TranscriptLocator {

inline constexpr const char* configDirEnvironmentKey = ClaudeConfigFolder::environmentKey;

/// The folder of Claude Code's configuration: CLAUDE_CONFIG_DIR when that is usable, else .claude in the home
/// folder.
[[nodiscard]] std::string configFolder(const std::string& home, const Environment& environment);

/// The "projects" folder of the configuration.
[[nodiscard]] std::string defaultProjectsRoot(const std::string& home, const Environment& environment);

/// A CLAUDE_CONFIG_DIR value as an absolute, standardized path (links unresolved); nothing when it is blank.
[[nodiscard]] std::optional<std::string> normalizedConfigDir(std::string_view value,
                                                             const std::string& workingDirectory);

/// The first entry below `root` named after the session, at any depth; hidden files and folders are passed
/// over and links are not followed. Reads each folder once.
[[nodiscard]] std::optional<std::string> find(const std::string& sessionID, const std::string& root);

} // namespace TranscriptLocator

/// Reads the usage of the first assistant message of a transcript (JSON Lines), and the report that older
/// versions write there only. Unreadable lines are skipped; nothing fails.
namespace TranscriptReader {

/// What a `/context` command printed in a session.
struct Report {
    std::string text;
    std::optional<std::string> toolVersion;
    bool operator==(const Report&) const = default;
};

/// The first such report of a session's own messages; messages of helpers that the tool starts beside it do
/// not count. Never blocks on a FIFO.
[[nodiscard]] std::optional<Report> reportAtPath(const std::string& path);

/// Reads the file piece by piece and stops at the first usable line. Never blocks on a FIFO.
[[nodiscard]] std::optional<ProbeUsage> firstAssistantUsageAtPath(const std::string& path);

[[nodiscard]] std::optional<ProbeUsage> firstAssistantUsageInTranscript(std::string_view text);

} // namespace TranscriptReader
} // namespace loadscope
