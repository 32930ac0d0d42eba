// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexItemsReader.h"

#include "LoadscopeCore/CodexProbe/CodexDebugOutput.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Process/ProcessCancellation.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"
#include "LoadscopeCore/ToolRun/ToolRun.h"

namespace loadscope {

std::vector<std::string> CodexItemsReader::modelsArguments() { return {"debug", "models"}; }

std::vector<std::string> CodexItemsReader::promptInputArguments(std::string_view prompt) {
    return {"debug",
            "prompt-input",
            "-c",
            "sandbox_mode=\"read-only\"",
            "-c",
            "approval_policy=\"never\"",
            std::string(prompt)};
}

CodexItemsReader::Answer CodexItemsReader::ask(const std::vector<std::string>& arguments,
                                               const std::string& repository, const StopToken& stop) const {
    const auto run = [&] {
        return ToolRun::execute(
            cli, arguments, repository, ProbeEnvironment::Tool::codex,
            {timeoutSeconds, ToolRun::defaultKillGraceSeconds, ToolRun::defaultReaderGraceSeconds});
    };
    try {
        ToolRun::Execution execution = ProcessCancellation::run(stop, run);
        if (execution.limitFired) return {.text = {}, .tookTooLong = true};
        if (execution.exitCode != 0 || execution.hasDropped) return {};
        return {.text = std::move(execution.standardOutput)};
    } catch (const ProbeError&) { // it could not be started
        return {};
    }
}

CodexItems CodexItemsReader::told(const std::string& repository, const std::optional<std::string>& model,
                                  const StopToken& stop) const {
    const Answer list = ask(modelsArguments(), repository, stop);
    const auto models = CodexDebugOutput::models(list.text.value_or(""));
    const CodexDebugOutput::Session session{model, configuration.replacesSystemPrompt};
    const Answer input = ask(promptInputArguments(prompt), repository, stop);
    const auto texts = CodexDebugOutput::promptInput(input.text.value_or(""), prompt);
    if (texts) return CodexDebugOutput::items(*texts, models, session);
    CodexItems items = CodexDebugOutput::items({}, models, session); // the window is known all the same
    items.items.clear();
    items.reason = input.tookTooLong ? CodexItems::tookTooLong : CodexItems::notTold;
    return items;
}

CodexItems CodexItemsReader::read(const std::string& repository, const std::optional<std::string>& model,
                                  const StopToken& stop) const {
    CodexItems items;
    try {
        items = told(repository, model, stop);
        items.instructions = CodexInstructions::find(repository, configuration);
        if (configurationFolder)
            items.personalInstructions = CodexInstructions::personal(*configurationFolder);
    } catch (const CancellationError&) {
        throw;
    } catch (const std::exception&) { // no memory for what it printed
        return CodexItems::unavailable(CodexItems::notTold);
    }
    return items;
}

} // namespace loadscope
