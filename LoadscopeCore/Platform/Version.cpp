// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Version.h"

#include <nlohmann/detail/abi_macros.hpp>
#include <unicode/uversion.h>

namespace loadscope::Version {

const char* number() { return LOADSCOPE_VERSION; }

std::string libraries() {
    // ICU is shared, so the one that runs may be newer than the one that was compiled with.
    UVersionInfo icu;
    u_getVersion(icu);
    char icuText[U_MAX_VERSION_STRING_LENGTH];
    u_versionToString(icu, icuText);
    return std::string("ICU ") + icuText + "\nnlohmann-json " + std::to_string(NLOHMANN_JSON_VERSION_MAJOR) +
           '.' + std::to_string(NLOHMANN_JSON_VERSION_MINOR) + '.' +
           std::to_string(NLOHMANN_JSON_VERSION_PATCH) + '\n';
}

} // namespace loadscope::Version
