// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Process/CommandSearch.h"

#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

TEST(CommandSearch, TakesOnlyAWholePathFromTheLoginShell) {
    const TemporaryFolder home;
    const ScopedEnvironment environment("HOME", home.path());
    for (const char* profile : {".profile", ".zprofile"})
        writeFile(home.path(profile), "PATH=\"$HOME/bin:$PATH\"\nloadscope_function() { :; }\n");
    const std::string tool = writeExecutable(home.path("bin/loadscope-tool"), "#!/bin/sh\n");
    const auto answer = [](const char* name) {
        return CommandSearch::absolutePathFromLoginShell(name, 50, 5);
    };
    EXPECT_EQ(answer("loadscope-tool"), tool + "\n");
    EXPECT_EQ(answer("loadscope_function"), std::nullopt) << "a bare name would be looked for in any folder";
    EXPECT_EQ(answer("loadscope-missing"), std::nullopt);
}

} // namespace
} // namespace loadscope
