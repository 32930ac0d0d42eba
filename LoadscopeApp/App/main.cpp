// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/LoadscopeApp.h"

#include <cstdio>

int main(int argumentCount, char** arguments) {
    using loadscope::LoadscopeApp;
    // Help must not need a display, so look for it before the toolkit starts.
    const LoadscopeApp::Arguments early = LoadscopeApp::parse(argumentCount, arguments);
    if (early.text && early.exitCode == LoadscopeApp::done) {
        std::fputs(early.text->c_str(), stdout);
        return LoadscopeApp::done;
    }
    LoadscopeApp application(argumentCount, arguments);
    const LoadscopeApp::Arguments wanted = LoadscopeApp::parse(argumentCount, arguments);
    if (wanted.text) {
        std::fputs(wanted.text->c_str(), stderr);
        return wanted.exitCode;
    }
    return application.run(wanted.folder);
}
