// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Version.h"

#include <CLI/Version.hpp>
#include <nlohmann/detail/abi_macros.hpp>
#include <unicode/uversion.h>

namespace loadscope {

std::string versionText() {
    return "loadscope " LOADSCOPE_VERSION "\nICU " U_ICU_VERSION "\nCLI11 " CLI11_VERSION "\nnlohmann-json " +
           std::to_string(NLOHMANN_JSON_VERSION_MAJOR) + '.' + std::to_string(NLOHMANN_JSON_VERSION_MINOR) +
           '.' + std::to_string(NLOHMANN_JSON_VERSION_PATCH);
}

} // namespace loadscope
