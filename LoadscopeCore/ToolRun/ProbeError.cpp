// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include "LoadscopeCore/Platform/SystemWords.h"
#include "LoadscopeCore/Platform/Text.h"

#include <array>

namespace loadscope {

namespace {

struct FixedTexts {
    std::string_view caseName;
    std::string_view headline;
};

/// In the order of the cases.
constexpr std::array<FixedTexts, std::variant_size_v<ProbeError::Case>> fixedTexts{{
    {"repositoryUnreadable", "This folder could not be read."},
    {"cliNotFound", "Could not find the claude command."},
    {"unreadableOutput", "The probe session returned output this app could not read."},
    {"noTranscript", "The probe session produced no readable token usage."},
    {"sessionFailed", "The probe session reported an error."},
    {"multiTurnUsageOnly", "The probe session did not produce a startup total."},
    {"notAuthenticated", "Claude Code is not signed in."},
    {"timedOut", "The probe session took longer than 5 minutes."},
    {"unknownTurnCount", "The probe session did not produce a startup total."},
    {"unreadableContextReport", "Claude Code's `/context` report could not be read."},
    {"incompleteContextReport", "Claude Code could not count its startup context."},
}};

struct Detail {
    std::string operator()(const ProbeError::RepositoryUnreadable& error) const {
        const std::string cause =
            SystemWords::hasPrivacySettings
                ? "macOS may be blocking access — allow Loadscope under System Settings → Privacy & Security "
                  "→ Files & Folders (or move the repository outside a protected folder) — or the folder may "
                  "have been moved or deleted since it was chosen."
                : "Check the permissions of the folder; or it may have been moved or deleted since it was "
                  "chosen.";
        return error.path + " exists but its contents could not be listed. " + cause +
               " Nothing was measured and none of your Claude allowance was used.";
    }
    std::string operator()(const ProbeError::CLINotFound& error) const {
        std::string text = "Looked in:";
        if (error.searched.empty()) text += '\n';
        for (const auto& place : error.searched)
            text += "\n  • " + place;
        return text;
    }
    std::string operator()(const ProbeError::UnreadableOutput& error) const {
        return ProbeError::bounded(error.text);
    }
    std::string operator()(const ProbeError::NoTranscript& error) const {
        return "No session transcript was found under " + error.searchedRoot +
               ", and the CLI reported no usable startup usage. Nothing was measured.";
    }
    std::string operator()(const ProbeError::SessionFailed& error) const {
        return ProbeError::bounded(error.text);
    }
    std::string operator()(const ProbeError::MultiTurnUsageOnly& error) const {
        return "No session transcript was found, and the CLI usage block covers " +
               std::to_string(error.turns) +
               " turns. That block accumulates across turns, so it double-counts cached tokens and cannot be "
               "shown as the startup total. Nothing was measured — try again.";
    }
    std::string operator()(const ProbeError::NotAuthenticated& error) const {
        std::string text = "Run `claude` in " + std::string(SystemWords::terminal) +
                           " and sign in, then scan again. This app never handles Claude credentials.";
        if (error.removedVariables.empty()) return text;
        text += " These variables were removed for the scan, so that it measures your own sign-in: ";
        for (const std::string& name : error.removedVariables)
            text += (&name == &error.removedVariables.front() ? "" : ", ") + name;
        return text + ". `loadscope scan --keep-environment` passes them on.";
    }
    std::string operator()(const ProbeError::TimedOut&) const {
        return "Nothing was measured. Try again, or try a smaller repository.";
    }
    std::string operator()(const ProbeError::UnknownTurnCount&) const {
        return "No session transcript was found, and the CLI did not report how many turns its usage block "
               "covers. That block accumulates across turns, so it can only be trusted for a single-turn "
               "session. Nothing was measured — try again.";
    }
    std::string operator()(const ProbeError::UnreadableContextReport& error) const {
        if (!error.versionWithoutReport.empty())
            return "This version of Claude Code (" + error.versionWithoutReport +
                   ") cannot report its startup context; update it.";
        return "`/context` returned output with no token table this app recognises, and the session produced "
               "no usage figures either. Claude Code may have changed the report it prints. Nothing was "
               "measured.";
    }
    std::string operator()(const ProbeError::IncompleteContextReport& error) const {
        return error.reason + ", and its total is " + std::to_string(error.total) + " tokens." +
               (error.isEstimate ? " It estimated instead of counting." : "") +
               " Usually the computer is offline or the sign-in has expired: run `claude` in a terminal and "
               "look. Nothing was recorded.";
    }
};

} // namespace

std::string ProbeError::headline() const { return std::string(fixedTexts.at(case_.index()).headline); }

std::string ProbeError::detail() const { return std::visit(Detail{}, case_); }

std::string_view ProbeError::caseName() const { return fixedTexts.at(case_.index()).caseName; }

std::string ProbeError::bounded(std::string_view text, std::size_t limit) {
    const std::string_view trimmed = Text::trimmed(text);
    if (trimmed.empty()) return "(no output)";
    const std::string_view prefix = Text::prefix(trimmed, limit);
    return prefix.size() == trimmed.size() ? std::string(trimmed) : std::string(prefix) + "…";
}

} // namespace loadscope
