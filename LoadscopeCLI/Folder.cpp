// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/Folder.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <filesystem>
#include <system_error>

namespace loadscope {

std::optional<std::string> absoluteFolder(const std::string& argument) {
    if (argument.starts_with('/')) return FilePath::standardized(argument);
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    if (error) return std::nullopt;
    return FilePath::standardized(FilePath::joined(current.string(), argument));
}

} // namespace loadscope
