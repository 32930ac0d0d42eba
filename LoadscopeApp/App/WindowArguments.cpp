// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/WindowArguments.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "LoadscopeCore/Platform/Version.h"

#include <QtGlobal>

#include <string_view>

namespace loadscope {
namespace {

constexpr const char* usage =
    "Usage: loadscope-app [FOLDER]\n"
    "\n"
    "Opens the window of Loadscope, with FOLDER chosen when one is given.\n"
    "\n"
    "  --recent       choose the folder that was scanned last\n"
    "  -h, --help     print this text\n"
    "  -V, --version  print the version and those of the libraries\n"
    "\n"
    "LOADSCOPE_APPEARANCE=light|dark and LOADSCOPE_REDUCED_MOTION=0|1 win over what\n"
    "the desktop asks for.\n";

WindowArguments wrong(const std::string& reason) {
    WindowArguments result;
    result.text = reason + "\n\n" + usage;
    result.exitCode = WindowArguments::wrongUsage;
    return result;
}

} // namespace

WindowArguments WindowArguments::parse(int argumentCount, char** arguments) {
    WindowArguments result;
    bool optionsEnded = false;
    for (int index = 1; index < argumentCount; ++index) {
        const std::string_view argument = arguments[index];
        const bool isOption = !optionsEnded && argument.size() > 1 && argument.front() == '-';
        if (isOption && argument == "--") {
            optionsEnded = true;
        } else if (isOption && (argument == "-h" || argument == "--help")) {
            result.text = usage;
            return result;
        } else if (isOption && (argument == "-V" || argument == "--version")) {
            result.text = std::string("Loadscope ") + Version::number() + '\n' + Version::libraries() +
                          "Qt " + qVersion() + '\n';
            return result;
        } else if (isOption && argument == "--recent") {
            result.choosesRecent = true;
        } else if (isOption) {
            return wrong("Unknown option " + std::string(argument) + ".");
        } else if (result.folder || result.choosesRecent) {
            return wrong("Only one folder can be opened.");
        } else if (argument.empty()) {
            return wrong("The folder has no name.");
        } else {
            result.folder = FilePath::standardized(FilePath::joined(UserFolders::current(), argument));
        }
    }
    return result;
}

} // namespace loadscope
