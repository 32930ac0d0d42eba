// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"

#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include <algorithm>
#include <string_view>

namespace loadscope::ChangeablePresentation {
namespace {

using Kind = ChangeableGroup::Kind;

/// Whether every shell takes the character for itself.
bool isPlain(char character) {
    constexpr std::string_view others = "_-./@%+:,";
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || others.find(character) != std::string_view::npos;
}

std::string removal(const ChangeableGroup& server) {
    const std::string name = shellQuoted(server.name);
    const std::string scope = server.scope.empty() ? std::string() : " --scope " + server.scope;
    // Behind two dashes a name cannot be taken for an option.
    if (server.name.starts_with('-')) return "claude mcp remove" + scope + " -- " + name;
    return "claude mcp remove " + name + scope;
}

} // namespace

std::string kind(const ChangeableGroup& group) {
    switch (group.kind) {
    case Kind::server:
        return "Server";
    case Kind::instructionFile:
        return "Instruction file";
    case Kind::skill:
        return "Skill";
    case Kind::agent:
        break;
    }
    return "Agent";
}

std::string number(const ScanReport& report, const ChangeableGroup& group) {
    std::string text =
        DetailsPresentation::tokens(group.count) + (group.count.tokens == 1 ? " token" : " tokens");
    if (group.isEstimatedBySize) text += std::string(", ") + DetailsPresentation::estimatedBySize;
    return text + " · " + InstructionFileShare::text(group.count.tokens, report.total);
}

std::string place(const ChangeableGroup& group) {
    if (group.file.empty() || group.kind == Kind::instructionFile) return {};
    return (group.kind == Kind::server ? "named in " : "in ") + group.file;
}

std::optional<std::string> copyable(const ChangeableGroup& group) {
    const std::string& text = group.kind == Kind::server ? group.name : group.file;
    if (text.empty() || Text::visible(text) != text) return {};
    return group.kind == Kind::server ? removal(group) : shellQuoted(text);
}

std::optional<std::string> missingServersNote(const ScanReport& report) {
    const std::vector<std::string>& missing = report.missingServers;
    if (missing.empty()) return {};
    std::string text =
        missing.size() == 1
            ? "1 configured server is not in this report: it may have been too slow to start, or switched "
              "off."
            : LocaleFormat::grouped(static_cast<std::int64_t>(missing.size())) +
                  " configured servers are not in this report: they may have been too slow to start, or "
                  "switched off.";
    for (const std::string& name : missing)
        text += (&name == &missing.front() ? " Missing: " : ", ") + name;
    return text + ".";
}

std::string shellQuoted(const std::string& text) {
    if (!text.empty() && std::ranges::all_of(text, isPlain)) return text;
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'')
            quoted += "'\\''";
        else
            quoted += character;
    }
    return quoted + "'";
}

} // namespace loadscope::ChangeablePresentation
