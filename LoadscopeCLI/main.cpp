// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Version.h"

#include <iostream>

int main() { std::cout << loadscope::versionText() << '\n'; }
