// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include "LoadscopeCore/CodexProbe/CodexProbe.h"

#include <algorithm>
#include <array>

namespace loadscope {

namespace {

struct ReadinessTexts {
    ToolReadiness readiness;
    std::string_view caseName;
    std::string_view label;
};

constexpr std::array readinesses{
    ReadinessTexts{ToolReadiness::checking, "checking", "Checking…"},
    ReadinessTexts{ToolReadiness::notInstalled, "notInstalled", "Not installed"},
    ReadinessTexts{ToolReadiness::signedOut, "signedOut", "Sign-in needed"},
    ReadinessTexts{ToolReadiness::ready, "ready", "Signed in"},
    ReadinessTexts{ToolReadiness::unknown, "unknown", "Sign-in could not be verified"},
};

const ReadinessTexts& textsOf(ToolReadiness readiness) {
    return readinesses.at(static_cast<std::size_t>(readiness));
}

} // namespace

std::string label(ToolReadiness readiness) { return std::string(textsOf(readiness).label); }

std::string label(std::string_view tool, ToolReadiness readiness) {
    return std::string(tool) + ": " + label(readiness);
}

std::string codexBlocker(ToolReadiness readiness) {
    return readiness == ToolReadiness::notInstalled ? CodexProbe::notInstalledReason
                                                    : CodexProbe::signedOutReason();
}

std::optional<ToolReadiness> toolReadinessFromLabel(std::string_view label) {
    const auto* const found = std::ranges::find(readinesses, label, &ReadinessTexts::label);
    return found == readinesses.end() ? std::nullopt : std::optional(found->readiness);
}

std::string_view caseName(ToolReadiness readiness) { return textsOf(readiness).caseName; }

bool blocksScan(ToolReadiness readiness) {
    return readiness != ToolReadiness::ready && readiness != ToolReadiness::unknown;
}

} // namespace loadscope
