// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/CommandSearch.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/LoginShell.h"

#include <algorithm>

namespace loadscope {
namespace {

/// Takes the first word from a text as a shell reads it, without its quotes.
std::string takeWord(std::string_view& text) {
    std::string word;
    char quote = 0;
    while (!text.empty()) {
        const char next = text.front();
        if (quote == 0 && (next == ' ' || next == '\t')) break;
        text.remove_prefix(1);
        if (next == quote) {
            quote = 0;
        } else if (quote == 0 && (next == '\'' || next == '"')) {
            quote = next;
        } else if (next == '\\' && quote != '\'' && !text.empty()) {
            word += text.front();
            text.remove_prefix(1);
        } else {
            word += next;
        }
    }
    return word;
}

/// What stands for the command when the line tells of an alias, with the quotes of its own that it has.
std::optional<std::string> aliasIn(std::string_view line, std::string_view command) {
    if (line.starts_with("alias ")) line.remove_prefix(6);
    if (!line.starts_with(command)) return std::nullopt;
    line.remove_prefix(command.size());
    if (line.starts_with('=')) {
        line.remove_prefix(1);
        return takeWord(line);
    }
    constexpr std::string_view told = ": aliased to ";
    if (!line.starts_with(told)) return std::nullopt;
    return std::string(line.substr(told.size()));
}

std::optional<std::string> pathInAlias(std::string_view alias, std::string_view command) {
    alias = Text::trimmed(alias);
    std::string program = takeWord(alias);
    if (!program.starts_with('/')) return std::nullopt;
    if (!alias.empty() && FilePath::lastComponent(program) != command) return std::nullopt;
    return program;
}

} // namespace

std::vector<std::string> CommandSearch::places(const std::optional<std::string>& override,
                                               std::vector<std::string> usualPlaces) {
    if (override && !Text::trimmedHorizontally(*override).empty())
        usualPlaces.insert(usualPlaces.begin(), *override);
    return usualPlaces;
}

std::vector<std::string> CommandSearch::withFolders(std::vector<std::string> places,
                                                    const std::vector<std::string>& folders,
                                                    const std::string& command) {
    for (const std::string& folder : folders) {
        std::string place = FilePath::joined(folder, command);
        if (std::ranges::find(places, place) == places.end()) places.push_back(std::move(place));
    }
    return places;
}

std::optional<std::string> CommandSearch::find(const std::vector<std::string>& places,
                                               const ExecutableTest& isExecutable,
                                               const LoginShellLookup& loginShellLookup) {
    const auto place = std::ranges::find_if(places, isExecutable);
    if (place != places.end()) return *place;
    const auto answer = loginShellLookup();
    if (!answer) return std::nullopt;
    std::string path(Text::trimmed(*answer));
    if (path.empty() || !isExecutable(path)) return std::nullopt;
    return path;
}

std::optional<std::string> CommandSearch::pathFromLoginShell(const std::string& shell,
                                                             const std::string& command,
                                                             double timeoutSeconds, double killGraceSeconds) {
    // First the alias, which not every shell names unless asked for one, then what it and a function hide.
    const auto answer = LoginShell::answer(shell, LoginShell::Start::login,
                                           "alias " + command + "; unalias " + command + "; unset -f " +
                                               command + "; command -v " + command,
                                           timeoutSeconds, killGraceSeconds);
    return answer ? pathInAnswer(*answer, command) : std::nullopt;
}

std::optional<std::string> CommandSearch::pathInAnswer(std::string_view answer, std::string_view command) {
    while (!answer.empty()) {
        const std::string_view line = Text::trimmed(answer.substr(0, answer.find('\n')));
        answer.remove_prefix(std::min(answer.find('\n'), answer.size() - 1) + 1);
        if (line.starts_with('/')) return std::string(line);
        const auto alias = aliasIn(line, command);
        if (auto path = alias ? pathInAlias(*alias, command) : std::nullopt) return path;
    }
    return std::nullopt;
}

} // namespace loadscope
