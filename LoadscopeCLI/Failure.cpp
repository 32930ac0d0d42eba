// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Failure.h"

#include "LoadscopeCore/Platform/Text.h"

#include <unistd.h>

namespace loadscope {

void showFailure(Terminal& errors, const std::string& headline, const std::string& detail) {
    errors.clearProgress();
    errors.writeLine(errors.styled(TextStyle::bad, Text::visible(headline)));
    if (!detail.empty()) errors.writeLine(Text::visibleLines(detail));
}

ExitCode showInterrupted(Terminal& errors, const std::string& what) {
    errors.clearProgress();
    errors.writeLine(what);
    return ExitCode::interrupted;
}

ExitCode writeResult(const std::string& text, ExitCode exitCode) {
    Terminal output(STDOUT_FILENO);
    output.write(text);
    if (!output.failed()) return exitCode;
    Terminal errors(STDERR_FILENO);
    showFailure(errors, "The result could not be written to standard output.", "");
    return ExitCode::failure;
}

} // namespace loadscope
