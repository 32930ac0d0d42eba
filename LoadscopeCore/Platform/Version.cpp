// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Version.h"

#include <nlohmann/detail/abi_macros.hpp>
#include <toml++/impl/version.h>
#include <unicode/uversion.h>

namespace loadscope::Version {
namespace {

std::string numbered(int major, int minor, int patch) {
    return std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(patch);
}

} // namespace

const char* number() { return LOADSCOPE_VERSION; }

std::string libraries() {
    // ICU is shared, so the one that runs may be newer than the one that was compiled with.
    UVersionInfo icu;
    u_getVersion(icu);
    char icuText[U_MAX_VERSION_STRING_LENGTH];
    u_versionToString(icu, icuText);
    return std::string("ICU ") + icuText + "\nnlohmann-json " +
           numbered(NLOHMANN_JSON_VERSION_MAJOR, NLOHMANN_JSON_VERSION_MINOR, NLOHMANN_JSON_VERSION_PATCH) +
           "\ntoml++ " + numbered(TOML_LIB_MAJOR, TOML_LIB_MINOR, TOML_LIB_PATCH) + '\n';
}

} // namespace loadscope::Version
