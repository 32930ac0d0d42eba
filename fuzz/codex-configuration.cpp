// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// Whatever the file holds, what is taken from it is of a sensible kind.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const CodexConfiguration configuration = CodexConfiguration::parse(fuzzInput(bytes, size));
    require(configuration.modelContextWindow.value_or(1) > 0);
    require(configuration.projectDocMaxBytes.value_or(0) >= 0);
    for (const auto& text : {configuration.model, configuration.modelProvider, configuration.profile})
        require(!text || !text->empty());
    for (const std::string& name : configuration.projectDocFallbackFilenames)
        require(!name.empty());
    return 0;
}
