// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/RepoSelection.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <utility>

namespace loadscope {

RepoSelection::RepoSelection(const std::string& folder)
    : path(FilePath::withoutTrailingSeparators(folder)), displayName(FilePath::lastComponent(path)) {}

RepoSelection::RepoSelection(const std::string& folder, std::string name)
    : path(FilePath::withoutTrailingSeparators(folder)), displayName(std::move(name)) {}

} // namespace loadscope
