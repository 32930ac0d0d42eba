// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"

namespace loadscope {

std::string_view rawValue(SearchPathSource source) {
    switch (source) {
    case SearchPathSource::inherited:
        return "inherited";
    case SearchPathSource::shell:
        return "shell";
    case SearchPathSource::shellDidNotAnswer:
        break;
    }
    return "shellDidNotAnswer";
}

namespace ConditionsPresentation {
namespace {

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

std::string searchPathLine(SearchPathSource source) {
    switch (source) {
    case SearchPathSource::inherited:
        return "PATH: the one that this program was started with.";
    case SearchPathSource::shell:
        return "PATH: the one that your shell sets.";
    case SearchPathSource::shellDidNotAnswer:
        break;
    }
    return "PATH: the one that this program was started with; your shell did not answer.";
}

std::string environmentLine(const MeasurementConditions& conditions) {
    std::string text = "Environment: ";
    if (conditions.keptEnvironment) text += "passed on, with the variables that sign in; ";
    text += conditions.removedVariables.empty() ? "nothing was removed"
                                                : "removed " + listed(conditions.removedVariables);
    if (!conditions.keptVariables.empty()) text += "; kept " + listed(conditions.keptVariables);
    return text + ".";
}

} // namespace

std::string measurementNote(const MeasurementConditions& conditions) {
    return "Measured: one headless `claude -p \"/context\"` run (model " + conditions.requestedModel +
           ") started in this folder — it reads the session's startup context without spending Claude "
           "allowance.";
}

std::vector<std::string> lines(const MeasurementConditions& conditions) {
    std::vector<std::string> texts{
        conditions.toolVersion ? "Tool: Claude Code " + *conditions.toolVersion + "."
                               : "Tool: Claude Code, version not known.",
        "Model: " + conditions.requestedModel + " was asked for; the report names " +
            conditions.model.value_or("none") + ".",
        searchPathLine(conditions.pathSource),
        environmentLine(conditions),
    };
    if (conditions.waitedForServers) texts.emplace_back("Servers: the tool was told to wait for slow ones.");
    return texts;
}

std::optional<std::string> estimateNote(const MeasurementConditions& conditions) {
    if (!conditions.isEstimate) return {};
    return "Claude Code estimated this total instead of counting it: it can be far off, and it was not "
           "recorded.";
}

std::optional<std::string> mayBeEstimateNote(const MeasurementConditions& conditions) {
    if (!conditions.mayBeEstimate) return {};
    return "It could not be told whether Claude Code counted this total or estimated it: a computer without "
           "a network, or a sign-in that has expired, makes it estimate. Compare with a scan that is online "
           "and signed in.";
}

std::optional<std::string> searchPathNote(const MeasurementConditions& conditions) {
    if (conditions.pathSource != SearchPathSource::shellDidNotAnswer) return {};
    return "Your shell did not answer when it was asked for its PATH, so servers whose programs only your "
           "shell finds may be missing from this total.";
}

std::optional<std::string> reserveNote(const ScanReport& report) {
    const auto& reserve = report.conditions.takenOff;
    if (!reserve) return {};
    SaturatingSum printed;
    printed.add(report.total);
    printed.add(reserve->tokens);
    return "The report's total of " + LocaleFormat::grouped(printed.value()) + " includes " +
           LocaleFormat::grouped(reserve->tokens) + " tokens of \"" + reserve->name +
           "\", which is reserved space: taken off.";
}

std::optional<std::string> removedSignInNote(const std::vector<std::string>& names) {
    if (names.empty()) return {};
    return "Variables that may sign Claude Code in are removed for a scan: " + listed(names) +
           "; `loadscope scan --keep-environment` passes them on.";
}

std::vector<std::string> notes(const ScanReport& report) {
    std::vector<std::string> texts;
    for (auto& note : {estimateNote(report.conditions), mayBeEstimateNote(report.conditions),
                       searchPathNote(report.conditions), reserveNote(report)})
        if (note) texts.push_back(*note);
    return texts;
}

} // namespace ConditionsPresentation
} // namespace loadscope
