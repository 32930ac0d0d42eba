// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionImports.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// Whatever a file says, its imports are absolute paths.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    InstructionImports::visitTargets(fuzzInput(bytes, size), "/home/dev/src", "/home/dev",
                                     [](const std::string& target) {
                                         require(target.starts_with('/'));
                                         return true;
                                     });
    return 0;
}
