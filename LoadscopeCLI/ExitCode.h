// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

namespace loadscope {

/// How the command ends; scripts rely on the numbers.
enum class ExitCode {
    success = 0,
    failure = 1,       ///< the scan failed, or a result could not be written
    wrongUsage = 2,    ///< unknown option, missing argument, a question that nobody can answer
    aboveMaximum = 3,  ///< measured, but above --max-tokens
    interrupted = 130, ///< stopped by a signal
};

} // namespace loadscope
