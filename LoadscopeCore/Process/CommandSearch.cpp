// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/CommandSearch.h"

#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/LoginShell.h"

#include <algorithm>

namespace loadscope {

std::vector<std::string> CommandSearch::places(const std::optional<std::string>& override,
                                               std::vector<std::string> usualPlaces) {
    if (override && !Text::trimmedHorizontally(*override).empty())
        usualPlaces.insert(usualPlaces.begin(), *override);
    return usualPlaces;
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

std::optional<std::string> CommandSearch::absolutePathFromLoginShell(const std::string& command,
                                                                     double timeoutSeconds,
                                                                     double killGraceSeconds) {
    auto answer =
        LoginShell::output(LoginShell::path(), "command -v " + command, timeoutSeconds, killGraceSeconds);
    if (answer && !Text::trimmed(*answer).starts_with('/')) return std::nullopt;
    return answer;
}

} // namespace loadscope
