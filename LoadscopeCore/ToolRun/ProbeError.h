// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace loadscope {

/// Every failure of a scan, with exactly the data that its texts need. Plain value; also the type that
/// blocking probe calls throw. The texts shown to the user are derived, never stored. Cancellation is not a
/// case: see `CancellationError`.
class ProbeError {
public:
    struct RepositoryUnreadable {
        std::string path;
        bool operator==(const RepositoryUnreadable&) const = default;
    };
    struct CLINotFound {
        std::vector<std::string> searched;
        bool operator==(const CLINotFound&) const = default;
    };
    struct UnreadableOutput {
        std::string text;
        bool operator==(const UnreadableOutput&) const = default;
    };
    struct NoTranscript {
        std::string searchedRoot;
        bool operator==(const NoTranscript&) const = default;
    };
    struct SessionFailed {
        std::string text;
        bool operator==(const SessionFailed&) const = default;
    };
    struct MultiTurnUsageOnly {
        std::int64_t turns = 0;
        bool operator==(const MultiTurnUsageOnly&) const = default;
    };
    struct NotAuthenticated {
        std::vector<std::string> removedVariables{}; ///< that might have signed the tool in
        bool operator==(const NotAuthenticated&) const = default;
    };
    struct TimedOut {
        bool operator==(const TimedOut&) const = default;
    };
    struct UnknownTurnCount {
        bool operator==(const UnknownTurnCount&) const = default;
    };
    struct UnreadableContextReport {
        /// The tool's version when it is one that has no report at all; empty when only its form is unknown.
        std::string versionWithoutReport{};
        bool operator==(const UnreadableContextReport&) const = default;
    };
    struct IncompleteContextReport {
        std::string reason; ///< what tells it, as the beginning of a sentence
        std::int64_t total = 0;
        bool isEstimate = false; ///< the report is whole, but made of estimates
        bool operator==(const IncompleteContextReport&) const = default;
    };

    using Case = std::variant<RepositoryUnreadable, CLINotFound, UnreadableOutput, NoTranscript,
                              SessionFailed, MultiTurnUsageOnly, NotAuthenticated, TimedOut, UnknownTurnCount,
                              UnreadableContextReport, IncompleteContextReport>;

    template <typename T>
    requires std::constructible_from<Case, T> ProbeError(T error)
        : case_(std::move(error)) {} // NOLINT(google-explicit-constructor): a case is an error

    /// True when the error is of case `T`.
    template <typename T>
    [[nodiscard]] bool is() const {
        return std::holds_alternative<T>(case_);
    }
    [[nodiscard]] const Case& value() const { return case_; }

    /// One short sentence.
    [[nodiscard]] std::string headline() const;

    /// What happened and what to do, possibly over several lines.
    [[nodiscard]] std::string detail() const;

    /// The case's name as scripts see it, for example "cliNotFound".
    [[nodiscard]] std::string_view caseName() const;

    bool operator==(const ProbeError&) const = default;

    /// Longest text from outside, in user-perceived characters, that a detail shows.
    static constexpr std::size_t detailLimit = 500;

    /// The text trimmed of white space; "(no output)" when nothing is left; cut to `limit` characters
    /// followed by "…" when longer.
    [[nodiscard]] static std::string bounded(std::string_view text, std::size_t limit = detailLimit);

private:
    Case case_;
};

} // namespace loadscope
