// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/SystemWords.h"
#include "LoadscopeCore/Platform/UserFolders.h"

namespace loadscope {

std::string rawValue(OnboardingIllustration illustration) {
    switch (illustration) {
    case OnboardingIllustration::measureIcon:
        return "measureIcon";
    case OnboardingIllustration::toolbarPointer:
        return "toolbarPointer";
    case OnboardingIllustration::scanSpinner:
        return "scanSpinner";
    case OnboardingIllustration::bandLegend:
        break;
    }
    return "bandLegend";
}

namespace {

/// Where the walkthrough says that scans are kept: by its name where users know it by one, else its path.
std::string historyFolder() {
#ifdef __APPLE__
    return "Application Support";
#else
    const std::string folder = ScanHistoryStore::defaultDirectory();
    const std::string home = UserFolders::home() + "/";
    return folder.starts_with(home) ? "~/" + folder.substr(home.size()) : folder;
#endif
}

} // namespace

const std::vector<OnboardingStep>& OnboardingFlow::steps() {
    static const std::vector<OnboardingStep> steps{
        {0, "See what Claude Code loads before it reads a single message",
         "Every Claude Code session spends some of its context window on startup files — CLAUDE.md, "
         "AGENTS.md, and similar instructions — before you type anything. Loadscope runs one real scan of a "
         "repository and shows you exactly how many tokens that costs, so you can tell whether your setup is "
         "lean or bloated.",
         std::nullopt, "Next", OnboardingIllustration::measureIcon},
        {1, "Point it at a local git repository",
         "Pick any folder on " + std::string(SystemWords::thisComputer) +
             " that's a git repository — your own project works well. Loadscope reads "
             "its instruction files locally for the per-file estimate and keeps recorded scan summaries in " +
             historyFolder() +
             "; instruction-file contents and individual file paths are not saved in history.",
         "Look for the folder icon in the top-right toolbar.", "Next",
         OnboardingIllustration::toolbarPointer},
        {2, "Run one real scan",
         "Scanning asks Claude Code for its own `/context` report through your existing Claude Code sign-in "
         "and provider connection. The report supplies the session total and categories and spends none of "
         "your Claude allowance. Include Codex is off by default. Turn it on to run a separate remote Codex "
         "session over the same folder; it uses your existing Codex CLI sign-in, spends a small part of your "
         "Codex allowance, and sends the folder's instruction files to OpenAI.",
         "Requires the Claude Code CLI installed and signed in. Codex CLI is optional and runs only when you "
         "include it. Loadscope does not collect or store CLI credentials.",
         "Next", OnboardingIllustration::scanSpinner},
        {3, "One number matters most — the rest is a map",
         "The total token count is measured directly by Claude Code and is authoritative, and the categories "
         "underneath come from its own `/context` report. Only the per-file splits are Loadscope's own local "
         "estimate, to help you see where the tokens likely came from. A Codex scan reports its total and "
         "window only.",
         "Total and categories — from Claude Code, exact. File splits — Loadscope's estimate.", "Got it",
         OnboardingIllustration::bandLegend},
    };
    return steps;
}

const std::vector<OnboardingLegendEntry>& OnboardingFlow::legend() {
    static const std::vector<OnboardingLegendEntry> legend{
        {OpinionBand::lean, "fine as-is"},
        {OpinionBand::heavy, "worth trimming"},
        {OpinionBand::excessive, "leaves less room for your work"},
    };
    return legend;
}

std::string OnboardingFlow::progressText() const {
    return "Step " + std::to_string(currentIndex_ + 1) + " of " + std::to_string(stepCount());
}

void OnboardingFlow::advance() {
    if (currentStep().isLast()) {
        finish();
        return;
    }
    direction_ = Direction::forward;
    ++currentIndex_;
}

void OnboardingFlow::goBack() {
    if (currentIndex_ < 1) return;
    direction_ = Direction::backward;
    --currentIndex_;
}

void OnboardingFlow::finish() {
    completion_.markComplete();
    isFinished_ = true;
}

} // namespace loadscope
