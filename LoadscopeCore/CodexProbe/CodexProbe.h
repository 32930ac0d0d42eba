// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"
#include "LoadscopeCore/CodexProbe/CodexItemsReader.h"
#include "LoadscopeCore/CodexProbe/CodexScanOutcome.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Reads the JSON event stream of a `codex exec` session. Never fails on bad input.
namespace CodexOutputParser {

struct TokenCount {
    std::int64_t inputTokens = 0;
    std::optional<std::int64_t> contextWindow;
    bool operator==(const TokenCount&) const = default;
};

/// The first token-usage report of the stream; lines that are not JSON objects are passed over.
[[nodiscard]] std::optional<TokenCount> firstTokenCount(std::string_view jsonLines);

/// What the beginning of a stream tells of the session; newer versions tell nothing.
struct Header {
    std::optional<std::string> model;
    std::optional<std::int64_t> contextWindow; ///< positive
    bool operator==(const Header&) const = default;
};

/// Looks no further than the first 64 KB.
[[nodiscard]] Header header(std::string_view jsonLines);

} // namespace CodexOutputParser

/// Measures the startup context of Codex for one folder, or estimates it without a session. Blocking; never
/// throws: whatever goes wrong, a stop included, is an unavailable outcome with its reason.
class CodexProbeRunning {
public:
    virtual ~CodexProbeRunning() = default;
    virtual CodexScanOutcome run(const std::string& repository, StopToken stop) = 0;

    /// The items alone: no session, no allowance. The servers of the configuration are started.
    virtual CodexItems estimate(const std::string& repository, StopToken stop) = 0;
};

/// One `codex exec` session with a fixed one-line prompt; a version that does not know the flag against a
/// record of the session is started once more without it. Afterwards Codex is asked what the session started
/// with, which changes none of its numbers. Plain value; `executor` runs a session and can be replaced, as
/// can `configuration`, which tells what the stream may not.
struct CodexProbeRunner {
    static constexpr double defaultTimeoutSeconds = 300;
    static constexpr const char* probePrompt =
        "Reply with exactly: OK. Do not run any command or use any tool.";

    struct SessionOutput {
        std::string standardOutput; ///< with the trimmed standard error after it
        std::int32_t exitCode = 0;
        bool timedOut = false;
        bool limitFired = false; ///< the time limit fired, however the session ended
        bool hasDropped = false; ///< there was more output than was kept
    };
    using Executor = std::function<SessionOutput(
        const std::string& cli, const std::vector<std::string>& arguments, const std::string& repository)>;

    std::optional<std::string> cliOverride;
    double timeoutSeconds = defaultTimeoutSeconds;
    Executor executor;
    std::function<CodexConfiguration()> configuration = CodexConfiguration::forUser;
    /// How long the version, which is asked for beside the session, may be waited for after it.
    double versionSeconds = 0;

    /// Throws `ProbeError` or `CancellationError`.
    [[nodiscard]] CodexProbeResult run(const std::string& repository, const StopToken& stop) const;

    /// The items without a session, and without the prompt of one. Throws as `run` does.
    [[nodiscard]] CodexItems estimate(const std::string& repository, const StopToken& stop) const;

    [[nodiscard]] static std::vector<std::string> arguments(const std::string& repository);
    [[nodiscard]] static std::vector<std::string> argumentsKeepingRecord(const std::string& repository);

    /// What a session without a usage report says of itself: its exit code, the last `tailLines` lines that
    /// it printed and before them the first that begins with "error:".
    [[nodiscard]] static std::string unreadableDetail(std::int32_t exitCode, std::string_view output,
                                                      std::size_t tailLines);

private:
    [[nodiscard]] std::string locate(const StopToken& stop) const;
    [[nodiscard]] CodexItemsReader itemsReader(const std::string& cli, const CodexConfiguration& setUp) const;
    [[nodiscard]] SessionOutput session(const std::string& cli, const std::vector<std::string>& list,
                                        const std::string& repository, const StopToken& stop) const;

    /// Without a count: the session's own last error, else a timeout, else `unreadableDetail`.
    [[nodiscard]] static CodexProbeResult resultOf(const SessionOutput& session,
                                                   const CodexConfiguration& configuration);
};

/// The production probe: turns every failure into an unavailable outcome with a one-line reason.
class CodexProbe : public CodexProbeRunning {
public:
    static constexpr const char* notInstalledReason =
        "Codex CLI not found — install `codex` to add a Codex column.";
    [[nodiscard]] static std::string signedOutReason();

    /// How long a session without a network is waited for after the last of its reconnections.
    static constexpr double defaultReconnectionSeconds = 20;

    explicit CodexProbe(std::optional<std::string> cliOverride = {},
                        double timeoutSeconds = CodexProbeRunner::defaultTimeoutSeconds,
                        double reconnectionSeconds = defaultReconnectionSeconds);
    explicit CodexProbe(CodexProbeRunner runner);

    CodexScanOutcome run(const std::string& repository, StopToken stop) override;
    CodexItems estimate(const std::string& repository, StopToken stop) override;

    [[nodiscard]] static CodexProbeRunner::Executor
    processExecutor(double timeoutSeconds, double reconnectionSeconds = defaultReconnectionSeconds);

    /// The one-line reason for a failure of `CodexProbeRunner::run`.
    [[nodiscard]] static std::string reason(const std::exception_ptr& error);

private:
    CodexProbeRunner runner_;
};

} // namespace loadscope
