// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

#include "LoadscopeCore/ToolRun/ClaudeConfigFolder.h"

#include <functional>

namespace loadscope::ProbeEnvironment {

std::string rawValue(Tool tool) { return tool == Tool::claude ? "claude" : "codex"; }

std::set<std::string> preservedKeys(Tool tool) {
    if (tool == Tool::codex) return {};
    return {ClaudeConfigFolder::environmentKey, claudeOAuthTokenKey};
}

std::set<std::string> scrubbedExactKeys(Tool tool) {
    std::set<std::string> keys{"CLAUDECODE", "ANTHROPIC_BASE_URL", "ANTHROPIC_API_KEY",
                               "ANTHROPIC_AUTH_TOKEN"};
    if (tool == Tool::codex) keys.insert(ClaudeConfigFolder::environmentKey);
    return keys;
}

namespace {

constexpr const char* nestedSessionKey = "CLAUDECODE";
constexpr const char* serversKey = "MCP_CONNECTION_NONBLOCKING";

/// The rule for one variable of one tool.
class Rule {
public:
    Rule(Tool tool, const Options& options)
        : preserved_(preservedKeys(tool)),
          scrubbed_(scrubbedExactKeys(tool)),
          keepsSignIn_(options.keepsSignIn && tool == Tool::claude) {}

    [[nodiscard]] bool concerns(const std::string& name) const {
        return preserved_.contains(name) || scrubbed_.contains(name) || name.starts_with(scrubbedKeyPrefix);
    }
    [[nodiscard]] bool removes(const std::string& name) const {
        if (keepsSignIn_) return name == nestedSessionKey;
        return concerns(name) && !preserved_.contains(name);
    }

private:
    std::set<std::string> preserved_;
    std::set<std::string> scrubbed_;
    bool keepsSignIn_;
};

std::vector<std::string> namesIn(const Environment& base,
                                 const std::function<bool(const std::string& name)>& isWanted) {
    std::vector<std::string> names;
    for (const auto& [name, value] : base) {
        if (isWanted(name)) names.push_back(name);
    }
    return names;
}

} // namespace

Environment childEnvironment(Tool tool, const Environment& base, const std::string& workingDirectory,
                             const Options& options) {
    const Rule rule(tool, options);
    Environment environment = base;
    std::erase_if(environment, [&](const auto& variable) { return rule.removes(variable.first); });
    if (options.waitsForServers && tool == Tool::claude)
        environment.insert_or_assign(serversKey, std::string(1, '0'));

    const auto configDir = environment.find(ClaudeConfigFolder::environmentKey);
    if (configDir != environment.end()) {
        auto folder = ClaudeConfigFolder::normalized(configDir->second, workingDirectory);
        if (folder) {
            configDir->second = std::move(*folder);
        } else {
            environment.erase(configDir);
        }
    }
    return environment;
}

std::vector<std::string> removedVariables(Tool tool, const Environment& base, const Options& options) {
    const Rule rule(tool, options);
    return namesIn(base, [&](const std::string& name) { return rule.removes(name); });
}

std::vector<std::string> keptVariables(Tool tool, const Environment& base, const Options& options) {
    const Rule rule(tool, options);
    return namesIn(base, [&](const std::string& name) { return rule.concerns(name) && !rule.removes(name); });
}

std::vector<std::string> removedSignInVariables(const Environment& base) {
    const Rule rule(Tool::claude, {});
    return namesIn(base, [&](const std::string& name) {
        const bool signsIn = name.starts_with("ANTHROPIC_") || name.starts_with("CLAUDE_CODE_USE_") ||
                             name.find("TOKEN") != std::string::npos ||
                             name.find("API_KEY") != std::string::npos;
        return signsIn && rule.removes(name);
    });
}

} // namespace loadscope::ProbeEnvironment
