// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/HelpTexts.h"

#include "LoadscopeCore/Platform/Version.h"

namespace loadscope::HelpTexts {

const std::vector<Shortcut>& shortcuts() {
    static const std::vector<Shortcut> all{
        {{"Ctrl+O"}, "Choose a folder"},
        {{"Ctrl+Shift+O"}, "Recent folders"},
        {{"Ctrl+R", "F5"}, "Scan the chosen folder"},
        {{"Esc"}, "Stop the scan; close a sheet; let go of what is lit in a chart"},
        {{"Ctrl+1", "Ctrl+2", "Ctrl+3"}, "Overview, Trends, Compare"},
        {{"Ctrl+F"}, "Find rows by name on this page; Escape shows all again"},
        {{"Up", "Down", "Home", "End"},
         "Walk a table or a chart; Up from the first row to the titles, to sort"},
        {{"Right", "Left"}, "Open and close a row of the breakdown"},
        {{"Return"}, "Open what is lit, also a file; choose a point of Trends; sort by a title"},
        {{"Backspace"}, "Out of a group of the tiles"},
        {{"Menu"}, "What can be done with what is lit"},
        {{"Ctrl+C"}, "Copy the selection, a card, or the name of the row that is lit"},
        {{"F1"}, "This list"},
        {{"Ctrl+Q"}, "End the program"},
    };
    return all;
}

const std::vector<GuidePage>& guidePages() {
    static const std::vector<GuidePage> all{
        {"overview", "Overview"}, {"trends", "Trends"},   {"compare", "Compare"},
        {"setup", "Set-up"},      {"budgets", "Budgets"}, {"ci", "CI jobs"},
    };
    return all;
}

std::string aboutTitle() { return std::string("Loadscope ") + Version::number(); }

std::string versions(std::string_view qtVersion) {
    return aboutTitle() + '\n' + Version::libraries() + "Qt " + std::string(qtVersion);
}

} // namespace loadscope::HelpTexts
