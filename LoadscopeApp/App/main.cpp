// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/LoadscopeApp.h"
#include "LoadscopeApp/App/WindowArguments.h"
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"

#include <cstdio>

namespace {

std::optional<std::string> lastScannedFolder() {
    using namespace loadscope;
    const auto folders =
        ScanHistory::recentFolders(ScanHistoryStore(ScanHistoryStore::defaultDirectory()).load(), 1);
    return folders.empty() ? std::nullopt : std::optional(folders.front().path);
}

} // namespace

int main(int argumentCount, char** arguments) {
    using loadscope::WindowArguments;
    // Help must not need a display, so look for it before the toolkit starts.
    const WindowArguments early = WindowArguments::parse(argumentCount, arguments);
    if (early.text && early.exitCode == WindowArguments::done) {
        std::fputs(early.text->c_str(), stdout);
        return WindowArguments::done;
    }
    loadscope::LoadscopeApp application(argumentCount, arguments);
    const WindowArguments wanted = WindowArguments::parse(argumentCount, arguments);
    if (wanted.text) {
        std::fputs(wanted.text->c_str(), stderr);
        return wanted.exitCode;
    }
    return application.run(wanted.choosesRecent ? lastScannedFolder() : wanted.folder);
}
