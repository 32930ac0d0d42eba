// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeEnvironment.h"

#include "LoadscopeCore/ClaudeProbe/Transcript.h"

namespace loadscope::ProbeEnvironment {

std::string rawValue(Tool tool) { return tool == Tool::claude ? "claude" : "codex"; }

std::set<std::string> preservedKeys(Tool tool) {
    if (tool == Tool::codex) return {};
    return {TranscriptLocator::configDirEnvironmentKey, claudeOAuthTokenKey};
}

std::set<std::string> scrubbedExactKeys(Tool tool) {
    std::set<std::string> keys{"CLAUDECODE", "ANTHROPIC_BASE_URL", "ANTHROPIC_API_KEY",
                               "ANTHROPIC_AUTH_TOKEN"};
    if (tool == Tool::codex) keys.insert(TranscriptLocator::configDirEnvironmentKey);
    return keys;
}

Environment childEnvironment(Tool tool, const Environment& base, const std::string& workingDirectory) {
    const auto preserved = preservedKeys(tool);
    const auto scrubbed = scrubbedExactKeys(tool);
    Environment environment = base;
    std::erase_if(environment, [&](const auto& variable) {
        const std::string& name = variable.first;
        if (preserved.contains(name)) return false;
        return scrubbed.contains(name) || name.starts_with(scrubbedKeyPrefix);
    });

    const auto configDir = environment.find(TranscriptLocator::configDirEnvironmentKey);
    if (configDir != environment.end()) {
        auto folder = TranscriptLocator::normalizedConfigDir(configDir->second, workingDirectory);
        if (folder) {
            configDir->second = std::move(*folder);
        } else {
            environment.erase(configDir);
        }
    }
    return environment;
}

} // namespace loadscope::ProbeEnvironment
