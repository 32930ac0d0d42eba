// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ClaudeCLILocator.h"
#include "LoadscopeCore/CodexProbe/CodexCLILocator.h"
#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"
#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/LineBreaks.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/Process/SearchPath.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "LoadscopeCore/ToolRun/ToolRun.h"
#include "LoadscopeCore/ToolRun/ToolVersion.h"

#include <array>
#include <future>
#include <nlohmann/json.hpp>

namespace loadscope::ReadinessChecker {

namespace {

constexpr ToolRun::Limits statusLimits{10, 0.5, 0.5, ToolRun::fewBytesKept};
constexpr ToolRun::Limits versionLimits{5, 0.5, 0.5, ToolRun::fewBytesKept};

std::optional<std::string> findClaude() {
    try {
        return ClaudeCLILocator::resolveForUser();
    } catch (const ProbeError&) {
        return std::nullopt;
    }
}

/// These versions say that nobody is signed in when a key stands in the settings, and yet work with it.
bool overlooksKeys(const std::string& cli) {
    const auto execution = ToolRun::execute(cli, {"--version"}, UserFolders::temporary(),
                                            ProbeEnvironment::Tool::claude, versionLimits);
    const auto version = ToolVersion::inText(execution.standardOutput);
    const auto numbers = version ? ToolVersion::numbers(*version) : std::nullopt;
    return numbers && *numbers >= std::array{2, 1, 45} && *numbers <= std::array{2, 1, 50};
}

ToolReadiness askClaude(const ProbeSettings& settings) {
    const auto cli = findClaude();
    if (!cli) return ToolReadiness::notInstalled;
    const auto execution = ToolRun::execute(*cli, {"auth", "status", "--json"}, UserFolders::temporary(),
                                            ProbeEnvironment::Tool::claude, statusLimits,
                                            {.keepsSignIn = settings.keepsEnvironment});
    if (execution.timedOut || execution.readersTimedOut) return ToolReadiness::unknown;
    const auto status = claudeStatus(execution.standardOutput, execution.exitCode);
    return status == ToolReadiness::signedOut && overlooksKeys(*cli) ? ToolReadiness::unknown : status;
}

ToolReadiness askCodex() {
    const auto cli = CodexCLILocator::locateForUser().path;
    if (!cli) return ToolReadiness::notInstalled;
    const auto execution = ToolRun::execute(*cli, {"login", "status"}, UserFolders::temporary(),
                                            ProbeEnvironment::Tool::codex, statusLimits);
    if (execution.timedOut || execution.readersTimedOut) return ToolReadiness::unknown;
    const auto status =
        codexStatus(execution.standardOutput + "\n" + execution.standardError, execution.exitCode);
    // With a provider of the user's own it needs no sign-in, though it says that there is none.
    const bool mayAnswer =
        status == ToolReadiness::signedOut && CodexConfiguration::forUser().namesOwnProvider();
    return mayAnswer ? ToolReadiness::unknown : status;
}

/// Whatever goes wrong, a stop included, leaves the sign-in unverified.
template <typename Ask>
ToolReadiness statusOf(const StopToken& stop, Ask ask) {
    try {
        return ProcessCancellation::run(stop, ask);
    } catch (...) {
        return ToolReadiness::unknown;
    }
}

} // namespace

Result check(StopToken stop, const ProbeSettings& settings) {
    const auto claude = [&] { return statusOf(stop, [&] { return askClaude(settings); }); };
    const auto codex = [&] { return statusOf(stop, askCodex); };
    Result result;
    try {
        auto codexAnswer = std::async(std::launch::async, codex);
        result.claude = claude();
        result.codex = codexAnswer.get();
    } catch (const std::system_error&) { // no second thread is to be had
        result = {claude(), codex()};
    }
    return result;
}

Result checkForWindow(StopToken stop) {
    try {
        if (!SearchPath::wasStartedFromTerminal()) SearchPath::askShell(stop);
    } catch (const std::exception&) { // stopped, or no thread is to be had: the inherited path has to do
    }
    return check(std::move(stop));
}

ToolReadiness claudeStatus(std::string_view standardOutput, std::int32_t exitCode) {
    const auto json = Json::parse(standardOutput);
    const Json::Value* loggedIn = json ? Json::member(*json, "loggedIn") : nullptr;
    if (!loggedIn || !loggedIn->is_boolean()) return ToolReadiness::unknown;
    if (!loggedIn->get<bool>()) return ToolReadiness::signedOut;
    return exitCode == 0 ? ToolReadiness::ready : ToolReadiness::unknown;
}

ToolReadiness codexStatus(std::string_view output, std::int32_t exitCode) {
    bool claimsSignIn = false;
    LineBreaks::Walker walker(output);
    while (walker.advance()) {
        const std::string_view line = LineBreaks::trimmedLine(walker.line());
        if (line == "Not logged in") return ToolReadiness::signedOut;
        claimsSignIn = claimsSignIn || line.starts_with("Logged in using ") || line == "API key configured" ||
                       line.starts_with("API key configured ");
    }
    return claimsSignIn && exitCode == 0 ? ToolReadiness::ready : ToolReadiness::unknown;
}

} // namespace loadscope::ReadinessChecker
