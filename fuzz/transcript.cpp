// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "fuzz/FuzzInput.h"

using namespace loadscope;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto usage = TranscriptReader::firstAssistantUsageInTranscript(fuzzInput(bytes, size));
    if (usage) static_cast<void>(usage->startupTotal());
    return 0;
}
