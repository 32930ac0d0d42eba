// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeRunner.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

/// A result always names its session, an error always has words, and nothing else leaves the parser.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    for (const std::int32_t exitCode : {0, 1}) {
        try {
            const ProbeOutput output = ProbeOutputParser::parse(text, text, exitCode);
            require(!output.sessionID.empty());
            if (output.usage) static_cast<void>(output.usage->startupTotal());
        } catch (const ProbeError& error) {
            require(!error.detail().empty());
        }
    }
    static_cast<void>(ProbeRunner::reportedTurns(text));
    return 0;
}
