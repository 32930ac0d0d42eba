// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "benchmarks/SampleTrees.h"

#include "tests/Support/TemporaryFolder.h"

namespace loadscope::Samples {
namespace {

std::string sessionName(std::size_t number) {
    const std::string digits = std::to_string(number);
    return "00000000-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits;
}

} // namespace

std::string fillWithTranscripts(const std::string& folder, std::size_t sessions) {
    for (std::size_t i = 0; i < sessions; ++i) {
        writeFile(folder + "/-src-project-" + std::to_string(i / 100) + "/" + sessionName(i) + ".jsonl", "");
    }
    return sessionName(sessions - sessions / 10);
}

std::vector<std::string> fillWithImports(const std::string& folder, std::size_t imports) {
    std::string root = "# Instructions\n\n";
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < imports; ++i) {
        const std::string name = "notes/part-" + std::to_string(i) + ".md";
        std::string text;
        for (int line = 0; line < 80; ++line) {
            text += "- Keep functions small, and name them for what they give back.\n";
        }
        paths.push_back(writeFile(folder + "/" + name, text));
        root += "@" + name + "\n";
    }
    paths.push_back(writeFile(folder + "/CLAUDE.md", root));
    return paths;
}

void fillWithTools(const std::string& home, const std::string& standIns) {
    for (const char* const tool : {"claude", "codex"}) {
        writeExecutable(home + "/.local/bin/" + tool, readFile(standIns + "/" + tool));
    }
}

} // namespace loadscope::Samples
