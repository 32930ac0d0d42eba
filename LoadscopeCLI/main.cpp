// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/CommandLine.h"

int main(int argumentCount, char** arguments) { return loadscope::runCommandLine(argumentCount, arguments); }
